// Lets the program link until the view's own source stands beside its header; empty from then on.
#if !__has_include("view/Printing.h")
#include "view/PaintView.h"
namespace kestrune {
CPaintView::CPaintView(CPaintDoc& doc, CViewHost& host, QWidget* pParent) : QAbstractScrollArea(pParent), m_doc(doc), m_host(host) {}
CPaintView::~CPaintView() = default;
void CPaintView::SetZoom(float fZoom) { m_fZoom = fZoom; m_host.ZoomChanged(*this); }
void CPaintView::OnUpdate(int) {}
void CPaintView::OnActivateView(bool bActivate) { m_host.ViewActivated(*this, bActivate); }
void CPaintView::RepaintRect(const CRect&) {}
void CPaintView::RepaintAll() {}
void CPaintView::SizeChanged() {}
} // namespace kestrune
#endif
