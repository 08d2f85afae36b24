// Blending a whole layer on one core, against copying it.
#include "Harness.h"

#include "paint/Blend.h"
#include "paint/BlendKernels.h"

#include <tbb/global_control.h>

#include <cstring>
#include <memory>
#include <string>
#include <vector>

namespace kestrune::bench {

namespace {

constexpr int c_nWidth = 3840, c_nHeight = 2160;
constexpr std::size_t c_nPixels = static_cast<std::size_t>(c_nWidth) * c_nHeight;

struct Layer {
    std::vector<std::uint8_t> canvas = std::vector<std::uint8_t>(c_nPixels * 3);
    std::vector<std::uint8_t> source = std::vector<std::uint8_t>(c_nPixels * 4);
    std::vector<std::uint8_t> out = std::vector<std::uint8_t>(c_nPixels * 4);
    std::vector<std::uint8_t> copy = std::vector<std::uint8_t>(c_nPixels * 4);

    Layer()
    {
        std::uint32_t n = 1;
        for (auto* pBytes : {&canvas, &source})
            for (std::uint8_t& b : *pBytes)
                b = static_cast<std::uint8_t>((n = n * 1664525u + 1013904223u) >> 24);
    }

    void Blend(int nMode)
    {
        tbb::global_control oneCore(tbb::global_control::max_allowed_parallelism, 1);
        BlendBlock(nMode, canvas.data(), source.data(), out.data(), c_nWidth, c_nHeight, c_nWidth, c_nHeight, 0, 0, 4);
    }
    void BlendPlain(int nMode)
    {
        const BlendRowFn row = PlainBlendRow(nMode, 4);
        std::uint32_t nState = 1;
        for (int y = 0; y < c_nHeight; y++) {
            const std::size_t i = static_cast<std::size_t>(y) * c_nWidth;
            if (row)
                row(canvas.data() + i * 3, source.data() + i * 4, out.data() + i * 4, c_nWidth);
            else
                PlainDissolveRow(nState, source.data() + i * 4, out.data() + i * 4, c_nWidth, 4);
        }
    }
    void Mix(bool bPlain)
    {
        for (int y = 0; y < c_nHeight; y++) {
            std::uint8_t* pRow = canvas.data() + static_cast<std::size_t>(y) * c_nWidth * 3;
            const std::uint8_t* pBlock = source.data() + static_cast<std::size_t>(y) * c_nWidth * 4;
            if (bPlain)
                PlainMixRun(pRow, pBlock, pRow, c_nWidth, {200, false, nullptr});
            else
                MixRow(pRow, pBlock, pRow, {0, y, c_nWidth}, {200, false, nullptr});
        }
    }
    void Memcpy() { std::memcpy(copy.data(), source.data(), source.size()); }
};

double BarOf(int nMode)
{
    switch (nMode) {
    case BLEND_DIVIDE:
        return 10;
    case BLEND_DISSOLVE:
        return 20;
    case BLEND_HUE:
    case BLEND_SATURATION:
    case BLEND_COLOR:
    case BLEND_VALUE:
        return 60;
    default:
        return 6;
    }
}

const Group g_blend("blend", [] {
    const auto layer = std::make_shared<Layer>();
    for (int nMode = 0; nMode < BLEND_COUNT; nMode++)
        Register({"blend 3840 x 2160, " + std::string(c_aBlendNames[nMode]) + " / copying the layer", BarOf(nMode),
                  [=] { layer->Blend(nMode); }, [=] { layer->Memcpy(); }});
    Register(
        {"mix a layer into the canvas / copying the layer", 6, [=] { layer->Mix(false); }, [=] { layer->Memcpy(); }});
});

// A vector form that is no faster than its plain form has no reason to be (Normal and Behind are copies in both).
const Group g_plain("blend against plain", [] {
    const auto layer = std::make_shared<Layer>();
    for (int nMode = 0; nMode < BLEND_COUNT; nMode++)
        Register({"blend 3840 x 2160, " + std::string(c_aBlendNames[nMode]) + " / its plain form",
                  nMode == BLEND_NORMAL || nMode == BLEND_BEHIND ? 3 : 1.1, [=] { layer->Blend(nMode); },
                  [=] { layer->BlendPlain(nMode); }});
    Register(
        {"mix a layer into the canvas / its plain form", 1.1, [=] { layer->Mix(false); }, [=] { layer->Mix(true); }});
});

} // namespace

} // namespace kestrune::bench
