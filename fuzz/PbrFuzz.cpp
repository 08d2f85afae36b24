#include "resources/BrushFile.h"
#include "resources/BrushPrepare.h"

#include <cstdlib>

using namespace kestrune;

// What was read must be whole, must survive the way back, and must be fit to be shown and to paint.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t nBytes)
{
    const std::vector<BrushEntry> brushes = ParseBrushes({pData, nBytes});
    for (const BrushEntry& brush : brushes) {
        if (brush.m_nWidth < 1 || brush.m_nHeight < 1
            || brush.m_pMask.size() != static_cast<std::size_t>(brush.m_nWidth) * static_cast<std::size_t>(brush.m_nHeight))
            std::abort();
        SampleBrush(brush.m_pMask, brush.m_nWidth, brush.m_nHeight, 30);
    }
    if (ParseBrushes(EncodeBrushes(brushes)) != brushes)
        std::abort();
    if (!brushes.empty()) // with the soft edge that the input itself chooses
        PrepareBrush(brushes.front(), pData[nBytes - 1] % 12, IdentityResponse());
    return 0;
}
