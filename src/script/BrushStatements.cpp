#include "app/FrameBoxes.h"
#include "app/MainFrame.h"
#include "resources/BrushPrepare.h"
#include "resources/gui/BrushBox.h"
#include "script/ScriptContext.h"
#include "ui/ControlValue.h"
#include "ui/NumEdit.h"

#include <algorithm>
#include <limits>

namespace kestrune::statements {

namespace {

CDlgBrushBox& Box(CScriptContext& context)
{
    return context.app.MainFrame().Boxes().Brushes();
}

} // namespace

StatementResult Brush(CScriptContext& context, const QStringList& words)
{
    int nBrush = 0;
    if (const StatementResult failure = ReadNumber(words[0], 0, std::numeric_limits<int>::max(), nBrush))
        return failure;
    if (!Box(context).ApplyBrush(nBrush))
        return QStringLiteral("the list has no brush %1").arg(nBrush);
    return {};
}

StatementResult BrushFile(CScriptContext& context, const QStringList& words)
{
    return context.RunCommand(ID_BRUSH_OPEN, DialogPlan{{{QStringLiteral("Path"), words[0]}}});
}

StatementResult BrushNew(CScriptContext& context, const QStringList& words)
{
    constexpr const char* c_aKeys[] = {"Radius", "Hardness", "Angle", "Roundness"};
    DialogPlan plan;
    for (qsizetype i = 0; i < words.size(); i++)
        plan.keys.append({QString::fromLatin1(c_aKeys[i]), words[i]});
    return context.RunCommand(ID_BRUSH_NEW, std::move(plan)); // a new brush is applied at once
}

StatementResult SoftEdge(CScriptContext& context, const QStringList& words)
{
    constexpr int c_nTyped = 9999;
    int nWidth = 0;
    if (const StatementResult failure = ReadNumber(words[0], -c_nTyped, c_nTyped, nWidth))
        return failure;
    // The box limits what is typed into it, where a dialog would refuse it.
    if (const StatementResult failure = PutIntoControl(Box(context).SoftEdge(), QString::number(std::clamp(nWidth, 0, c_nMaxSoftEdge))))
        return failure;
    Box(context).SettleBrush(); // no stroke of a person comes sooner than the timer either
    return {};
}

StatementResult Response(CScriptContext& context, const QStringList& words)
{
    if (words.size() % 2)
        return QStringLiteral("a point has two numbers");
    // The end points are those of a curve just reset: what an earlier line has bent does not shine through.
    DialogPlan plan{{{QStringLiteral("Reset"), QStringLiteral("1")}}};
    for (qsizetype i = 0; i < words.size(); i += 2)
        plan.keys.append({QStringLiteral("Point"), words[i] + u',' + words[i + 1]});
    context.dialogs.Begin(std::move(plan));
    Box(context).EditCurve();
    if (const StatementResult failure = context.dialogs.End())
        return failure;
    Box(context).SettleBrush();
    return {};
}

} // namespace kestrune::statements
