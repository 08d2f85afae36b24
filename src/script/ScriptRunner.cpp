#include "script/ScriptRunner.h"

#include "script/ScriptFrame.h"
#include "script/ScriptWords.h"

#include <QCoreApplication>
#include <QEvent>

#include <cstdio>
#include <new>

namespace kestrune {

namespace {

const StatementRow* FindStatement(const QString& strName)
{
    for (const StatementRow& row : Statements())
        if (strName == QLatin1String(row.strName))
            return &row;
    return nullptr;
}

QString CountText(const StatementRow& row)
{
    if (row.nMaxWords == row.nMinWords)
        return row.nMinWords == 1 ? QStringLiteral("1 word") : QStringLiteral("%1 words").arg(row.nMinWords);
    if (row.nMaxWords < 0)
        return QStringLiteral("%1 or more words").arg(row.nMinWords);
    return QStringLiteral("%1 to %2 words").arg(row.nMinWords).arg(row.nMaxWords);
}

/// What the program itself has queued: layouts, deletions, the state of bars. Timers and the window system wait for `wait`.
void Settle()
{
    QCoreApplication::sendPostedEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

} // namespace

CScriptRunner::CScriptRunner(CPaintApp& app, const QString& strFile, const QStringList& args)
    : m_strFile(strFile)
    , m_args(args)
    , m_windowSink(Messages())
    , m_out(stdout)
    , m_messages(m_windowSink, [this](const std::string& strText) { Print(QString::fromStdString(strText)); })
    , m_context{app, m_messages, m_dialogs, [this](const QString& strText) { Print(strText); }}
{
    SetMessageSink(&m_messages);
}

CScriptRunner::~CScriptRunner()
{
    SetMessageSink(&m_windowSink);
}

void CScriptRunner::Print(const QString& strLine)
{
    m_out << strLine << Qt::endl; // flushed: whoever reads along sees it before the next statement runs
}

StatementResult CScriptRunner::RunLine(const QString& strLine)
{
    QString strError;
    const std::optional<QStringList> words = SplitScriptLine(strLine, m_args, strError);
    if (!words)
        return strError;
    if (words->isEmpty())
        return {};
    const StatementRow* pRow = FindStatement(words->first());
    if (!pRow)
        return QStringLiteral("there is no statement \"%1\"").arg(words->first());
    if (!pRow->run)
        return QStringLiteral("not yet available: %1").arg(words->first());
    const int nWords = static_cast<int>(words->size()) - 1;
    if (nWords < pRow->nMinWords || (pRow->nMaxWords >= 0 && nWords > pRow->nMaxWords))
        return QStringLiteral("%1 takes %2 after it, not %3").arg(words->first(), CountText(*pRow)).arg(nWords);
    try {
        return pRow->run(m_context, words->mid(1));
    } catch (const std::bad_alloc&) {
        return QStringLiteral("memory is exhausted");
    }
}

int CScriptRunner::Run(QTextStream& script)
{
    int nStatus = 0;
    Settle(); // what the start has put off comes before the first line
    LoadBoxes(m_context.app);
    Settle();
    QString strLine;
    for (int nLine = 1; !m_context.bQuit && script.readLineInto(&strLine); nLine++) {
        const StatementResult failure = RunLine(strLine);
        Settle();
        if (failure) {
            const QString strText = QStringLiteral("%1:%2: %3\n").arg(m_strFile).arg(nLine).arg(*failure);
            std::fputs(strText.toUtf8().constData(), stderr);
            nStatus = 1;
            break;
        }
    }
    if (!m_context.bQuit) { // the end of a script keeps no picture that it did not save, and asks nothing
        DropDocuments(m_context.app);
        Settle();
        statements::Quit(m_context, {});
        Settle();
    }
    return nStatus;
}

} // namespace kestrune
