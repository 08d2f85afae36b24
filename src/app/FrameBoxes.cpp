#include "app/FrameBoxes.h"

#include "app/MainFrame.h"
#include "app/PaintApp.h"
#include "app/ToolBox.h"
#include "resources/PaletteColors.h"
#include "resources/Swatches.h"
#include "resources/gui/ColorBar.h"
#include "resources/gui/ColorPatches.h"
#include "resources/gui/PaletteDialog.h"
#include "undo/gui/HistoryBox.h"

namespace kestrune {

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
        const std::unique_ptr<QMenu> pMenu(m_frame.CommandUi().MakeContextMenu(ColorBoxMenu(), &m_frame));
        pMenu->exec(ptScreen);
    });
    AddToolBoxPatches();
    RegisterCommands();
}

void CFrameBoxes::AddToolBoxPatches()
{
    CColorPatches& patches = m_pColors->Patches();
    auto* pSmall = m_pToolBoxPatches = new CColorPatches(&m_frame.ToolBox(), CColorPatches::SMALL);
    QObject::connect(pSmall, &CColorPatches::PickRequested, m_pColors, &CColorBar::PickColor);
    QObject::connect(pSmall, &CColorPatches::SwapRequested, m_pColors, &CColorBar::Swap);
    QObject::connect(pSmall, &CColorPatches::DefaultsRequested, m_pColors, &CColorBar::Defaults);
    QObject::connect(pSmall, &CColorPatches::ActiveChanged, &patches, [pSmall, &patches] { patches.SetBackgroundActive(pSmall->IsBackgroundActive()); });
    QObject::connect(&patches, &CColorPatches::ActiveChanged, pSmall, [pSmall, &patches] { pSmall->SetBackgroundActive(patches.IsBackgroundActive()); });
    QObject::connect(m_pColors, &CColorBar::ColorsChanged, pSmall, [this] { OnIdle(); });
    m_frame.ToolBox().SetFoot(pSmall);
    OnIdle();
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

void CFrameBoxes::ShowPictures(bool bPictures)
{
    QWidget* pBox = m_frame.FrameBars().Bar(BAR_BRUSH_LIB);
    auto* pPictures = pBox->findChild<QWidget*>(QStringLiteral("PictureWnd"));
    if (!pPictures)
        return;
    pPictures->setVisible(bPictures);
    if (auto* pBrushes = pBox->findChild<QWidget*>(QStringLiteral("BrushWnd")))
        pBrushes->setVisible(!bPictures);
}

void CFrameBoxes::OnIdle()
{
    m_pColors->ShowColors();
    m_pToolBoxPatches->SetColors(g_crForeground, g_crBackground);
}

} // namespace kestrune
