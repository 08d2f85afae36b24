#include "selection/MaskBounds.h"

#include <cstring>

namespace kestrune {

namespace {

/// The first byte of [0, n) that is not 0, or n.
int FirstSet(const std::uint8_t* p, int n)
{
    int i = 0;
    for (std::uint64_t word = 0; i + 8 <= n; i += 8) {
        std::memcpy(&word, p + i, 8);
        if (word)
            break;
    }
    while (i < n && !p[i])
        i++;
    return i;
}

/// One past the last byte of [0, n) that is not 0, or 0.
int EndOfSet(const std::uint8_t* p, int n)
{
    for (std::uint64_t word = 0; n >= 8; n -= 8) {
        std::memcpy(&word, p + n - 8, 8);
        if (word)
            break;
    }
    while (n > 0 && !p[n - 1])
        n--;
    return n;
}

} // namespace

CRect ScanMaskBounds(const MaskPlane& mask)
{
    CRect rc{mask.nWidth, 0, 0, 0};
    for (int y = 0; y < mask.nHeight; y++) {
        const std::uint8_t* pRow = mask.Row(y);
        const int nFirst = FirstSet(pRow, mask.nWidth);
        if (nFirst == mask.nWidth)
            continue;
        if (rc.right == 0)
            rc.top = y;
        rc.bottom = y + 1;
        rc.left = std::min(rc.left, nFirst);
        rc.right = std::max(rc.right, EndOfSet(pRow, mask.nWidth));
    }
    return rc.right == 0 ? CRect{} : rc;
}

} // namespace kestrune
