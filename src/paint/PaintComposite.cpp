// How a dab goes into the picture: the fast way of the usual case, whole runs of rows in one kernel, and the general way, row
// by row, for every other case.
#include "paint/PaintCore.h"

#include "base/Arith.h"
#include "doc/PaintImage.h"
#include "paint/Blend.h"
#include "paint/BlendKernels.h"
#include "paint/BlendMode.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace kestrune {

namespace {

/// Alpha, mask and opacity in one rounding, except where the opacity is full.
int ThinnedAlpha(int nAlpha, int nMask, int nOpacity)
{
    if (nOpacity == 255)
        return Mul255(nAlpha, nMask);
    const int t = nAlpha * nMask * nOpacity + 32603;
    return ((t >> 7) + t) >> 16;
}

bool IsPlainColor(int nMode)
{
    return nMode == BLEND_NORMAL || nMode == BLEND_BEHIND;
}

} // namespace

/// One row of the general way.
struct PaintCore::RowPass {
    const DabMask& mask;
    int nMaskX, nMaskY; ///< the mask's cell on the tile's first pixel
    int nFloatOpacity;
    CRect rcFloat; ///< the part of the tile that lies on the float
    std::uint8_t* pAlpha; ///< one byte a pixel of the tile's width each
    std::uint8_t* pSecond;
    std::uint8_t* pColor; ///< three bytes a pixel
    std::uint8_t* pInkRow; ///< the one colour, as a row
    int y = 0;
    const std::uint8_t* pBlended = nullptr;
};

/// The opacity acts twice in a stroke that builds up, once here and once in the mix: that is the curve of those tools.
const std::vector<std::uint8_t>& PaintCore::MappedMask(DabMask& mask)
{
    const int nKey = m_nOpacity | (m_bHardAlpha ? 256 : 0);
    if (mask.nMapKey == nKey)
        return mask.aMapped;
    std::array<std::uint8_t, 256> aTable{};
    for (int m = 0; m < 256; m++) {
        const int a = Mul255(ThinnedAlpha(255, m, m_nOpacity), m_nOpacity);
        aTable[m] = static_cast<std::uint8_t>(m_bHardAlpha ? HardenAlpha(a) : a);
    }
    mask.aMapped.resize(mask.aBytes.size());
    std::ranges::transform(mask.aBytes, mask.aMapped.begin(), [&](std::uint8_t m) { return aTable[m]; });
    mask.nMapKey = nKey;
    return mask.aMapped;
}

/// One opaque colour or row of colours a pixel, Normal, no float, no texture that counts.
bool PaintCore::IsHotCase() const
{
    if (m_floatCanvas || m_tile.pAlpha || m_bEraseFloatAlpha || !IsPlainColor(m_nMode))
        return false;
    return m_bIncremental || (!m_bTexture && !m_bHardAlpha);
}

/// The centring counts with the border while the tile does not, so the mask lies a pixel up and left of the tile, save at the
/// picture's left and upper edges. The kernels of the fractions expect it.
void PaintCore::PasteDab(DabMask& mask)
{
    const SubpixelMaskCache& cache = SubpixelMaskCache::Get();
    const int nMaskX = std::max((cache.PaddedWidth() >> 1) - static_cast<int>(m_ptCurrent.x), 0);
    const int nMaskY = std::max((cache.PaddedHeight() >> 1) - static_cast<int>(m_ptCurrent.y), 0);
    if (m_bEraseFloatAlpha && !m_floatCanvas)
        return;
    if (!m_bIncremental)
        m_coverage.Reach(m_tile.x, m_tile.x + Reach());
    if (IsHotCase())
        PasteRuns(mask, {nMaskX, nMaskY});
    else
        PasteRows(mask, {nMaskX, nMaskY});
}

