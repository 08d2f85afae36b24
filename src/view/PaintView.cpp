#include "view/PaintView.h"

#include "selection/gui/SelectionOutline.h"
#include "tools/ToolCommands.h"
#include "tools/gui/SelectCommands.h"
#include "undo/UndoStack.h"
#include "view/DocumentViews.h"
#include "view/PictureCommands.h"
#include "view/Printing.h"
#include "view/ZoomLadder.h"

#include <QEvent>
#include <QScrollBar>

#include <algorithm>
#include <cmath>

namespace kestrune {

namespace {

constexpr int c_nScrollStep = 16;
constexpr CSize c_sizeFrameBorder{12, 30}; ///< what a child frame takes around its client area
constexpr int c_nRulerSize = 16;

} // namespace

CPaintView::CPaintView(CPaintDoc& doc, CViewHost& host, QWidget* pParent)
    : QAbstractScrollArea(pParent)
    , m_doc(doc)
    , m_host(host)
    , m_pViews(CDocumentViews::Of(doc))
    , m_pOutline(std::make_unique<CSelectionOutline>())
{
    // Diagonal stripes, hardly darker than the base grey: they tell the surroundings from a grey picture and don't call the eye.
    QImage hatch(8, 8, QImage::Format_RGB32);
    for (int y = 0; y < 8; y++)
        for (int x = 0; x < 8; x++)
            hatch.setPixel(x, y, (x + y) % 8 < 2 ? 0xFFB4B4B4 : 0xFFC0C0C0);
    m_BackBrush = QBrush(hatch);

    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_InputMethodEnabled, false); // letters and Space reach the tools in Hangul mode too
    viewport()->setAttribute(Qt::WA_OpaquePaintEvent); // every pixel is drawn, so nothing need be erased before
    viewport()->setAutoFillBackground(false);
    viewport()->setMouseTracking(true);
    viewport()->setAcceptDrops(true);
    RegisterCommands();
    m_pViews->Add(this);
    UpdateScrollBars();
}

CPaintView::~CPaintView()
{
    EndDrag();
    if (g_pActiveToolView == this)
        OnActivateView(false);
    m_pViews->Remove(this);
}

void CPaintView::RegisterCommands()
{
    const auto withImage = [this](CommandState& state) { state.bEnabled = GetImage(); };
    const auto add = [&](int nId, std::function<void()> act) {
        OnCommandId(
            nId,
            [this, act] {
                if (GetImage())
                    act();
            },
            withImage);
    };
    add(30063, [this] { OnZoomIn(); });
    add(30064, [this] { OnZoomOut(); });
    add(30065, [this] { OnZoomFit(); });
    add(30066, [this] { SetZoom(1); });
    OnCommandId(57643, [this] { UndoCommand(*GetImage()); },
                [this](CommandState& state) { state.bEnabled = GetImage() && CanUndo(*GetImage()); });
    OnCommandId(57644, [this] { RedoCommand(*GetImage()); },
                [this](CommandState& state) { state.bEnabled = GetImage() && CanRedo(*GetImage()); });
    add(57605, [this] { RunPageSetup(this); });
    add(57607, [this] { RunPrint(*this); });
    add(57609, [this] { RunPrintPreview(*this); });
    RegisterPictureCommands(*this);
    RegisterSelectCommands(*this, [this] { return GetImage(); }, this);
    RegisterToolCommands(
        *this, [this] { return GetImage(); },
        [this](const ToolRow& row, int nCommand) { m_host.ShowToolBars(row, nCommand); });
}

CSize CPaintView::GetScaledSize() const
{
    const CPaintImage* pImage = GetImage();
    if (!pImage)
        return {};
    return {static_cast<int>(pImage->m_nWidth * static_cast<double>(m_fZoom)),
            static_cast<int>(pImage->m_nHeight * static_cast<double>(m_fZoom))};
}

CSize CPaintView::GetClientSize() const
{
    const double fScale = ClientScale();
    return {static_cast<int>(viewport()->width() * fScale), static_cast<int>(viewport()->height() * fScale)};
}

CPoint CPaintView::GetImageOrigin() const
{
    const CSize client = GetClientSize(), scaled = GetScaledSize();
    return {client.cx >= scaled.cx ? (client.cx - scaled.cx) / 2 : 0, client.cy >= scaled.cy ? (client.cy - scaled.cy) / 2 : 0};
}

CPoint CPaintView::GetScrollPosition() const
{
    return {horizontalScrollBar()->value(), verticalScrollBar()->value()};
}

