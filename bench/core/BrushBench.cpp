// The brush library: a large file, the thumbnails of its list, and a brush being made ready to paint.

#include "Harness.h"

#include "resources/BrushFile.h"
#include "resources/BrushGenerator.h"
#include "resources/BrushPrepare.h"

#include <cstring>
#include <memory>
#include <vector>

using namespace kestrune;

namespace kestrune::bench {

namespace {

constexpr int c_nBrushes = 400;

/// Soft and hard, round and flat, all of the largest radius that the options dialog offers.
std::vector<BrushEntry> LargeBrushes()
{
    std::vector<BrushEntry> brushes;
    for (int i = 0; i < c_nBrushes; i++)
        brushes.push_back(GenerateBrush({100, i % 101, i % 181, 1 + i % 4}));
    return brushes;
}

const Group g_brushes("brush library", [] {
    const auto bytes = std::make_shared<std::vector<std::uint8_t>>(EncodeBrushes(LargeBrushes()));
    const auto brushes = std::make_shared<std::vector<BrushEntry>>(ParseBrushes(*bytes));
    const auto copy = std::make_shared<std::vector<std::uint8_t>>(bytes->size());
    const auto P = [=] { std::memcpy(copy->data(), bytes->data(), bytes->size()); };
    Register({"a file of 400 large brushes, read / P of its bytes", 4, [=] { ParseBrushes(*bytes); }, P});
    Register({"  their thumbnails / P", 6, [=] {
        for (const BrushEntry& brush : *brushes)
            SampleBrush(brush.m_pMask, brush.m_nWidth, brush.m_nHeight, 30);
    }, P});

    const auto brush = std::make_shared<BrushEntry>(GenerateBrush({100, 20, 30, 1}));
    const ResponseTable response = IdentityResponse();
    Register({"201-pixel brush with a soft edge of 10 / without", 300, [=] { PrepareBrush(*brush, 10, response); },
              [=] { PrepareBrush(*brush, 0, response); }});
});

} // namespace

} // namespace kestrune::bench
