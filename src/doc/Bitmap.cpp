#include "doc/Bitmap.h"

#include "doc/Palettes.h"

#include <algorithm>
#include <cstring>

namespace kestrune {

namespace {

bool IsListedDepth(int nBits)
{
    return nBits == 1 || nBits == 4 || nBits == 8 || nBits == 24;
}

std::size_t BytesPerPixel(int nBits)
{
    return nBits == 24 ? 3 : 1;
}

} // namespace

bool LBitmapBase::Create(int nWidth, int nHeight, int nBitsPerPixel, int, std::span<const RGBQUAD> palette)
{
    if (nWidth <= 0 || nHeight <= 0 || !IsListedDepth(nBitsPerPixel))
        return false;
    CBandStore store(nHeight, static_cast<std::size_t>(nWidth) * BytesPerPixel(nBitsPerPixel));
    std::vector<RGBQUAD> colors;
    if (nBitsPerPixel < 24) {
        colors = GreyRamp(1 << nBitsPerPixel);
        if (!palette.empty()) {
            std::fill(colors.begin(), colors.end(), RGBQUAD{});
            std::copy_n(palette.begin(), std::min(palette.size(), colors.size()), colors.begin());
        }
    }
    m_store = std::move(store);
    m_palette = std::move(colors);
    m_nWidth = nWidth;
    m_nHeight = nHeight;
    m_nBitsPerPixel = nBitsPerPixel;
    m_nXResolution = m_nYResolution = 0;
    return true;
}

void LBitmapBase::Free()
{
    *this = LBitmapBase();
}

void LBitmapBase::SetResolution(int nX, int nY)
{
    m_nXResolution = nX;
    m_nYResolution = nY;
}

void LBitmapBase::Copy(const LBitmapBase& source)
{
    LBitmapBase copy = source; // whole before anything here changes: memory may run out on the way
    copy.m_pathFile = std::move(m_pathFile); // the name of the file is this bitmap's own
    *this = std::move(copy);
}

void LBitmapBase::CopyData(const LBitmapBase& source)
{
    if (source.m_nWidth == m_nWidth && source.m_nHeight == m_nHeight && source.m_nBitsPerPixel == m_nBitsPerPixel) {
        CBandStore store = source.m_store;
        m_store = std::move(store);
    }
}

std::size_t LBitmapBase::GetRow(LBuffer& buffer, int y) const
{
    return buffer.GetSize() < GetRowBytes() ? 0 : GetRowCol(buffer, y, 0);
}

std::size_t LBitmapBase::PutRow(const LBuffer& buffer, int y)
{
    return buffer.GetSize() < GetRowBytes() ? 0 : PutRowCol(buffer, y, 0);
}

std::size_t LBitmapBase::GetRowCol(LBuffer& buffer, int y, int x) const
{
    if (y < 0 || y >= m_nHeight || x < 0 || x >= m_nWidth)
        return 0;
    const std::size_t nStart = static_cast<std::size_t>(x) * BytesPerPixel(m_nBitsPerPixel);
    const std::size_t nBytes = std::min(buffer.GetSize(), GetRowBytes() - nStart);
    std::memcpy(buffer.Lock(), m_store.RowPart(y, nStart, nStart + nBytes) + nStart, nBytes);
    return nBytes;
}

std::size_t LBitmapBase::PutRowCol(const LBuffer& buffer, int y, int x)
{
    if (y < 0 || y >= m_nHeight || x < 0 || x >= m_nWidth)
        return 0;
    const std::size_t nStart = static_cast<std::size_t>(x) * BytesPerPixel(m_nBitsPerPixel);
    const std::size_t nBytes = std::min(buffer.GetSize(), GetRowBytes() - nStart);
    std::memcpy(WriteRow(y) + nStart, buffer.Data(), nBytes);
    return nBytes;
}

} // namespace kestrune
