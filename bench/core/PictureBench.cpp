// Picture commands on 3840 x 2160: turning against copying the picture, resizing against other libraries at the same kernel.
#include "Harness.h"

#include "doc/PictureTurn.h"

#include <cstdlib>
#include <cstring>
#include <memory>
#include <random>
#include <vector>

#ifdef BENCH_HAS_GRAPHICSMAGICK
#include <magick/api.h>
#endif
#ifdef BENCH_HAS_VIPS
#include <vips/vips.h>
#endif

using namespace kestrune;

namespace kestrune::bench {

namespace {

constexpr int c_nWidth = 3840, c_nHeight = 2160;
constexpr std::size_t c_nBytes = std::size_t{c_nWidth} * c_nHeight * 3;

std::shared_ptr<LBitmapBase> Picture()
{
    auto bitmap = std::make_shared<LBitmapBase>();
    bitmap->Create(c_nWidth, c_nHeight, 24);
    std::minstd_rand random(1);
    for (int y = 0; y < c_nHeight; y++) {
        std::uint8_t* p = bitmap->WriteRow(y);
        for (int i = 0; i < c_nWidth * 3; i++)
            p[i] = static_cast<std::uint8_t>((i / 3 * (i % 3 + 1) / 16 + y / 8) + (random() >> 8 & 7));
    }
    return bitmap;
}

const Group g_turn("picture turn", [] {
    const auto source = Picture();
    auto from = std::make_shared<std::vector<std::uint8_t>>(c_nBytes, std::uint8_t{1});
    auto to = std::make_shared<std::vector<std::uint8_t>>(c_nBytes, std::uint8_t{2});
    const auto P = [=] { std::memcpy(to->data(), from->data(), c_nBytes); };
    auto target = std::make_shared<LBitmapBase>();
    const auto Add = [&](const char* pszName, PictureTurn turn, double fAtMost) {
        Register({std::string(pszName) + " / P", fAtMost, [=] { *target = TurnedBitmap(*source, turn); }, P});
    };
    Add("rotate 90 left", PictureTurn::Left, 8);
    Add("rotate 90 right", PictureTurn::Right, 8);
    Add("rotate 180", PictureTurn::Half, 4);
    Add("mirror", PictureTurn::Mirror, 4);
    Add("flip", PictureTurn::Flip, 4);
});

/// What a peer is asked to do, and which kernel that is here.
struct Resizing {
    const char* pszName;
    int nWidth, nHeight, nFlags;
};
constexpr Resizing c_aResizings[] = {
    {"bicubic to 1920 x 1080", 1920, 1080, SIZE_BICUBIC}, {"bicubic to 1421 x 799", 1421, 799, SIZE_BICUBIC},
    {"bicubic to 6000 x 3375", 6000, 3375, SIZE_BICUBIC}, {"area to 1920 x 1080", 1920, 1080, SIZE_AREA},
    {"area to 480 x 270", 480, 270, SIZE_AREA},           {"area to 1421 x 799", 1421, 799, SIZE_AREA},
};

[[maybe_unused]] std::shared_ptr<std::vector<std::uint8_t>> Packed(const LBitmapBase& bitmap)
{
    auto bytes = std::make_shared<std::vector<std::uint8_t>>(c_nBytes);
    for (int y = 0; y < c_nHeight; y++)
        std::memcpy(bytes->data() + static_cast<std::size_t>(y) * c_nWidth * 3, bitmap.Row(y), c_nWidth * 3);
    return bytes;
}

[[maybe_unused]] void AgainstPeer(const char* pszPeer, const Resizing& row, const std::shared_ptr<LBitmapBase>& source, std::function<void()> peer)
{
    auto sized = std::make_shared<LBitmapBase>();
    Register({std::string(row.pszName) + " / " + pszPeer, 1, [=] {
                  *sized = *source;
                  sized->Size(row.nWidth, row.nHeight, row.nFlags);
              }, std::move(peer)});
}

#ifdef BENCH_HAS_GRAPHICSMAGICK
const Group g_magick("picture resize, GraphicsMagick", [] {
    InitializeMagick(nullptr);
    const auto source = Picture();
    const auto bytes = Packed(*source);
    ExceptionInfo error;
    GetExceptionInfo(&error);
    Image* pImage = ConstituteImage(c_nWidth, c_nHeight, "BGR", CharPixel, bytes->data(), &error);
    if (!pImage)
        return;
    for (const Resizing& row : c_aResizings)
        AgainstPeer("GraphicsMagick", row, source, [=] {
            ExceptionInfo info;
            GetExceptionInfo(&info);
            DestroyImage(ResizeImage(pImage, row.nWidth, row.nHeight, row.nFlags == SIZE_AREA ? BoxFilter : CatromFilter, 1.0, &info));
            DestroyExceptionInfo(&info);
        });
});
#endif

#ifdef BENCH_HAS_VIPS
/// The peer makes its picture strip by strip on its own threads; it is done when all of it stands in memory.
void RunVips(VipsImage* pLazy)
{
    std::size_t nBytes = 0;
    g_free(vips_image_write_to_memory(pLazy, &nBytes));
    g_object_unref(pLazy);
}

const Group g_vips("picture resize, libvips", [] {
    if (VIPS_INIT("kestrune_bench"))
        return;
    vips_cache_set_max(0);
    const auto source = Picture();
    const auto bytes = Packed(*source);
    VipsImage* pImage = vips_image_new_from_memory_copy(bytes->data(), bytes->size(), c_nWidth, c_nHeight, 3, VIPS_FORMAT_UCHAR);
    for (const Resizing& row : c_aResizings) {
        const double fX = static_cast<double>(row.nWidth) / c_nWidth, fY = static_cast<double>(row.nHeight) / c_nHeight;
        if (row.nFlags == SIZE_BICUBIC) {
            AgainstPeer("libvips", row, source, [=] {
                VipsImage* pOut = nullptr;
                // No gap: with one it takes means of boxes first, which is another kernel.
                if (vips_resize(pImage, &pOut, fX, "vscale", fY, "kernel", VIPS_KERNEL_CUBIC, "gap", 0.0, nullptr) == 0)
                    RunVips(pOut);
            });
        } else if (c_nWidth % row.nWidth == 0) { // it has means of whole pixels alone
            AgainstPeer("libvips", row, source, [=] {
                VipsImage* pOut = nullptr;
                if (vips_shrink(pImage, &pOut, 1 / fX, 1 / fY, nullptr) == 0)
                    RunVips(pOut);
            });
        }
    }
});
#endif

} // namespace

} // namespace kestrune::bench
