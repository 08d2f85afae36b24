// The projective map and the resampling of a float, held against the plain forms and against what can be worked out by hand.
#include "doc/DocTestTools.h"
#include "doc/FloatKernels.h"
#include "doc/PaintImage.h"
#include "doc/ProjectiveResample.h"

#include <gtest/gtest.h>

#include <cstring>
#include <limits>
#include <random>
#include <vector>

using namespace kestrune;
using namespace kestrune::test;

namespace {

struct Block {
    LBitmapBase bitmap;
    std::vector<std::uint8_t> mask;
};

Block Target(int w, int h)
{
    Block block;
    block.bitmap.Create(w, h, 24);
    block.bitmap.Fill(0x123456); // every byte must be written
    block.mask.assign(static_cast<std::size_t>(w) * h, 77);
    return block;
}

/// Colours at random; the mask by kind: full, at random, full with holes, or a slope as a feather leaves it.
Block Source(int w, int h, int nKind, std::mt19937& random)
{
    Block block{RandomBitmap(w, h, 24, random()), std::vector<std::uint8_t>(static_cast<std::size_t>(w) * h, 255)};
    for (int i = 0; i < w * h; i++)
        if (nKind == 1)
            block.mask[i] = static_cast<std::uint8_t>(random());
        else if (nKind == 2 && random() % 4 == 0)
            block.mask[i] = 0;
        else if (nKind == 3)
            block.mask[i] = static_cast<std::uint8_t>(i % w * 255 / w);
    return block;
}

Matrix3 RandomMap(std::mt19937& random, int w, int h)
{
    const auto unit = [&] { return static_cast<double>(random()) / random.max(); };
    Matrix3 m;
    switch (random() % 6) {
    case 0: // whole steps: the fractions are 0
        m.Translate(static_cast<int>(random() % 7) - 3, static_cast<int>(random() % 7) - 3);
        break;
    case 1:
        m.Translate(-w / 2.0, -h / 2.0);
        m.Rotate(unit() * 7);
        m.Scale(0.3 + unit() * 2, 0.3 + unit() * 2);
        m.Translate(w / 2.0, h / 2.0);
        break;
    case 2: // fractions of a half and a quarter, where roundings meet their ties
        m.Scale(2, 4);
        break;
    case 3: {
        const Quad q{PointF{unit() * w, unit() * h}, {w - unit() * w / 2, unit() * h}, {w + unit() * w, h + unit() * h}, {-unit() * w, h - unit() * h / 3}};
        m.Scale(1.0 / w, 1.0 / h);
        m = UnitSquareTo(q) * m;
        break;
    }
    case 4: // lines meet inside the picture: W runs through 0
        m = {{{1, 0.2, 0}, {0.1, 1, 0}, {unit() * 0.4 - 0.2, unit() * 0.4 - 0.2, 1}}};
        break;
    default: // nothing that means anything
        for (auto& row : m.a)
            for (double& f : row)
                f = random() % 9 == 0 ? std::numeric_limits<double>::infinity() : (unit() - 0.5) * 3;
    }
    return m;
}

/// A picture of white noise with one rectangle selected and captured, as a selection tool leaves it.
void SelectAndCapture(CPaintImage& image, const CRect& rc)
{
    image.CreateFromClipboardBitmap(RandomBitmap(60, 50, 24, 5), 24, MODE_RGB);
    std::memset(image.m_pMask.get(), 0, 60 * 50);
    for (int y = rc.top; y < rc.bottom; y++)
        std::memset(image.m_pMask.get() + y * 60 + rc.left, 255, rc.Width());
    image.InvalidateMaskBounds();
    image.CaptureFloat(rc.left, rc.top, rc.Width(), rc.Height());
    image.m_nFloatX = rc.left;
    image.m_nFloatY = rc.top;
    image.m_nFloatW = rc.Width();
    image.m_nFloatH = rc.Height();
    image.m_rcFloat = image.m_rcFloatStart = rc;
    image.m_bFloatReady = image.m_bSelection = true;
}

bool Transform(CPaintImage& image, const Matrix3& m)
{
    std::optional<FloatPixels> pixels = image.TransformedFloat(m);
    if (pixels)
        image.ReplaceFloat(std::move(*pixels));
    return pixels.has_value();
}

} // namespace

