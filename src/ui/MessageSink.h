#pragma once

#include "base/Messages.h"

#include <QPointer>
#include <QWidget>

#include <functional>

namespace kestrune {

/// Messages as boxes over the window, titled with the product's name, and quiet lines in its status bar.
class CWindowMessageSink final : public CMessageSink {
public:
    using Status = std::function<void(const QString&)>;

    /// `pParent` is the main frame; `status` shows a line in its status bar (none: the line goes to the log).
    CWindowMessageSink(QWidget* pParent, Status status);

    /// Escape and the close button press the last button of the row: Cancel where there is one, else No, else Ok.
    MessageAnswer Message(const std::string& strText, MessageButtons buttons, MessageAnswer nDefault) override;
    void Stop(const std::string& strText) override;
    void StatusText(const std::string& strText) override;

private:
    MessageAnswer Ask(const std::string& strText, MessageButtons buttons, MessageAnswer nDefault, int nIcon);

    QPointer<QWidget> m_pParent;
    Status m_status;
};

} // namespace kestrune
