#include "Harness.h"

#include "doc/ScreenScale.h"

#include <cstring>
#include <memory>
#include <vector>

using namespace kestrune;

namespace kestrune::bench {

namespace {

constexpr int c_nWidth = 3840;
constexpr int c_nHeight = 2160;

std::function<void()> CopyOf(std::size_t nBytes)
{
    auto from = std::make_shared<std::vector<std::uint8_t>>(nBytes, std::uint8_t{1});
    auto to = std::make_shared<std::vector<std::uint8_t>>(nBytes, std::uint8_t{2});
    return [=] { std::memcpy(to->data(), from->data(), nBytes); };
}

const Group g_screen("screen", [] {
    auto pixels = std::make_shared<std::vector<std::uint32_t>>(c_nWidth * c_nHeight, 0u);
    constexpr struct {
        const char* pszName;
        double fZoom;
        double fAtMost;
    } c_aRows[] = {
        {"whole 3840 x 2160 at zoom 1 / P of the window's pixels", 1, 2},
        {"whole 3840 x 2160 at zoom 3 / P of the window's pixels", 3, 2},
        {"whole 3840 x 2160 at zoom 0.33 / P of the source pixels", 0.33f, 3},
        {"whole 3840 x 2160 at zoom 0.125, 1 picture row of 8 / P", 0.125, 3},
    };
    for (const auto& row : c_aRows) {
        auto bitmap = std::make_shared<LBitmapBase>();
        const int nSourceWidth = static_cast<int>(c_nWidth / row.fZoom) + 2;
        const int nSourceHeight = static_cast<int>((row.fZoom < 0.2 ? c_nHeight / 8 : c_nHeight) / row.fZoom) + 2;
        bitmap->Create(nSourceWidth, nSourceHeight, 24);
        for (int y = 0; y < nSourceHeight; y++)
            for (int i = 0; i < nSourceWidth * 3; i++)
                bitmap->WriteRow(y)[i] = static_cast<std::uint8_t>(i * 7 + y);
        const std::size_t nBase = row.fZoom < 1 ? bitmap->GetRowBytes() * nSourceHeight : std::size_t{c_nWidth} * c_nHeight * 4;
        const auto Draw = [=](ScreenForm form, CRect rc) {
            return [=] { ScaleToScreen(*bitmap, row.fZoom, rc, pixels->data(), c_nWidth * 4, form); };
        };
        Register({row.pszName, row.fAtMost, Draw(ScreenForm::Vector, {0, 0, c_nWidth, c_nHeight}), CopyOf(nBase)});
        Register({"  the same, vectors / plain form", 1, Draw(ScreenForm::Vector, {0, 0, c_nWidth, c_nHeight}),
                  Draw(ScreenForm::Plain, {0, 0, c_nWidth, c_nHeight})});
        // Its share of the rows, twice over: a strip is drawn by one core, the whole by all.
        Register({"  a strip of 16 rows / the whole", row.fZoom < 0.2 ? 0.13 : 0.02, Draw(ScreenForm::Vector, {0, 64, c_nWidth, 80}),
                  Draw(ScreenForm::Vector, {0, 0, c_nWidth, c_nHeight})});
    }
});

} // namespace

} // namespace kestrune::bench
