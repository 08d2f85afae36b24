#include "script/ScriptMessages.h"

#include <utility>
#include <initializer_list>

namespace kestrune {

namespace {

bool HasButton(MessageButtons buttons, MessageAnswer nAnswer)
{
    switch (buttons) {
    case MessageButtons::Ok:
        return nAnswer == MessageAnswer::Ok;
    case MessageButtons::OkCancel:
        return nAnswer == MessageAnswer::Ok || nAnswer == MessageAnswer::Cancel;
    case MessageButtons::YesNo:
        return nAnswer == MessageAnswer::Yes || nAnswer == MessageAnswer::No;
    case MessageButtons::YesNoCancel:
        return nAnswer != MessageAnswer::Ok;
    }
    return false;
}

MessageAnswer Counterpart(MessageAnswer nAnswer)
{
    switch (nAnswer) {
    case MessageAnswer::Ok:
        return MessageAnswer::Yes;
    case MessageAnswer::Yes:
        return MessageAnswer::Ok;
    case MessageAnswer::Cancel:
        return MessageAnswer::No;
    case MessageAnswer::No:
        return MessageAnswer::Cancel;
    }
    return nAnswer;
}

} // namespace

std::string OneLine(const std::string& strText)
{
    std::string strLine;
    for (const char c : strText) {
        if (c == '\n')
            strLine += "\\n";
        else if (c != '\r')
            strLine += c;
    }
    return strLine;
}

CScriptMessages::CScriptMessages(CMessageSink& inner, Print print)
    : m_inner(inner)
    , m_print(std::move(print))
{
}

MessageAnswer CScriptMessages::Message(const std::string& strText, MessageButtons buttons, MessageAnswer nDefault)
{
    m_print("message: " + OneLine(strText));
    const MessageAnswer nWanted = std::exchange(m_nAnswer, std::nullopt).value_or(nDefault);
    for (const MessageAnswer nAnswer : {nWanted, Counterpart(nWanted)})
        if (HasButton(buttons, nAnswer))
            return nAnswer;
    return nDefault;
}

} // namespace kestrune