CPoint CPaintView::ClientToImage(CPoint pt) const
{
    const CPoint origin = GetImageOrigin(), scroll = GetScrollPosition();
    return {static_cast<int>((pt.x + scroll.x - origin.x) / static_cast<double>(m_fZoom)),
            static_cast<int>((pt.y + scroll.y - origin.y) / static_cast<double>(m_fZoom))};
}

CPoint CPaintView::ImageToClient(CPoint pt) const
{
    const CPoint origin = GetImageOrigin(), scroll = GetScrollPosition();
    return {static_cast<int>(pt.x * static_cast<double>(m_fZoom)) - scroll.x + origin.x,
            static_cast<int>(pt.y * static_cast<double>(m_fZoom)) - scroll.y + origin.y};
}

CRect CPaintView::ClientToImage(const CRect& rc) const
{
    const CPoint a = ClientToImage(CPoint{rc.left, rc.top}), b = ClientToImage(CPoint{rc.right, rc.bottom});
    return {a.x, a.y, b.x, b.y};
}

CRect CPaintView::ImageToClient(const CRect& rc) const
{
    const CPoint a = ImageToClient(CPoint{rc.left, rc.top}), b = ImageToClient(CPoint{rc.right, rc.bottom});
    return {a.x, a.y, b.x, b.y};
}

CRect CPaintView::GetPictureRect() const
{
    const CSize scaled = GetScaledSize();
    const CPoint pt = ImageToClient(CPoint{0, 0});
    return {pt.x, pt.y, pt.x + scaled.cx, pt.y + scaled.cy};
}

CPoint CPaintView::PointFromViewport(QPointF pt) const
{
    const double fScale = ClientScale();
    return {static_cast<int>(std::floor(pt.x() * fScale)), static_cast<int>(std::floor(pt.y() * fScale))};
}

QPointF CPaintView::PointToViewport(CPoint pt) const
{
    const double fScale = ClientScale();
    return {(pt.x + 0.5) / fScale, (pt.y + 0.5) / fScale};
}

void CPaintView::OnInitialUpdate()
{
    m_pViews->Attach();
    OnUpdate(HINT_NONE);
    FitFrame();
}

/// Both hints mean the same work: whether the frame follows the picture is the user's option alone, for a zoom that moved the
/// window unasked would take the picture from under the pointer.
void CPaintView::OnUpdate(int)
{
    m_pViews->Attach();
    const CSize limit = m_host.AvailableSpace(*this);
    m_nMaxWidth = limit.cx - 16;
    m_nMaxHeight = limit.cy - 16;
    if (m_host.FrameFollowsZoom())
        FitFrame();
    UpdateScrollBars();
    viewport()->update();
    RefreshOverlay();
    m_host.RefreshRulers(*this);
    m_host.ZoomChanged(*this);
}

/// Asks for a client area that holds the scaled picture, as far as there is room.
void CPaintView::FitFrame()
{
    if (!GetImage())
        return;
    const int nRulers = m_host.RulersVisible(*this) ? c_nRulerSize : 0;
    const CSize scaled = GetScaledSize();
    const auto wanted = [&](int nScaled, int nMost) {
        return std::clamp(nMost - nRulers, 1, std::max(static_cast<int>(std::ceil(nScaled / ClientScale())), 1));
    };
    m_host.ResizeFrame(*this, {wanted(scaled.cx, m_nMaxWidth - c_sizeFrameBorder.cx), wanted(scaled.cy, m_nMaxHeight - c_sizeFrameBorder.cy)});
}

void CPaintView::OnActivateView(bool bActivate)
{
    if (bActivate) {
        m_pViews->Attach();
        g_pActiveToolView = this;
        if (const CPaintImage* pImage = GetImage())
            pImage->Activate();
        RefreshOverlay();
    } else {
        EndDrag();
        ReleaseSpace();
        LetGoOfKeys();
        SetOverlay({}); // the tool may change before the view comes back
        if (g_pActiveToolView == this)
            g_pActiveToolView = nullptr;
        CPaintImage::Deactivate();
    }
    m_host.ViewActivated(*this, bActivate);
}

/// Another size is not a zoom: the frame follows it, as it does when a picture is opened.
void CPaintView::SizeChanged()
{
    OnUpdate(HINT_NONE);
    FitFrame();
    UpdateScrollBars();
}

