#include "resources/gui/ColorPatches.h"

#include "base/StringTable.h"
#include "ui/Dialog.h"
#include "ui/Icons.h"

#include <QMouseEvent>
#include <QPainter>
#include <QToolButton>

namespace kestrune {

namespace {

constexpr int c_nPatch = 28;
constexpr int c_nShift = 16; // how far the background patch stands to the right and below

QToolButton* MakeButton(QWidget* pParent, const char* pszIcon, int nTipId, QPoint at)
{
    auto* pButton = new QToolButton(pParent);
    pButton->setIcon(LoadIcon(QString::fromLatin1(pszIcon)));
    pButton->setIconSize({12, 12});
    pButton->setAutoRaise(true);
    pButton->setToolTip(TextOf(nTipId));
    pButton->setAccessibleName(TextOf(nTipId));
    pButton->setGeometry(at.x(), at.y(), 16, 16);
    return pButton;
}

} // namespace

CColorPatches::CColorPatches(QWidget* pParent)
    : QWidget(pParent)
{
    setFocusPolicy(Qt::StrongFocus);
    setFixedSize(sizeHint());
    setAccessibleName(TextOf(IDS_COLOR_PATCHES));
    setToolTip(TextOf(IDS_COLOR_PATCHES_TIP));
    connect(MakeButton(this, "widgets/swap-colours", IDS_COLOR_SWAP, {33, 0}), &QToolButton::clicked, this, &CColorPatches::SwapRequested);
    connect(MakeButton(this, "widgets/default-colours", IDS_COLOR_DEFAULTS, {0, 31}), &QToolButton::clicked, this, &CColorPatches::DefaultsRequested);
}

void CColorPatches::SetColors(COLORREF crForeground, COLORREF crBackground)
{
    m_crForeground = crForeground;
    m_crBackground = crBackground;
    update();
}

void CColorPatches::SetBackgroundActive(bool bBackground)
{
    if (bBackground == m_bBackground)
        return;
    m_bBackground = bBackground;
    update();
    Q_EMIT ActiveChanged();
}

QRect CColorPatches::PatchRect(bool bBackground) const
{
    const int nAt = bBackground ? c_nShift + 2 : 2;
    return {nAt, nAt, c_nPatch, c_nPatch};
}

void CColorPatches::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    for (const bool bBackground : {true, false}) {
        const COLORREF cr = bBackground ? m_crBackground : m_crForeground;
        const QRect rc = PatchRect(bBackground);
        const bool bActive = bBackground == m_bBackground;
        painter.setPen(QPen(palette().color(bActive ? QPalette::Highlight : QPalette::Mid), bActive ? 2 : 1));
        painter.setBrush(QColor(RedOf(cr), GreenOf(cr), BlueOf(cr)));
        painter.drawRect(rc.adjusted(0, 0, -1, -1));
        painter.setPen(palette().color(QPalette::Base)); // a light rim keeps dark colours apart from the frame
        painter.drawRect(rc.adjusted(1, 1, -2, -2));
    }
}

void CColorPatches::mousePressEvent(QMouseEvent* pEvent)
{
    if (pEvent->button() != Qt::LeftButton)
        return;
    const QPoint pt = pEvent->position().toPoint();
    const bool bForeground = PatchRect(false).contains(pt);
    if (!bForeground && !PatchRect(true).contains(pt))
        return;
    if (bForeground == m_bBackground)
        SetBackgroundActive(!bForeground);
    else
        Q_EMIT PickRequested(m_bBackground);
}

void CColorPatches::keyPressEvent(QKeyEvent* pEvent)
{
    switch (pEvent->key()) {
    case Qt::Key_Left:
    case Qt::Key_Up:
        return SetBackgroundActive(false);
    case Qt::Key_Right:
    case Qt::Key_Down:
        return SetBackgroundActive(true);
    case Qt::Key_Space:
    case Qt::Key_Return:
    case Qt::Key_Enter:
        Q_EMIT PickRequested(m_bBackground);
        return;
    default:
        QWidget::keyPressEvent(pEvent);
    }
}

} // namespace kestrune
