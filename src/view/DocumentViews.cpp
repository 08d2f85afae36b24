#include "view/DocumentViews.h"

#include "view/PaintView.h"

#include <map>

namespace kestrune {

namespace {

std::map<const CPaintDoc*, std::weak_ptr<CDocumentViews>>& Groups()
{
    static std::map<const CPaintDoc*, std::weak_ptr<CDocumentViews>> s_map;
    return s_map;
}

} // namespace

std::shared_ptr<CDocumentViews> CDocumentViews::Find(const CPaintDoc& doc)
{
    const auto it = Groups().find(&doc);
    return it == Groups().end() ? nullptr : it->second.lock();
}

std::shared_ptr<CDocumentViews> CDocumentViews::Of(CPaintDoc& doc)
{
    if (auto pGroup = Find(doc))
        return pGroup;
    auto pGroup = std::make_shared<CDocumentViews>(doc);
    Groups()[&doc] = pGroup;
    return pGroup;
}

CDocumentViews::CDocumentViews(CPaintDoc& doc)
    : m_doc(doc)
{
}

CDocumentViews::~CDocumentViews()
{
    Groups().erase(&m_doc);
    if (m_doc.m_pImage && &m_doc.m_pImage->Site() == this)
        m_doc.m_pImage->SetSite(nullptr);
}

void CDocumentViews::Add(CPaintView* pView)
{
    m_aViews.push_back(pView);
    Attach();
}

void CDocumentViews::Remove(CPaintView* pView)
{
    std::erase(m_aViews, pView);
}

void CDocumentViews::Attach()
{
    if (m_doc.m_pImage)
        m_doc.m_pImage->SetSite(this);
}

CPaintView* CDocumentViews::Speaker() const
{
    for (CPaintView* pView : m_aViews)
        if (pView == g_pActiveToolView)
            return pView;
    return m_aViews.empty() ? nullptr : m_aViews.front();
}

int CDocumentViews::FloatOpacity() const
{
    const CPaintView* pView = Speaker();
    return pView ? pView->FloatOpacity() : CImageSite::FloatOpacity();
}

int CDocumentViews::MoveMode() const
{
    const CPaintView* pView = Speaker();
    return pView ? pView->MoveMode() : CImageSite::MoveMode();
}

void CDocumentViews::RepaintRect(const CRect& rcImage)
{
    for (CPaintView* pView : m_aViews)
        pView->RepaintRect(rcImage);
}

void CDocumentViews::RepaintAll()
{
    for (CPaintView* pView : m_aViews)
        pView->RepaintAll();
}

void CDocumentViews::SizeChanged()
{
    for (CPaintView* pView : m_aViews)
        pView->SizeChanged();
}

void CDocumentViews::SyncHistoryBox(int nMode)
{
    if (CPaintView* pView = Speaker())
        pView->SyncHistoryBox(nMode);
}

void UpdateAllViews(const CPaintDoc& doc, int nHint)
{
    for (CPaintView* pView : ViewsOf(doc))
        pView->OnUpdate(nHint);
}

std::vector<CPaintView*> ViewsOf(const CPaintDoc& doc)
{
    const auto pGroup = CDocumentViews::Find(doc);
    return pGroup ? pGroup->Views() : std::vector<CPaintView*>{};
}

} // namespace kestrune
