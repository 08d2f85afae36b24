#include "ui/HandleSlider.h"

#include "ui/SliderSkin.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

#include <algorithm>
#include <cstdlib>
#include <utility>

namespace kestrune {

namespace {
constexpr int c_nFarthest = 500; // no handle is farther than this from a press
constexpr int c_nTrackTop = 2;
constexpr int c_nTrackHeight = 6;
constexpr int c_nPagesInRange = 16;
} // namespace

CHandleSlider::CHandleSlider(std::vector<QColor> handleFills, QWidget* pParent)
    : QWidget(pParent)
    , m_aValues(handleFills.size(), 0)
    , m_aFills(std::move(handleFills))
{
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

int CHandleSlider::ValueToX(int nValue) const
{
    const int nSpan = std::max(1, width() - 2 * c_nMargin - 1);
    return c_nMargin + (nValue - m_nMin) * nSpan / std::max(1, m_nMax - m_nMin);
}

int CHandleSlider::XToValue(int x) const
{
    const int nSpan = std::max(1, width() - 2 * c_nMargin - 1);
    return m_nMin + (std::clamp(x - c_nMargin, 0, nSpan) * (m_nMax - m_nMin) + nSpan / 2) / nSpan;
}

int CHandleSlider::HandleAt(int x) const
{
    int iBest = 0;
    int nBest = c_nFarthest;
    for (std::size_t i = 0; i < m_aValues.size(); i++) {
        const int nDistance = std::abs(ValueToX(m_aValues[i]) - x);
        if (nDistance < nBest) {
            nBest = nDistance;
            iBest = static_cast<int>(i);
        }
    }
    return iBest;
}

void CHandleSlider::MoveByHand(int iHandle, int nValue)
{
    const std::vector<int> before = m_aValues;
    MoveHandle(iHandle, nValue);
    if (before == m_aValues)
        return;
    update();
    Q_EMIT HandleMoved(iHandle);
}

void CHandleSlider::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    DrawSliderTrack(painter, palette(), {c_nMargin, c_nTrackTop, width() - 2 * c_nMargin, c_nTrackHeight});
    for (std::size_t i = 0; i < m_aValues.size(); i++) {
        const bool bCurrent = hasFocus() && static_cast<int>(i) == m_iCurrent;
        const HandleState state = !isEnabled() ? HandleState::Disabled : bCurrent ? HandleState::Active : HandleState::Normal;
        DrawSliderHandle(painter, palette(), {ValueToX(m_aValues[i]), c_nTrackTop + c_nTrackHeight}, m_aFills[i], state);
    }
}

void CHandleSlider::mousePressEvent(QMouseEvent* pEvent)
{
    if (pEvent->button() != Qt::LeftButton)
        return;
    m_iCurrent = HandleAt(pEvent->position().toPoint().x());
    m_bDragging = true;
    update();
    MoveByHand(m_iCurrent, XToValue(pEvent->position().toPoint().x()));
}

void CHandleSlider::mouseMoveEvent(QMouseEvent* pEvent)
{
    if (m_bDragging)
        MoveByHand(m_iCurrent, XToValue(pEvent->position().toPoint().x()));
}

void CHandleSlider::mouseReleaseEvent(QMouseEvent*)
{
    m_bDragging = false;
}

void CHandleSlider::mouseDoubleClickEvent(QMouseEvent* pEvent)
{
    if (pEvent->button() != Qt::LeftButton)
        return;
    const std::vector<int> before = m_aValues;
    ResetHandles();
    update();
    if (before != m_aValues)
        Q_EMIT HandleMoved(m_iCurrent);
}

void CHandleSlider::keyPressEvent(QKeyEvent* pEvent)
{
    const int nLast = static_cast<int>(m_aValues.size()) - 1;
    const int nValue = GetHandle(m_iCurrent);
    const int nPage = std::max(1, (m_nMax - m_nMin) / c_nPagesInRange);
    switch (pEvent->key()) {
    case Qt::Key_Up:
        m_iCurrent = std::max(0, m_iCurrent - 1);
        return update();
    case Qt::Key_Down:
        m_iCurrent = std::min(nLast, m_iCurrent + 1);
        return update();
    case Qt::Key_Left:
        return MoveByHand(m_iCurrent, nValue - 1);
    case Qt::Key_Right:
        return MoveByHand(m_iCurrent, nValue + 1);
    case Qt::Key_PageUp:
        return MoveByHand(m_iCurrent, nValue - nPage);
    case Qt::Key_PageDown:
        return MoveByHand(m_iCurrent, nValue + nPage);
    case Qt::Key_Home:
        return MoveByHand(m_iCurrent, m_nMin);
    case Qt::Key_End:
        return MoveByHand(m_iCurrent, m_nMax);
    default:
        QWidget::keyPressEvent(pEvent);
    }
}

void CHandleSlider::wheelEvent(QWheelEvent* pEvent)
{
    const int iHandle = HandleAt(pEvent->position().toPoint().x());
    MoveByHand(iHandle, GetHandle(iHandle) + m_wheel.Take(*pEvent));
    pEvent->accept();
}

} // namespace kestrune
