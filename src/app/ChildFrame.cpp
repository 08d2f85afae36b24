#include "app/ChildFrame.h"

#include "app/CommandTable.h"
#include "app/MainFrame.h"
#include "app/PaintApp.h"
#include "base/Messages.h"
#include "base/StringTable.h"
#include "filters/gui/FilterCommands.h"
#include "view/PaintView.h"

#include <QCloseEvent>
#include <QContextMenuEvent>
#include <QMdiArea>
#include <QStyle>

#include <cstdio>

namespace kestrune {

namespace {

struct DepthRow {
    int nColorMode;
    int nBitsPerPixel;
    std::string_view text;
};
constexpr DepthRow c_aDepths[] = {
    {MODE_BITMAP, 1, " @ 비트맵"},
    {MODE_16COLORS, 4, " @ 16 색상"},
    {MODE_256COLORS, 8, " @ 인덱스 색상"},
    {MODE_GRAY, 8, " @ 그레이 스케일"},
};

} // namespace

std::string_view DepthText(int nColorMode, int nBitsPerPixel)
{
    for (const DepthRow& row : c_aDepths)
        if (row.nColorMode == nColorMode && row.nBitsPerPixel == nBitsPerPixel)
            return row.text;
    return " @ RGB 색상";
}

std::string FrameTitle(const std::string& strDocument, float fZoom, const CPaintImage& image)
{
    char zoom[32], size[32];
    std::snprintf(zoom, sizeof zoom, " (%4.0f%%)", static_cast<double>(fZoom) * 100);
    std::snprintf(size, sizeof size, " %dx%d", image.m_nWidth, image.m_nHeight);
    return strDocument + zoom + std::string(DepthText(image.m_nColorMode, image.m_nBitsPerPixel)) + size;
}

CChildFrame::CChildFrame(std::unique_ptr<CPaintDoc> pDoc, CMainFrame& frame)
    : m_frame(frame)
    , m_pDoc(std::move(pDoc))
    , m_pView(new CPaintView(*m_pDoc, frame, this))
{
    setAttribute(Qt::WA_DeleteOnClose);
    setAttribute(Qt::WA_InputMethodEnabled, false);
    setWidget(m_pView);
    setMinimumSize(160, 96);
    OnUpdateFrameTitle();

    RegisterFilterCommands(
        *m_pView, [this] { return m_pDoc->m_pImage.get(); }, GetApp()->Profile(), m_pView);
    OnCommandId(ID_FILE_CLOSE, [this] { close(); });
}

CChildFrame::~CChildFrame()
{
    m_frame.ChildDestroyed(this);
    delete m_pView; // before the document that it shows
}

void CChildFrame::OnUpdateFrameTitle()
{
    if (!m_pDoc->m_pImage)
        return;
    const QString strTitle = QString::fromStdString(FrameTitle(m_pDoc->GetTitle(), m_pView->GetZoom(), *m_pDoc->m_pImage));
    if (strTitle != windowTitle())
        setWindowTitle(strTitle);
}

bool CChildFrame::SaveModified()
{
    m_pView->EndDrag(); // a stroke under way is part of what the question is about
    if (!m_pDoc->IsModified())
        return true;
    std::string strText(StringText(IDS_ASK_SAVE));
    const std::size_t nPlace = strText.find("%s");
    if (nPlace != std::string::npos)
        strText.replace(nPlace, 2, m_pDoc->GetTitle());
    switch (Messages().Message(strText, MessageButtons::YesNoCancel, MessageAnswer::Yes)) {
    case MessageAnswer::Yes:
    case MessageAnswer::Ok:
        return m_pDoc->OnFileSave();
    case MessageAnswer::No:
        return true;
    default:
        return false;
    }
}

void CChildFrame::CloseNow()
{
    m_bMayClose = true;
    close();
}

void CChildFrame::closeEvent(QCloseEvent* pEvent)
{
    if (!m_bMayClose && !SaveModified()) {
        pEvent->ignore();
        return;
    }
    m_bMayClose = true;
    // Out of the route at once; the object itself lives until the events under way are done.
    m_frame.ChildDestroyed(this);
    QMdiSubWindow::closeEvent(pEvent);
}

QSize CChildFrame::BorderSize() const
{
    return size() - m_pView->size();
}

void CChildFrame::SetClientSize(QSize size)
{
    if (isMaximized() || isMinimized() || !mdiArea())
        return;
    const QRect rcSpace = mdiArea()->viewport()->rect();
    QSize frame = size + BorderSize();
    // A side that does not fit has a scroll bar, which lies along the other side.
    const int nScrollBar = style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, m_pView);
    const bool bWide = frame.width() > rcSpace.width(), bHigh = frame.height() > rcSpace.height();
    frame += QSize(bHigh ? nScrollBar : 0, bWide ? nScrollBar : 0);
    frame = frame.boundedTo(rcSpace.size()).expandedTo(minimumSize());
    QRect rc(pos(), frame);
    // A frame that grows stays inside the workspace as far as it can.
    rc.moveLeft(std::max(0, std::min(rc.left(), rcSpace.width() - rc.width())));
    rc.moveTop(std::max(0, std::min(rc.top(), rcSpace.height() - rc.height())));
    setGeometry(rc);
}

void CChildFrame::contextMenuEvent(QContextMenuEvent* pEvent)
{
    if (m_pView->geometry().contains(pEvent->pos())) {
        QMdiSubWindow::contextMenuEvent(pEvent);
        return;
    }
    m_frame.ShowViewMenu(pEvent->globalPos());
    pEvent->accept();
}

} // namespace kestrune
