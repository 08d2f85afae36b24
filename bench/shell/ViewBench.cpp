#include "../Harness.h"

#include "view/PaintView.h"

#include <QApplication>
#include <QScrollBar>

#include <cstring>
#include <memory>
#include <vector>

using namespace kestrune;
using namespace kestrune::bench;

namespace {

constexpr int c_nWidth = 3840, c_nHeight = 2160;
constexpr std::size_t c_nWindowBytes = std::size_t{4} * c_nWidth * c_nHeight;

class CNoDocumentHost : public CDocumentHost {
public:
    std::optional<NewImageParams> AskNewImage() override { return {}; }
    std::optional<std::filesystem::path> AskSaveName(const std::string&, bool, int&) override { return {}; }
};

/// A shown view whose client area measures 3840 x 2160, over a picture that is larger at that zoom.
struct Scene {
    Scene(int nPictureWidth, int nPictureHeight, float fZoom)
        : doc(docHost)
    {
        doc.m_pImage = std::make_unique<CPaintImage>();
        doc.m_pImage->Create(nPictureWidth, nPictureHeight, FILL_WHITE, COLOR_RGB);
        for (int y = 0; y < nPictureHeight; y++) {
            std::uint8_t* p = doc.m_pImage->m_Bitmap.WriteRow(y);
            for (int i = 0; i < nPictureWidth * 3; i++)
                p[i] = static_cast<std::uint8_t>((i * 7 + y * 13) >> 3);
        }
        view = std::make_unique<CPaintView>(doc, host);
        view->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        view->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        view->resize(c_nWidth, c_nHeight);
        view->OnInitialUpdate();
        view->show();
        view->SetZoom(fZoom);
        view->ScrollToPosition({32, 32});
        QApplication::processEvents();
    }

    CNoDocumentHost docHost;
    CPaintDoc doc;
    CViewHost host;
    std::unique_ptr<CPaintView> view;
};

/// The time to copy that many bytes from one block to another.
std::function<void()> CopyOf(std::size_t nBytes)
{
    const auto pFrom = std::make_shared<std::vector<std::uint8_t>>(nBytes, 1), pTo = std::make_shared<std::vector<std::uint8_t>>(nBytes, 2);
    return [=] { std::memcpy(pTo->data(), pFrom->data(), nBytes); };
}

const Group g_repaint("repaint", [] {
    for (float fZoom : {1.0f, 3.0f}) {
        const auto pScene = std::make_shared<Scene>(4000, 2300, fZoom);
        const std::string strZoom = " at zoom " + std::to_string(static_cast<int>(fZoom));
        Register({"repaint of 3840 x 2160" + strZoom, 5, [=] { pScene->view->viewport()->repaint(); }, CopyOf(c_nWindowBytes)});
        // Its share, and what the toolkit takes for a paint event of any size.
        Register({"  a hundredth of it / the whole" + strZoom, 0.05, [=] { pScene->view->viewport()->repaint(1000, 900, c_nWidth / 10, c_nHeight / 10); },
                  [=] { pScene->view->viewport()->repaint(); }});
    }
});

const Group g_reduced("repaint reduced", [] {
    constexpr int w = 11700, h = 6600;
    const auto pScene = std::make_shared<Scene>(w, h, 0.33f);
    const auto nRead = static_cast<std::size_t>(c_nWidth / 0.33) * static_cast<std::size_t>(c_nHeight / 0.33) * 3;
    Register({"repaint of 3840 x 2160 at zoom 0.33, of the source's bytes", 5, [=] { pScene->view->viewport()->repaint(); }, CopyOf(nRead)});
});

// The screen's pixels have to move within the window once; the strip that comes into sight is next to nothing beside that.
const Group g_scroll("scroll", [] {
    const auto pScene = std::make_shared<Scene>(4000, 4000, 1.0f);
    const auto pDown = std::make_shared<bool>(true);
    Register({"scrolling by 16 rows at zoom 1", 1.5,
              [=] {
                  QScrollBar* pBar = pScene->view->verticalScrollBar();
                  pBar->setValue(pBar->value() + (*pDown ? 16 : -16));
                  *pDown = !*pDown;
                  QApplication::processEvents();
              },
              CopyOf(c_nWindowBytes)});
});

} // namespace
