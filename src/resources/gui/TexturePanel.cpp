#include "resources/gui/TexturePanel.h"

#include "base/StringTable.h"
#include "resources/gui/TextureBox.h"
#include "resources/gui/TextureWnd.h"
#include "ui/Dialog.h"

#include <QPushButton>
#include <QVBoxLayout>

#include <utility>

namespace kestrune {

CTexturePanel::CTexturePanel(CTextureBox& textures, CTextureBox& patterns, QWidget* pParent)
    : QTabWidget(pParent)
    , m_pages{{&textures, new CTextureWnd(this)}, {&patterns, new CTextureWnd(this)}}
{
    setDocumentMode(true);
    Add(m_pages[0], TextOf(IDS_TEXTURE_TAB));
    Add(m_pages[1], TextOf(IDS_PATTERN_TAB));
    connect(this, &QTabWidget::currentChanged, this, [this] { ScanCurrent(); });
}

void CTexturePanel::Add(Page& page, const QString& strTitle)
{
    auto* pPanel = new QWidget(this);
    auto* pLayout = new QVBoxLayout(pPanel);
    pLayout->setContentsMargins(4, 4, 4, 4);
    pLayout->setSpacing(4);
    pLayout->addWidget(page.pGrid, 1);
    auto* pNone = new QPushButton(page.pBox->NoneText(), pPanel);
    pLayout->addWidget(pNone);
    page.pGrid->setAccessibleName(strTitle);
    connect(pNone, &QPushButton::clicked, page.pBox, &CTextureBox::Clear);
    connect(page.pGrid, &CTextureWnd::Chosen, page.pBox, &CTextureBox::ChooseOrSay);
    connect(page.pBox, &CTextureBox::Changed, page.pGrid, [&page] { page.pGrid->ShowChosen(page.pBox->ActivePath()); });
    addTab(pPanel, strTitle);
}

void CTexturePanel::ScanCurrent()
{
    Page& page = m_pages[currentIndex()];
    if (std::exchange(page.bScanned, true))
        return;
    page.pBox->ScanInto(*page.pGrid);
    page.pGrid->ShowChosen(page.pBox->ActivePath());
}

void CTexturePanel::showEvent(QShowEvent* pEvent)
{
    QTabWidget::showEvent(pEvent);
    // A message about an empty folder must not hold up what else is being shown.
    QMetaObject::invokeMethod(this, &CTexturePanel::ScanCurrent, Qt::QueuedConnection);
}

} // namespace kestrune
