#pragma once

#include <QList>
#include <QObject>
#include <QPair>
#include <QString>

#include <optional>

namespace kestrune {

class CPaintDialog;

/// What a statement puts into the dialog that it makes appear.
struct DialogPlan {
    QList<QPair<QString, QString>> keys; ///< in the order in which they are typed; a key may come again
    bool bCancel = false;                ///< press Cancel in place of OK
};

/// Fills in dialogs in place of a person while it lives: those of the program from the plan of the statement that runs,
/// any other (a box of the toolkit, say) is closed, since nobody could answer it, and the statement fails.
class CScriptDialogs : public QObject {
    Q_OBJECT
public:
    CScriptDialogs();
    ~CScriptDialogs() override;

    /// Before a statement runs: what its dialogs are filled in with. Without a plan a dialog is cancelled.
    void Begin(std::optional<DialogPlan> plan);
    /// After it: the first thing that went wrong with a dialog, also when a plan found no dialog.
    std::optional<QString> End();

    /// True when a dialog has been closed with OK since `Begin`.
    bool WasAccepted() const { return m_bAccepted; }

protected:
    bool eventFilter(QObject* pObject, QEvent* pEvent) override;

private:
    int Drive(CPaintDialog& dialog);
    void Fail(const QString& strReason);

    std::optional<DialogPlan> m_plan;
    int m_nDialogs = 0;
    bool m_bAccepted = false;
    QString m_strFailure;
};

} // namespace kestrune