/// The pixels of each row that the mask touches, grown to whole steps of the kernels where there is room: on one colour up to the
/// picture's edge, with other inks as far as the tile has them. What is laid there in excess has no alpha.
void PaintCore::FindSpans(DabMask& mask, CPoint ptMask)
{
    constexpr int c_nStep = 32;
    static_assert(c_nStep <= DabMask::c_nTail);
    // Far from the edges each dab has the same ones.
    const bool bOneColor = m_tile.aInk.empty();
    const bool bFar = bOneColor && ptMask == CPoint{} && m_tile.nWidth == m_nBrushWidth && m_tile.nHeight == m_nBrushHeight
        && m_nImageWidth - m_tile.x >= m_nBrushWidth + DabMask::c_nTail;
    if (bFar && !mask.aSteps.empty()) {
        m_pSpans = mask.aSteps.data();
        return;
    }
    m_aSpans.resize(m_tile.nHeight);
    for (int j = 0; j < m_tile.nHeight; j++) {
        const DabSpan span = mask.aSpans[ptMask.y + j];
        int nFirst = std::max(span.x0 - ptMask.x, 0);
        int nLast = std::min(span.x1 - ptMask.x, m_tile.nWidth);
        if (nFirst < nLast) {
            // The border's far columns lie past the tile and must not be laid.
            const bool bCut = span.x1 - ptMask.x > m_tile.nWidth;
            const int nRoom = bOneColor && !bCut ? m_nImageWidth - m_tile.x : m_tile.nWidth;
            const int nSteps = (nLast - nFirst + c_nStep - 1) / c_nStep * c_nStep;
            nLast = std::max(nLast, std::min(nFirst + nSteps, nRoom));
            nFirst = std::min(nFirst, std::max(nLast - nSteps, 0));
        }
        m_aSpans[j] = {nFirst, nLast};
    }
    m_pSpans = m_aSpans.data();
    if (bFar)
        mask.aSteps = m_aSpans;
}

/// How many columns from the tile's first one on a dab may touch: spans may end behind the tile.
int PaintCore::Reach() const
{
    return std::min(m_tile.nWidth + DabMask::c_nTail, m_nImageWidth - m_tile.x);
}

/// The coverage under the spans of some rows of the tile, from its first column on.
std::uint8_t* PaintCore::OpenCoverage(int y, int nRows)
{
    for (int i = 0; i < nRows; i++) {
        const DabSpan span = m_pSpans[y + i - m_tile.y];
        if (span.x0 < span.x1)
            m_coverage.Open(y + i, m_tile.x + span.x0, m_tile.x + span.x1);
    }
    return m_coverage.Open(y, m_tile.x, m_tile.x);
}

/// Rows are worked on in runs that lie in one band of the picture's storage.
void PaintCore::PasteRuns(DabMask& mask, CPoint ptMask)
{
    const int nMaskStride = SubpixelMaskCache::Get().Stride();
    FindSpans(mask, ptMask);
    DabRun run;
    run.nStride = static_cast<std::ptrdiff_t>(m_canvas.RowBytes());
    run.nCoverageStride = m_coverage.Stride();
    run.nMaskStride = nMaskStride;
    run.nOpacity = m_nOpacity;
    run.nDabAlpha = m_nDabAlpha;
    run.pColor = m_tile.aColor;
    run.nFullOrigin = m_tile.x;
    const std::uint8_t* pMask = (m_bIncremental ? MappedMask(mask) : mask.aBytes).data() + ptMask.x;
    CBandStore& picture = m_pImage->m_Bitmap.WriteBands();
    const int nEnd = m_tile.y + m_tile.nHeight;
    const int nReach = Reach();
    for (int y = m_tile.y; y < nEnd; y += run.nRows) {
        const int j = y - m_tile.y;
        run.nRows = std::min(nEnd, (y / m_canvas.BandRows() + 1) * m_canvas.BandRows()) - y;
        run.pCanvas = m_bIncremental ? WritePixels(m_canvas, y, m_tile.x, nReach) : ReadPixels(m_canvas, y, m_tile.x, nReach);
        run.pOut = WritePixels(picture, y, m_tile.x, nReach);
        if (!m_bIncremental)
            run.pCoverage = OpenCoverage(y, run.nRows);
        run.pFull = m_aFull.data() + y;
        run.pMask = pMask + static_cast<std::ptrdiff_t>(ptMask.y + j) * nMaskStride;
        run.pSpans = m_pSpans + j;
        run.ppInk = m_tile.aInk.empty() ? nullptr : m_tile.aInk.data() + j;
        if (m_bIncremental)
            StackedDab(run);
        else
            CappedDab(run);
    }
}

