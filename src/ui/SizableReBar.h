#pragma once

#include "base/Profile.h"

#include <QMenu>
#include <QObject>
#include <QPointer>

#include <string>
#include <string_view>
#include <vector>

class QMainWindow;
class QToolBar;

namespace kestrune {

/// What is kept of a band.
struct ReBarBand {
    static constexpr unsigned BREAK = 0x1;  ///< starts a new row
    static constexpr unsigned HIDDEN = 0x8;

    unsigned nId = 0;    ///< of the tool bar, 1..0xFFFF
    int nWidth = 0;      ///< in logical pixels
    unsigned nStyle = 0; ///< BREAK, HIDDEN
    bool operator==(const ReBarBand&) const = default;
};

/// "wID=E800,cx=1280,fStyle=00000001" for each band, divided by line feeds.
std::string FormatBands(const std::vector<ReBarBand>& bands);
/// The bands of such a text. A line that is not wholly a band is left out, and so is a second band of the same id.
std::vector<ReBarBand> ParseBands(std::string_view text);

/// The bands at the top of a main window, one for each tool bar: keeps their order, rows and visibility in the settings,
/// and has a menu to show and hide them. The toolkit's tool bar area does the layout and is where their order is read from.
class CSizableReBar : public QObject {
    Q_OBJECT
public:
    explicit CSizableReBar(QMainWindow& frame);

    /// Adds a band below (`bNewRow`) or behind the others. The title is the band's row in the menu.
    void AddBand(QToolBar* pBar, int nId, const QString& strTitle, bool bNewRow = true);

    /// The bands as they stand, row by row. One that somebody moved to another side of the window is not among them.
    std::vector<ReBarBand> Bands() const;

    /// Restores what SaveState wrote in that section. Unknown ids are passed over, and bands that the text does not name
    /// keep their place. False when the text names no band: then nothing changes.
    bool LoadState(const CProfile& profile, const std::string& strSection);
    void SaveState(CProfile& profile, const std::string& strSection) const;
    /// All bands shown, in the order and the rows in which they were added.
    void Reset();

    /// One checkable row for each band, with the band's present state.
    QMenu* MakeMenu(QWidget* pParent);

protected:
    bool eventFilter(QObject* pWatched, QEvent* pEvent) override;

private:
    struct Member {
        QPointer<QToolBar> pBar;
        unsigned nId;
        QString strTitle;
        bool bNewRow;
    };
    const Member* Find(unsigned nId) const;
    void Apply(const std::vector<ReBarBand>& bands);
    void Arrange(const std::vector<ReBarBand>& bands);
    void ApplyWidths(const std::vector<ReBarBand>& bands);

    QMainWindow& m_frame;
    std::vector<Member> m_members; ///< as they were added
};

} // namespace kestrune
