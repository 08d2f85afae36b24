#include "ui/SizableReBar.h"

#include <QContextMenuEvent>
#include <QLayout>
#include <QMainWindow>
#include <QToolBar>

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <optional>

namespace kestrune {

namespace {

constexpr char c_szKey[] = "InformationBarStateInfo (v1.01)";
/// No band is wider; a larger number is damage.
constexpr int c_nWidest = 0x7FFF;

/// Takes `name` and the number behind it from the front of the line.
template <class T>
bool TakeField(std::string_view& line, std::string_view name, T& nValue, int nBase)
{
    if (!line.starts_with(name))
        return false;
    line.remove_prefix(name.size());
    const auto [pEnd, error] = std::from_chars(line.data(), line.data() + line.size(), nValue, nBase);
    if (error != std::errc{})
        return false;
    line.remove_prefix(static_cast<std::size_t>(pEnd - line.data()));
    return true;
}

std::optional<ReBarBand> ParseBand(std::string_view line)
{
    ReBarBand band;
    if (!TakeField(line, "wID=", band.nId, 16) || !TakeField(line, ",cx=", band.nWidth, 10)
        || !TakeField(line, ",fStyle=", band.nStyle, 16) || !line.empty())
        return std::nullopt;
    if (band.nId == 0 || band.nId > 0xFFFF || band.nWidth < 0 || band.nWidth > c_nWidest)
        return std::nullopt;
    return band;
}

/// A bar that waits for its window to be shown counts as hidden for the toolkit, but nobody has hidden it.
bool IsHiddenBand(const QToolBar& bar)
{
    return bar.isHidden() && bar.testAttribute(Qt::WA_WState_ExplicitShowHide);
}

} // namespace

std::string FormatBands(const std::vector<ReBarBand>& bands)
{
    std::string text;
    for (const ReBarBand& band : bands) {
        char line[64];
        std::snprintf(line, sizeof line, "wID=%04X,cx=%d,fStyle=%08X", band.nId, band.nWidth, band.nStyle);
        text += text.empty() ? "" : "\n";
        text += line;
    }
    return text;
}

std::vector<ReBarBand> ParseBands(std::string_view text)
{
    std::vector<ReBarBand> bands;
    while (!text.empty()) {
        const std::size_t nEnd = std::min(text.find('\n'), text.size());
        const auto band = ParseBand(text.substr(0, nEnd));
        text.remove_prefix(std::min(nEnd + 1, text.size()));
        if (band && std::none_of(bands.begin(), bands.end(), [&](const ReBarBand& other) { return other.nId == band->nId; }))
            bands.push_back(*band);
    }
    return bands;
}

CSizableReBar::CSizableReBar(QMainWindow& frame)
    : QObject(&frame)
    , m_frame(frame)
{
}

void CSizableReBar::AddBand(QToolBar* pBar, int nId, const QString& strTitle, bool bNewRow)
{
    if (bNewRow && !m_members.empty())
        m_frame.addToolBarBreak(Qt::TopToolBarArea);
    m_frame.addToolBar(Qt::TopToolBarArea, pBar);
    pBar->installEventFilter(this);
    m_members.push_back({pBar, static_cast<unsigned>(nId), strTitle, bNewRow});
}

const CSizableReBar::Member* CSizableReBar::Find(unsigned nId) const
{
    const auto it = std::find_if(m_members.begin(), m_members.end(), [&](const Member& member) { return member.nId == nId && member.pBar; });
    return it == m_members.end() ? nullptr : &*it;
}

std::vector<ReBarBand> CSizableReBar::Bands() const
{
    std::vector<ReBarBand> bands;
    // The window's layout lists its tool bars in their order, hidden ones too, which no geometry would tell.
    for (int i = 0; QLayoutItem* pItem = m_frame.layout()->itemAt(i); i++) {
        auto* pBar = qobject_cast<QToolBar*>(pItem->widget());
        const auto it = std::find_if(m_members.begin(), m_members.end(), [&](const Member& member) { return pBar && member.pBar == pBar; });
        if (it == m_members.end() || pBar->isFloating() || m_frame.toolBarArea(pBar) != Qt::TopToolBarArea)
            continue;
        // The first starts its row without a break.
        const bool bBreak = bands.empty() || m_frame.toolBarBreak(pBar);
        bands.push_back({it->nId, std::min(pBar->width(), c_nWidest), (bBreak ? ReBarBand::BREAK : 0) | (IsHiddenBand(*pBar) ? ReBarBand::HIDDEN : 0)});
    }
    return bands;
}

bool CSizableReBar::LoadState(const CProfile& profile, const std::string& strSection)
{
    std::vector<ReBarBand> bands = Bands();
    std::vector<ReBarBand> saved = ParseBands(profile.GetString(strSection, c_szKey, {}));
    const auto isIn = [](const std::vector<ReBarBand>& list, const ReBarBand& band) {
        return std::any_of(list.begin(), list.end(), [&](const ReBarBand& other) { return other.nId == band.nId; });
    };
    std::erase_if(saved, [&](const ReBarBand& band) { return !isIn(bands, band); });
    if (saved.empty())
        return false;
    // The named bands share out the places that they have now, in the order of the text.
    auto next = saved.begin();
    for (ReBarBand& band : bands)
        if (isIn(saved, band))
            band = *next++;
    Apply(bands);
    return true;
}

void CSizableReBar::SaveState(CProfile& profile, const std::string& strSection) const
{
    profile.WriteString(strSection, c_szKey, FormatBands(Bands()));
}

void CSizableReBar::Reset()
{
    std::vector<ReBarBand> bands;
    for (const Member& member : m_members)
        if (member.pBar)
            bands.push_back({member.nId, 0, member.bNewRow ? ReBarBand::BREAK : 0});
    Apply(bands);
}

void CSizableReBar::Apply(const std::vector<ReBarBand>& bands)
{
    const std::vector<ReBarBand> now = Bands();
    // Rows are built anew only for a change, so that a state that the toolkit has restored already is not touched.
    const bool bSame = std::equal(bands.begin(), bands.end(), now.begin(), now.end(), [&](const ReBarBand& a, const ReBarBand& b) {
        const bool bFirst = a.nId == bands.front().nId;
        return a.nId == b.nId && (bFirst || (a.nStyle & ReBarBand::BREAK) == (b.nStyle & ReBarBand::BREAK));
    });
    if (!bSame)
        Arrange(bands);
    for (const ReBarBand& band : bands) {
        QToolBar& bar = *Find(band.nId)->pBar;
        const bool bHidden = (band.nStyle & ReBarBand::HIDDEN) != 0;
        if (bHidden != bar.isHidden())
            bar.setVisible(!bHidden);
    }
    ApplyWidths(bands);
}

void CSizableReBar::Arrange(const std::vector<ReBarBand>& bands)
{
    for (const ReBarBand& band : bands) {
        QToolBar* pBar = Find(band.nId)->pBar;
        m_frame.removeToolBarBreak(pBar);
        m_frame.removeToolBar(pBar);
    }
    for (const ReBarBand& band : bands) {
        if ((band.nStyle & ReBarBand::BREAK) && &band != &bands.front())
            m_frame.addToolBarBreak(Qt::TopToolBarArea);
        m_frame.addToolBar(Qt::TopToolBarArea, Find(band.nId)->pBar);
    }
}

void CSizableReBar::ApplyWidths(const std::vector<ReBarBand>& bands)
{
    // The last band of a row takes what is left of it; one before it keeps its width, within reason on a smaller screen.
    for (std::size_t i = 0; i < bands.size(); i++) {
        const bool bLast = i + 1 == bands.size() || (bands[i + 1].nStyle & ReBarBand::BREAK);
        Find(bands[i].nId)->pBar->setMinimumWidth(bLast ? 0 : std::min(bands[i].nWidth, m_frame.width() / 2));
    }
}

QMenu* CSizableReBar::MakeMenu(QWidget* pParent)
{
    auto* pMenu = new QMenu(pParent);
    for (const Member& member : m_members) {
        if (!member.pBar)
            continue;
        QAction* pRow = pMenu->addAction(member.strTitle);
        pRow->setCheckable(true);
        pRow->setChecked(!IsHiddenBand(*member.pBar));
        connect(pRow, &QAction::toggled, member.pBar.data(), &QToolBar::setVisible);
    }
    return pMenu;
}

bool CSizableReBar::eventFilter(QObject* pWatched, QEvent* pEvent)
{
    // What a child of the bar leaves over, such as the menu key on a check box, comes here too. Never a nested event loop:
    // the bar may be hidden from the menu.
    if (pEvent->type() != QEvent::ContextMenu)
        return QObject::eventFilter(pWatched, pEvent);
    QMenu* pMenu = MakeMenu(&m_frame);
    pMenu->setAttribute(Qt::WA_DeleteOnClose);
    pMenu->popup(static_cast<QContextMenuEvent*>(pEvent)->globalPos());
    pEvent->accept();
    return true;
}

} // namespace kestrune