TEST(ProjectiveResample, TheFastFormGivesTheBytesOfThePlainOne)
{
    std::mt19937 random(11);
    const int aSides[] = {1, 2, 3, 5, 17, 64, 131, 300};
    for (int i = 0; i < 400; i++) {
        const int w = aSides[random() % 8], h = aSides[random() % 7];
        const Block source = Source(w, h, i % 4, random);
        const Matrix3 map = RandomMap(random, w, h);
        const int wOut = 1 + static_cast<int>(random() % 300), hOut = 1 + static_cast<int>(random() % 40);
        Block fast = Target(wOut, hOut), plain = Target(wOut, hOut);
        ResampleProjective({source.bitmap, source.mask.data()}, map, {fast.bitmap, fast.mask.data()});
        ResampleProjectivePlain({source.bitmap, source.mask.data()}, map, {plain.bitmap, plain.mask.data()});
        ASSERT_EQ(fast.mask, plain.mask) << i;
        ASSERT_EQ(BytesOf(fast.bitmap), BytesOf(plain.bitmap)) << i;
    }
}

TEST(ProjectiveResample, KnownPlacesGiveKnownPixels)
{
    std::mt19937 random(3);
    const Block source = Source(9, 7, 1, random);
    Block same = Target(9, 7);
    ResampleProjective({source.bitmap, source.mask.data()}, Matrix3(), {same.bitmap, same.mask.data()});
    EXPECT_EQ(same.mask, source.mask);
    for (int y = 0; y < 7; y++)
        for (int x = 0; x < 9; x++)
            EXPECT_EQ(same.bitmap.GetPixelColor(x, y), source.mask[y * 9 + x] ? source.bitmap.GetPixelColor(x, y) : 0u);

    // Half a pixel between a black and a white half: the spline's known values (-1, 9, 9, -1) / 16, and nothing comes from outside.
    Block step{LBitmapBase(), std::vector<std::uint8_t>(8, 255)};
    step.bitmap.Create(8, 1, 24);
    for (int x = 0; x < 8; x++)
        step.bitmap.PutPixelColor(x, 0, x < 4 ? 0 : 0xFFFFFF);
    Matrix3 half;
    half.Translate(0.5, 0);
    Block out = Target(8, 1);
    ResampleProjective({step.bitmap, step.mask.data()}, half, {out.bitmap, out.mask.data()});
    const int aGrey[8] = {0, 0, 0, 128, 255, 255, 255, 255}; // overshoots are clamped
    for (int x = 1; x < 6; x++)
        EXPECT_EQ(out.bitmap.Row(0)[x * 3], aGrey[x]) << x;
    EXPECT_EQ(out.mask[2], 255);
    EXPECT_EQ(out.mask[7], 127); // 255 x 8 / 16 is cut across, then rounded
}

TEST(FloatRow, TheFastBlendGivesTheBytesOfThePlainOne)
{
    std::mt19937 random(9);
    for (const int nCount : {1, 2, 15, 16, 17, 31, 32, 33, 64, 100}) {
        for (int nOpacity = 0; nOpacity < 256; nOpacity += nOpacity % 51 ? 1 : 3) {
            std::vector<std::uint8_t> base(nCount * 3 + 1), over(nCount * 3 + 1), mask(nCount), fast(nCount * 3), plain(nCount * 3);
            for (auto* p : {&base, &over, &mask})
                for (std::uint8_t& b : *p)
                    b = static_cast<std::uint8_t>(random() % 5 ? random() : random() % 2 * 255);
            for (const bool bHard : {false, true}) {
                BlendFloatRow({base.data() + 1, over.data() + 1, mask.data(), fast.data(), nCount}, {nOpacity, bHard});
                BlendFloatRowPlain({base.data() + 1, over.data() + 1, mask.data(), plain.data(), nCount}, {nOpacity, bHard});
                ASSERT_EQ(fast, plain) << nCount << ' ' << nOpacity << ' ' << bHard;
            }
        }
    }
}

TEST(FloatRow, EveryPairOfBytesAtEveryAlphaRounds_AsTheProgramDoes)
{
    std::vector<std::uint8_t> base(256 * 3), over(256 * 3), mask(256), out(256 * 3), plain(256 * 3);
    for (int i = 0; i < 256 * 3; i++)
        over[i] = static_cast<std::uint8_t>(i / 3);
    for (int b = 0; b < 256; b++)
        for (int a = 0; a < 256; a++) {
            std::fill(base.begin(), base.end(), static_cast<std::uint8_t>(b));
            std::fill(mask.begin(), mask.end(), static_cast<std::uint8_t>(a));
            BlendFloatRow({base.data(), over.data(), mask.data(), out.data(), 256}, {255, false});
            BlendFloatRowPlain({base.data(), over.data(), mask.data(), plain.data(), 256}, {255, false});
            ASSERT_EQ(out, plain) << b << ' ' << a;
        }
}

