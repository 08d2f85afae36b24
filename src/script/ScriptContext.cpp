#include "script/ScriptContext.h"

#include "app/CommandTable.h"
#include "view/PaintView.h"

namespace kestrune {

CPaintView* CScriptContext::View() const
{
    CPaintView* pView = app.ActiveView();
    return pView && pView->GetDocument().m_pImage ? pView : nullptr;
}

CPaintDoc* CScriptContext::Document() const
{
    const CPaintView* pView = View();
    return pView ? &pView->GetDocument() : nullptr;
}

CPaintImage* CScriptContext::Image() const
{
    const CPaintDoc* pDoc = Document();
    return pDoc ? pDoc->m_pImage.get() : nullptr;
}

StatementResult CScriptContext::RunCommand(int nId, std::optional<DialogPlan> plan)
{
    const bool bEnabled = app.QueryCommand(nId).bEnabled;
    if (!bEnabled && !FindCommand(nId))
        return QStringLiteral("there is no command %1").arg(nId);
    if (!bEnabled)
        return QStringLiteral("the command %1 is disabled").arg(nId);
    dialogs.Begin(std::move(plan));
    const bool bRan = app.ExecuteCommand(nId);
    if (const StatementResult failure = dialogs.End())
        return failure;
    return bRan ? StatementResult{} : QStringLiteral("the command %1 did not run").arg(nId);
}

StatementResult ReadNumber(const QString& strWord, int nMin, int nMax, int& nValue)
{
    bool bNumber = false;
    nValue = strWord.toInt(&bNumber);
    if (!bNumber)
        return QStringLiteral("\"%1\" is no whole number").arg(strWord);
    if (nValue < nMin || nValue > nMax)
        return QStringLiteral("%1 is not in %2 to %3").arg(nValue).arg(nMin).arg(nMax);
    return {};
}

} // namespace kestrune
