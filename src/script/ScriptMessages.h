#pragma once

#include "base/Messages.h"

#include <functional>
#include <optional>

namespace kestrune {

/// Messages of a script: the text is printed as `message: TEXT` (line ends as `\n`), and the box is answered at once, by its
/// default button or by what the last `answer` statement said.
class CScriptMessages final : public CMessageSink {
public:
    using Print = std::function<void(const std::string&)>;

    /// Quiet lines go on to `inner`, the window's own sink.
    CScriptMessages(CMessageSink& inner, Print print);

    MessageAnswer Message(const std::string& strText, MessageButtons buttons, MessageAnswer nDefault) override;
    void StatusText(const std::string& strText) override { m_inner.StatusText(strText); }

    /// How the next box is answered. OK also presses Yes, and Cancel No, in a box that has no such button; an answer that fits
    /// no button of the box leaves it to its default button.
    void SetAnswer(MessageAnswer nAnswer) { m_nAnswer = nAnswer; }

private:
    CMessageSink& m_inner;
    Print m_print;
    std::optional<MessageAnswer> m_nAnswer;
};

/// A text in one line: line ends as `\n`.
std::string OneLine(const std::string& strText);

} // namespace kestrune
