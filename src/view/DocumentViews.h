#pragma once

#include "doc/ImageSite.h"

#include <memory>
#include <vector>

namespace kestrune {

class CPaintDoc;
class CPaintView;

/// All views of one document, and as the picture's site what it asks of them: every view repaints what changed, the view that
/// has the keyboard (or the first) answers for the option bar and the history box. Owned by the views together.
class CDocumentViews : public CImageSite {
public:
    static std::shared_ptr<CDocumentViews> Of(CPaintDoc& doc);
    /// The group of a document that has views; null otherwise.
    static std::shared_ptr<CDocumentViews> Find(const CPaintDoc& doc);

    explicit CDocumentViews(CPaintDoc& doc);
    ~CDocumentViews() override;

    void Add(CPaintView* pView);
    void Remove(CPaintView* pView);
    /// Makes the picture, which may be a new one, ask here.
    void Attach();
    const std::vector<CPaintView*>& Views() const { return m_aViews; }

    int FloatOpacity() const override;
    int MoveMode() const override;
    void RepaintRect(const CRect& rcImage) override;
    void RepaintAll() override;
    void SizeChanged() override;
    void SyncHistoryBox(int nMode) override;

private:
    CPaintView* Speaker() const;

    CPaintDoc& m_doc;
    std::vector<CPaintView*> m_aViews;
};

} // namespace kestrune
