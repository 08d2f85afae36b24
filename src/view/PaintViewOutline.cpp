// The selection's marching outline in a view.
#include "selection/gui/SelectionOutline.h"
#include "view/PaintView.h"

#include <QCoreApplication>
#include <QEvent>
#include <QPainter>

#include <utility>

namespace kestrune {

namespace {

constexpr int c_nOutlineTimer = 491; ///< no tool uses that number

} // namespace

/// Brings the outline to where the mask is seen now. Nothing is shown without a selection, nor of a float that is being moved: the
/// mask stays behind until the drag ends.
void CPaintView::FollowOutline()
{
    CPaintImage* pImage = GetImage();
    if (!pImage || (m_pOutline->IsPaused() && pImage->m_bFloating)) {
        m_pOutline->Forget();
        return;
    }
    const CPoint origin = GetImageOrigin(), scroll = GetScrollPosition();
    m_pOutline->Follow(pImage->GetBoundary(),
                       {pImage->m_nMaskSerial, m_fZoom,
                        {origin.x - scroll.x + m_ptOutlineOffset.x, origin.y - scroll.y + m_ptOutlineOffset.y}, GetClientSize(),
                        {pImage->m_nWidth, pImage->m_nHeight}});
}

/// At the end of every painting: the outline goes on where the picture has been drawn over it.
void CPaintView::DrawOutline(QPainter& painter, const CRect& rcDirty)
{
    m_pOutline->Draw(painter, rcDirty);
    if (!m_pOutline->IsEmpty() && !m_pOutline->IsPaused() && !m_bOutlineTimer) {
        m_bOutlineTimer = true;
        StartTimer(c_nOutlineTimer, CSelectionOutline::c_nInterval);
    }
}

QRegion CPaintView::OutlineRegion() const
{
    QRegion region;
    for (const CRect& rc : m_pOutline->Tiles())
        region += ToViewport(rc);
    return region;
}

void CPaintView::StopOutlineTimer()
{
    KillTimer(c_nOutlineTimer);
    m_bOutlineTimer = false;
}

/// One step of the march. What else waits to be painted is painted before, so that this painting is of the outline alone: its pixels
/// hide what is below them, which therefore need not be drawn.
void CPaintView::OnOutlineTimer(int nTimer)
{
    if (nTimer != c_nOutlineTimer)
        return;
    if (m_pOutline->IsPaused() || viewport()->visibleRegion().isEmpty())
        return StopOutlineTimer(); // the next painting starts it again
    QEvent pending(QEvent::UpdateRequest);
    QCoreApplication::sendEvent(window(), &pending);
    if (m_pOutline->IsEmpty())
        return StopOutlineTimer();
    m_pOutline->Tick();
    m_bOutlineStep = true;
    viewport()->repaint(OutlineRegion());
    m_bOutlineStep = false;
}

void CPaintView::StopOutline()
{
    m_pOutline->Pause();
    StopOutlineTimer();
}

void CPaintView::StartOutline()
{
    m_pOutline->Resume();
    viewport()->update(OutlineRegion()); // which starts the timer
}

void CPaintView::OffsetOutline(CPoint ptOffset)
{
    if (std::exchange(m_ptOutlineOffset, ptOffset) == ptOffset)
        return;
    QRegion region = OutlineRegion();
    FollowOutline();
    viewport()->update(region | OutlineRegion());
}

} // namespace kestrune
