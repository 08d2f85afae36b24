#include "app/FrameBars.h"

#include "app/CommandTable.h"
#include "app/FramePlacement.h"

#include <QGuiApplication>
#include <QMainWindow>
#include <QScreen>
#include <QStatusBar>
#include <QToolBar>

#include <algorithm>

namespace kestrune {

namespace {

constexpr char c_szSection[] = "BarState";
constexpr char c_szStatusBar[] = "StatusBar"; ///< the toolkit's state leaves it out
/// Grows when the format of the toolkit's state, or the meaning of a bar, changes.
constexpr int c_nStateVersion = 1;
constexpr int c_nFirstColumnWidth = 210;
/// How the boxes share the first column, from the top: the brushes need the most to choose from.
constexpr int c_aFirstHeights[] = {190, 300, 190};
constexpr int c_nFloatRight = 210;
constexpr QPoint c_ptFloatLowerLeft(35, 200);

constexpr auto c_any = Qt::AllDockWidgetAreas;
const auto c_leftRight = Qt::LeftDockWidgetArea | Qt::RightDockWidgetArea;

const BarRow c_aBars[] = {
    {BAR_COLOR, ID_VIEW_COLOR_BAR, "색상 상자", "색상", {198, 144}, c_leftRight, Qt::RightDockWidgetArea, true, 140},
    {BAR_BRUSH_LIB, ID_VIEW_BRUSH_LIB_BAR, "브러시 상자", "브러시", {198, 144}, Qt::RightDockWidgetArea, Qt::RightDockWidgetArea, true, 426},
    {BAR_HISTORY, ID_VIEW_HISTORY_BAR, "명령 사용 내역", "내역", {198, 138}, Qt::RightDockWidgetArea, Qt::RightDockWidgetArea, true, 286},
    {BAR_ASSISTANT, ID_VIEW_ASSISTANT_BAR, "도우미 상자", "도우미", {198, 144}, Qt::RightDockWidgetArea, Qt::RightDockWidgetArea, false, 572},
    {BAR_BRUSH, ID_VIEW_BRUSH_BAR, "브러시 옵션 상자", "브러시 옵션", {198, 144}, c_leftRight, Qt::RightDockWidgetArea, false, 572},
    {BAR_BROWSER, ID_VIEW_BROWSER_BAR, "이미지 탐색 상자", "탐색", {720, 150}, c_any, Qt::BottomDockWidgetArea, false, -1},
};

QPoint FirstFloatPosition(const BarRow& row)
{
    const QScreen* pScreen = QGuiApplication::primaryScreen();
    const QRect rc = pScreen ? pScreen->geometry() : QRect(0, 0, 1280, 800);
    if (row.nFloatY < 0)
        return {rc.left() + c_ptFloatLowerLeft.x(), rc.bottom() + 1 - c_ptFloatLowerLeft.y()};
    return {rc.right() + 1 - c_nFloatRight, rc.top() + row.nFloatY};
}

std::string BarKey(int nIndex)
{
    return "Bar" + std::to_string(nIndex);
}

} // namespace

std::span<const BarRow> BarRows()
{
    return c_aBars;
}

CFrameBars::CFrameBars(QMainWindow& frame)
    : m_frame(frame)
{
    m_frame.setDockOptions(QMainWindow::AllowNestedDocks | QMainWindow::AllowTabbedDocks);
    m_frame.setCorner(Qt::TopRightCorner, Qt::RightDockWidgetArea);
    m_frame.setCorner(Qt::BottomRightCorner, Qt::RightDockWidgetArea);
    for (const BarRow& row : c_aBars) {
        auto* pBar = new CSizingControlBarG(row.nId, QString::fromUtf8(row.pszTitle), row.created, &m_frame);
        pBar->setAllowedAreas(row.areas);
        pBar->SetFirstFloatPosition(FirstFloatPosition(row));
        pBar->setWindowTitle(QString::fromUtf8(row.pszTab)); // the box's own top has the whole title already
        m_bars.push_back(pBar);
    }
    PlaceAtFirst();
}

CSizingControlBar* CFrameBars::Bar(int nId) const
{
    const auto it = std::find_if(m_bars.begin(), m_bars.end(), [&](const auto* pBar) { return pBar->BarId() == nId; });
    return it == m_bars.end() ? nullptr : *it;
}

void CFrameBars::PlaceAtFirst()
{
    for (const BarRow& row : c_aBars) {
        CSizingControlBar* pBar = Bar(row.nId);
        m_frame.removeDockWidget(pBar);
        pBar->setFloating(false);
        m_frame.addDockWidget(row.area, pBar);
        pBar->setVisible(row.bShown);
    }
    // The boxes that are out of sight at first share the place of the history.
    m_frame.tabifyDockWidget(Bar(BAR_HISTORY), Bar(BAR_ASSISTANT));
    m_frame.tabifyDockWidget(Bar(BAR_HISTORY), Bar(BAR_BRUSH));
    Bar(BAR_HISTORY)->raise();

    QList<QDockWidget*> column;
    QList<int> widths;
    for (const BarRow& row : c_aBars)
        if (row.area == Qt::RightDockWidgetArea && row.bShown) {
            column.push_back(Bar(row.nId));
            widths.push_back(c_nFirstColumnWidth);
        }
    m_frame.resizeDocks(column, widths, Qt::Horizontal);
    m_frame.resizeDocks(column, QList<int>(std::begin(c_aFirstHeights), std::end(c_aFirstHeights)), Qt::Vertical);
}

bool CFrameBars::KnowsBar(int nId) const
{
    return Bar(nId) || m_frame.findChild<QToolBar*>(QStringLiteral("Bar%1").arg(nId));
}

bool CFrameBars::LoadState(const CProfile& profile)
{
    for (CSizingControlBar* pBar : m_bars)
        pBar->LoadState(profile);
    m_frame.statusBar()->setVisible(profile.GetInt(c_szSection, c_szStatusBar, 1) != 0);

    const int nBars = profile.GetInt(c_szSection, "Bars", 0);
    const std::vector<std::uint8_t> state = profile.GetBinary(c_szSection, "State");
    if (nBars <= 0 || state.empty())
        return false;
    for (int i = 0; i < nBars; i++) {
        const auto nId = profile.FindInt(c_szSection, BarKey(i));
        if (!nId || !KnowsBar(*nId))
            return false;
    }
    for (CSizingControlBar* pBar : m_bars)
        pBar->setAttribute(Qt::WA_DontShowOnScreen, !m_frame.isVisible()); // until `ShowFloating`
    const QByteArray bytes(reinterpret_cast<const char*>(state.data()), qsizetype(state.size()));
    if (!m_frame.restoreState(bytes, c_nStateVersion)) {
        PlaceAtFirst();
        return false;
    }
    return true;
}

void CFrameBars::ShowFloating()
{
    for (CSizingControlBar* pBar : m_bars) {
        if (!pBar->testAttribute(Qt::WA_DontShowOnScreen))
            continue;
        const bool bFloats = pBar->isFloating() && pBar->isVisible();
        if (bFloats)
            pBar->hide();
        pBar->setAttribute(Qt::WA_DontShowOnScreen, false);
        if (bFloats) {
            pBar->setAttribute(Qt::WA_ShowWithoutActivating);
            pBar->show();
            pBar->setAttribute(Qt::WA_ShowWithoutActivating, false);
        }
    }
}

void CFrameBars::SaveState(CProfile& profile) const
{
    for (const CSizingControlBar* pBar : m_bars)
        pBar->SaveState(profile);
    profile.WriteInt(c_szSection, c_szStatusBar, !m_frame.statusBar()->isHidden());

    std::vector<int> ids;
    for (const QToolBar* pBar : m_frame.findChildren<QToolBar*>(Qt::FindDirectChildrenOnly))
        if (pBar->objectName().startsWith(QLatin1String("Bar")))
            ids.push_back(pBar->objectName().mid(3).toInt());
    for (const CSizingControlBar* pBar : m_bars)
        ids.push_back(pBar->BarId());
    profile.WriteInt(c_szSection, "Bars", static_cast<int>(ids.size()));
    for (std::size_t i = 0; i < ids.size(); i++)
        profile.WriteInt(c_szSection, BarKey(static_cast<int>(i)), ids[i]);
    const QByteArray state = m_frame.saveState(c_nStateVersion);
    profile.WriteBinary(c_szSection, "State",
                        {reinterpret_cast<const std::uint8_t*>(state.constData()), static_cast<std::size_t>(state.size())});
}

void CFrameBars::Reset()
{
    for (CSizingControlBar* pBar : m_bars)
        pBar->ResetSizes();
    PlaceAtFirst();
    for (QToolBar* pBar : m_frame.findChildren<QToolBar*>(Qt::FindDirectChildrenOnly))
        pBar->show();
}

void CFrameBars::Verify()
{
    for (CSizingControlBar* pBar : m_bars) {
        // The caption of a box that floats is the box's own top.
        if (pBar->isFloating() && !IsOnScreen(pBar->geometry()))
            pBar->setFloating(false);
        const bool bDocked = !pBar->isFloating() && !pBar->isHidden();
        const Qt::DockWidgetArea area = m_frame.dockWidgetArea(pBar);
        // A column that leaves no room for pictures, as after a restore on a smaller screen.
        const bool bSide = area == Qt::LeftDockWidgetArea || area == Qt::RightDockWidgetArea;
        if (bDocked && bSide && pBar->width() > m_frame.width() / 2)
            m_frame.resizeDocks({pBar}, {c_nFirstColumnWidth}, Qt::Horizontal);
        if (bDocked && !bSide && pBar->height() > m_frame.height() / 2)
            m_frame.resizeDocks({pBar}, {pBar->HorzSize().height()}, Qt::Vertical);
    }
}

} // namespace kestrune
