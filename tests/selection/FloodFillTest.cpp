// The flood fill against the recursion it stands for.
#include "MaskTestKit.h"

#include "selection/FloodFill.h"

#include <gtest/gtest.h>
#include <hwy/targets.h>

#include <cstdlib>
#include <functional>

using namespace kestrune;
using namespace kestrune::test;

namespace {

/// Three bytes a pixel, in patches of few colours with some noise: areas of every shape.
struct Pixels {
    Pixels(int w, int h, unsigned nSeed)
        : nWidth(w)
        , nHeight(h)
        , bytes(static_cast<std::size_t>(w) * h * 3)
    {
        std::mt19937 random(nSeed);
        const OwnMask patches = MakeMask(w, h, MaskKind::Blocks, nSeed);
        for (std::size_t i = 0; i < bytes.size(); i++)
            bytes[i] = static_cast<std::uint8_t>((patches.bytes[i / 3] ? 120 : 90) + random() % 9 + (random() % 40 == 0 ? 20 : 0));
    }
    const std::uint8_t* At(int x, int y) const { return &bytes[(static_cast<std::size_t>(y) * nWidth + x) * 3]; }
    FloodSource Source() const
    {
        return {nWidth, nHeight, [this](int y) { return At(0, y); }};
    }
    int nWidth, nHeight;
    std::vector<std::uint8_t> bytes;
};

std::uint8_t AlphaOf(const Pixels& pixels, const FloodParams& params, int x, int y)
{
    int nLargest = 0;
    for (int c = 0; c < 3; c++)
        nLargest = std::max(nLargest, std::abs(pixels.At(x, y)[c] - params.aSeed[c]));
    const int t = std::max(params.nTolerance, 1);
    if (!params.bAntiAlias)
        return nLargest <= t ? 255 : 0;
    const double v = 1.5 - nLargest / static_cast<double>(t);
    return static_cast<std::uint8_t>(v < 0 ? 0 : v >= 0.5 ? 255 : static_cast<int>(v * 512) & 255);
}

/// The recursion itself; small pictures only.
class CRecursion {
public:
    CRecursion(const Pixels& pixels, const FloodParams& params)
        : m_pixels(pixels)
        , m_params(params)
        , m_mask(pixels.nWidth, pixels.nHeight)
    {
        Fill(params.pt.x, params.pt.y);
    }
    const OwnMask& Mask() const { return m_mask; }

private:
    void Fill(int x, int y)
    {
        if (x < 0 || y < 0 || x >= m_mask.nWidth || y >= m_mask.nHeight || m_mask.At(x, y) || !AlphaOf(m_pixels, m_params, x, y))
            return;
        int nFirst = x, nEnd = x;
        const auto Store = [&](int at) {
            const std::uint8_t n = AlphaOf(m_pixels, m_params, at, y);
            if (n)
                m_mask.At(at, y) = n;
            return n != 0;
        };
        while (nFirst >= 0 && Store(nFirst))
            nFirst--;
        while (nEnd < m_mask.nWidth && Store(nEnd))
            nEnd++;
        for (int i = nFirst + 1; i < nEnd; i++) {
            Fill(i, y - 1);
            Fill(i, y + 1);
        }
    }
    const Pixels& m_pixels;
    const FloodParams& m_params;
    OwnMask m_mask;
};

FloodParams At(const Pixels& pixels, int x, int y, int nTolerance, bool bAntiAlias)
{
    FloodParams params{{x, y}, {}, nTolerance, bAntiAlias};
    std::copy_n(pixels.At(x, y), 3, params.aSeed);
    return params;
}

void CheckAgainstRecursion()
{
    unsigned nSeed = 0;
    for (const auto& size : c_aSizes)
        for (const int nTolerance : {0, 1, 4, 6, 12, 30, 255})
            for (const bool bAntiAlias : {false, true}) {
                const Pixels pixels(size[0], size[1], ++nSeed);
                std::mt19937 random(nSeed);
                const FloodParams params
                    = At(pixels, static_cast<int>(random() % size[0]), static_cast<int>(random() % size[1]), nTolerance, bAntiAlias);
                OwnMask mask(size[0], size[1]);
                const CRect rc = FloodFill(pixels.Source(), params, mask.Plane());
                const CRecursion recursion(pixels, params);
                EXPECT_EQ(mask, recursion.Mask()) << "seed " << nSeed;
                CRect expected;
                for (int y = 0; y < mask.nHeight; y++)
                    for (int x = 0; x < mask.nWidth; x++)
                        if (mask.At(x, y))
                            expected = Unite(expected, {x, y, x + 1, y + 1});
                EXPECT_EQ(rc, expected) << "seed " << nSeed;
            }
}

} // namespace

