#include "filters/FilterTarget.h"

#include "base/Arith.h"
#include "base/ParallelRows.h"
#include "doc/PaintImage.h"

namespace kestrune {

CFilterTarget::CFilterTarget(const FilterRun& run)
    : m_run(run)
{
    CPaintImage& image = run.image;
    if (!run.bApply) {
        m_pOut = run.pOutput;
        m_source.Copy(*run.pInput);
        m_rc = Intersect({run.x, run.y, run.x + run.nWidth, run.y + run.nHeight},
                         {0, 0, m_source.GetWidth(), m_source.GetHeight()});
        m_bMerge = image.m_pFloatMask != nullptr;
    } else {
        m_pOut = image.m_pFloatMask ? &image.m_FloatBitmap : &image.m_Bitmap;
        m_source.Copy(image.m_pFloatMask || !run.pInput ? *m_pOut : *run.pInput);
        m_rc = {0, 0, m_source.GetWidth(), m_source.GetHeight()};
    }
    if (m_source.GetBitsPerPixel() != 24 || m_pOut->GetBitsPerPixel() != 24 || m_pOut->GetWidth() != m_source.GetWidth()
        || m_pOut->GetHeight() != m_source.GetHeight())
        m_rc = {};
}

void CFilterTarget::Prepare()
{
    if (m_rc.Width() == m_pOut->GetWidth())
        m_pOut->ReplaceRows(m_rc.top, m_rc.bottom);
    else
        m_pOut->DetachRows(m_rc.top, m_rc.bottom);
}

void CFilterTarget::WriteRows(int nGrain, const std::function<void(int, int)>& work)
{
    if (IsEmpty())
        return;
    Prepare();
    ParallelRows(Height(), nGrain, work);
}

std::uint8_t* CFilterTarget::OutRow(int y)
{
    return m_pOut->WriteRow(m_rc.top + y) + static_cast<std::size_t>(m_rc.left) * 3;
}

void CFilterTarget::Finish(int y)
{
    if (!m_bMerge)
        return;
    const CPaintImage& image = m_run.image;
    const int nRow = m_rc.top + y;
    const std::uint8_t* const pBase = image.m_BaseBitmap.Row(nRow) + static_cast<std::size_t>(m_rc.left) * 3;
    // The memory of a mask that is known to be empty is never read.
    const bool bMask = image.m_pMask && !(image.m_bMaskBoundsValid && image.m_bMaskEmpty);
    const std::uint8_t* const pMask
        = bMask ? image.m_pMask.get() + static_cast<std::size_t>(nRow) * image.m_nWidth + m_rc.left : nullptr;
    std::uint8_t* const pOut = OutRow(y);
    for (int x = 0; x < Width(); ++x) {
        const int nMask = pMask ? pMask[x] : 0;
        for (int c = 3 * x; c < 3 * x + 3; ++c)
            pOut[c] = Lerp255(pBase[c], pOut[c], nMask);
    }
}

void FilterEachRow(const FilterRun& run, const std::function<void(const std::uint8_t*, std::uint8_t*, int)>& row)
{
    CFilterTarget target(run);
    target.WriteRows(16, [&](int y0, int y1) {
        for (int y = y0; y < y1; ++y) {
            row(target.Row(y), target.OutRow(y), target.Width());
            target.Finish(y);
        }
    });
}

} // namespace kestrune