/// The image point (with its fraction) in the middle of the client area; on an axis on which all is in sight the picture's middle.
QPointF CPaintView::CentreInImage() const
{
    const CPoint scroll = GetScrollPosition();
    const CSize client = GetClientSize(), scaled = GetScaledSize();
    const auto centre = [&](int nClient, int nScaled, int nScroll) {
        return nClient >= nScaled ? nScaled / 2.0 / m_fZoom : (nClient / 2 + nScroll) / static_cast<double>(m_fZoom);
    };
    return {centre(client.cx, scaled.cx, scroll.x), centre(client.cy, scaled.cy, scroll.y)};
}

/// Sets the zoom and scrolls so that the image point comes under the client point, or to the middle without one.
void CPaintView::ApplyZoom(float fZoom, QPointF ptImage, const CPoint* pAnchor)
{
    m_fZoom = fZoom;
    UpdateAllViews(m_doc, HINT_ZOOM);
    const CSize client = GetClientSize();
    const CPoint origin = GetImageOrigin();
    const CPoint at = pAnchor ? CPoint{pAnchor->x - origin.x, pAnchor->y - origin.y} : CPoint{client.cx / 2, client.cy / 2};
    ScrollToPosition({static_cast<int>(std::lround(ptImage.x() * fZoom)) - at.x, static_cast<int>(std::lround(ptImage.y() * fZoom)) - at.y});
    m_host.RefreshRulers(*this);
    RefreshCursor();
}

void CPaintView::SetZoom(float fZoom)
{
    ApplyZoom(ZoomRule(fZoom), CentreInImage(), nullptr);
}

void CPaintView::OnZoomIn()
{
    SetZoom(ZoomInStep(m_fZoom));
}

void CPaintView::OnZoomOut()
{
    SetZoom(ZoomOutStep(m_fZoom));
}

void CPaintView::ZoomAt(bool bIn, CPoint pt)
{
    if (!GetImage())
        return;
    const CPoint image = ClientToImage(pt);
    ApplyZoom(MagnifierStep(m_fZoom, bIn), QPointF(image.x, image.y), nullptr);
}

void CPaintView::OnZoomFit()
{
    const CPaintImage* pImage = GetImage();
    if (!pImage)
        return;
    const CSize space = m_host.AvailableSpace(*this);
    const int nMargin = m_host.RulersVisible(*this) ? 24 : 8;
    const int nWidth = space.cx - c_sizeFrameBorder.cx - nMargin;
    const int nHeight = space.cy - c_sizeFrameBorder.cy - nMargin;
    const float fZoom = pImage->m_nWidth >= pImage->m_nHeight
        ? static_cast<float>((nWidth - 16) * ClientScale()) / static_cast<float>(pImage->m_nWidth)
        : static_cast<float>((nHeight - 32) * ClientScale()) / static_cast<float>(pImage->m_nHeight);
    m_host.PlaceFrame(*this, QRect(5, 5, nWidth, nHeight));
    SetZoom(fZoom);
}

/// The bars count client pixels. An axis on which the picture fits when neither bar takes room has none.
void CPaintView::UpdateScrollBars()
{
    const CSize scaled = GetScaledSize();
    CSize client = GetClientSize();
    const QSize most = maximumViewportSize();
    const double fScale = ClientScale();
    if (scaled.cx <= static_cast<int>(most.width() * fScale) && scaled.cy <= static_cast<int>(most.height() * fScale))
        client = scaled;
    const auto set = [](QScrollBar* pBar, int nScaled, int nClient) {
        pBar->setRange(0, std::max(nScaled - nClient, 0));
        pBar->setSingleStep(c_nScrollStep);
        pBar->setPageStep(std::max(nClient - c_nScrollStep, 1));
    };
    const bool bHorz = HasHScroll(), bVert = HasVScroll();
    set(horizontalScrollBar(), scaled.cx, client.cx);
    set(verticalScrollBar(), scaled.cy, client.cy);
    if (bHorz != HasHScroll() || bVert != HasVScroll()) {
        // The toolkit would make room for the bars at the next turn of the event loop; who zooms needs the new client area now.
        QEvent layout(QEvent::LayoutRequest);
        event(&layout);
    }
}

void CPaintView::ScrollToPosition(CPoint pt)
{
    horizontalScrollBar()->setValue(pt.x);
    verticalScrollBar()->setValue(pt.y);
}

bool CPaintView::HasHScroll() const
{
    return horizontalScrollBar()->maximum() > 0;
}

bool CPaintView::HasVScroll() const
{
    return verticalScrollBar()->maximum() > 0;
}

void CPaintView::resizeEvent(QResizeEvent*)
{
    UpdateScrollBars();
    viewport()->update(); // centring moves all of it
    RefreshOverlay();
    m_host.RefreshRulers(*this);
}

} // namespace kestrune
