#include "app/FrameBoxes.h"

#include "app/MainFrame.h"
#include "app/PaintApp.h"
#include "resources/PaletteColors.h"
#include "resources/Swatches.h"
#include "resources/gui/ColorBar.h"
#include "resources/gui/PaletteDialog.h"
#include "undo/gui/HistoryBox.h"

namespace kestrune {

namespace {

constexpr MenuItem c_aColorMenu[] = {
    {MenuItemKind::Command, ID_COLOR_FOREGROUND}, {MenuItemKind::Command, ID_COLOR_BACKGROUND},
    {MenuItemKind::Separator},
    {MenuItemKind::Command, ID_COLOR_SWAP}, {MenuItemKind::Command, ID_COLOR_DEFAULTS},
    {MenuItemKind::Separator},
    {MenuItemKind::Command, ID_COLOR_PALETTE},
};

} // namespace

CFrameBoxes::CFrameBoxes(CMainFrame& frame, CPaintApp& app)
    : m_frame(frame)
    , m_pHistory(new CHistoryBox)
    , m_pColors(new CColorBar(DefaultSwatchPath(app.InstallFolder())))
{
    MapColors(); // the settings have set the two colours
    m_pColors->ShowColors();
    frame.FrameBars().Bar(BAR_HISTORY)->SetContents(m_pHistory);
    CSizingControlBar* pColorBar = frame.FrameBars().Bar(BAR_COLOR);
    pColorBar->SetContents(m_pColors);
    pColorBar->SetMenu([this](QPoint ptScreen) {
        const std::unique_ptr<QMenu> pMenu(m_frame.CommandUi().MakeContextMenu(c_aColorMenu, &m_frame));
        pMenu->exec(ptScreen);
    });
    RegisterCommands();
}

void CFrameBoxes::RegisterCommands()
{
    m_frame.OnCommandId(ID_COLOR_DEFAULTS, [this] { m_pColors->Defaults(); });
    m_frame.OnCommandId(ID_COLOR_SWAP, [this] { m_pColors->Swap(); });
    m_frame.OnCommandId(ID_COLOR_FOREGROUND, [this] { m_pColors->PickColor(false); });
    m_frame.OnCommandId(ID_COLOR_BACKGROUND, [this] { m_pColors->PickColor(true); });
    m_frame.OnCommandId(ID_COLOR_PALETTE, [this] { CPaletteDialog(&m_frame).DoModal(); });
}

void CFrameBoxes::ShowImage(CPaintImage* pImage)
{
    MapColors();
    m_pHistory->ShowImage(pImage);
}

void CFrameBoxes::OnIdle()
{
    m_pColors->ShowColors();
}

} // namespace kestrune
