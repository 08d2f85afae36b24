#include "script/ScriptContext.h"

#include "app/CommandTable.h"
#include "doc/files/ImageFile.h"
#include "script/ScriptFrame.h"

#include <QFile>

#include <limits>

#include <sys/stat.h>

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

/// What tells that a file was written anew: another file stands under the name, or this one was changed, and it holds something.
struct FileStamp {
    ino_t nFile = 0;
    off_t nBytes = 0;
    std::int64_t nChanged = 0; ///< nanoseconds
    bool operator==(const FileStamp&) const = default;
};

FileStamp StampOf(const std::filesystem::path& path)
{
    struct stat info;
    if (::stat(path.c_str(), &info) != 0)
        return {};
    return {info.st_ino, info.st_size, info.st_ctim.tv_sec * std::int64_t{1'000'000'000} + info.st_ctim.tv_nsec};
}

/// The names under which a picture may be saved: with the extension of the dialog's row when it has none.
std::vector<std::filesystem::path> TargetsOf(const std::filesystem::path& path)
{
    std::vector<std::filesystem::path> targets{path};
    for (const ImageFormatRow& row : ImageFormats())
        if (row.nSaveIndex != 0 && path.filename().string().find('.') == std::string::npos)
            targets.push_back(path.string() + "." + std::string(row.saveExtension));
    return targets;
}

/// Runs a command that writes a file. Its writer says quietly or not at all that it has failed; the file tells.
StatementResult RunSaving(CScriptContext& context, int nId, std::optional<DialogPlan> plan, const std::filesystem::path& path)
{
    const std::vector<std::filesystem::path> targets = TargetsOf(path);
    std::vector<FileStamp> before;
    for (const std::filesystem::path& target : targets)
        before.push_back(StampOf(target));
    if (const StatementResult failure = context.RunCommand(nId, std::move(plan)))
        return failure;
    for (std::size_t i = 0; i < targets.size(); i++)
        if (const FileStamp after = StampOf(targets[i]); after.nBytes > 0 && after != before[i])
            return {};
    return QStringLiteral("\"%1\" was not written").arg(QString::fromStdString(path.string()));
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
    const CPaintDoc* pDoc = context.Document();
    return pDoc ? RunSaving(context, ID_FILE_SAVE, std::nullopt, pDoc->GetPathName()) : NoDocument();
}

StatementResult SaveAs(CScriptContext& context, const QStringList& words)
{
    if (!context.Document())
        return NoDocument();
    const std::filesystem::path path(QFile::encodeName(words[0]).toStdString());
    return RunSaving(context, ID_FILE_SAVE_AS, DialogPlan{{{"Path", words[0]}}, false}, path);
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

StatementResult Copy(CScriptContext& context, const QStringList&)
{
    return context.RunCommand(ID_EDIT_COPY, std::nullopt);
}

StatementResult Cut(CScriptContext& context, const QStringList&)
{
    return context.RunCommand(ID_EDIT_CUT, std::nullopt);
}

StatementResult Paste(CScriptContext& context, const QStringList&)
{
    return context.RunCommand(ID_PASTE_HERE, std::nullopt);
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
