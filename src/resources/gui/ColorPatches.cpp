#include "resources/gui/ColorPatches.h"

#include "base/StringTable.h"
#include "ui/Dialog.h"
#include "ui/Icons.h"

#include <QMouseEvent>
#include <QPainter>
#include <QToolButton>

namespace kestrune {

namespace {

QToolButton* MakeButton(QWidget* pParent, const char* pszIcon, int nTipId, const QRect& rc)
{
    auto* pButton = new QToolButton(pParent);
    pButton->setIcon(LoadIcon(QString::fromLatin1(pszIcon)));
    pButton->setIconSize({12, 12});
    pButton->setAutoRaise(true);
    pButton->setToolTip(TextOf(nTipId));
    pButton->setAccessibleName(TextOf(nTipId));
    pButton->setGeometry(rc);
    pButton->setFocusPolicy(Qt::NoFocus); // letters do the same
    return pButton;
}

} // namespace

struct CColorPatches::Measures {
    QSize size;
    int nPatch;
    int nShift; ///< how far the background patch stands to the right and below
    QRect rcSwap;
    QRect rcDefaults;
};

const CColorPatches::Measures CColorPatches::c_aMeasures[] = {
    {{56, 48}, 28, 16, {33, 0, 16, 16}, {0, 31, 16, 16}},
    {{30, 48}, 19, 11, {0, 33, 15, 15}, {15, 33, 15, 15}},
};

CColorPatches::CColorPatches(QWidget* pParent, Size size)
    : QWidget(pParent)
    , m_measures(c_aMeasures[size])
{
    setFocusPolicy(Qt::StrongFocus);
    setFixedSize(sizeHint());
    setAccessibleName(TextOf(IDS_COLOR_PATCHES));
    setToolTip(TextOf(IDS_COLOR_PATCHES_TIP));
    connect(MakeButton(this, "widgets/swap-colours", IDS_COLOR_SWAP, m_measures.rcSwap), &QToolButton::clicked, this, &CColorPatches::SwapRequested);
    connect(MakeButton(this, "widgets/default-colours", IDS_COLOR_DEFAULTS, m_measures.rcDefaults), &QToolButton::clicked, this, &CColorPatches::DefaultsRequested);
}

void CColorPatches::SetColors(COLORREF crForeground, COLORREF crBackground)
{
    if (crForeground == m_crForeground && crBackground == m_crBackground)
        return;
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

QSize CColorPatches::sizeHint() const
{
    return m_measures.size;
}

QRect CColorPatches::PatchRect(bool bBackground) const
{
    const int nAt = bBackground ? m_measures.nShift : 0;
    return {nAt, nAt, m_measures.nPatch, m_measures.nPatch};
}

void CColorPatches::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    for (const bool bBackground : {true, false}) {
        const COLORREF cr = bBackground ? m_crBackground : m_crForeground;
        const QRect rc = PatchRect(bBackground);
        const bool bActive = bBackground == m_bBackground;
        // Filled rectangles inside each other: frame, a rim that keeps the colour apart from it, the colour.
        const int nFrame = bActive ? 2 : 1;
        painter.fillRect(rc, palette().color(bActive ? QPalette::Highlight : QPalette::Mid));
        painter.fillRect(rc.adjusted(nFrame, nFrame, -nFrame, -nFrame), palette().color(QPalette::Base));
        painter.fillRect(rc.adjusted(nFrame + 1, nFrame + 1, -nFrame - 1, -nFrame - 1), QColor(RedOf(cr), GreenOf(cr), BlueOf(cr)));
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
