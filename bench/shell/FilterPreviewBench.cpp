#include "../Harness.h"

#include "base/Profile.h"
#include "doc/PaintImage.h"
#include "filters/gui/FilterDialog.h"
#include "filters/gui/FilterPreview.h"

#include <QApplication>
#include <QToolButton>

#include <chrono>
#include <memory>

using namespace kestrune;
using namespace kestrune::bench;

namespace {

std::shared_ptr<CPaintImage> MakePicture(int nWidth, int nHeight)
{
    auto pImage = std::make_shared<CPaintImage>();
    pImage->Create(nWidth, nHeight, FILL_WHITE, COLOR_RGB);
    for (int y = 0; y < nHeight; y++) {
        std::uint8_t* p = pImage->m_Bitmap.WriteRow(y);
        for (int i = 0; i < nWidth * 3; i++)
            p[i] = static_cast<std::uint8_t>((i * 7 + y * 13) >> 3 ^ (i * y) >> 9);
    }
    pImage->m_BaseBitmap.Copy(pImage->m_Bitmap);
    return pImage;
}

/// A shown filter dialog over a picture.
struct Scene {
    Scene(std::shared_ptr<CPaintImage> image, const FilterRow& row)
        : pImage(std::move(image))
    {
        PrepareFilterDialog(*pImage, data);
        data.values = LoadFilterValues(row, profile);
        pDialog = MakeFilterDialog(row, *pImage, data, nullptr);
        pDialog->show();
        QApplication::processEvents();
    }
    /// What a tick of the preview's timer costs, until the pane is painted.
    void Tick() const
    {
        pDialog->Preview().OnTimer();
        pDialog->Preview().repaint();
    }

    std::shared_ptr<CPaintImage> pImage;
    CMemoryProfile profile;
    FilterDialogData data;
    std::unique_ptr<CFilterDialog> pDialog;
};

/// Keeps a core busy for a frame of the screen.
void OneFrame()
{
    const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(16);
    while (std::chrono::steady_clock::now() < end) { }
}

const Group g_preview("filter preview", [] {
    const auto pLarge = MakePicture(4000, 3000), pSmall = MakePicture(1155, 866);
    for (const FilterRow& row : FilterTable()) {
        if (row.handler != FilterHandler::Dispatcher || !row.operation)
            continue;
        const auto large = std::make_shared<Scene>(pLarge, row), small = std::make_shared<Scene>(pSmall, row);
        const std::string strName = "preview " + std::to_string(row.nCommand) + " of 12 MP";
        Register({strName + " / 16 ms", 1, [=] { large->Tick(); }, OneFrame});
        Register({strName + " / of 1 MP", 1.25, [=] { large->Tick(); }, [=] { small->Tick(); }});
    }
});

} // namespace
