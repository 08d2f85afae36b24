#include "ui/Popup.h"

#include "base/StringTable.h"
#include "ui/Dialog.h"
#include "ui/Icons.h"
#include "ui/NumEdit.h"
#include "ui/PopupSlider.h"

#include <QCoreApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QScreen>

#include <algorithm>
#include <cmath>

namespace kestrune {

namespace {

/// The slider runs over whole steps of the box's delta, so that a box with decimals slides too.
int ToSlider(const CNumEdit& edit, float fValue)
{
    return static_cast<int>(std::lround(fValue / edit.GetDelta()));
}

} // namespace

CPopup::CPopup(CNumEdit* pEdit, QWidget* pParent)
    : QFrame(pParent, Qt::Popup)
    , m_pEdit(pEdit)
    , m_pSlider(new CPopupSlider(this))
{
    setAttribute(Qt::WA_DeleteOnClose);
    setFrameStyle(QFrame::StyledPanel | QFrame::Plain);
    auto* pLayout = new QHBoxLayout(this);
    pLayout->setContentsMargins(4, 4, 4, 4);
    pLayout->addWidget(m_pSlider);
    m_pSlider->SetRange(ToSlider(*pEdit, pEdit->GetMin()), ToSlider(*pEdit, pEdit->GetMax()));
    m_pSlider->SetPos(ToSlider(*pEdit, pEdit->GetValue()));
    m_pSlider->SetDefault(ToSlider(*pEdit, pEdit->GetDefault().value_or(pEdit->GetValue())));
    m_pSlider->setAccessibleName(pEdit->accessibleName());
    connect(m_pSlider, &CPopupSlider::Moved, this, [this](int nPos, int) {
        m_pEdit->SetValue(static_cast<float>(nPos) * m_pEdit->GetDelta());
        Q_EMIT m_pEdit->ValueEdited(m_pEdit->GetValue());
    });
}

void CPopup::Place(int x)
{
    const QRect rcScreen = m_pEdit->screen()->availableGeometry();
    int y = m_pEdit->mapToGlobal(QPoint(0, m_pEdit->height() + 1)).y();
    if (y + height() > rcScreen.bottom())
        y = m_pEdit->mapToGlobal(QPoint(0, -height() - 1)).y();
    move(std::clamp(x, rcScreen.left(), std::max(rcScreen.left(), rcScreen.right() - width())), y);
    show();
    m_pSlider->setFocus(Qt::PopupFocusReason);
}

void CPopup::Open()
{
    adjustSize();
    Place(m_pEdit->mapToGlobal(QPoint(0, 0)).x());
}

void CPopup::OpenAt(QPoint ptScreen)
{
    adjustSize();
    layout()->setGeometry(contentsRect()); // the slider's place is needed before the frame is shown
    Place(ptScreen.x() - m_pSlider->x() - m_pSlider->ThumbX());
    m_nPosAtPress = m_pSlider->GetPos();
    // Where the screen's edge has held the popup back the thumb is taken beside its middle.
    m_pSlider->BeginTracking(m_pSlider->mapFromGlobal(ptScreen).x());
    m_pSlider->grabMouse();
    m_bHeld = true;
    connect(m_pSlider, &CPopupSlider::Released, this, &CPopup::OnReleased, Qt::SingleShotConnection);
}

/// A plain click leaves the popup open for a second press; a drag is done with it.
void CPopup::OnReleased()
{
    m_pSlider->releaseMouse();
    m_bHeld = false;
    if (m_pSlider->GetPos() != m_nPosAtPress)
        close();
}

/// While a popup is open the toolkit hands it the mouse wherever the pointer is, past the grab of the slider in it.
void CPopup::PassOn(QMouseEvent& event)
{
    if (!m_bHeld)
        return;
    QMouseEvent passed(event.type(), m_pSlider->mapFromGlobal(event.globalPosition()), event.globalPosition(), event.button(), event.buttons(), event.modifiers());
    QCoreApplication::sendEvent(m_pSlider, &passed);
}

void CPopup::mouseMoveEvent(QMouseEvent* pEvent)
{
    PassOn(*pEvent);
}

void CPopup::mouseReleaseEvent(QMouseEvent* pEvent)
{
    PassOn(*pEvent);
}

void CPopup::keyPressEvent(QKeyEvent* pEvent)
{
    const int nKey = pEvent->key();
    if (nKey == Qt::Key_Escape || nKey == Qt::Key_Return || nKey == Qt::Key_Enter)
        close();
    else
        QFrame::keyPressEvent(pEvent);
}

CPopupArrow::CPopupArrow(CNumEdit* pEdit, QWidget* pParent)
    : QToolButton(pParent)
    , m_pEdit(pEdit)
{
    setIcon(LoadIcon("widgets/arrow-down"));
    setIconSize({10, 10});
    setAutoRaise(true);
    setFocusPolicy(Qt::NoFocus); // the box opens it with Alt+Down
    setFixedWidth(16);
    setAccessibleName(TextOf(IDS_NUMBER_SLIDER));
    setToolTip(TextOf(IDS_NUMBER_SLIDER) + QStringLiteral(" (Alt+↓)"));
    pEdit->installEventFilter(this);
}

void CPopupArrow::OpenPopup()
{
    (new CPopup(m_pEdit, m_pEdit->window()))->Open();
}

void CPopupArrow::mousePressEvent(QMouseEvent* pEvent)
{
    if (pEvent->button() == Qt::LeftButton)
        (new CPopup(m_pEdit, m_pEdit->window()))->OpenAt(pEvent->globalPosition().toPoint());
}

bool CPopupArrow::eventFilter(QObject* pObject, QEvent* pEvent)
{
    if (pObject == m_pEdit && pEvent->type() == QEvent::KeyPress) {
        const auto* pKey = static_cast<QKeyEvent*>(pEvent);
        if (pKey->key() == Qt::Key_Down && pKey->modifiers() & Qt::AltModifier) {
            OpenPopup();
            return true;
        }
    }
    return QToolButton::eventFilter(pObject, pEvent);
}

} // namespace kestrune
