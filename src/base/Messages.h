#pragma once

#include <string>

namespace kestrune {

enum class MessageButtons { Ok, OkCancel, YesNo, YesNoCancel };
enum class MessageAnswer { Ok, Cancel, Yes, No };

/// How the program says a text to the user and asks a question: a message box, or a script's output.
class CMessageSink {
public:
    virtual ~CMessageSink() = default;

    /// Shows `strText` with the buttons and waits for the answer. `nDefault` is the button that Enter presses.
    virtual MessageAnswer Message(const std::string& strText, MessageButtons buttons, MessageAnswer nDefault) = 0;

    /// Says that something is missing without which the program cannot do its work: the same with the sign of a stop.
    virtual void Stop(const std::string& strText) { Message(strText, MessageButtons::Ok, MessageAnswer::Ok); }

    /// A quiet line in the status bar; nothing waits for it.
    virtual void StatusText(const std::string& strText) = 0;
};

/// The sink in force; one that writes to the log until the application sets its own. Never null.
CMessageSink& Messages();
/// Sets the sink (not owned; null returns to the log).
void SetMessageSink(CMessageSink* pSink);

/// Says a text with one OK button.
void SayMessage(const std::string& strText);
/// Says the text of that number in the string table.
void SayMessage(int nStringId);
/// Says it with the sign of a stop.
void SayStop(int nStringId);

} // namespace kestrune
