#pragma once

#include "view/PaintView.h"

#include <QApplication>
#include <QImage>
#include <QTest>

#include <memory>
#include <vector>

namespace kestrune::test {

class CNoDocumentHost : public CDocumentHost {
public:
    std::optional<NewImageParams> AskNewImage() override { return {}; }
    std::optional<std::filesystem::path> AskSaveName(const std::string&, bool, int&) override { return {}; }
};

/// Notes what a view tells its frame.
class CNotingHost : public CViewHost {
public:
    void ShowMousePosition(int x, int y) override { m_ptMouse = {x, y}; }
    void ZoomChanged(CPaintView&) override { m_nZoomChanges++; }
    CSize AvailableSpace(const CPaintView&) const override { return m_space; }
    bool FrameFollowsZoom() const override { return m_bFollow; }
    void ResizeFrame(CPaintView&, CSize size) override { m_sizeFrame = size; }
    void PlaceFrame(CPaintView&, const QRect& rc) override { m_rcFrame = rc; }
    void FilesDropped(const QStringList& aFiles) override { m_aDropped = aFiles; }
    bool RulersVisible(const CPaintView&) const override { return m_bRulers; }

    CPoint m_ptMouse{-1, -1};
    int m_nZoomChanges = 0;
    CSize m_space{1000, 700};
    bool m_bFollow = false;
    bool m_bRulers = false;
    CSize m_sizeFrame{};
    QRect m_rcFrame;
    QStringList m_aDropped;
};

/// A document with a picture whose every pixel differs from its neighbours.
struct Picture {
    Picture(int nWidth, int nHeight)
        : doc(host)
    {
        doc.m_pImage = std::make_unique<CPaintImage>();
        doc.m_pImage->Create(nWidth, nHeight, FILL_WHITE, COLOR_RGB);
        for (int y = 0; y < nHeight; y++) {
            std::uint8_t* p = doc.m_pImage->m_Bitmap.WriteRow(y);
            for (int x = 0; x < nWidth; x++, p += 3) {
                p[0] = static_cast<std::uint8_t>(x * 7 + y * 3);
                p[1] = static_cast<std::uint8_t>(x ^ (y * 5));
                p[2] = static_cast<std::uint8_t>(x * y + 11 * y);
            }
        }
    }
    QRgb Pixel(int x, int y) const
    {
        const std::uint8_t* p = doc.m_pImage->m_Bitmap.Row(y) + x * 3;
        return qRgb(p[2], p[1], p[0]);
    }

    CNoDocumentHost host;
    CPaintDoc doc;
};

/// Shows a view so that its client area (without scroll bars) has that size.
inline void ShowView(CPaintView& view, int nWidth, int nHeight)
{
    view.resize(nWidth, nHeight);
    view.OnInitialUpdate();
    view.show();
    view.OnActivateView(true);
    view.setFocus();
    QApplication::processEvents();
}

/// What the view's client area shows, drawn in whole.
inline QImage Grab(CPaintView& view)
{
    return view.viewport()->grab().toImage().convertToFormat(QImage::Format_RGB32);
}

} // namespace kestrune::test
