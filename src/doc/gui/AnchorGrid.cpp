#include "doc/gui/AnchorGrid.h"

#include "base/StringTable.h"
#include "doc/Canvas.h"
#include "ui/Dialog.h"

#include <QGridLayout>
#include <QPainter>
#include <QToolButton>

#include <cmath>
#include <cstdlib>

namespace kestrune {

namespace {

constexpr int c_nButton = 28;
constexpr int c_nIcon = 18;

/// An arrow that points from the chosen place outwards, or the picture itself.
QIcon PlaceIcon(int dx, int dy, const QWidget& over)
{
    const qreal fRatio = over.devicePixelRatioF();
    QPixmap pixmap(QSize(c_nIcon, c_nIcon) * fRatio);
    pixmap.setDevicePixelRatio(fRatio);
    pixmap.fill(Qt::transparent);
    if (std::abs(dx) > 1 || std::abs(dy) > 1)
        return pixmap;
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    const QColor ink = over.palette().color(QPalette::ButtonText);
    painter.setPen(QPen(ink, 1.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    if (dx == 0 && dy == 0) {
        painter.setBrush(ink);
        painter.drawRoundedRect(QRectF(4, 4, c_nIcon - 8, c_nIcon - 8), 1, 1);
        return pixmap;
    }
    painter.translate(c_nIcon / 2.0, c_nIcon / 2.0);
    painter.rotate(std::atan2(dy, dx) * 45 / std::atan(1.0));
    painter.drawLine(QPointF(-5, 0), QPointF(5, 0));
    painter.drawPolyline(QPolygonF{QPointF(1.5, -3.5), QPointF(5, 0), QPointF(1.5, 3.5)});
    return pixmap;
}

} // namespace

CAnchorGrid::CAnchorGrid(QWidget* pParent)
    : QWidget(pParent)
{
    auto* pGrid = new QGridLayout(this);
    pGrid->setContentsMargins(0, 0, 0, 0);
    pGrid->setSpacing(2);
    for (int i = 0; i < c_nCanvasAnchors; i++) {
        auto* pButton = new QToolButton;
        pButton->setCheckable(true);
        pButton->setFixedSize(c_nButton, c_nButton);
        pButton->setIconSize({c_nIcon, c_nIcon});
        pButton->setFocusPolicy(Qt::StrongFocus);
        pButton->setAccessibleName(TextOf(IDS_ANCHOR_0 + i));
        pButton->setToolTip(TextOf(IDS_ANCHOR_0 + i));
        m_buttons.addButton(pButton, i);
        pGrid->addWidget(pButton, i / 3, i % 3);
    }
    m_buttons.setExclusive(true);
    m_buttons.button(c_nAnchorMiddle)->setChecked(true);
    setFocusProxy(m_buttons.button(c_nAnchorMiddle));
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    ShowArrows();
    connect(&m_buttons, &QButtonGroup::idToggled, this, [this](int nAnchor, bool bChecked) {
        if (!bChecked)
            return;
        setFocusProxy(m_buttons.button(nAnchor));
        ShowArrows();
        Q_EMIT AnchorChanged(nAnchor);
    });
}

void CAnchorGrid::ShowArrows()
{
    const int nAnchor = Anchor();
    for (int i = 0; i < c_nCanvasAnchors; i++)
        m_buttons.button(i)->setIcon(PlaceIcon(i % 3 - nAnchor % 3, i / 3 - nAnchor / 3, *this));
}

} // namespace kestrune
