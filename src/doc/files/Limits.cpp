#include "doc/files/DecodedImage.h"

namespace kestrune {

ReadLimits& Limits()
{
    static ReadLimits s_limits;
    return s_limits;
}

bool IsSaneSize(std::int64_t nWidth, std::int64_t nHeight, const ReadLimits& limits)
{
    if (nWidth <= 0 || nHeight <= 0 || nWidth > limits.nMaxSide || nHeight > limits.nMaxSide)
        return false;
    return nWidth * nHeight <= limits.nMaxPixels; // both fit in 32 bits here, so the product cannot overflow
}

} // namespace kestrune
