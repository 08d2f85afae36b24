#include "tools/gui/ToolOptionPages.h"

#include "tools/gui/OptionPage.h"

namespace kestrune {

CToolOptionPages::CToolOptionPages(QWidget* pParent)
    : QObject(pParent)
    , m_pParent(pParent)
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
        pPage = new COptionPage(bar, m_pParent);
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

} // namespace kestrune
