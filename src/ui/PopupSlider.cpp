#include "ui/PopupSlider.h"

#include "ui/SliderSkin.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

#include <algorithm>
#include <cstdlib>

namespace kestrune {

namespace {
constexpr int c_nMargin = 9; // half a thumb and its rim
} // namespace

CPopupSlider::CPopupSlider(QWidget* pParent)
    : QWidget(pParent)
{
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void CPopupSlider::SetRange(int nMin, int nMax)
{
    m_nMin = nMin;
    m_nMax = std::max(nMin, nMax);
    m_nPage = std::max(1, (m_nMax - m_nMin) / 10);
    SetPos(m_nPos);
}

void CPopupSlider::SetSteps(int nLine, int nPage)
{
    m_nLine = nLine;
    m_nPage = nPage;
}

void CPopupSlider::SetPos(int nPos)
{
    m_nPos = std::clamp(nPos, m_nMin, m_nMax);
    update();
}

void CPopupSlider::BeginTracking(int x)
{
    m_bTracking = true;
    m_nGrab = x - ThumbX();
    setMouseTracking(true);
}

int CPopupSlider::ThumbX() const
{
    const int nSpan = std::max(1, width() - 2 * c_nMargin);
    return c_nMargin + static_cast<int>(std::int64_t{m_nPos - m_nMin} * nSpan / std::max(1, m_nMax - m_nMin));
}

int CPopupSlider::PosAt(int x) const
{
    const int nSpan = std::max(1, width() - 2 * c_nMargin);
    const std::int64_t nInside = std::clamp(x - c_nMargin, 0, nSpan);
    return m_nMin + static_cast<int>((nInside * (m_nMax - m_nMin) + nSpan / 2) / nSpan);
}

void CPopupSlider::MoveByHand(int nPos, int nCode)
{
    nPos = std::clamp(nPos, m_nMin, m_nMax);
    if (nPos == m_nPos)
        return;
    SetPos(nPos);
    Q_EMIT Moved(m_nPos, nCode);
}

void CPopupSlider::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    DrawSliderTrack(painter, palette(), rect().adjusted(c_nMargin, 0, -c_nMargin, 0), c_nMargin, ThumbX());
    const HandleState state = !isEnabled() ? HandleState::Disabled : hasFocus() || m_bTracking ? HandleState::Active : HandleState::Normal;
    DrawSliderThumb(painter, palette(), {ThumbX(), rect().center().y()}, state);
}

void CPopupSlider::mousePressEvent(QMouseEvent* pEvent)
{
    if (pEvent->button() != Qt::LeftButton)
        return;
    m_bTracking = true;
    // A thumb that is taken beside its middle must not jump; a press elsewhere brings it there.
    const int x = pEvent->position().toPoint().x();
    m_nGrab = std::abs(x - ThumbX()) <= c_nMargin ? x - ThumbX() : 0;
    if (x - m_nGrab != ThumbX())
        MoveByHand(PosAt(x), SLIDER_TRACK);
    update();
}

void CPopupSlider::mouseMoveEvent(QMouseEvent* pEvent)
{
    const int x = pEvent->position().toPoint().x() - m_nGrab;
    if (m_bTracking && x != ThumbX()) // a position that lies between two pixels stays until the pointer moves
        MoveByHand(PosAt(x), SLIDER_TRACK);
}

void CPopupSlider::mouseReleaseEvent(QMouseEvent*)
{
    if (!m_bTracking)
        return;
    m_bTracking = false;
    update();
    Q_EMIT Released();
}

void CPopupSlider::mouseDoubleClickEvent(QMouseEvent* pEvent)
{
    if (pEvent->button() == Qt::LeftButton)
        MoveByHand(m_nDefault, SLIDER_TRACK);
}

void CPopupSlider::keyPressEvent(QKeyEvent* pEvent)
{
    switch (pEvent->key()) {
    case Qt::Key_PageUp:
        return MoveByHand(m_nPos - m_nPage, SLIDER_PAGE_DOWN);
    case Qt::Key_PageDown:
        return MoveByHand(m_nPos + m_nPage, SLIDER_PAGE_UP);
    case Qt::Key_Home:
        return MoveByHand(m_nMin, SLIDER_MINIMUM);
    case Qt::Key_End:
        return MoveByHand(m_nMax, SLIDER_MAXIMUM);
    case Qt::Key_Left:
    case Qt::Key_Down:
        return MoveByHand(m_nPos - m_nLine, SLIDER_LINE_DOWN);
    case Qt::Key_Right:
    case Qt::Key_Up:
        return MoveByHand(m_nPos + m_nLine, SLIDER_LINE_UP);
    default:
        QWidget::keyPressEvent(pEvent);
    }
}

void CPopupSlider::wheelEvent(QWheelEvent* pEvent)
{
    const int nSteps = m_wheel.Take(*pEvent);
    MoveByHand(m_nPos + nSteps * m_nLine, nSteps > 0 ? SLIDER_LINE_UP : SLIDER_LINE_DOWN);
    pEvent->accept();
}

} // namespace kestrune
