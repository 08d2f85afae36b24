#pragma once

#include "base/CommandTarget.h"
#include "doc/ImageSite.h"
#include "doc/PaintDoc.h"
#include "tools/ToolView.h"
#include "view/ViewHost.h"

#include <QAbstractScrollArea>
#include <QBrush>
#include <QHash>
#include <QImage>
#include <QRegion>
#include <QSet>

#include <memory>

class QMimeData;

namespace kestrune {

class CDocumentViews;
class CPaintTool;
class CSelectionOutline;

/// Hints of `UpdateAllViews`.
enum UpdateHint { HINT_NONE = 0, HINT_ZOOM = 1025 };

/// Draws the picture at a zoom factor, converts between window and image coordinates, and forwards mouse, keyboard and
/// timer events to the current tool. The document must outlive its views.
///
/// Client coordinates are pixels of the screen, not the toolkit's units: at every screen scale, also a fractional one, an image
/// pixel at zoom 1 is one pixel of the screen and stays sharp, and the mouse reaches each of them.
class CPaintView : public QAbstractScrollArea, public CCommandTarget, public CImageSite, public CToolView {
    Q_OBJECT
public:
    CPaintView(CPaintDoc& doc, CViewHost& host, QWidget* pParent = nullptr);
    ~CPaintView() override;

    CPaintDoc& GetDocument() const { return m_doc; }
    CViewHost& Host() const { return m_host; }

    float GetZoom() const override { return m_fZoom; }
    /// Sets the zoom: cut to a whole number above 0.75, kept within 0.125..32, centre kept, all views of the document told.
    void SetZoom(float fZoom);
    void OnZoomIn();  ///< 30063
    void OnZoomOut(); ///< 30064
    /// 30065: places the child frame over the free space and chooses the zoom that shows the picture's longer side in it.
    void OnZoomFit();

    /// Screen pixels per unit of the toolkit.
    double ClientScale() const { return viewport()->devicePixelRatioF(); }
    CPoint GetImageOrigin() const override;
    CPoint ClientToImage(CPoint pt) const override;
    CPoint ImageToClient(CPoint pt) const override;
    CRect ClientToImage(const CRect& rc) const;
    CRect ImageToClient(const CRect& rc) const;
    /// The picture's size at the zoom, truncated; empty without a picture.
    CSize GetScaledSize() const;
    /// The picture's whole rectangle in client pixels; it may reach beyond the client area.
    CRect GetPictureRect() const;
    CSize GetClientSize() const override;
    /// A point of the viewport in the toolkit's units, and back: the middle of the client pixel, which maps to it again.
    CPoint PointFromViewport(QPointF pt) const;
    QPointF PointToViewport(CPoint pt) const;

    /// To be called once the document has its picture and the view its frame: scroll sizes, frame size, drop target.
    void OnInitialUpdate();
    void OnUpdate(int nHint);
    void OnActivateView(bool bActivate);
    /// True from a press that a tool took until the button is up. No command runs then.
    bool IsDragging() const { return m_bMouseDown && m_bCapture; }
    /// Ends a drag as if the button were let go where the pointer was last seen: the view goes away, or another window has
    /// taken the mouse. Nothing without a drag.
    void EndDrag();

