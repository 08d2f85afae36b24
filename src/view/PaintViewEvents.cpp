#include "acquire/gui/ImageMimeData.h"
#include "tools/ToolRegistry.h"
#include "tools/ToolTable.h"
#include "ui/Icons.h"
#include "view/KeyCodes.h"
#include "view/PaintView.h"
#include "view/ZoomLadder.h"

#include <QApplication>
#include <QDrag>
#include <QDragEnterEvent>
#include <QKeyEvent>
#include <QMimeData>
#include <QMouseEvent>
#include <QScrollBar>
#include <QTimerEvent>
#include <QUrl>

#include <cmath>
#include <utility>

namespace kestrune {

namespace {

constexpr double c_fWheelStep = 120; ///< one notch of a wheel
constexpr int c_nWheelLine = 16;

unsigned FlagsOf(Qt::MouseButtons buttons, Qt::KeyboardModifiers modifiers)
{
    return (buttons & Qt::LeftButton ? MK_LBUTTON : 0u) | (buttons & Qt::RightButton ? MK_RBUTTON : 0u)
        | (buttons & Qt::MiddleButton ? MK_MBUTTON : 0u) | (modifiers & Qt::ShiftModifier ? MK_SHIFT : 0u)
        | (modifiers & Qt::ControlModifier ? MK_CONTROL : 0u);
}

unsigned FlagsOf(const QMouseEvent& event)
{
    return FlagsOf(event.buttons(), event.modifiers());
}

} // namespace

/// The tool that an event goes to: during a drag the one that took the press, so that the Space key cannot take a stroke
/// from its tool; else the current one. Null for an id without a tool.
CPaintTool* CPaintView::EventTool() const
{
    return FindTool(m_bMouseDown ? m_nDragTool : g_nCurrentTool);
}

void CPaintView::mousePressEvent(QMouseEvent* pEvent)
{
    const CPoint pt = PointFromViewport(pEvent->position());
    if (pEvent->buttons() == pEvent->button())
        EndDrag(); // no other button is held: another window has taken the release of the press before
    if (!GetImage() || m_bMouseDown)
        return;
    if (pEvent->button() == Qt::RightButton) {
        if (CPaintTool* pTool = EventTool())
            pTool->OnRButtonDown(*this, FlagsOf(*pEvent), pt);
        return;
    }
    const bool bLeft = pEvent->button() == Qt::LeftButton;
    if (!bLeft && pEvent->button() != Qt::MiddleButton)
        return;
    m_host.BeforePress(*this);
    m_nDragTool = bLeft ? g_nCurrentTool : TOOL_HAND; // the middle button pans, whatever the tool
    m_bMouseDown = true;
    m_dragButton = pEvent->button();
    m_ptDrag = pt;
    m_ptPress = pEvent->position();
    UpdateMoveMerging();
    if (CPaintTool* pTool = EventTool())
        pTool->OnLButtonDown(*this, FlagsOf(*pEvent), pt);
    m_bDragArmed = bLeft && m_bMouseDown; // a message of the tool has taken the mouse already
}

void CPaintView::mouseReleaseEvent(QMouseEvent* pEvent)
{
    const CPoint pt = PointFromViewport(pEvent->position());
    if (!GetImage())
        return;
    if (pEvent->button() == Qt::RightButton) {
        if (CPaintTool* pTool = EventTool())
            pTool->OnRButtonUp(*this, FlagsOf(*pEvent), pt);
        return;
    }
    const bool bMiddle = pEvent->button() == Qt::MiddleButton;
    if (!bMiddle && pEvent->button() != Qt::LeftButton)
        return;
    CPaintTool* pTool = EventTool();
    if (pTool && (!bMiddle || m_bMouseDown))
        pTool->OnLButtonUp(*this, FlagsOf(*pEvent), pt);
    m_bMouseDown = false;
    m_bDragArmed = false;
    UpdateMoveMerging();
    UpdateCursor(pt);
}

void CPaintView::EndDrag()
{
    if (!m_bMouseDown)
        return;
    CPaintTool* pTool = EventTool();
    m_bMouseDown = false;
    m_bDragArmed = false;
    UpdateMoveMerging();
    if (pTool && GetImage())
        pTool->OnLButtonUp(*this, 0, m_ptDrag);
}

/// The window system merges the moves that wait for a busy program, which takes corners off the path of a quick hand. Those
/// that follow a press may be waiting before the press itself arrives here, so the merging ends as soon as the pointer comes
/// over the picture with a tool that wants them all.
void CPaintView::UpdateMoveMerging()
{
    const CPaintTool* pTool = EventTool();
    const bool bEach = pTool && pTool->WantsEveryMove() && (m_bMouseDown || viewport()->underMouse());
    QCoreApplication::setAttribute(Qt::AA_CompressHighFrequencyEvents, !bEach);
}

bool CPaintView::viewportEvent(QEvent* pEvent)
{
    if (pEvent->type() == QEvent::Enter || pEvent->type() == QEvent::Leave)
        UpdateMoveMerging();
    if (pEvent->type() == QEvent::Leave && !m_bMouseDown)
        if (CPaintTool* pTool = EventTool())
            pTool->OnMouseLeave(*this);
    return QAbstractScrollArea::viewportEvent(pEvent);
}

void CPaintView::mouseDoubleClickEvent(QMouseEvent* pEvent)
{
    if (!GetImage() || pEvent->button() != Qt::LeftButton)
        return;
    CPaintTool* pTool = EventTool();
    if (!pTool)
        return;
    pTool->OnLButtonDblClk(*this, FlagsOf(*pEvent), PointFromViewport(pEvent->position()));
    if (pTool->TakesSecondPress())
        mousePressEvent(pEvent);
}

void CPaintView::mouseMoveEvent(QMouseEvent* pEvent)
{
    if (!GetImage())
        return;
    const CPoint pt = PointFromViewport(pEvent->position());
    if (m_bMouseDown && !(pEvent->buttons() & m_dragButton))
        EndDrag(); // the release went to another window
    m_ptDrag = pt;
    m_host.MoveRulerMarkers(*this, pt);
    const bool bInside = GetPictureRect().Contains(pt.x, pt.y);
    const CPoint image = bInside ? ClientToImage(pt) : CPoint{0, 0};
    m_host.ShowMousePosition(image.x, image.y);
    UpdateCursor(pt);
    if (CPaintTool* pTool = EventTool())
        pTool->OnMouseMove(*this, FlagsOf(*pEvent), pt);
    DragOutIfArmed(*pEvent);
}

/// The move tool without a float drags the picture out to another program. A synthetic event starts none: nobody holds a
/// button that could end it.
void CPaintView::DragOutIfArmed(const QMouseEvent& event)
{
    const CPaintImage* pImage = GetImage();
    if (!m_bDragArmed || m_nDragTool != TOOL_MOVE || !(event.buttons() & Qt::LeftButton) || !event.spontaneous()
        || !pImage || pImage->m_bFloatReady || pImage->m_bFloating
        || (event.position() - m_ptPress).manhattanLength() < QApplication::startDragDistance())
        return;
    // The drag swallows the release, so the tool gets its end of the press first.
    if (CPaintTool* pTool = EventTool())
        pTool->OnLButtonUp(*this, 0, PointFromViewport(event.position()));
    m_bMouseDown = false;
    m_bDragArmed = false;
    StartImageDrag(std::make_unique<CImageMimeData>(pImage->m_Bitmap));
}

void CPaintView::StartImageDrag(std::unique_ptr<QMimeData> pData)
{
    QDrag* pDrag = new QDrag(viewport());
    pDrag->setMimeData(pData.release());
    pDrag->exec(Qt::CopyAction);
}

/// Asks the tool for a cursor; while the mouse is captured the one of the press stays.
void CPaintView::UpdateCursor(CPoint pt)
{
    if (m_bCapture)
        return;
    CPaintTool* pTool = EventTool();
    if (!GetImage() || !pTool || !pTool->OnSetCursor(*this, pt))
        viewport()->unsetCursor();
}

void CPaintView::RefreshCursor()
{
    if (!viewport()->underMouse())
        return;
    UpdateMoveMerging();
    UpdateCursor(PointFromViewport(viewport()->mapFromGlobal(QCursor::pos())));
}

void CPaintView::SetToolCursor(int nCursor)
{
    viewport()->setCursor(LoadCursor(nCursor));
}

void CPaintView::wheelEvent(QWheelEvent* pEvent)
{
    pEvent->accept();
    if (!GetImage())
        return;
    m_ptWheelRest += QPointF(pEvent->angleDelta()) / c_fWheelStep;
    if (pEvent->modifiers() & Qt::ControlModifier) {
        const int nSteps = static_cast<int>(m_ptWheelRest.y());
        m_ptWheelRest = {0, m_ptWheelRest.y() - nSteps};
        for (int i = 0; i < std::abs(nSteps); i++)
            ZoomAtPointer(nSteps > 0, PointFromViewport(pEvent->position()));
        return;
    }
    QPointF ptTurn = m_ptWheelRest * c_nWheelLine * QApplication::wheelScrollLines();
    QPoint pt(static_cast<int>(ptTurn.x()), static_cast<int>(ptTurn.y()));
    m_ptWheelRest = (ptTurn - QPointF(pt)) / (c_nWheelLine * std::max(QApplication::wheelScrollLines(), 1));
    if (!pEvent->pixelDelta().isNull()) { // a touch pad counts pixels itself
        pt = (QPointF(pEvent->pixelDelta()) * ClientScale()).toPoint();
        m_ptWheelRest = {};
    }
    if (pEvent->modifiers() & Qt::ShiftModifier || (!HasVScroll() && pt.x() == 0))
        pt = pt.x() ? pt : pt.transposed();
    const CPoint scroll = GetScrollPosition();
    ScrollToPosition({scroll.x - pt.x(), scroll.y - pt.y()});
}

/// One step of the ladder, with the picture's point under the pointer held fast as far as the scroll bars allow.
void CPaintView::ZoomAtPointer(bool bIn, CPoint pt)
{
    const CPoint origin = GetImageOrigin(), scroll = GetScrollPosition();
    const double fZoom = m_fZoom;
    const QPointF ptImage((pt.x + scroll.x - origin.x) / fZoom, (pt.y + scroll.y - origin.y) / fZoom);
    ApplyZoom(bIn ? ZoomInStep(m_fZoom) : ZoomOutStep(m_fZoom), ptImage, &pt);
}

void CPaintView::keyPressEvent(QKeyEvent* pEvent)
{
    const int nKey = VirtualKeyOf(pEvent->key());
    CPaintTool* pTool = FindTool(g_nCurrentTool);
    if (!GetImage() || !pTool) {
        QAbstractScrollArea::keyPressEvent(pEvent);
        return;
    }
    if (nKey == VK_SPACE) {
        if (!(pEvent->modifiers() & (Qt::ControlModifier | Qt::AltModifier)))
            PressSpace();
        QAbstractScrollArea::keyPressEvent(pEvent);
        return;
    }
    if (nKey)
        m_heldKeys.insert(nKey);
    if (nKey && EventTool()->OnKeyDown(nKey, 1, FlagsOf(QApplication::mouseButtons(), pEvent->modifiers())))
        return;
    if (nKey == VK_HOME || nKey == VK_END) {
        const bool bHome = nKey == VK_HOME;
        ScrollToPosition({bHome ? 0 : horizontalScrollBar()->maximum(), bHome ? 0 : verticalScrollBar()->maximum()});
        return;
    }
    QAbstractScrollArea::keyPressEvent(pEvent); // arrows and page keys turn the scroll bars
    if (IsDragging())
        pEvent->accept(); // the window would take the keyboard to another box by it
}

void CPaintView::keyReleaseEvent(QKeyEvent* pEvent)
{
    const int nKey = VirtualKeyOf(pEvent->key());
    if (!pEvent->isAutoRepeat() && GetImage()) { // a held key that repeats has not been let go
        m_heldKeys.remove(nKey);
        if (nKey == VK_SPACE)
            ReleaseSpace();
        if (CPaintTool* pTool = EventTool(); pTool && nKey)
            pTool->OnKeyUp(nKey, 1, FlagsOf(QApplication::mouseButtons(), pEvent->modifiers()));
    }
    QAbstractScrollArea::keyReleaseEvent(pEvent);
}

/// Makes the hand the current tool. A repeated key leaves and enters again, but what to return to stays.
void CPaintView::PressSpace()
{
    if (!m_bTempHand) {
        m_nPrevTool = g_nCurrentTool;
        m_bTempHand = true;
    }
    SwitchTool(TOOL_HAND, FindToolRow(TOOL_HAND)->nCommand);
}

/// Back to the tool from before. The stored command number stays the hand's until the next tool command: kept so.
void CPaintView::ReleaseSpace()
{
    if (!m_bTempHand)
        return;
    SwitchTool(m_nPrevTool, g_nCurrentToolCommand);
    m_bTempHand = false;
}

/// A key that is still down when the keyboard goes elsewhere (Control, when its shortcut opened a dialog) counts as let go.
void CPaintView::LetGoOfKeys()
{
    for (const int nKey : std::exchange(m_heldKeys, {}))
        if (CPaintTool* pTool = EventTool())
            pTool->OnKeyUp(nKey, 1, 0);
}

void CPaintView::focusOutEvent(QFocusEvent* pEvent)
{
    ReleaseSpace(); // its release would go to another window
    LetGoOfKeys();
    if (QApplication::activeModalWidget())
        EndDrag(); // the dialog keeps the mouse from this window
    QAbstractScrollArea::focusOutEvent(pEvent);
}

/// The keyboard stays here while a button is held: a key for another box could change the picture under the tool.
bool CPaintView::focusNextPrevChild(bool bNext)
{
    return IsDragging() || QAbstractScrollArea::focusNextPrevChild(bNext); // true: it was used here, and no parent moves on
}

void CPaintView::hideEvent(QHideEvent* pEvent)
{
    EndDrag();
    QAbstractScrollArea::hideEvent(pEvent);
}

void CPaintView::StartTimer(int nTimer, int nMilliseconds)
{
    KillTimer(nTimer);
    m_mapTimers.insert(startTimer(nMilliseconds, Qt::PreciseTimer), nTimer);
}

void CPaintView::KillTimer(int nTimer)
{
    for (auto it = m_mapTimers.begin(); it != m_mapTimers.end(); ++it) {
        if (it.value() == nTimer) {
            killTimer(it.key());
            m_mapTimers.erase(it);
            return;
        }
    }
}

void CPaintView::timerEvent(QTimerEvent* pEvent)
{
    const auto it = m_mapTimers.constFind(pEvent->timerId());
    if (it == m_mapTimers.constEnd()) {
        QAbstractScrollArea::timerEvent(pEvent);
        return;
    }
    const int nTimer = it.value(); // the tool may kill it
    if (CPaintTool* pTool = EventTool(); pTool && GetImage())
        pTool->OnTimer(*this, nTimer);
    OnOutlineTimer(nTimer);
}

void CPaintView::dragEnterEvent(QDragEnterEvent* pEvent)
{
    if (pEvent->mimeData()->hasUrls())
        pEvent->acceptProposedAction();
}

void CPaintView::dragMoveEvent(QDragMoveEvent* pEvent)
{
    if (pEvent->mimeData()->hasUrls())
        pEvent->acceptProposedAction();
}

void CPaintView::dropEvent(QDropEvent* pEvent)
{
    QStringList aFiles;
    for (const QUrl& url : pEvent->mimeData()->urls())
        if (url.isLocalFile())
            aFiles.append(url.toLocalFile());
    if (aFiles.isEmpty())
        return;
    pEvent->acceptProposedAction();
    m_host.FilesDropped(aFiles);
}

} // namespace kestrune
