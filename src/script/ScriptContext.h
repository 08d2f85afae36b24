#pragma once

#include "app/PaintApp.h"
#include "script/ScriptDialogs.h"
#include "script/ScriptMessages.h"

#include <QPoint>
#include <QStringList>

#include <functional>
#include <optional>
#include <span>

namespace kestrune {

/// Nothing when a statement ran, else why it failed.
using StatementResult = std::optional<QString>;

/// What the statements of a script work on: the application as a person meets it, and what stands between two statements
/// (the button that is held, the modifier keys, the last point).
struct CScriptContext {
    CPaintApp& app;
    CScriptMessages& messages;
    CScriptDialogs& dialogs;
    std::function<void(const QString&)> print; ///< one line of output

    Qt::MouseButton nHeldButton = Qt::NoButton;
    Qt::KeyboardModifiers heldModifiers{}; ///< by keydown and keyup
    CPoint ptLast{};                     ///< image pixels
    bool bQuit = false;

    /// The active view with a picture; null when no document is open.
    CPaintView* View() const;
    CPaintImage* Image() const;
    CPaintDoc* Document() const;

    /// Routes a command id as a menu would, its dialogs filled in from the plan. Fails when the id is unknown or disabled,
    /// or a dialog refuses its values.
    StatementResult RunCommand(int nId, std::optional<DialogPlan> plan);
};

/// One statement: `nMinWords` to `nMaxWords` words after its name (-1: any number).
struct StatementRow {
    const char* strName;
    int nMinWords;
    int nMaxWords;
    StatementResult (*run)(CScriptContext& context, const QStringList& words); ///< null: not yet available
};

/// All statements of the language.
std::span<const StatementRow> Statements();

// Handlers of the rows, by what they are about.
namespace statements {

StatementResult New(CScriptContext& context, const QStringList& words);
StatementResult Open(CScriptContext& context, const QStringList& words);
StatementResult Save(CScriptContext& context, const QStringList& words);
StatementResult SaveAs(CScriptContext& context, const QStringList& words);
StatementResult Close(CScriptContext& context, const QStringList& words);
StatementResult Activate(CScriptContext& context, const QStringList& words);
StatementResult Command(CScriptContext& context, const QStringList& words);
StatementResult Copy(CScriptContext& context, const QStringList& words);
StatementResult Cut(CScriptContext& context, const QStringList& words);
StatementResult Paste(CScriptContext& context, const QStringList& words);
StatementResult Answer(CScriptContext& context, const QStringList& words);
StatementResult Quit(CScriptContext& context, const QStringList& words);

StatementResult Press(CScriptContext& context, const QStringList& words);
StatementResult Move(CScriptContext& context, const QStringList& words);
StatementResult Release(CScriptContext& context, const QStringList& words);
StatementResult DoubleClick(CScriptContext& context, const QStringList& words);
StatementResult KeyDown(CScriptContext& context, const QStringList& words);
StatementResult KeyUp(CScriptContext& context, const QStringList& words);
StatementResult Wait(CScriptContext& context, const QStringList& words);
StatementResult Zoom(CScriptContext& context, const QStringList& words);

StatementResult Option(CScriptContext& context, const QStringList& words);
StatementResult Pattern(CScriptContext& context, const QStringList& words);
StatementResult Texture(CScriptContext& context, const QStringList& words);
StatementResult Foreground(CScriptContext& context, const QStringList& words);
StatementResult Background(CScriptContext& context, const QStringList& words);
StatementResult Brush(CScriptContext& context, const QStringList& words);
StatementResult BrushFile(CScriptContext& context, const QStringList& words);
StatementResult BrushNew(CScriptContext& context, const QStringList& words);
StatementResult SoftEdge(CScriptContext& context, const QStringList& words);
StatementResult Response(CScriptContext& context, const QStringList& words);
StatementResult Undo(CScriptContext& context, const QStringList& words);
StatementResult Redo(CScriptContext& context, const QStringList& words);
StatementResult History(CScriptContext& context, const QStringList& words);
StatementResult PrintHistory(CScriptContext& context, const QStringList& words);

StatementResult PrintBounds(CScriptContext& context, const QStringList& words);
StatementResult PrintBoundary(CScriptContext& context, const QStringList& words);
StatementResult PrintFloat(CScriptContext& context, const QStringList& words);

StatementResult Dump(CScriptContext& context, const QStringList& words);
StatementResult Print(CScriptContext& context, const QStringList& words);
StatementResult Screenshot(CScriptContext& context, const QStringList& words);

} // namespace statements

/// A whole number in a range, or the reason why the word is none.
StatementResult ReadNumber(const QString& strWord, int nMin, int nMax, int& nValue);

} // namespace kestrune
