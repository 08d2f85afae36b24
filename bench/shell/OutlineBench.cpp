// The marching outline over a window of 3840 x 2160: one step on a boundary of some 100,000 pieces, and taking it anew after a change.
#include "../Harness.h"

#include "selection/gui/SelectionOutline.h"

#include <QImage>
#include <QPainter>

#include <cstring>
#include <memory>
#include <string>
#include <vector>

using namespace kestrune;
using namespace kestrune::bench;

namespace {

constexpr int c_nWidth = 3840, c_nHeight = 2160;
constexpr std::size_t c_nWindowBytes = std::size_t{4} * c_nWidth * c_nHeight;

struct Marching {
    /// Ragged stains all over the picture.
    explicit Marching(float fZoom)
        : bytes(static_cast<std::size_t>(c_nWidth) * c_nHeight)
        , screen(c_nWidth, c_nHeight, QImage::Format_RGB32)
    {
        std::uint32_t n = 1;
        for (int y = 0; y < c_nHeight; y += 24)
            for (int x = 0; x < c_nWidth; x += 24)
                for (int j = 0; j < 12; j++)
                    std::memset(&bytes[static_cast<std::size_t>(y + j) * c_nWidth + x], 255, 8 + ((n = n * 1664525u + 1013904223u) >> 29));
        TraceBoundary({bytes.data(), c_nWidth, c_nHeight}, {0, 0, c_nWidth, c_nHeight}, segments);
        segments.resize(std::min<std::size_t>(segments.size(), 100000));
        place = {1, fZoom, {0, 0}, {c_nWidth, c_nHeight}, {c_nWidth, c_nHeight}};
        outline.Follow(segments, place);
    }
    void Draw()
    {
        QPainter painter(&screen);
        outline.Draw(painter, {0, 0, c_nWidth, c_nHeight});
    }

    std::vector<std::uint8_t> bytes;
    std::vector<MaskSegment> segments;
    OutlinePlace place;
    CSelectionOutline outline;
    QImage screen;
};

const Group g_outline("outline", [] {
    const auto pFrom = std::make_shared<std::vector<std::uint8_t>>(c_nWindowBytes, 1), pTo = std::make_shared<std::vector<std::uint8_t>>(c_nWindowBytes, 2);
    const auto P = [=] { std::memcpy(pTo->data(), pFrom->data(), c_nWindowBytes); };
    for (const float fZoom : {1.0f, 0.33f, 8.0f}) {
        const auto pMarching = std::make_shared<Marching>(fZoom);
        const std::string strWhat = std::to_string(pMarching->segments.size()) + " pieces at zoom " + std::to_string(fZoom).substr(0, 4) + " / P of the window";
        Register({"outline: step of " + strWhat, 5, [=] {
                      pMarching->outline.Tick();
                      pMarching->Draw();
                  }, P});
        Register({"outline: taking " + strWhat, 10, [=] {
                      pMarching->place.nMask++;
                      pMarching->outline.Follow(pMarching->segments, pMarching->place);
                  }, P});
    }
});

} // namespace
