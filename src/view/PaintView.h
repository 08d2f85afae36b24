#pragma once

#include "base/CommandTarget.h"
#include "doc/ImageSite.h"
#include "doc/PaintDoc.h"
#include "view/ViewHost.h"

#include <QAbstractScrollArea>

namespace kestrune {

/// Hints of `UpdateAllViews`.
enum UpdateHint { HINT_NONE = 0, HINT_ZOOM = 1025 };

/// Draws the picture at a zoom factor, converts between window and image coordinates, and forwards mouse, keyboard and
/// timer events to the current tool.
class CPaintView : public QAbstractScrollArea, public CCommandTarget, public CImageSite {
    Q_OBJECT
public:
    CPaintView(CPaintDoc& doc, CViewHost& host, QWidget* pParent = nullptr);
    ~CPaintView() override;

    CPaintDoc& GetDocument() const { return m_doc; }

    float GetZoom() const { return m_fZoom; }
    /// Sets the zoom: cut to a whole number above 0.75, kept within 0.125..32, centre kept, all views of the document told.
    void SetZoom(float fZoom);

    /// The offset of the picture in the client area: centring when the client is larger, else 0, on each axis.
    CPoint GetImageOrigin() const;
    CPoint ClientToImage(CPoint pt) const;
    CPoint ImageToClient(CPoint pt) const;
    CRect ClientToImage(const CRect& rc) const;
    CRect ImageToClient(const CRect& rc) const;

    void OnUpdate(int nHint);
    void OnActivateView(bool bActivate);

    // CImageSite
    void RepaintRect(const CRect& rcImage) override;
    void RepaintAll() override;
    void SizeChanged() override;

private:
    CPaintDoc& m_doc;
    CViewHost& m_host;
    float m_fZoom = 1.0f;
};

} // namespace kestrune
