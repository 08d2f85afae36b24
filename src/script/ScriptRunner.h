#pragma once

#include "script/ScriptContext.h"

#include <QTextStream>

namespace kestrune {

/// Runs a script over the application, statement by statement, until the end, `quit` or the first line that fails.
class CScriptRunner {
public:
    /// `app` is started. Output goes to standard output, the reason of a failure to standard error.
    /// `strFile` is how the reason of a failure names the script.
    CScriptRunner(CPaintApp& app, const QString& strFile, const QStringList& args);
    ~CScriptRunner();

    /// The exit status: 0, or 1 after a failed line.
    int Run(QTextStream& script);

private:
    StatementResult RunLine(const QString& strLine);
    void Print(const QString& strLine);

    QString m_strFile;
    QStringList m_args;
    CMessageSink& m_windowSink;
    QTextStream m_out;
    CScriptMessages m_messages;
    CScriptDialogs m_dialogs;
    CScriptContext m_context;
};

} // namespace kestrune
