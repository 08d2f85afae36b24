#include "ui/MessageSink.h"

#include "base/Log.h"
#include "base/StringTable.h"
#include "ui/Dialog.h"

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>

#include <span>

namespace kestrune {

namespace {

struct ButtonRow {
    MessageAnswer nAnswer;
    int nTextId;
    QMessageBox::ButtonRole role;
};
constexpr ButtonRow c_ok{MessageAnswer::Ok, IDS_BUTTON_OK, QMessageBox::AcceptRole};
constexpr ButtonRow c_cancel{MessageAnswer::Cancel, IDS_BUTTON_CANCEL, QMessageBox::RejectRole};
constexpr ButtonRow c_yes{MessageAnswer::Yes, IDS_BUTTON_YES, QMessageBox::YesRole};
constexpr ButtonRow c_no{MessageAnswer::No, IDS_BUTTON_NO, QMessageBox::NoRole};

// The last row is the one that Escape presses.
constexpr ButtonRow c_aOk[] = {c_ok};
constexpr ButtonRow c_aOkCancel[] = {c_ok, c_cancel};
constexpr ButtonRow c_aYesNo[] = {c_yes, c_no};
constexpr ButtonRow c_aYesNoCancel[] = {c_yes, c_no, c_cancel};

std::span<const ButtonRow> ButtonsOf(MessageButtons buttons)
{
    switch (buttons) {
    case MessageButtons::OkCancel:
        return c_aOkCancel;
    case MessageButtons::YesNo:
        return c_aYesNo;
    case MessageButtons::YesNoCancel:
        return c_aYesNoCancel;
    case MessageButtons::Ok:
        break;
    }
    return c_aOk;
}

} // namespace

CWindowMessageSink::CWindowMessageSink(QWidget* pParent, Status status)
    : m_pParent(pParent)
    , m_status(std::move(status))
{
}

MessageAnswer CWindowMessageSink::Message(const std::string& strText, MessageButtons buttons, MessageAnswer nDefault)
{
    return Ask(strText, buttons, nDefault, buttons == MessageButtons::Ok ? QMessageBox::Warning : QMessageBox::Question);
}

void CWindowMessageSink::Stop(const std::string& strText)
{
    Ask(strText, MessageButtons::Ok, MessageAnswer::Ok, QMessageBox::Critical);
}

/// `nIcon` is a `QMessageBox::Icon`.
MessageAnswer CWindowMessageSink::Ask(const std::string& strText, MessageButtons buttons, MessageAnswer nDefault, int nIcon)
{
    // Over a dialog the box belongs to the dialog, else it could open behind it.
    QWidget* pOver = QApplication::activeModalWidget();
    QMessageBox box(pOver ? pOver : m_pParent.data());
    box.setWindowTitle(TextOf(IDS_PRODUCT_NAME));
    box.setTextFormat(Qt::PlainText); // a file name may hold angle brackets
    box.setText(QString::fromStdString(strText));
    box.setIcon(static_cast<QMessageBox::Icon>(nIcon));

    const std::span<const ButtonRow> rows = ButtonsOf(buttons);
    QAbstractButton* pLast = nullptr;
    for (const ButtonRow& row : rows) {
        QPushButton* pButton = box.addButton(TextOf(row.nTextId), row.role);
        if (row.nAnswer == nDefault)
            box.setDefaultButton(pButton);
        pButton->setProperty("answer", static_cast<int>(row.nAnswer));
        pLast = pButton;
    }
    box.setEscapeButton(pLast);
    box.exec();
    const QAbstractButton* pClicked = box.clickedButton() ? box.clickedButton() : pLast;
    return static_cast<MessageAnswer>(pClicked->property("answer").toInt());
}

void CWindowMessageSink::StatusText(const std::string& strText)
{
    if (m_status)
        m_status(QString::fromStdString(strText));
    else
        LogWarning("status: " + strText);
}

} // namespace kestrune