void PaintCore::PasteRows(const DabMask& mask, CPoint ptMask)
{
    CPaintImage& image = *m_pImage;
    const std::size_t nWidth = m_tile.nWidth;
    m_aScratch.resize(nWidth * 8);
    CRect rcFloat;
    if (m_floatCanvas) {
        if (!image.m_pFloatMask || m_floatCanvas->Rows() != image.m_FloatBitmap.GetHeight()
            || m_floatCanvas->RowBytes() != image.m_FloatBitmap.GetRowBytes())
            return; // the float was taken away while the button was down
        // The float's corner may lie outside: of one that was moved partly out, m_rcFloat is what is still inside.
        const int x = image.m_nFloatX, y = image.m_nFloatY;
        rcFloat = Intersect(Intersect(m_tile.Rect(), image.m_rcFloat),
                            {x, y, x + image.m_FloatBitmap.GetWidth(), y + image.m_FloatBitmap.GetHeight()});
    }
    RowPass pass{mask, ptMask.x, ptMask.y, static_cast<int>(image.Site().FloatOpacity() * 255 / 100.0), rcFloat,
                 m_aScratch.data(), m_aScratch.data() + nWidth, m_aScratch.data() + nWidth * 2, m_aScratch.data() + nWidth * 5};
    for (std::size_t i = 0; i < nWidth; i++)
        std::copy_n(m_tile.aColor, 3, pass.pInkRow + i * 3);
    for (int j = 0; j < m_tile.nHeight; j++) {
        pass.y = m_tile.y + j;
        AlphaOfRow(pass, j);
        const std::uint8_t* pInk = m_tile.aInk.empty() ? pass.pInkRow : m_tile.aInk[j];
        pass.pBlended = pInk;
        if (m_nMode == BLEND_DISSOLVE) {
            DissolveAlphaRow(j, pass.pAlpha, nWidth);
        } else if (!IsPlainColor(m_nMode)) {
            BlendPackedRow(m_nMode, CanvasRow(pass.y, m_tile.x, m_tile.nWidth), pInk, pass.pColor, nWidth);
            pass.pBlended = pass.pColor;
        }
        if (m_floatCanvas)
            CompositeFloatRow(pass);
        else
            CompositeRow(pass);
    }
}

/// The alpha of the tile's row, thinned by the stroke's coverage, which grows first, or by the mask alone.
void PaintCore::AlphaOfRow(RowPass& pass, int j)
{
    const int nWidth = m_tile.nWidth;
    const std::uint8_t* pTile = m_tile.pAlpha ? m_tile.pAlpha + static_cast<std::size_t>(j) * nWidth : nullptr;
    const std::uint8_t* pMask = pass.mask.aBytes.data()
        + static_cast<std::size_t>(pass.nMaskY + j) * SubpixelMaskCache::Get().Stride() + pass.nMaskX;
    if (m_bIncremental) {
        for (int i = 0; i < nWidth; i++)
            pass.pAlpha[i] = static_cast<std::uint8_t>(ThinnedAlpha(pTile ? pTile[i] : 255, pMask[i], m_nOpacity));
        return;
    }
    if (m_nDabAlpha != 255) {
        for (int i = 0; i < nWidth; i++)
            pass.pSecond[i] = static_cast<std::uint8_t>(Mul255(pMask[i], m_nDabAlpha));
        pMask = pass.pSecond;
    }
    std::uint8_t* pCoverage = m_coverage.Open(pass.y, m_tile.x, m_tile.x + nWidth);
    AccumulateRow(pCoverage, pMask, nWidth);
    for (int i = 0; i < nWidth; i++)
        pass.pAlpha[i] = static_cast<std::uint8_t>(pTile ? Mul255(pTile[i], pCoverage[i]) : pCoverage[i]);
}

/// Opacity, and the hard edges of pictures of few colours, which come before any texture.
void PaintCore::FinishAlpha(RowPass& pass) const
{
    for (int i = 0; i < m_tile.nWidth; i++) {
        const int a = Mul255(pass.pAlpha[i], m_nOpacity);
        pass.pAlpha[i] = static_cast<std::uint8_t>(m_bHardAlpha ? HardenAlpha(a) : a);
    }
    if (m_bTexture && !m_bIncremental)
        MultiplyTexture(pass.pAlpha, m_tile.x, pass.y, m_tile.nWidth);
}

