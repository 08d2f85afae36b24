#include "resources/gui/BrushButtons.h"

#include "base/StringTable.h"
#include "resources/gui/BrushPicture.h"
#include "ui/Dialog.h"
#include "ui/DialogRows.h"

#include <QLabel>
#include <QMouseEvent>
#include <QPainter>
#include <QScreen>
#include <QVBoxLayout>

#include <algorithm>

namespace kestrune {

namespace {

constexpr int c_nPreview = 48;
constexpr int c_nStripHeight = 18;

/// The frame of a field of paper: the theme's middle grey, or the accent while it has the focus.
void DrawRim(QPainter& painter, const QWidget& widget)
{
    painter.setPen(widget.palette().color(widget.hasFocus() ? QPalette::Highlight : QPalette::Mid));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(widget.rect().adjusted(0, 0, -1, -1));
}

} // namespace

CBrushPreview::CBrushPreview(QWidget* pParent)
    : QAbstractButton(pParent)
{
    setFixedSize(sizeHint());
    setFocusPolicy(Qt::TabFocus);
    setAccessibleName(TextOf(IDS_BRUSH_PREVIEW));
    setToolTip(TextOf(IDS_BRUSH_PREVIEW_TIP));
    connect(this, &QAbstractButton::clicked, this, &CBrushPreview::ShowWhole); // by keyboard
}

QSize CBrushPreview::sizeHint() const
{
    return {c_nPreview + 2, c_nPreview + 2};
}

void CBrushPreview::SetBrush(const ActiveBrush& brush, int nShownWidth)
{
    m_brush = brush;
    m_nShownWidth = nShownWidth;
    update();
}

void CBrushPreview::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(rect(), Qt::white);
    if (!m_brush.aMask.empty()) {
        painter.drawImage(1, 1, BrushPicture(m_brush.aMask, m_brush.nWidth, m_brush.nHeight, c_nPreview, devicePixelRatioF()));
        DrawBrushWidth(painter, rect().adjusted(0, 0, -3, -1), m_nShownWidth);
    }
    DrawRim(painter, *this);
}

void CBrushPreview::mousePressEvent(QMouseEvent* pEvent)
{
    if (pEvent->button() == Qt::LeftButton)
        ShowWhole();
}

void CBrushPreview::ShowWhole()
{
    if (m_brush.aMask.empty())
        return;
    auto* pPopup = new CBrushPopup(m_brush, window());
    pPopup->adjustSize();
    const QRect rcScreen = screen()->availableGeometry();
    const QPoint pt = mapToGlobal(QPoint(0, height() + 2));
    pPopup->move(std::clamp(pt.x(), rcScreen.left(), std::max(rcScreen.left(), rcScreen.right() - pPopup->width())),
                 std::clamp(pt.y(), rcScreen.top(), std::max(rcScreen.top(), rcScreen.bottom() - pPopup->height())));
    pPopup->show();
}

CBrushPopup::CBrushPopup(const ActiveBrush& brush, QWidget* pParent)
    : QFrame(pParent, Qt::Popup)
{
    setAttribute(Qt::WA_DeleteOnClose);
    setFrameStyle(QFrame::Box | QFrame::Plain);
    const double fScale = pParent->devicePixelRatioF();
    const QSize szScreen = pParent->screen()->availableSize();
    const int nLongest = static_cast<int>(std::max(brush.nWidth, brush.nHeight) / fScale) + 1;
    const int nSide = std::clamp(nLongest, c_nPreview, std::max(c_nPreview, std::min(szScreen.width(), szScreen.height()) / 2));
    auto* pPicture = new QLabel(this);
    pPicture->setPixmap(QPixmap::fromImage(BrushPicture(brush.aMask, brush.nWidth, brush.nHeight, nSide, fScale)));
    // The mask has a row and a column more than the brush and its soft edge.
    auto* pText = new QLabel(TextOf(IDS_BRUSH_POPUP).arg(brush.nWidth - 1).arg(brush.nHeight - 1), this);
    pText->setAlignment(Qt::AlignCenter);
    auto* pLayout = new QVBoxLayout(this);
    pLayout->setContentsMargins(c_nRowGap, c_nRowGap, c_nRowGap, c_nRowGap);
    pLayout->setSpacing(c_nRowGap);
    pLayout->addWidget(pPicture, 0, Qt::AlignCenter);
    pLayout->addWidget(pText);
}

CResponseStrip::CResponseStrip(QWidget* pParent)
    : QAbstractButton(pParent)
{
    setFocusPolicy(Qt::TabFocus);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    setAccessibleName(TextOf(IDS_BRUSH_CURVE_STRIP));
    setToolTip(TextOf(IDS_BRUSH_CURVE_STRIP_TIP));
}

QSize CResponseStrip::sizeHint() const
{
    return {130, c_nStripHeight};
}

QSize CResponseStrip::minimumSizeHint() const
{
    return {40, c_nStripHeight};
}

void CResponseStrip::SetTable(const ResponseTable& table)
{
    m_table = table;
    update();
}

void CResponseStrip::paintEvent(QPaintEvent*)
{
    QImage steps(256, 1, QImage::Format_Grayscale8);
    for (int i = 0; i < 256; i++)
        steps.scanLine(0)[i] = static_cast<uchar>(255 - m_table[static_cast<std::size_t>(i)]);
    QPainter painter(this);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawImage(rect(), steps);
    DrawRim(painter, *this);
}

} // namespace kestrune
