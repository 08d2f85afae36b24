#include "doc/files/DecodedImage.h"

#include <algorithm>

namespace kestrune {

ReadLimits& Limits()
{
    static ReadLimits s_limits;
    return s_limits;
}

void TakeLimits(const CProfile& profile)
{
    constexpr int c_nMostMegapixels = 2000; // beyond it rows and sizes of some libraries leave 32 bits
    const int nDefault = static_cast<int>(ReadLimits().nMaxPixels / 1'000'000);
    Limits().nMaxPixels = std::clamp(profile.GetInt("Files", "Max Megapixels", nDefault), 1, c_nMostMegapixels) * std::int64_t{1'000'000};
}

bool IsSaneSize(std::int64_t nWidth, std::int64_t nHeight, const ReadLimits& limits)
{
    if (nWidth <= 0 || nHeight <= 0 || nWidth > limits.nMaxSide || nHeight > limits.nMaxSide)
        return false;
    return nWidth * nHeight <= limits.nMaxPixels; // both fit in 32 bits here, so the product cannot overflow
}

} // namespace kestrune
