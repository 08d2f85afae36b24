#include "app/OptionBar.h"

#include "base/StringTable.h"
#include "app/CommandTable.h"

#include <QCheckBox>
#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QStackedWidget>

#include <algorithm>

namespace kestrune {

namespace {

constexpr int c_nHeight = 32;
constexpr int c_nSpacing = 8;
constexpr int c_nPanelSpace = 6 * c_nSpacing; ///< margins and gaps around pages and zoom panel
constexpr float c_aZooms[] = {0.125f, 0.25f, 0.5f, 0.75f, 1, 2, 3, 4, 5, 6, 8, 12, 16, 24, 32};

QString Text(int nId)
{
    const std::string_view text = StringText(nId);
    return QString::fromUtf8(text.data(), qsizetype(text.size()));
}

} // namespace

QString ZoomText(float fZoom)
{
    return QString::asprintf("%5.f%%", static_cast<double>(fZoom) * 100);
}

float ParseZoomText(const QString& strText)
{
    QString strNumber = strText.trimmed();
    if (strNumber.endsWith(u'%'))
        strNumber.chop(1);
    bool bOk = false;
    const float fPercent = strNumber.trimmed().toFloat(&bOk);
    return bOk && fPercent > 0 ? fPercent / 100 : 0;
}

COptionBar::COptionBar(QWidget* pParent)
    : QToolBar(pParent)
{
    setObjectName(QStringLiteral("Bar%1").arg(ID_VIEW_OPTION_BAR));
    setWindowTitle(QStringLiteral("&Option Bar"));
    setMovable(false);
    setFloatable(false);
    setFixedHeight(std::max(c_nHeight, fontMetrics().height() + 12));
    setAttribute(Qt::WA_InputMethodEnabled, false);

    auto* pRow = new QWidget(this);
    auto* pLayout = new QHBoxLayout(pRow);
    pLayout->setContentsMargins(c_nSpacing, 0, c_nSpacing, 0);
    pLayout->setSpacing(c_nSpacing);
    m_pPages = new QStackedWidget(pRow);
    m_pPages->addWidget(new QWidget(m_pPages));
    pLayout->addWidget(m_pPages, 1);

    auto* pLabel = m_pZoomLabel = new QLabel(Text(IDS_ZOOM_LABEL), pRow);
    pLayout->addWidget(pLabel);
    m_pZoom = new QComboBox(pRow);
    m_pZoom->setObjectName(QStringLiteral("ZoomBox"));
    m_pZoom->setEditable(true);
    m_pZoom->setInsertPolicy(QComboBox::NoInsert);
    m_pZoom->setMaxVisibleItems(20);
    m_pZoom->setFixedWidth(88);
    m_pZoom->setFocusPolicy(Qt::StrongFocus); // not the wheel: one that scrolls past must not zoom
    for (const float fZoom : c_aZooms)
        m_pZoom->addItem(ZoomText(fZoom));
    m_pZoom->setAttribute(Qt::WA_InputMethodEnabled, false);
    m_pZoom->lineEdit()->setAttribute(Qt::WA_InputMethodEnabled, false);
    m_pZoom->lineEdit()->setAlignment(Qt::AlignRight);
    m_pZoom->setToolTip(Text(IDS_ZOOM_TIP));
    m_pZoom->setAccessibleName(Text(IDS_ZOOM_TIP));
    pLabel->setBuddy(m_pZoom);
    pLayout->addWidget(m_pZoom);
    m_pFollow = new QCheckBox(Text(IDS_FRAME_FOLLOWS_ZOOM), pRow);
    m_pFollow->setObjectName(QStringLiteral("FrameFollowsZoom"));
    m_pFollow->setFocusPolicy(Qt::TabFocus);
    m_pFollow->setToolTip(Text(IDS_FRAME_FOLLOWS_ZOOM_TIP));
    m_pFollow->setAccessibleName(Text(IDS_FRAME_FOLLOWS_ZOOM));
    pLayout->addWidget(m_pFollow);
    addWidget(pRow);

    connect(m_pZoom, &QComboBox::activated, this, &COptionBar::OnZoomEntered);
    connect(m_pZoom->lineEdit(), &QLineEdit::returnPressed, this, &COptionBar::OnZoomEntered);
    EnableZoom(false);
}

void COptionBar::ShowPage(QWidget* pPage)
{
    if (pPage && m_pPages->indexOf(pPage) < 0)
        m_pPages->addWidget(pPage);
    m_pPages->setCurrentWidget(pPage ? pPage : m_pPages->widget(0));
    OrderTabs();
    FitLabel();
}

/// The zoom panel is older than the pages and would come before them: it follows the last control of the one that is shown.
void COptionBar::OrderTabs()
{
    QWidget* pLast = nullptr;
    for (QWidget* p : m_pPages->currentWidget()->findChildren<QWidget*>())
        if (p->focusPolicy() & Qt::TabFocus)
            pLast = p;
    if (pLast)
        setTabOrder(pLast, m_pZoom);
    setTabOrder(m_pZoom, m_pFollow);
}

/// A long row of options takes the place of the zoom box's label, whose percent sign says as much, and in a narrow window that of
/// the check box's text too, which its tip repeats. With a large font the zoom box goes last: the status bar shows the zoom as well.
void COptionBar::FitLabel()
{
    const QString strFollow = Text(IDS_FRAME_FOLLOWS_ZOOM);
    m_pFollow->setText(strFollow);
    const int nPage = m_pPages->currentWidget()->sizeHint().width();
    const int nWithoutLabel = width() - m_pZoom->width() - m_pFollow->sizeHint().width() - c_nPanelSpace;
    m_pZoomLabel->setVisible(nPage <= nWithoutLabel - m_pZoomLabel->sizeHint().width());
    if (nPage > nWithoutLabel)
        m_pFollow->setText({});
    m_pZoom->setVisible(nPage <= width() - m_pZoom->width() - m_pFollow->sizeHint().width() - c_nPanelSpace);
}

void COptionBar::resizeEvent(QResizeEvent* pEvent)
{
    QToolBar::resizeEvent(pEvent);
    FitLabel();
}

void COptionBar::ShowZoom(float fZoom)
{
    m_pZoom->setCurrentIndex(-1);
    m_pZoom->setEditText(ZoomText(fZoom));
}

void COptionBar::EnableZoom(bool bEnabled)
{
    m_pZoom->setEnabled(bEnabled);
    if (!bEnabled)
        m_pZoom->setEditText({});
}

void COptionBar::TypeZoom(float fZoom)
{
    m_pZoom->setEditText(QString::number(static_cast<double>(fZoom) * 100));
    OnZoomEntered();
}

bool COptionBar::FrameFollowsZoom() const
{
    return m_pFollow->isChecked();
}

void COptionBar::SetFrameFollowsZoom(bool bFollows)
{
    m_pFollow->setChecked(bFollows);
}

void COptionBar::OnZoomEntered()
{
    // What is no percentage goes to the view as 0, which puts the present zoom back into the box.
    Q_EMIT ZoomChosen(ParseZoomText(m_pZoom->currentText()));
}

} // namespace kestrune
