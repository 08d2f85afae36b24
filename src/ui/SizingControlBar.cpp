#include "ui/SizingControlBar.h"

#include "base/StringTable.h"
#include "ui/Icons.h"
#include "ui/Theme.h"

#include <QContextMenuEvent>
#include <QCoreApplication>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QMainWindow>
#include <QPainter>
#include <QResizeEvent>
#include <QToolButton>
#include <QVBoxLayout>

namespace kestrune {

namespace {

constexpr int c_nGripperHeight = 20;

struct SizeKeys {
    const char* pszCX;
    const char* pszCY;
};
constexpr SizeKeys c_horz{"sizeHorzCX", "sizeHorzCY"};
constexpr SizeKeys c_vert{"sizeVertCX", "sizeVertCY"};
constexpr SizeKeys c_float{"sizeFloatCX", "sizeFloatCY"};

/// The contents less a 1-pixel border. Its size hint is the bar's remembered size, which is what a dock area asks for.
class CBarClient : public QWidget {
public:
    explicit CBarClient(CSizingControlBar& bar)
        : QWidget(&bar)
        , m_bar(bar)
    {
        auto* pLayout = new QVBoxLayout(this);
        pLayout->setContentsMargins(1, 1, 1, 1);
        setAttribute(Qt::WA_InputMethodEnabled, false);
    }
    QSize sizeHint() const override { return m_bar.PreferredSize() - QSize(0, c_nGripperHeight); }
    QSize minimumSizeHint() const override { return QSize(80, 40).expandedTo(layout()->minimumSize()); }

private:
    CSizingControlBar& m_bar;
};

/// The gripper. Presses pass through to the dock, which drags itself by them.
class CGripper : public QWidget {
public:
    explicit CGripper(QDockWidget* pBar)
        : QWidget(pBar)
    {
        auto* pLayout = new QHBoxLayout(this);
        pLayout->setContentsMargins(6, 0, 2, 0);
        pLayout->setSpacing(4);
        auto* pTitle = new QLabel(pBar->windowTitle(), this);
        QFont font = pTitle->font();
        font.setPointSizeF(font.pointSizeF() * 0.92);
        pTitle->setFont(font);
        pLayout->addWidget(pTitle, 1);

        QToolButton* pClose = AddButton("widgets/close", IDS_BOX_CLOSE);
        pClose->setFocusPolicy(Qt::NoFocus);
        connect(pClose, &QToolButton::clicked, pBar, &QWidget::close);
        setFixedHeight(c_nGripperHeight);
    }

    void AddMenu(std::function<void(QPoint)> show)
    {
        m_showMenu = std::move(show);
        QToolButton* pMenu = AddButton("widgets/menu", IDS_BOX_MENU);
        pMenu->setFocusPolicy(Qt::TabFocus);
        connect(pMenu, &QToolButton::clicked, this, [this, pMenu] { m_showMenu(pMenu->mapToGlobal(pMenu->rect().bottomLeft())); });
    }

protected:
    void contextMenuEvent(QContextMenuEvent* pEvent) override
    {
        if (m_showMenu)
            m_showMenu(pEvent->globalPos());
        else
            pEvent->ignore();
    }
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        painter.fillRect(rect(), palette().button());
        painter.setPen(ThemeLine());
        painter.drawLine(0, height() - 1, width(), height() - 1);
    }

private:
    /// Behind the title, before the buttons that stand there.
    QToolButton* AddButton(const char* pszIcon, int nTextId)
    {
        auto* pButton = new QToolButton(this);
        pButton->setAutoRaise(true);
        pButton->setFixedSize(16, 16);
        pButton->setIcon(LoadIcon(QString::fromLatin1(pszIcon)));
        pButton->setIconSize({12, 12});
        const QString strText = QString::fromUtf8(StringText(nTextId));
        pButton->setToolTip(strText);
        pButton->setAccessibleName(parentWidget()->windowTitle() + u' ' + strText);
        static_cast<QHBoxLayout*>(layout())->insertWidget(1, pButton);
        return pButton;
    }

    std::function<void(QPoint)> m_showMenu;
};

} // namespace

CSizingControlBar::CSizingControlBar(int nBarId, const QString& strTitle, QSize created, QWidget* pParent)
    : QDockWidget(strTitle, pParent)
    , m_nBarId(nBarId)
    , m_szCreated(created)
    , m_szHorz(created)
    , m_szVert(created)
    , m_szFloat(created)
{
    setObjectName(QStringLiteral("Bar%1").arg(nBarId));
    setAccessibleName(strTitle);
    setAttribute(Qt::WA_InputMethodEnabled, false);
    setWidget(new CBarClient(*this));
    connect(this, &QDockWidget::topLevelChanged, this, &CSizingControlBar::OnTopLevelChanged);
}

