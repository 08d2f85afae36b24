#pragma once

#include "base/CommandTarget.h"
#include "doc/PaintDoc.h"

#include <QMdiSubWindow>

#include <memory>
#include <string>

namespace kestrune {

class CMainFrame;
class CPaintView;

/// What the title of a child frame adds for the picture's mode and depth, " @ RGB 색상".
std::string_view DepthText(int nColorMode, int nBitsPerPixel);
/// The title: the document's, the zoom, the depth and the size.
std::string FrameTitle(const std::string& strDocument, float fZoom, const CPaintImage& image);

/// The frame of one open picture, with its view. It owns the document, which ends with it.
class CChildFrame : public QMdiSubWindow, public CCommandTarget {
    Q_OBJECT
public:
    CChildFrame(std::unique_ptr<CPaintDoc> pDoc, CMainFrame& frame);
    ~CChildFrame() override;

    CPaintDoc& GetDocument() const { return *m_pDoc; }
    CPaintView& GetView() const { return *m_pView; }

    /// Shows title and modified mark anew.
    void OnUpdateFrameTitle();
    /// Asks whether changes are to be saved, and saves. False when the user wants to stay.
    bool SaveModified();
    /// Closes without a question: the user has answered it.
    void CloseNow();

    /// Resizes the frame so that its view's area gets that size, kept inside the workspace.
    void SetClientSize(QSize size);
    /// The size of the frame beyond its view.
    QSize BorderSize() const;

protected:
    void closeEvent(QCloseEvent* pEvent) override;
    void contextMenuEvent(QContextMenuEvent* pEvent) override;

private:
    CMainFrame& m_frame;
    std::unique_ptr<CPaintDoc> m_pDoc;
    CPaintView* m_pView;
    bool m_bMayClose = false;
};

} // namespace kestrune
