#include "tools/FloatActs.h"

#include "doc/PaintImage.h"
#include "tools/SelectionActs.h"

namespace kestrune {

bool HasFloat(const CPaintImage& image)
{
    return image.m_bFloatReady && image.m_pFloatMask;
}

void LiftFloat(CPaintImage& image)
{
    if (image.m_bFloating)
        return;
    image.m_bFloating = true;
    image.CutFloatHole();
}

void SelectionFollowsFloat(CPaintImage& image)
{
    MaskFromFloat(image);
    CRect rc;
    image.GetMaskBounds(rc.left, rc.top, rc.right, rc.bottom);
}

} // namespace kestrune
