#pragma once

#include "base/Profile.h"
#include "ui/SizingControlBar.h"

#include <span>
#include <vector>

class QMainWindow;

namespace kestrune {

enum BarId {
    BAR_COLOR = 5001,
    BAR_BROWSER = 5002,
    BAR_BRUSH_LIB = 5003,
    BAR_HISTORY = 5004,
    BAR_BRUSH = 5005,
    BAR_ASSISTANT = 5006,
};

/// What is known of a box before it exists.
struct BarRow {
    BarId nId;
    int nToggleCommand;
    const char* pszTitle;
    const char* pszTab; ///< where it shares a place with others: three of them stand side by side in the first column's width
    QSize created;
    Qt::DockWidgetAreas areas;
    Qt::DockWidgetArea area;  ///< where it stands at first
    bool bShown;              ///< at first
    int nFloatY;              ///< where it floats at first: below the top of the screen, at its right edge; -1 at the lower left
};

std::span<const BarRow> BarRows();

/// The boxes of the main frame: builds them, keeps and restores where they stand.
class CFrameBars {
public:
    /// Builds the boxes at their first places.
    explicit CFrameBars(QMainWindow& frame);

    CSizingControlBar* Bar(int nId) const;
    const std::vector<CSizingControlBar*>& Bars() const { return m_bars; }

    /// The sizes of each box, then the dock state kept under "BarState". The state is used only when every bar id that it
    /// names exists; boxes that would stand off every screen come back to their places. False when the state was not used.
    bool LoadState(const CProfile& profile);
    void SaveState(CProfile& profile) const;
    /// Once the frame is on the screen: boxes that float come after it. A window manager would put one that came first behind it.
    void ShowFloating();

    /// Every box at its first place and size.
    void Reset();
    /// Brings back boxes that cannot be reached. Called once the frame has its size.
    void Verify();

private:
    bool KnowsBar(int nId) const;
    void PlaceAtFirst();

    QMainWindow& m_frame;
    std::vector<CSizingControlBar*> m_bars;
};

} // namespace kestrune
