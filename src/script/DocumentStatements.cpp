#include "script/ScriptContext.h"

#include "app/CommandTable.h"
#include "script/ScriptFrame.h"

#include <QFile>
#include <QFileInfo>

#include <limits>

namespace kestrune::statements {

namespace {

constexpr int c_nMaxId = std::numeric_limits<int>::max();

struct WordValue {
    const char* strWord;
    const char* strKey;
    const char* strValue;
};
constexpr WordValue c_aNewWords[] = {
    {"white", "Kind", "0"},   {"black", "Kind", "1"}, {"background", "Kind", "2"},
    {"bitmap", "Color", "0"}, {"grey", "Color", "1"}, {"rgb", "Color", "2"},
};

const WordValue* FindNewWord(const QString& strWord)
{
    for (const WordValue& row : c_aNewWords)
        if (strWord == QLatin1String(row.strWord))
            return &row;
    return nullptr;
}

StatementResult NoDocument()
{
    return QStringLiteral("no document is open");
}

/// A command that writes a file: a box that asked nothing told that it could not be written.
StatementResult RunSaving(CScriptContext& context, int nId, std::optional<DialogPlan> plan)
{
    const int nBefore = context.messages.Statements();
    if (const StatementResult failure = context.RunCommand(nId, std::move(plan)))
        return failure;
    if (context.messages.Statements() != nBefore)
        return QStringLiteral("not saved: ") + QString::fromStdString(OneLine(context.messages.LastText()));
    return {};
}

} // namespace

StatementResult New(CScriptContext& context, const QStringList& words)
{
    // Unit first: the numbers are pixels. What is not said stays as the dialog shows it, the values of the last new picture.
    DialogPlan plan{{{"Unit", "0"}, {"Width", words[0]}, {"Height", words[1]}}, false};
    for (const QString& strWord : words.mid(2)) {
        const WordValue* pRow = FindNewWord(strWord);
        if (!pRow)
            return QStringLiteral("\"%1\" is neither a background nor a picture type").arg(strWord);
        plan.keys.append({QLatin1String(pRow->strKey), QLatin1String(pRow->strValue)});
    }
    const std::size_t nBefore = context.app.ChildFrames().size();
    if (const StatementResult failure = context.RunCommand(ID_FILE_NEW, plan))
        return failure;
    return context.app.ChildFrames().size() > nBefore ? StatementResult{} : QStringLiteral("no picture was made");
}

StatementResult Open(CScriptContext& context, const QStringList& words)
{
    const std::filesystem::path path(QFile::encodeName(words[0]).toStdString());
    context.dialogs.Begin(std::nullopt);
    const CPaintDoc* pDoc = context.app.OpenDocumentFile(path);
    if (const StatementResult failure = context.dialogs.End())
        return failure;
    return pDoc ? StatementResult{} : QStringLiteral("\"%1\" could not be opened").arg(words[0]);
}

StatementResult Save(CScriptContext& context, const QStringList&)
{
    return context.Document() ? RunSaving(context, ID_FILE_SAVE, std::nullopt) : NoDocument();
}

StatementResult SaveAs(CScriptContext& context, const QStringList& words)
{
    return context.Document() ? RunSaving(context, ID_FILE_SAVE_AS, DialogPlan{{{"Path", words[0]}}, false}) : NoDocument();
}

StatementResult Close(CScriptContext& context, const QStringList&)
{
    if (!context.app.ActiveChild())
        return NoDocument();
    context.dialogs.Begin(std::nullopt);
    const bool bClosed = CloseActiveChild(context.app);
    if (const StatementResult failure = context.dialogs.End())
        return failure;
    return bClosed ? StatementResult{} : QStringLiteral("the document stayed open");
}

StatementResult Activate(CScriptContext& context, const QStringList& words)
{
    int nIndex = 0;
    if (const StatementResult failure = ReadNumber(words[0], 0, c_nMaxId, nIndex))
        return failure;
    return ActivateChild(context.app, nIndex) ? StatementResult{} : QStringLiteral("there is no document %1").arg(nIndex);
}

StatementResult Command(CScriptContext& context, const QStringList& words)
{
    int nId = 0;
    if (const StatementResult failure = ReadNumber(words[0], 1, c_nMaxId, nId))
        return failure;
    DialogPlan plan;
    for (const QString& strWord : words.mid(1)) {
        const qsizetype nEquals = strWord.indexOf(u'=');
        if (strWord == u"cancel" && !plan.bCancel)
            plan.bCancel = true;
        else if (nEquals > 0 && !plan.bCancel)
            plan.keys.append({strWord.left(nEquals), strWord.mid(nEquals + 1)});
        else
            return QStringLiteral("\"%1\" is not KEY=VALUE").arg(strWord);
    }
    return context.RunCommand(nId, plan);
}

StatementResult Answer(CScriptContext& context, const QStringList& words)
{
    constexpr std::pair<const char*, MessageAnswer> aAnswers[] = {
        {"ok", MessageAnswer::Ok}, {"cancel", MessageAnswer::Cancel}, {"yes", MessageAnswer::Yes}, {"no", MessageAnswer::No}};
    for (const auto& [strName, nAnswer] : aAnswers) {
        if (words[0] == QLatin1String(strName)) {
            context.messages.SetAnswer(nAnswer);
            return {};
        }
    }
    return QStringLiteral("\"%1\" is none of ok, cancel, yes, no").arg(words[0]);
}

StatementResult Quit(CScriptContext& context, const QStringList&)
{
    if (const StatementResult failure = context.RunCommand(ID_APP_EXIT, std::nullopt))
        return failure;
    context.bQuit = !IsFrameOpen(context.app);
    return context.bQuit ? StatementResult{} : QStringLiteral("the program stayed open");
}

} // namespace kestrune::statements