/// The texture is a tile from the picture's origin.
void PaintCore::MultiplyTexture(std::uint8_t* pAlpha, int x, int y, int nCount) const
{
    const std::uint8_t* pRow = m_texture.aBytes.data() + static_cast<std::size_t>(y % m_texture.nHeight) * m_texture.nWidth;
    int nColumn = x % m_texture.nWidth;
    for (int i = 0; i < nCount; i++) {
        pAlpha[i] = static_cast<std::uint8_t>(Mul255(pAlpha[i], pRow[nColumn]));
        if (++nColumn == m_texture.nWidth)
            nColumn = 0;
    }
}

void PaintCore::CompositeRow(RowPass& pass)
{
    FinishAlpha(pass);
    std::uint8_t* pOut = WritePixels(m_pImage->m_Bitmap.WriteBands(), pass.y, m_tile.x, m_tile.nWidth);
    if (m_bIncremental) {
        std::uint8_t* pCanvas = WritePixels(m_canvas, pass.y, m_tile.x, m_tile.nWidth);
        LerpRow(pCanvas, pass.pBlended, pass.pAlpha, pCanvas, m_tile.nWidth);
        std::memcpy(pOut, pCanvas, static_cast<std::size_t>(m_tile.nWidth) * 3);
    } else {
        LerpRow(CanvasRow(pass.y, m_tile.x, m_tile.nWidth), pass.pBlended, pass.pAlpha, pOut, m_tile.nWidth);
    }
}

/// The part of the row on the float: painted into the float's pixels (or out of its mask), then laid over the base picture.
void PaintCore::CompositeFloatRow(RowPass& pass)
{
    CPaintImage& image = *m_pImage;
    const CRect& rc = pass.rcFloat;
    if (pass.y < rc.top || pass.y >= rc.bottom)
        return;
    const int nSkip = rc.left - m_tile.x, nCount = rc.Width();
    const int fx = rc.left - image.m_nFloatX, fy = pass.y - image.m_nFloatY;
    std::uint8_t* pFloatMask = image.m_pFloatMask.get() + static_cast<std::size_t>(fy) * image.m_FloatBitmap.GetWidth() + fx;
    const std::uint8_t* pFloat = ReadPixels(*m_floatCanvas, fy, fx, nCount);
    if (m_bEraseFloatAlpha) {
        EraseRow(pass, pFloatMask);
    } else {
        FinishAlpha(pass);
        const std::uint8_t* pAlpha = pass.pAlpha + nSkip;
        const std::uint8_t* pBlended = pass.pBlended + nSkip * 3;
        if (m_bIncremental) {
            std::uint8_t* pWrite = WritePixels(*m_floatCanvas, fy, fx, nCount);
            LerpRow(pWrite, pBlended, pAlpha, pWrite, nCount);
            std::memcpy(WritePixels(m_canvas, pass.y, rc.left, nCount), pWrite, static_cast<std::size_t>(nCount) * 3);
            pFloat = pWrite;
        } else {
            if (m_bTexture) // a second time on floats: kept so
                MultiplyTexture(pass.pAlpha + nSkip, rc.left, pass.y, nCount);
            std::uint8_t* pWrite = WritePixels(image.m_FloatBitmap.WriteBands(), fy, fx, nCount);
            LerpRow(pFloat, pBlended, pAlpha, pWrite, nCount);
            pFloat = pWrite;
        }
    }
    for (int i = 0; i < nCount; i++) {
        const int a = Mul255(pFloatMask[i], pass.nFloatOpacity);
        pass.pSecond[i] = static_cast<std::uint8_t>(m_bHardAlpha ? HardenAlpha(a) : a);
    }
    LerpRow(ReadPixels(image.m_BaseBitmap.Bands(), pass.y, rc.left, nCount), pFloat, pass.pSecond,
            WritePixels(image.m_Bitmap.WriteBands(), pass.y, rc.left, nCount), nCount);
}

/// Takes the brush out of the float's mask. The mask is read by the tile's width, so that a clipped dab shears it: kept so.
void PaintCore::EraseRow(const RowPass& pass, std::uint8_t* pFloatMask) const
{
    const std::uint8_t* pBrush = m_pBrushMask + static_cast<std::size_t>(pass.y - m_tile.y) * m_tile.nWidth + (pass.rcFloat.left - m_tile.x);
    for (int i = 0; i < pass.rcFloat.Width(); i++)
        pFloatMask[i] = static_cast<std::uint8_t>(Mul255(255 - Mul255(pBrush[i], m_nOpacity), pFloatMask[i]));
}

} // namespace kestrune