    // CImageSite and CToolView
    void RepaintRect(const CRect& rcImage) override;
    void RepaintAll() override;
    void SizeChanged() override;
    int FloatOpacity() const override { return m_host.FloatOpacity(); }
    int MoveMode() const override { return m_host.MoveMode(); }
    void SyncHistoryBox(int nMode) override { m_host.SyncHistoryBox(const_cast<CPaintView&>(*this), nMode); }
    CPaintImage* GetImage() const override { return m_doc.m_pImage.get(); }
    CPoint GetScrollPosition() const override;
    void ScrollToPosition(CPoint pt) override;
    bool HasHScroll() const override;
    bool HasVScroll() const override;
    void ZoomAt(bool bIn, CPoint pt) override;
    void SetCapture() override { m_bCapture = true; }
    void ReleaseCapture() override { m_bCapture = false; }
    bool HasCapture() const override { return m_bCapture; }
    void SetToolCursor(int nCursor) override;
    void RefreshCursor() override;
    void SetOverlay(ToolOverlay overlay) override;
    void StartTimer(int nTimer, int nMilliseconds) override;
    void KillTimer(int nTimer) override;
    void StopOutline() override;
    void StartOutline() override;
    void OffsetOutline(CPoint ptOffset) override;

protected:
    void paintEvent(QPaintEvent* pEvent) override;
    void resizeEvent(QResizeEvent* pEvent) override;
    void scrollContentsBy(int dx, int dy) override;
    void mousePressEvent(QMouseEvent* pEvent) override;
    void mouseReleaseEvent(QMouseEvent* pEvent) override;
    void mouseDoubleClickEvent(QMouseEvent* pEvent) override;
    void mouseMoveEvent(QMouseEvent* pEvent) override;
    bool viewportEvent(QEvent* pEvent) override;
    void wheelEvent(QWheelEvent* pEvent) override;
    void keyPressEvent(QKeyEvent* pEvent) override;
    void keyReleaseEvent(QKeyEvent* pEvent) override;
    void focusOutEvent(QFocusEvent* pEvent) override;
    bool focusNextPrevChild(bool bNext) override;
    void hideEvent(QHideEvent* pEvent) override;
    void timerEvent(QTimerEvent* pEvent) override;
    void dragEnterEvent(QDragEnterEvent* pEvent) override;
    void dragMoveEvent(QDragMoveEvent* pEvent) override;
    void dropEvent(QDropEvent* pEvent) override;

    /// Runs the drag-and-drop of the picture; takes the data.
    virtual void StartImageDrag(std::unique_ptr<QMimeData> pData);

private:
    void RegisterCommands();
    void ApplyZoom(float fZoom, QPointF ptImage, const CPoint* pAnchor);
    QPointF CentreInImage() const;
    void UpdateScrollBars();
    void FitFrame();
    QRect ToViewport(const CRect& rcClient) const;
    QRegion OverlayRegion() const;
    QRegion ShadeRegion() const;
    void RefreshOverlay();
    void DrawRect(QPainter& painter, const CRect& rcDirty);
    void DrawOverlay(QPainter& painter);
    void DrawShape(QPainter& painter);
    void DrawShapeLines(QPainter& painter, CPoint pt) const;
    void FollowOutline();
    void DrawOutline(QPainter& painter, const CRect& rcDirty);
    QRegion OutlineRegion() const;
    void OnOutlineTimer(int nTimer);
    void StopOutlineTimer();
    void LetGoOfKeys();
    CPaintTool* EventTool() const;
    void ZoomAtPointer(bool bIn, CPoint pt);
    void UpdateCursor(CPoint pt);
    void UpdateMoveMerging();
    void DragOutIfArmed(const QMouseEvent& event);
    void PressSpace();
    void ReleaseSpace();

    CPaintDoc& m_doc;
    CViewHost& m_host;
    std::shared_ptr<CDocumentViews> m_pViews; ///< all views of the document, this one included
    float m_fZoom = 1.0f;
    QBrush m_BackBrush;
    int m_nMaxWidth = 0, m_nMaxHeight = 0; ///< the space the frame may take
    bool m_bMouseDown = false;             ///< a press reached a tool, whose drag this is until the button is up
    bool m_bDragArmed = false;             ///< a left press that no drag-and-drop has used yet
    int m_nDragTool = 0;                   ///< the tool of that press
    Qt::MouseButton m_dragButton = Qt::LeftButton;
    CPoint m_ptDrag; ///< where the pointer was last seen during it
    QPointF m_ptPress;
    bool m_bTempHand = false; ///< Space holds the hand tool
    int m_nPrevTool = 0;      ///< the tool to return to then
    bool m_bCapture = false;
    ToolOverlay m_overlay;
    std::shared_ptr<const OverlayShape> m_pDrawnShape; ///< what the image shows
    QImage m_shapeImage;
    std::unique_ptr<CSelectionOutline> m_pOutline;
    CPoint m_ptOutlineOffset;     ///< how far a drag has moved it
    bool m_bOutlineTimer = false; ///< it marches
    bool m_bOutlineStep = false;  ///< a painting of nothing but its next phase
    QSet<int> m_heldKeys;         ///< keys whose release a tool has not seen yet
    QHash<int, int> m_mapTimers; ///< the toolkit's timer number to the tool's
    QPointF m_ptWheelRest;       ///< what is left of wheel turns smaller than a step
};

/// Tells every view of the document.
void UpdateAllViews(const CPaintDoc& doc, int nHint);
/// The views of a document in the order in which they were made.
std::vector<CPaintView*> ViewsOf(const CPaintDoc& doc);

} // namespace kestrune