TEST(FloodFill, IsTheRecursionInEveryInstructionSet)
{
    for (const std::int64_t nTarget : hwy::SupportedAndGeneratedTargets()) {
        hwy::SetSupportedTargetsForTest(nTarget);
        CheckAgainstRecursion();
    }
    hwy::SetSupportedTargetsForTest(0);
}
TEST(FloodFill, AlphaFallsFromOneToOneAndAHalfTolerances)
{
    EXPECT_EQ(WandAlpha(10, true, 10), 255);
    EXPECT_EQ(WandAlpha(11, true, 10), static_cast<std::uint8_t>((1.5 - 1.1) * 512));
    EXPECT_EQ(WandAlpha(14, true, 10), static_cast<std::uint8_t>((1.5 - 1.4) * 512));
    EXPECT_EQ(WandAlpha(15, true, 10), 0) << "what is left of 512 times nothing";
    EXPECT_EQ(WandAlpha(16, true, 10), 0);
    EXPECT_EQ(WandAlpha(10, false, 10), 255);
    EXPECT_EQ(WandAlpha(11, false, 10), 0);
    for (int d = 0; d < 256; d++) {
        EXPECT_EQ(WandAlpha(d, true, 0), WandAlpha(d, true, 1)) << d;
        EXPECT_EQ(WandAlpha(d, false, 0), WandAlpha(d, false, 1)) << d;
    }
}

TEST(FloodFill, APartlyTouchedPixelPassesTheFillOn)
{
    // A bridge of pixels at 1.2 tolerances between two plain areas.
    Pixels pixels(9, 3, 1);
    std::fill(pixels.bytes.begin(), pixels.bytes.end(), std::uint8_t{100});
    for (int y = 0; y < 3; y++)
        for (int c = 0; c < 3; c++)
            pixels.bytes[(static_cast<std::size_t>(y) * 9 + 4) * 3 + c] = y == 1 ? 112 : 200;
    OwnMask mask(9, 3);
    FloodFill(pixels.Source(), At(pixels, 0, 0, 10, true), mask.Plane());
    EXPECT_EQ(mask.At(4, 1), static_cast<std::uint8_t>((1.5 - 1.2) * 512));
    EXPECT_EQ(mask.At(4, 0), 0);
    EXPECT_EQ(mask.At(8, 2), 255);
}

TEST(FloodFill, CornersDoNotConnectAndOutsideIsNothing)
{
    Pixels pixels(2, 2, 1);
    std::fill(pixels.bytes.begin(), pixels.bytes.end(), std::uint8_t{0});
    for (int c = 0; c < 3; c++)
        pixels.bytes[3 + c] = pixels.bytes[6 + c] = 255;
    OwnMask mask(2, 2);
    EXPECT_EQ(FloodFill(pixels.Source(), At(pixels, 0, 0, 6, true), mask.Plane()), (CRect{0, 0, 1, 1}));
    EXPECT_EQ(mask.At(1, 1), 0);
    FloodParams params = At(pixels, 0, 0, 6, true);
    for (const CPoint pt : {CPoint{-1, 0}, {0, -1}, {2, 0}, {0, 2}}) {
        params.pt = pt;
        OwnMask none(2, 2);
        EXPECT_TRUE(FloodFill(pixels.Source(), params, none.Plane()).IsEmpty());
        EXPECT_EQ(none, OwnMask(2, 2));
    }
}

/// Ten million steps of a recursion would not fit on any call stack.
TEST(FloodFill, LargePlainAreasAndLongSnakes)
{
    Pixels plain(3000, 2000, 1);
    std::fill(plain.bytes.begin(), plain.bytes.end(), std::uint8_t{50});
    OwnMask mask(3000, 2000);
    FloodFill(plain.Source(), At(plain, 1500, 1000, 6, true), mask.Plane());
    EXPECT_EQ(std::count(mask.bytes.begin(), mask.bytes.end(), 255), 6000000);

    // A path of one pixel that winds through the whole picture.
    Pixels snake(1001, 1001, 1);
    for (int y = 0; y < 1001; y++)
        for (int x = 0; x < 1001; x++)
            std::fill_n(&snake.bytes[(static_cast<std::size_t>(y) * 1001 + x) * 3], 3,
                        static_cast<std::uint8_t>(y % 2 == 0 || x == (y % 4 == 1 ? 1000 : 0) ? 0 : 255));
    OwnMask path(1001, 1001);
    FloodFill(snake.Source(), At(snake, 0, 0, 6, true), path.Plane());
    EXPECT_EQ(std::count(path.bytes.begin(), path.bytes.end(), 255), 501 * 1001 + 500);
}
