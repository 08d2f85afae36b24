#include "script/ScriptContext.h"

namespace kestrune::statements {

namespace {

StatementResult NoDocument()
{
    return QStringLiteral("no document is open");
}

QString Join(std::initializer_list<int> numbers)
{
    QStringList words;
    for (const int n : numbers)
        words << QString::number(n);
    return words.join(u' ');
}

} // namespace

StatementResult PrintBounds(CScriptContext& context, const QStringList&)
{
    CPaintImage* pImage = context.Image();
    if (!pImage)
        return NoDocument();
    CRect rc;
    const bool bAny = pImage->GetMaskBounds(rc.left, rc.top, rc.right, rc.bottom);
    context.print(bAny ? Join({rc.left, rc.top, rc.right, rc.bottom}) : QStringLiteral("empty"));
    return {};
}

StatementResult PrintBoundary(CScriptContext& context, const QStringList&)
{
    CPaintImage* pImage = context.Image();
    if (!pImage)
        return NoDocument();
    for (const MaskSegment& segment : pImage->GetBoundary())
        context.print(Join({segment.x1, segment.y1, segment.x2, segment.y2, segment.open}));
    return {};
}

StatementResult PrintFloat(CScriptContext& context, const QStringList&)
{
    const CPaintImage* pImage = context.Image();
    if (!pImage)
        return NoDocument();
    const CRect& rc = pImage->m_rcFloat;
    context.print(pImage->m_pFloatMask
                      ? Join({pImage->m_nFloatX, pImage->m_nFloatY, pImage->m_nFloatW, pImage->m_nFloatH, rc.left, rc.top, rc.right,
                              rc.bottom, pImage->m_bFloatReady, pImage->m_bFloating, pImage->m_bSelection})
                      : QStringLiteral("none"));
    return {};
}

} // namespace kestrune::statements
