#include "app/MdiWorkspace.h"

#include "base/StringTable.h"
#include "ui/Icons.h"
#include "ui/Theme.h"

#include <QEvent>
#include <QMdiSubWindow>
#include <QPainter>
#include <QPaintEvent>
#include <QStyle>

#include <cmath>

namespace kestrune {

namespace {

constexpr int c_nHintIcon = 64;

QString Text(int nId)
{
    const std::string_view text = StringText(nId);
    return QString::fromUtf8(text.data(), qsizetype(text.size()));
}

} // namespace

std::vector<QRect> TileRects(const QRect& area, int nCount, bool bHorizontal)
{
    std::vector<QRect> rects;
    if (nCount <= 0)
        return rects;
    // Horizontal: few columns of many rows. Vertical is the same turned over.
    const int nLines = std::max(1, static_cast<int>(std::sqrt(nCount)));
    const int nLong = bHorizontal ? area.width() : area.height();
    const int nShort = bHorizontal ? area.height() : area.width();
    int nPlaced = 0;
    for (int nLine = 0; nLine < nLines; nLine++) {
        const int nCells = nCount / nLines + (nLine >= nLines - nCount % nLines ? 1 : 0);
        const int nFrom = nLong * nLine / nLines, nTo = nLong * (nLine + 1) / nLines;
        for (int nCell = 0; nCell < nCells; nCell++, nPlaced++) {
            const int nStart = nShort * nCell / nCells, nEnd = nShort * (nCell + 1) / nCells;
            rects.push_back(bHorizontal ? QRect(area.x() + nFrom, area.y() + nStart, nTo - nFrom, nEnd - nStart)
                                        : QRect(area.x() + nStart, area.y() + nFrom, nEnd - nStart, nTo - nFrom));
        }
    }
    return rects;
}

std::vector<QRect> CascadeRects(const QRect& area, int nCount, int nStep)
{
    std::vector<QRect> rects;
    const QSize size(std::max(1, area.width() * 3 / 4), std::max(1, area.height() * 3 / 4));
    const int nFit = std::max(1, std::min(area.width() - size.width(), area.height() - size.height()) / std::max(1, nStep) + 1);
    for (int i = 0; i < nCount; i++)
        rects.emplace_back(area.topLeft() + QPoint(i % nFit * nStep, i % nFit * nStep), size);
    return rects;
}

CMdiWorkspace::CMdiWorkspace(QWidget* pParent)
    : QMdiArea(pParent)
{
    setBackground(ThemeWorkspace());
    setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    setActivationOrder(QMdiArea::CreationOrder);
    setAttribute(Qt::WA_InputMethodEnabled, false);
    viewport()->setAttribute(Qt::WA_InputMethodEnabled, false);
    setFrameShape(QFrame::NoFrame);
}

std::vector<QMdiSubWindow*> CMdiWorkspace::Arrangeable() const
{
    std::vector<QMdiSubWindow*> windows;
    for (QMdiSubWindow* pWindow : subWindowList(QMdiArea::CreationOrder)) {
        if (pWindow->isMaximized())
            pWindow->showNormal();
        if (!pWindow->isMinimized() && !pWindow->isHidden())
            windows.push_back(pWindow);
    }
    return windows;
}

void CMdiWorkspace::Tile(bool bHorizontal)
{
    const auto windows = Arrangeable();
    const auto rects = TileRects(viewport()->rect(), static_cast<int>(windows.size()), bHorizontal);
    for (std::size_t i = 0; i < windows.size(); i++)
        windows[i]->setGeometry(rects[i]);
}

void CMdiWorkspace::Cascade()
{
    const auto windows = Arrangeable();
    const int nStep = style()->pixelMetric(QStyle::PM_TitleBarHeight, nullptr, this) + 4;
    const auto rects = CascadeRects(viewport()->rect(), static_cast<int>(windows.size()), nStep);
    for (std::size_t i = 0; i < windows.size(); i++) {
        windows[i]->setGeometry(rects[i]);
        windows[i]->raise();
    }
    if (QMdiSubWindow* pActive = currentSubWindow())
        pActive->raise();
}

void CMdiWorkspace::ArrangeIcons()
{
    int x = 0, nBottom = viewport()->height();
    for (QMdiSubWindow* pWindow : subWindowList(QMdiArea::CreationOrder)) {
        if (!pWindow->isMinimized())
            continue;
        if (x > 0 && x + pWindow->width() > viewport()->width()) {
            x = 0;
            nBottom -= pWindow->height();
        }
        pWindow->move(x, nBottom - pWindow->height());
        x += pWindow->width();
    }
}

void CMdiWorkspace::paintEvent(QPaintEvent* pEvent)
{
    QPainter painter(viewport());
    painter.fillRect(pEvent->rect(), ThemeWorkspace());
    if (subWindowList().isEmpty())
        PaintHint(painter);
}

void CMdiWorkspace::PaintHint(QPainter& painter) const
{
    const QString strDrop = Text(IDS_HINT_DROP);
    const QString strKeys = Text(IDS_HINT_KEYS);
    const QFontMetrics metrics(font());
    const int nWidth = std::max({metrics.horizontalAdvance(strDrop), metrics.horizontalAdvance(strKeys), 280}) + 64;
    const int nHeight = 32 + c_nHintIcon + 16 + metrics.height() + 8 + metrics.height() + 28;
    QRect rc(0, 0, nWidth, nHeight);
    rc.moveCenter(viewport()->rect().center());
    if (rc.height() > viewport()->height())
        return;

    const bool bDark = CurrentTheme() == ThemeKind::Dark;
    const QColor ink = bDark ? QColor(190, 190, 190) : QColor(58, 58, 58);
    painter.setRenderHint(QPainter::Antialiasing);
    QPen dashes(bDark ? QColor(84, 84, 84) : QColor(128, 128, 128), 1.5, Qt::CustomDashLine, Qt::RoundCap);
    dashes.setDashPattern({5, 4});
    painter.setPen(dashes);
    painter.setBrush(bDark ? QColor(255, 255, 255, 8) : QColor(255, 255, 255, 46));
    painter.drawRoundedRect(QRectF(rc).adjusted(0.75, 0.75, -0.75, -0.75), 12, 12);

    QRect rcIcon(0, rc.top() + 32, c_nHintIcon, c_nHintIcon);
    rcIcon.moveLeft(rc.center().x() - c_nHintIcon / 2);
    LoadIcon(QStringLiteral("hint-open")).paint(&painter, rcIcon);
    painter.setPen(ink);
    const QRect rcDrop(rc.left(), rcIcon.bottom() + 16, rc.width(), metrics.height());
    painter.drawText(rcDrop, Qt::AlignCenter, strDrop);
    painter.drawText(QRect(rc.left(), rcDrop.bottom() + 8, rc.width(), metrics.height()), Qt::AlignCenter, strKeys);
}

void CMdiWorkspace::changeEvent(QEvent* pEvent)
{
    QMdiArea::changeEvent(pEvent);
    if (pEvent->type() == QEvent::PaletteChange && background().color() != ThemeWorkspace())
        setBackground(ThemeWorkspace());
}

} // namespace kestrune
