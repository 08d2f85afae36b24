#include "doc/Bitmap.h"

#include "base/Arith.h"
#include "base/ParallelRows.h"
#include "doc/NearestColor.h"

#include <algorithm>
#include <cstring>

namespace kestrune {

namespace {

COLORREF ColorOf(const RGBQUAD& q)
{
    return Rgb(q.rgbRed, q.rgbGreen, q.rgbBlue);
}

std::uint8_t CombineByte(int nOperation, int nDst, int nSrc)
{
    switch (nOperation) {
    case CB_AND:
        return static_cast<std::uint8_t>(nDst & nSrc);
    case CB_OR:
        return static_cast<std::uint8_t>(nDst | nSrc);
    case CB_XOR:
        return static_cast<std::uint8_t>(nDst ^ nSrc);
    case CB_ADD:
        return static_cast<std::uint8_t>(std::min(nDst + nSrc, 255));
    case CB_SUBTRACT:
        return static_cast<std::uint8_t>(std::max(nDst - nSrc, 0));
    case CB_AVERAGE:
        return static_cast<std::uint8_t>((nDst + nSrc + 1) >> 1);
    case CB_MULTIPLY:
        return static_cast<std::uint8_t>(Mul255(nDst, nSrc));
    default:
        return static_cast<std::uint8_t>(nSrc);
    }
}

/// One row of `Combine`; the operation is a parameter of the type, so that the loop holds no choice.
template <int nOperation>
void CombineRow(std::uint8_t* pDst, const std::uint8_t* pSrc, std::size_t nBytes)
{
    for (std::size_t i = 0; i < nBytes; i++)
        pDst[i] = CombineByte(nOperation, pDst[i], pSrc[i]);
}

using CombineFunction = void (*)(std::uint8_t*, const std::uint8_t*, std::size_t);
constexpr CombineFunction c_aCombine[] = {CombineRow<CB_COPY>, CombineRow<CB_AND>, CombineRow<CB_OR>,
                                          CombineRow<CB_XOR>, CombineRow<CB_ADD>, CombineRow<CB_SUBTRACT>,
                                          CombineRow<CB_AVERAGE>, CombineRow<CB_MULTIPLY>};
static_assert(std::size(c_aCombine) == CB_MULTIPLY + 1);

} // namespace

COLORREF LBitmapBase::GetPixelColor(int x, int y) const
{
    if (x < 0 || x >= m_nWidth || y < 0 || y >= m_nHeight)
        return 0;
    const std::uint8_t* pRow = RowPart(y, x, x + 1);
    if (m_nBitsPerPixel == 24)
        return Rgb(pRow[x * 3 + 2], pRow[x * 3 + 1], pRow[x * 3]);
    return pRow[x] < m_palette.size() ? ColorOf(m_palette[pRow[x]]) : 0;
}

void LBitmapBase::PutPixelColor(int x, int y, COLORREF cr)
{
    if (x < 0 || x >= m_nWidth || y < 0 || y >= m_nHeight)
        return;
    std::uint8_t* pRow = WriteRow(y);
    if (m_nBitsPerPixel == 24) {
        pRow[x * 3] = BlueOf(cr);
        pRow[x * 3 + 1] = GreenOf(cr);
        pRow[x * 3 + 2] = RedOf(cr);
    } else {
        pRow[x] = static_cast<std::uint8_t>(NearestIndex(m_palette, RedOf(cr), GreenOf(cr), BlueOf(cr)));
    }
}

int LBitmapBase::GetColors(int iFirst, std::span<RGBQUAD> colors) const
{
    if (iFirst < 0 || iFirst >= static_cast<int>(m_palette.size()))
        return 0;
    const std::size_t nCount = std::min(colors.size(), m_palette.size() - iFirst);
    std::copy_n(m_palette.begin() + iFirst, nCount, colors.begin());
    return static_cast<int>(nCount);
}

int LBitmapBase::PutColors(int iFirst, std::span<const RGBQUAD> colors)
{
    if (iFirst < 0 || iFirst >= static_cast<int>(m_palette.size()))
        return 0;
    const std::size_t nCount = std::min(colors.size(), m_palette.size() - iFirst);
    std::copy_n(colors.begin(), nCount, m_palette.begin() + iFirst);
    return static_cast<int>(nCount);
}

void LBitmapBase::Fill(COLORREF cr)
{
    if (!IsAllocated())
        return;
    std::vector<std::uint8_t> row(GetRowBytes());
    if (m_nBitsPerPixel == 24) {
        for (std::size_t i = 0; i + 2 < row.size(); i += 3) {
            row[i] = BlueOf(cr);
            row[i + 1] = GreenOf(cr);
            row[i + 2] = RedOf(cr);
        }
    } else {
        std::fill(row.begin(), row.end(),
                  static_cast<std::uint8_t>(NearestIndex(m_palette, RedOf(cr), GreenOf(cr), BlueOf(cr))));
    }
    m_store = CBandStore(m_nHeight, row);
}

void LBitmapBase::Trim(int x, int y, int nWidth, int nHeight)
{
    const auto nRight = static_cast<int>(std::min<std::int64_t>(std::int64_t{x} + nWidth, m_nWidth));
    const auto nBottom = static_cast<int>(std::min<std::int64_t>(std::int64_t{y} + nHeight, m_nHeight));
    x = std::max(x, 0);
    y = std::max(y, 0);
    if (nRight <= x || nBottom <= y || (nRight - x == m_nWidth && nBottom - y == m_nHeight))
        return;
    const std::size_t nPixel = m_nBitsPerPixel == 24 ? 3 : 1;
    const std::size_t nRowBytes = (nRight - x) * nPixel;
    CBandStore store(nBottom - y, nRowBytes);
    ParallelRows(nBottom - y, 64, [&](int y0, int y1) {
        for (int i = y0; i < y1; i++)
            std::memcpy(store.WriteRow(i), Row(y + i) + x * nPixel, nRowBytes);
    });
    m_store = std::move(store);
    m_nWidth = nRight - x;
    m_nHeight = nBottom - y;
}

void LBitmapBase::Combine(int x, int y, int nWidth, int nHeight, const LBitmapBase& source, int xSource, int ySource,
                          int nOperation)
{
    if (m_nBitsPerPixel != 24 || source.m_nBitsPerPixel != 24 || nOperation < 0 || nOperation > CB_MULTIPLY)
        return;
    const LBitmapBase from = source; // bands are shared; the source may be this very bitmap
    const CRect rcAsked{x, y, x + nWidth, y + nHeight};
    const CRect rcSource{x - xSource, y - ySource, x - xSource + from.m_nWidth, y - ySource + from.m_nHeight};
    const CRect rc = Intersect(Intersect(rcAsked, {0, 0, m_nWidth, m_nHeight}), rcSource);
    if (rc.IsEmpty())
        return;
    DetachRows(rc.top, rc.bottom);
    ParallelRows(rc.Height(), 64, [&](int y0, int y1) {
        for (int i = y0; i < y1; i++)
            c_aCombine[nOperation](WriteRow(rc.top + i) + rc.left * 3,
                                   from.Row(rc.top + i - y + ySource) + (rc.left - x + xSource) * 3,
                                   static_cast<std::size_t>(rc.Width()) * 3);
    });
}

} // namespace kestrune
