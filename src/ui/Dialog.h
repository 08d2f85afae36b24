#pragma once

#include <QDialog>
#include <QHash>
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

    /// Puts a value into the control of that key as if typed. An error text when the key is unknown or the control refuses it.
    /// Spin boxes, line edits, combo boxes (by index), check boxes (0, 1), radio groups (by id) and sliders are understood;
    /// a dialog with a graph overrides it for its own keys.
    virtual std::optional<QString> SetKey(const QString& strKey, const QString& strValue);

    /// What drives dialogs in place of a person; null when a person does.
    using Driver = std::function<int(CPaintDialog&)>;
    static void SetDriver(Driver driver);

protected:
    void RegisterKey(const QString& strKey, QWidget* pControl);

private:
    QHash<QString, QWidget*> m_mapKeys;
};

} // namespace kestrune
