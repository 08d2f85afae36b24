#include "Harness.h"

#include "doc/Bitmap.h"
#include "doc/ColorReduce.h"
#include "doc/Resample.h"

#include <cstring>
#include <memory>
#include <random>
#include <vector>

using namespace kestrune;

namespace kestrune::bench {

namespace {

std::shared_ptr<LBitmapBase> Picture(int nWidth, int nHeight)
{
    auto bitmap = std::make_shared<LBitmapBase>();
    bitmap->Create(nWidth, nHeight, 24);
    std::minstd_rand random(1);
    for (int y = 0; y < nHeight; y++) {
        std::uint8_t* p = bitmap->WriteRow(y);
        for (int i = 0; i < nWidth * 3; i++)
            p[i] = static_cast<std::uint8_t>((i / 3 * (i % 3 + 1) / 16 + y / 8) + (random() >> 8 & 7));
    }
    return bitmap;
}

/// P: the time to copy that many bytes from one place to another, both already in memory.
std::function<void()> CopyOf(std::size_t nBytes)
{
    auto from = std::make_shared<std::vector<std::uint8_t>>(nBytes, std::uint8_t{1});
    auto to = std::make_shared<std::vector<std::uint8_t>>(nBytes, std::uint8_t{2});
    return [=] { std::memcpy(to->data(), from->data(), nBytes); };
}

const Group g_copy("bitmap copy", [] {
    const auto source = Picture(12500, 8000);
    const std::size_t nBytes = std::size_t{12500} * 8000 * 3;
    const auto P = CopyOf(nBytes);
    auto copy = std::make_shared<LBitmapBase>();
    Register({"copy of a 100-megapixel bitmap / P", 0.01, [=] { copy->Copy(*source); }, P});
    Register({"first write to one row of the copy / P of one band", 6,
              [=] { copy->WriteRow(4000)[0] ^= 1; }, CopyOf(256 * 1024), [=] { copy->Copy(*source); }});
    Register({"fill of 100 megapixels / P", 0.01, [=] { copy->Fill(0x123456); }, P});
});

// P is a copy by one core, which here mostly stays in the cache, so these are many P and still few milliseconds.
const Group g_resample("bitmap size", [] {
    const auto source = Picture(4000, 3000);
    const auto P = CopyOf(std::size_t{4000} * 3000 * 3);
    constexpr struct {
        const char* pszName;
        int nWidth, nHeight, nFlags;
        double fAtMost;
    } c_aRows[] = {
        {"12 MP to 3 MP, nearest / P", 2000, 1500, SIZE_NEAREST, 5},     {"12 MP to 3 MP, area / P", 2000, 1500, SIZE_AREA, 8},
        {"12 MP to 3 MP, bilinear / P", 2000, 1500, SIZE_BILINEAR, 10},   {"12 MP to 3 MP, bicubic / P", 2000, 1500, SIZE_BICUBIC, 12},
        {"12 MP to 1000 x 750, bicubic / P", 1000, 750, SIZE_BICUBIC, 8}, {"12 MP to 27 MP, nearest / P", 6000, 4500, SIZE_NEAREST, 25},
        {"12 MP to 27 MP, area / P", 6000, 4500, SIZE_AREA, 40},         {"12 MP to 27 MP, bilinear / P", 6000, 4500, SIZE_BILINEAR, 40},
        {"12 MP to 27 MP, bicubic / P", 6000, 4500, SIZE_BICUBIC, 40},
    };
    for (const auto& row : c_aRows) {
        auto bitmap = std::make_shared<LBitmapBase>();
        Register({row.pszName, row.fAtMost, [=] { bitmap->Size(row.nWidth, row.nHeight, row.nFlags); }, P, [=] { bitmap->Copy(*source); }});
    }
    // What the vectors are worth: the same work in the plain form.
    for (const int nFlags : {int{SIZE_AREA}, int{SIZE_BICUBIC}}) {
        auto target = std::make_shared<CBandStore>(1500, 6000);
        Register({nFlags == SIZE_AREA ? "area, vectors / plain form" : "bicubic, vectors / plain form", 0.8,
                  [=] { ResampleSmooth(*source, *target, nFlags); },
                  [=] { ResampleSmooth(*source, *target, nFlags, KernelForm::Plain); }});
    }
});

const Group g_colors("bitmap colors", [] {
    const auto source = Picture(4000, 3000);
    const auto P = CopyOf(std::size_t{4000} * 3000 * 3);
    constexpr struct {
        const char* pszName;
        int nBits;
        std::uint32_t dwFlags;
        double fAtMost;
    } c_aRows[] = {
        {"12 MP to 256 fitted colours, no dither / P", 8, CRF_OPTIMIZEDPALETTE | CRF_NODITHER, 100},
        {"12 MP to 256 fitted colours, ordered dither / P", 8, CRF_OPTIMIZEDPALETTE | CRF_ORDEREDDITHER, 130},
        {"12 MP to 256 fitted colours, error diffusion / P", 8, CRF_OPTIMIZEDPALETTE | CRF_ERRORDIFFUSION, 260},
        {"12 MP to black and white, error diffusion / P", 1, 0x10001, 130},
    };
    for (const auto& row : c_aRows) {
        auto bitmap = std::make_shared<LBitmapBase>();
        Register({row.pszName, row.fAtMost, [=] { bitmap->ColorRes(row.nBits, row.dwFlags); }, P, [=] { bitmap->Copy(*source); }});
    }
    auto grey = std::make_shared<LBitmapBase>();
    Register({"12 MP to grey / P", 8, [=] { grey->GrayScale(8); }, P, [=] { grey->Copy(*source); }});
    auto back = std::make_shared<LBitmapBase>();
    Register({"12 MP from grey to 24 bits / P", 4, [=] { back->ColorRes(24, CRF_TRUECOLOR); }, P,
              [=] {
                  back->Copy(*source);
                  back->GrayScale(8);
              }});
});

} // namespace

} // namespace kestrune::bench
