#include "app/CommandTable.h"
#include "script/ScriptContext.h"
#include "script/ScriptFrame.h"
#include "ui/ControlValue.h"

#include <QWidget>

#include <limits>

namespace kestrune::statements {

namespace {

/// Fills in the colour picker that a command of the colour box opens.
StatementResult PickColor(CScriptContext& context, int nCommand, const QStringList& words)
{
    constexpr const char* c_aKeys[] = {"Red", "Green", "Blue"};
    DialogPlan plan;
    for (qsizetype i = 0; i < words.size(); i++) {
        int nValue = 0;
        if (const StatementResult failure = ReadNumber(words[i], 0, 255, nValue))
            return failure;
        plan.keys.append({QString::fromLatin1(c_aKeys[i]), QString::number(nValue)});
    }
    return context.RunCommand(nCommand, std::move(plan));
}

} // namespace

StatementResult Option(CScriptContext& context, const QStringList& words)
{
    QObject* pControl = FindOptionControl(context.app, words[0], words[1]);
    if (!pControl)
        return QStringLiteral("no option bar has the setting \"%1\" \"%2\"").arg(words[0], words[1]);
    // A script may say a number before it sets the check box without which the number is grey.
    const auto* pWidget = qobject_cast<QWidget*>(pControl);
    QWidget* pPanel = pWidget && !pWidget->isEnabled() ? pWidget->parentWidget() : nullptr;
    if (pPanel)
        pPanel->setEnabled(true);
    const StatementResult result = PutIntoControl(*pControl, words[2]);
    if (pPanel)
        pPanel->setEnabled(false);
    return result;
}

StatementResult Pattern(CScriptContext& context, const QStringList& words)
{
    if (words[0] == u"none" && words.size() > 1)
        return QStringLiteral("no pattern has no percent");
    if (!ChoosePattern(context.app, words[0]))
        return QStringLiteral("\"%1\" could not be opened").arg(words[0]);
    return words.size() > 1 ? PutIntoControl(*PatternPercentControl(context.app), words[1]) : StatementResult{};
}

StatementResult Texture(CScriptContext& context, const QStringList& words)
{
    return ChooseTexture(context.app, words[0]) ? StatementResult{} : QStringLiteral("\"%1\" could not be opened").arg(words[0]);
}

StatementResult Foreground(CScriptContext& context, const QStringList& words)
{
    return PickColor(context, ID_COLOR_FOREGROUND, words);
}

StatementResult Background(CScriptContext& context, const QStringList& words)
{
    return PickColor(context, ID_COLOR_BACKGROUND, words);
}

StatementResult Undo(CScriptContext& context, const QStringList&)
{
    return context.RunCommand(ID_EDIT_UNDO, std::nullopt);
}

StatementResult Redo(CScriptContext& context, const QStringList&)
{
    return context.RunCommand(ID_EDIT_REDO, std::nullopt);
}

StatementResult History(CScriptContext& context, const QStringList& words)
{
    int nRow = 0;
    if (const StatementResult failure = ReadNumber(words[0], 0, std::numeric_limits<int>::max(), nRow))
        return failure;
    if (!context.Image())
        return QStringLiteral("no document is open");
    if (!ClickHistoryRow(context.app, nRow))
        return QStringLiteral("the history has no row %1").arg(nRow);
    return {};
}

StatementResult PrintHistory(CScriptContext& context, const QStringList&)
{
    if (!context.Image())
        return QStringLiteral("no document is open");
    for (const QString& strRow : HistoryTexts(context.app))
        context.print(strRow);
    return {};
}

} // namespace kestrune::statements