TEST(Matrix3, InverseAndUnitSquare)
{
    std::mt19937 random(2);
    const auto unit = [&] { return static_cast<double>(random()) / random.max(); };
    for (int i = 0; i < 100; i++) {
        const Quad q{PointF{unit(), unit()}, {5 + unit(), -unit()}, {4 + unit(), 6 + unit()}, {-unit(), 5 + unit()}};
        const Matrix3 m = UnitSquareTo(i % 2 ? q : Quad{q[0], q[1], PointF{q[1].x + q[3].x - q[0].x, q[1].y + q[3].y - q[0].y}, q[3]});
        Matrix3 inverse;
        ASSERT_TRUE(m.Invert(inverse));
        const PointF aUnit[4] = {{0, 0}, {1, 0}, {1, 1}, {0, 1}};
        for (const PointF& pt : aUnit) {
            const PointF there = m.Apply(pt), back = inverse.Apply(there);
            EXPECT_NEAR(back.x, pt.x, 1e-9);
            EXPECT_NEAR(back.y, pt.y, 1e-9);
        }
        for (int k = 0; k < 4 && i % 2; k++) {
            EXPECT_NEAR(m.Apply(aUnit[k]).x, q[k].x, 1e-9);
            EXPECT_NEAR(m.Apply(aUnit[k]).y, q[k].y, 1e-9);
        }
    }
    Matrix3 flat, kept;
    flat.Scale(0, 1);
    kept.Translate(3, 4);
    const Matrix3 before = kept;
    EXPECT_FALSE(flat.Invert(kept));
    EXPECT_EQ(kept, before);
}

TEST(TransformFloat, TheRectangleFollowsTheCorners)
{
    CPaintImage image;
    SelectAndCapture(image, {10, 12, 30, 32});
    image.m_bFloating = true;
    const std::vector<std::uint8_t> before = BytesOf(image.m_FloatBitmap);
    ASSERT_TRUE(Transform(image, Matrix3()));
    EXPECT_EQ(BytesOf(image.m_FloatBitmap), before);
    EXPECT_EQ(image.m_rcFloat, (CRect{10, 12, 30, 32}));
    EXPECT_FALSE(image.m_bSelection);

    // A quarter turn and a bit around the middle: the bounding box, with the corners outside the turned square unselected.
    Matrix3 turn;
    turn.Translate(-20, -22);
    turn.Rotate(0.7853981633974483);
    turn.Translate(20, 22);
    ASSERT_TRUE(Transform(image, turn));
    EXPECT_EQ(image.m_nFloatX, 5); // 20 - 14.14, and so on
    EXPECT_EQ(image.m_nFloatY, 7);
    EXPECT_EQ(image.m_nFloatW, 29);
    EXPECT_EQ(image.m_nFloatH, 29);
    EXPECT_EQ(image.m_pFloatMask[0], 0);
    EXPECT_EQ(image.m_pFloatMask[29 * 29 - 1], 0);
    EXPECT_EQ(image.m_pFloatMask[14 * 29 + 14], 255);

    Matrix3 away;
    away.Translate(-200, 3);
    ASSERT_TRUE(Transform(image, away));
    EXPECT_EQ(image.m_nFloatX, -195);
    EXPECT_TRUE(image.m_rcFloat.IsEmpty());
    EXPECT_EQ(BytesOf(image.m_Bitmap), BytesOf(image.m_BaseBitmap));
}

TEST(TransformFloat, MapsThatCollapseOrExplodeChangeNothing)
{
    CPaintImage image;
    SelectAndCapture(image, {10, 12, 30, 32});
    const std::vector<std::uint8_t> picture = BytesOf(image.m_Bitmap), pixels = BytesOf(image.m_FloatBitmap);
    Matrix3 point, line, huge, far, wild;
    point.Scale(0, 0);
    line.Scale(1, 0);
    huge.Scale(30000, 30000);
    far.Translate(1e300, 0);
    wild.a[2][2] = std::numeric_limits<double>::quiet_NaN();
    for (const Matrix3& m : {point, line, huge, far, wild}) {
        EXPECT_FALSE(image.TransformedFloat(m));
        EXPECT_EQ(BytesOf(image.m_Bitmap), picture);
        EXPECT_EQ(BytesOf(image.m_FloatBitmap), pixels);
        EXPECT_EQ(image.m_nFloatW, 20);
        EXPECT_TRUE(image.m_bSelection);
    }
    // A slanting line has a bounding box: it is filled with the float as it lies, and nothing faults.
    Matrix3 slant{{{1, 1, 0}, {1, 1, 0}, {0, 0, 1}}};
    EXPECT_TRUE(image.TransformedFloat(slant));
}