void CSizingControlBar::SetContents(QWidget* pContents)
{
    widget()->layout()->addWidget(pContents);
}

void CSizingControlBar::SetMenu(std::function<void(QPoint)> show)
{
    if (auto* pGripper = dynamic_cast<CGripper*>(titleBarWidget()))
        pGripper->AddMenu(std::move(show));
}

std::string CSizingControlBar::ProfileSection() const
{
    return "Kestrune-SCBar-" + std::to_string(m_nBarId);
}

void CSizingControlBar::LoadState(const CProfile& profile)
{
    const std::string strSection = ProfileSection();
    const auto read = [&](const SizeKeys& keys, QSize& size) {
        size.setWidth(profile.GetInt(strSection, keys.pszCX, size.width()));
        size.setHeight(profile.GetInt(strSection, keys.pszCY, size.height()));
    };
    read(c_horz, m_szHorz);
    read(c_vert, m_szVert);
    read(c_float, m_szFloat);
}

void CSizingControlBar::SaveState(CProfile& profile) const
{
    const std::string strSection = ProfileSection();
    const auto write = [&](const SizeKeys& keys, QSize size) {
        profile.WriteInt(strSection, keys.pszCX, size.width());
        profile.WriteInt(strSection, keys.pszCY, size.height());
    };
    write(c_horz, m_szHorz);
    write(c_vert, m_szVert);
    write(c_float, m_szFloat);
}

void CSizingControlBar::ResetSizes()
{
    m_szHorz = m_szVert = m_szFloat = m_szCreated;
    m_bHasFloated = false;
}

QSize* CSizingControlBar::SizeOfPlace()
{
    if (isFloating())
        return &m_szFloat;
    const auto* pFrame = qobject_cast<QMainWindow*>(parentWidget());
    const Qt::DockWidgetArea area = pFrame ? pFrame->dockWidgetArea(this) : Qt::NoDockWidgetArea;
    if (area == Qt::LeftDockWidgetArea || area == Qt::RightDockWidgetArea)
        return &m_szVert;
    return area == Qt::NoDockWidgetArea ? nullptr : &m_szHorz;
}

QSize CSizingControlBar::PreferredSize() const
{
    const QSize* pSize = const_cast<CSizingControlBar*>(this)->SizeOfPlace();
    return pSize ? *pSize : m_szCreated;
}

void CSizingControlBar::resizeEvent(QResizeEvent* pEvent)
{
    QDockWidget::resizeEvent(pEvent);
    // Before the window is up the sizes are those of a layout that nobody chose.
    if (!isVisible() || m_bMoving || !pEvent->oldSize().isValid())
        return;
    if (QSize* pSize = SizeOfPlace())
        *pSize = pEvent->size();
}

/// What the dock area has given it is the size to come back to, also where nobody has changed it since.
void CSizingControlBar::showEvent(QShowEvent* pEvent)
{
    QDockWidget::showEvent(pEvent);
    if (QSize* pSize = isFloating() ? nullptr : SizeOfPlace())
        *pSize = size();
}

void CSizingControlBar::OnTopLevelChanged(bool bFloating)
{
    if (!bFloating)
        return;
    m_bMoving = true;
    resize(m_szFloat);
    if (!m_bHasFloated && !m_ptFirstFloat.isNull() && !QGuiApplication::mouseButtons())
        move(m_ptFirstFloat);
    m_bHasFloated = true;
    m_bMoving = false;
}

/// What the frame does with a key it does for a floating box too, which is a window of its own: the frame hears nothing of it.
void CSizingControlBar::keyPressEvent(QKeyEvent* pEvent)
{
    QDockWidget::keyPressEvent(pEvent);
    if (!pEvent->isAccepted() && isFloating() && parentWidget())
        QCoreApplication::sendEvent(parentWidget(), pEvent);
}

/// A floating box has no other edge than this line.
void CSizingControlBar::paintEvent(QPaintEvent* pEvent)
{
    QDockWidget::paintEvent(pEvent);
    if (!isFloating())
        return;
    QPainter painter(this);
    painter.setPen(ThemeQuietText());
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
}

CSizingControlBarG::CSizingControlBarG(int nBarId, const QString& strTitle, QSize created, QWidget* pParent)
    : CSizingControlBar(nBarId, strTitle, created, pParent)
{
    setTitleBarWidget(new CGripper(this));
}

} // namespace kestrune
