#include "app/FrameBoxes.h"

#include "app/MainFrame.h"
#include "app/PaintApp.h"
#include "app/ToolBox.h"
#include "resources/PaletteColors.h"
#include "resources/Swatches.h"
#include "resources/gui/BrushBox.h"
#include "resources/gui/ColorBar.h"
#include "resources/gui/ColorPatches.h"
#include "resources/gui/PaletteDialog.h"
#include "resources/gui/TexturePanel.h"
#include "tools/ToolOptions.h"
#include "tools/ToolRegistry.h"
#include "tools/ToolTable.h"
#include "tools/gui/OptionTable.h"
#include "tools/gui/ToolOptionPages.h"
#include "undo/gui/HistoryBox.h"

#include <QStackedWidget>

#include <optional>

namespace kestrune {

namespace {

enum SidePage { PAGE_BRUSHES, PAGE_PICTURES };

/// The setting of the current tool that says how far apart its dabs lie; nothing for a tool without one.
std::optional<ToolOption> SpacingOfTool()
{
    const ToolRow* pTool = FindToolRow(g_nCurrentTool);
    for (const OptionControlRow& row : OptionControls(pTool ? pTool->bar : ToolBar::None))
        if (row.option != ToolOption::Count && ToolOptionTable()[static_cast<std::size_t>(row.option)].strKey == "Space")
            return row.option;
    return {};
}

} // namespace

CFrameBoxes::CFrameBoxes(CMainFrame& frame, CPaintApp& app)
    : m_frame(frame)
    , m_pHistory(new CHistoryBox)
    , m_pColors(new CColorBar(DefaultSwatchPath(app.InstallFolder())))
    , m_pBrushes(new CDlgBrushBox(app.InstallFolder()))
    , m_pSidePages(new QStackedWidget)
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
    AddBrushBox();
    const CToolOptionPages& options = frame.OptionPages();
    frame.FrameBars().Bar(BAR_BRUSH)->SetContents(new CTexturePanel(options.TextureBox(), options.PatternBox()));
    AddToolBoxPatches();
    RegisterCommands();
}

void CFrameBoxes::AddBrushBox()
{
    m_pSidePages->addWidget(m_pBrushes);
    m_frame.FrameBars().Bar(BAR_BRUSH_LIB)->SetContents(m_pSidePages);
    // Queued: the message about missing brushes must not hold up what else waits for the window.
    QObject::connect(&m_frame, &CMainFrame::FirstPainted, m_pBrushes, &CDlgBrushBox::EnsureLoaded, Qt::QueuedConnection);
    QObject::connect(m_pBrushes, &CDlgBrushBox::SpacingRequested, m_pBrushes, [](int nPercent) {
        if (const std::optional<ToolOption> option = SpacingOfTool())
            SetToolOption(*option, nPercent);
    });
    QObject::connect(m_pBrushes, &CDlgBrushBox::Done, &m_frame, &CMainFrame::FocusPicture);
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
    constexpr struct {
        int nId;
        void (CDlgBrushBox::*act)();
    } aBrushCommands[] = {
        {ID_BRUSH_NEW, &CDlgBrushBox::OnNew},         {ID_BRUSH_DELETE, &CDlgBrushBox::OnDelete},
        {ID_BRUSH_OPEN, &CDlgBrushBox::OnOpen},       {ID_BRUSH_SAVE, &CDlgBrushBox::OnSave},
        {ID_BRUSH_FILE, &CDlgBrushBox::OnFileChosen}, {ID_BRUSH_SOFT_EDGE, &CDlgBrushBox::OnSoftEdgeChanged},
        {ID_BRUSH_LIST_MODE, &CDlgBrushBox::OnListMode},
    };
    for (const auto& command : aBrushCommands)
        m_frame.OnCommandId(command.nId, [this, act = command.act] { (m_pBrushes->*act)(); },
                            [this, nId = command.nId](CommandState& state) { state.bChecked = nId == ID_BRUSH_LIST_MODE && m_pBrushes->IsListMode(); });
}

void CFrameBoxes::ShowImage(CPaintImage* pImage)
{
    MapColors();
    m_pHistory->ShowImage(pImage);
}

void CFrameBoxes::ShowPictures(bool bPictures)
{
    if (m_pSidePages->count() > PAGE_PICTURES)
        m_pSidePages->setCurrentIndex(bPictures ? PAGE_PICTURES : PAGE_BRUSHES);
}

void CFrameBoxes::OnIdle()
{
    m_pColors->ShowColors();
    m_pToolBoxPatches->SetColors(g_crForeground, g_crBackground);
    m_pBrushes->EnableSpacing(SpacingOfTool().has_value());
}

} // namespace kestrune
