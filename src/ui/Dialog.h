#pragma once

#include <QBoxLayout>
#include <QDialog>
#include <QHash>
#include <QPushButton>
#include <QString>

#include <functional>
#include <optional>

namespace kestrune {

/// Base of every dialog of the program. Each control that a script can fill in is registered under its key; when a script
/// drives the program, `DoModal` puts the script's values into the controls as if typed and presses OK or Cancel.
class CPaintDialog : public QDialog {
    Q_OBJECT
public:
    explicit CPaintDialog(QWidget* pParent = nullptr);

    /// Runs the dialog: QDialog::Accepted or Rejected. With a driver installed the driver fills in and answers, no window shows.
    int DoModal();

    /// OK. The dialog stays, after a message, while one of its number boxes holds no number or one out of range.
    void accept() override;

    /// Puts a value into the control of that key as if typed. An error text when the key is unknown or the control refuses it.
    /// Number boxes (a sum is worked out), spin boxes, line edits, combo boxes (by index), check boxes (0, 1), radio groups (by id) and sliders are understood;
    /// a dialog with a graph overrides it for its own keys. A combo box also takes the data or the text of one of its rows.
    virtual std::optional<QString> SetKey(const QString& strKey, const QString& strValue);

    /// What drives dialogs in place of a person; null when a person does.
    using Driver = std::function<int(CPaintDialog&)>;
    static void SetDriver(Driver driver);
    static bool IsDriven();

protected:
    /// `pControl` is a widget or a QButtonGroup; it lives as long as the dialog.
    void RegisterKey(const QString& strKey, QObject* pControl);

    /// Where the contents go: preview first (left), then columns of controls. The first call lays the dialog out with the
    /// measures of every dialog and puts the buttons 확인 and 취소 at the lower right.
    QHBoxLayout* Body();
    /// Left of the buttons 확인 and 취소: further buttons, or a quiet line.
    QHBoxLayout* ButtonRow();
    QPushButton* OkButton();
    QPushButton* CancelButton();

private:
    void BuildFrame();
    /// OK and Cancel behind everything else, as they are read.
    void SettleTabOrder();

    QHash<QString, QObject*> m_mapKeys;
    QHBoxLayout* m_pBody = nullptr;
    QHBoxLayout* m_pButtonRow = nullptr;
    QSpacerItem* m_pTitleRoom = nullptr; ///< as wide as the title
    QPushButton* m_pOk = nullptr;
    QPushButton* m_pCancel = nullptr;
};

/// The text of that number in the string table.
QString TextOf(int nStringId);

} // namespace kestrune
