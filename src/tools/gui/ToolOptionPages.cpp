#include "tools/gui/ToolOptionPages.h"

#include "resources/Textures.h"
#include "resources/gui/TextureBox.h"
#include "tools/gui/OptionPage.h"

namespace kestrune {

CToolOptionPages::CToolOptionPages(const std::filesystem::path& pathInstall, QWidget* pParent)
    : QObject(pParent)
    , m_pParent(pParent)
    , m_pTextureBox(new CTextureBox(TextureKind::Brush, BrushTextureFolder(pathInstall), pParent))
    , m_pPatternBox(new CTextureBox(TextureKind::Pattern, PatternFolder(pathInstall), pParent))
{
    SetToolOptionListener([this](ToolOption option) {
        for (const auto& [bar, pPage] : m_mapPages)
            pPage->ShowOption(option);
    });
}

CToolOptionPages::~CToolOptionPages()
{
    SetToolOptionListener({});
}

COptionPage& CToolOptionPages::Page(ToolBar bar)
{
    COptionPage*& pPage = m_mapPages[bar];
    if (!pPage) {
        pPage = new COptionPage(bar, {m_pTextureBox, m_pPatternBox}, m_pParent);
        connect(pPage, &COptionPage::Done, this, &CToolOptionPages::Done);
        pPage->hide(); // until a bar takes it
    }
    return *pPage;
}

QWidget* CToolOptionPages::PageOf(const ToolRow& tool, int nCommand)
{
    COptionPage& page = Page(tool.bar);
    page.ShowTool(tool, nCommand);
    return &page;
}

QObject* CToolOptionPages::Control(ToolOption option)
{
    const ToolBar bar = BarOfOption(option);
    return bar == ToolBar::None ? nullptr : Page(bar).Control(option);
}

CNumEdit& CToolOptionPages::PatternPercent()
{
    return *Page(ToolBar::Pencil).PatternPercent();
}

} // namespace kestrune
