#include "doc/Bitmap.h"

#include "base/ParallelRows.h"
#include "doc/ColorReduce.h"
#include "doc/Palettes.h"
#include "doc/Resample.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace kestrune {

namespace {

/// Writes the colours of a row of palette indices as 24-bit pixels.
void ExpandRow(const std::uint8_t* pIndices, int nWidth, const std::array<std::uint32_t, 256>& colors, std::uint8_t* pOut)
{
    // Four bytes at once, the last of which the next pixel overwrites; the last pixel of the row must not.
    for (int x = 0; x + 1 < nWidth; x++)
        std::memcpy(pOut + x * 3, &colors[pIndices[x]], 4);
    std::memcpy(pOut + (nWidth - 1) * 3, &colors[pIndices[nWidth - 1]], 3);
}

} // namespace

void LBitmapBase::Size(int nWidth, int nHeight, int nFlags)
{
    if (!IsAllocated() || nWidth <= 0 || nHeight <= 0 || (nWidth == m_nWidth && nHeight == m_nHeight))
        return;
    CBandStore store(nHeight, static_cast<std::size_t>(nWidth) * (m_nBitsPerPixel == 24 ? 3 : 1));
    // Between palette indices there is nothing to mix.
    if (m_nBitsPerPixel == 24 && nFlags >= SIZE_BILINEAR && nFlags <= SIZE_AREA)
        ResampleSmooth(*this, store, nFlags);
    else
        ResampleNearest(*this, store);
    m_store = std::move(store);
    m_nWidth = nWidth;
    m_nHeight = nHeight;
}

void LBitmapBase::GrayScale(int nBits)
{
    if (nBits != 8 || !IsAllocated())
        return;
    std::vector<RGBQUAD> ramp = GreyRamp(256);
    if (m_nBitsPerPixel == 8 && std::equal(ramp.begin(), ramp.end(), m_palette.begin(), m_palette.end()))
        return;
    std::array<std::uint8_t, 256> level{};
    for (std::size_t i = 0; i < m_palette.size(); i++)
        level[i] = static_cast<std::uint8_t>(Luminance(m_palette[i].rgbRed, m_palette[i].rgbGreen, m_palette[i].rgbBlue));
    CBandStore store(m_nHeight, m_nWidth);
    const int nWidth = m_nWidth;
    ParallelRows(m_nHeight, 32, [&](int y0, int y1) {
        for (int y = y0; y < y1; y++) {
            const std::uint8_t* p = Row(y);
            std::uint8_t* pOut = store.WriteRow(y);
            if (m_nBitsPerPixel == 24)
                for (int x = 0; x < nWidth; x++)
                    pOut[x] = static_cast<std::uint8_t>(Luminance(p[x * 3 + 2], p[x * 3 + 1], p[x * 3]));
            else
                for (int x = 0; x < nWidth; x++)
                    pOut[x] = level[p[x]];
        }
    });
    m_store = std::move(store);
    m_palette = std::move(ramp);
    m_nBitsPerPixel = 8;
}

bool LBitmapBase::IsGrayScale() const
{
    return m_nBitsPerPixel <= 8 && IsGreyRamp(m_palette);
}

bool LBitmapBase::ColorRes(int nBits, std::uint32_t dwFlags, std::span<const RGBQUAD> palette)
{
    if (!IsAllocated() || (nBits != 1 && nBits != 4 && nBits != 8 && nBits != 24))
        return false;
    if (nBits == 24) {
        if (m_nBitsPerPixel < 24)
            ExpandPalette();
        return true;
    }
    const bool bOwnFits = m_nBitsPerPixel <= nBits && (dwFlags & CRF_OPTIMIZEDPALETTE);
    if (bOwnFits) { // its own colours are the palette that fits it
        m_palette.resize(std::size_t{1} << nBits);
        m_nBitsPerPixel = nBits;
        return true;
    }
    LBitmapBase working = *this;
    if (m_nBitsPerPixel < 24)
        working.ExpandPalette();
    std::vector<RGBQUAD> colors = ChoosePalette(working, nBits, dwFlags, palette);
    CBandStore store(m_nHeight, m_nWidth);
    MapToPalette(working, colors, dwFlags, store);
    colors.resize(std::size_t{1} << nBits);
    m_store = std::move(store);
    m_palette = std::move(colors);
    m_nBitsPerPixel = nBits;
    return true;
}

void LBitmapBase::ExpandPalette()
{
    std::array<std::uint32_t, 256> colors{};
    for (std::size_t i = 0; i < m_palette.size(); i++)
        colors[i] = m_palette[i].rgbBlue | m_palette[i].rgbGreen << 8 | m_palette[i].rgbRed << 16;
    CBandStore store(m_nHeight, static_cast<std::size_t>(m_nWidth) * 3);
    ParallelRows(m_nHeight, 32, [&](int y0, int y1) {
        for (int y = y0; y < y1; y++)
            ExpandRow(Row(y), m_nWidth, colors, store.WriteRow(y));
    });
    m_store = std::move(store);
    m_palette.clear();
    m_nBitsPerPixel = 24;
}

} // namespace kestrune
