#include "paint/Blend.h"

#include "base/Arith.h"
#include "base/Random.h"
#include "paint/BlendKernels.h"

#include <gtest/gtest.h>
#include <hwy/targets.h>

#include <algorithm>
#include <functional>
#include <random>
#include <vector>

using namespace kestrune;
using Block = std::vector<std::uint8_t>;

namespace {

Block RandomBytes(std::size_t n, unsigned nSeed)
{
    std::mt19937 random(nSeed);
    Block block(n);
    for (auto& b : block)
        b = static_cast<std::uint8_t>(random());
    return block;
}

/// One pixel over one pixel.
Block BlendPixel(int nMode, Block canvas, Block source)
{
    Block out(4, 0xAA);
    BlendBlock(nMode, canvas.data(), source.data(), out.data(), 1, 1, 1, 1, 0, 0, 4);
    return out;
}

/// Runs a check on every kind of processor that this one can play.
void OnEveryTarget(const std::function<void()>& check)
{
    for (std::int64_t nTarget : hwy::SupportedAndGeneratedTargets()) {
        SCOPED_TRACE(hwy::TargetName(nTarget));
        hwy::SetSupportedTargetsForTest(nTarget);
        check();
    }
    hwy::SetSupportedTargetsForTest(0);
}

constexpr std::size_t c_aWidths[] = {0, 1, 2, 3, 4, 5, 6, 7, 15, 16, 17, 18, 31, 33, 64, 100};

} // namespace

TEST(Arith, Mul255RoundsEveryProductOfTwoBytes)
{
    for (int a = 0; a < 256; a++)
        for (int b = 0; b < 256; b++)
            ASSERT_EQ(Mul255(a, b), (a * b * 2 + 255) / 510) << a << " x " << b;
    EXPECT_EQ(Lerp255(10, 200, 255), 200);
    EXPECT_EQ(Lerp255(200, 10, 255), 10);
    EXPECT_EQ(Mul255(-128, 1), 0); // -0.502: below zero the arithmetic shift lets the point past one half go up
    EXPECT_EQ(Mul255(128, 1), 1);
}

TEST(Blend, FormulasOfTheChannelModes)
{
    const Block canvas = {100, 200, 0}, source = {255, 50, 0, 77};
    const struct {
        int nMode;
        Block expected;
    } rows[] = {
        {BLEND_NORMAL, {255, 50, 0, 77}},    {BLEND_BEHIND, {255, 50, 0, 77}},   {BLEND_MULTIPLY, {100, 39, 0, 77}},
        {BLEND_DIVIDE, {100, 255, 0, 77}}, // 200 x 256 / 51 is limited; 0 divided stays 0
        {BLEND_SCREEN, {255, 211, 0, 77}},   {BLEND_OVERLAY, {161, 174, 0, 77}}, {BLEND_DIFFERENCE, {155, 150, 0, 77}},
        {BLEND_ADDITION, {255, 250, 0, 77}}, {BLEND_SUBTRACT, {0, 150, 0, 77}},  {BLEND_DARKEN, {100, 50, 0, 77}},
        {BLEND_LIGHTEN, {255, 200, 0, 77}},
    };
    for (const auto& row : rows)
        EXPECT_EQ(BlendPixel(row.nMode, canvas, source), row.expected) << c_aBlendNames[row.nMode];
    EXPECT_EQ(BlendPixel(BLEND_DIVIDE, {1, 0, 200}, {0, 0, 0, 5}),
              (Block{255, 0, 255, 5})); // a source of 0 makes white
}

TEST(Blend, ColourModesOnGreys)
{
    EXPECT_EQ(BlendPixel(BLEND_HUE, {90, 90, 90}, {255, 0, 0, 9}), (Block{90, 90, 90, 9})); // grey has no hue to change
    EXPECT_EQ(BlendPixel(BLEND_COLOR, {200, 100, 0}, {70, 70, 70, 9}),
              (Block{100, 100, 100, 9})); // grey of the canvas's lightness
    EXPECT_EQ(BlendPixel(BLEND_SATURATION, {200, 100, 0}, {70, 70, 70, 9}), (Block{200, 200, 200, 9}));
    EXPECT_EQ(BlendPixel(BLEND_VALUE, {255, 0, 0}, {0, 51, 0, 9}), (Block{51, 0, 0, 9}));
}

TEST(Blend, BlocksThatLeaveTheCanvasAndUnknownModesTouchNothing)
{
    const Block canvas = RandomBytes(10 * 10 * 3, 1), source = RandomBytes(4 * 4 * 4, 2);
    const struct {
        int nMode, x, y;
    } rows[] = {{3, -1, 0}, {3, 7, 0}, {3, 0, 7}, {1, 0, -1}, {16, 0, 0}, {-1, 0, 0}};
    for (const auto& row : rows) {
        Block out(4 * 4 * 4, 0x5A);
        BlendBlock(row.nMode, canvas.data(), source.data(), out.data(), 10, 10, 4, 4, row.x, row.y, 4);
        EXPECT_EQ(out, Block(4 * 4 * 4, 0x5A)) << row.nMode << ' ' << row.x << ' ' << row.y;
    }
}

TEST(Blend, ThreeBytePixelsGetTheSameColours)
{
    const Block canvas = RandomBytes(20 * 9 * 3, 3), source = RandomBytes(7 * 5 * 4, 4);
    Block narrow;
    for (std::size_t i = 0; i < source.size(); i += 4)
        narrow.insert(narrow.end(), &source[i], &source[i] + 3);
    for (int nMode = 0; nMode < BLEND_COUNT; nMode++) {
        Block out(source.size()), narrowOut(narrow.size());
        BlendBlock(nMode, canvas.data(), source.data(), out.data(), 20, 9, 7, 5, 13, 4, 4);
        BlendBlock(nMode, canvas.data(), narrow.data(), narrowOut.data(), 20, 9, 7, 5, 13, 4, 3);
        for (std::size_t i = 0; i < 35; i++)
            ASSERT_TRUE(std::equal(&narrowOut[i * 3], &narrowOut[i * 3] + 3, &out[i * 4])) << c_aBlendNames[nMode];
    }
}

TEST(Blend, VectorsGiveTheBytesOfThePlainForm)
{
    OnEveryTarget([] {
        for (int nMode = 0; nMode < BLEND_COUNT; nMode++) {
            const BlendRowFn plain = PlainBlendRow(nMode, 4);
            if (!plain)
                continue;
            for (std::size_t n : c_aWidths) {
                for (std::size_t nShift = 0; nShift < 3;
                     nShift++) { // unaligned starts, exact ends (a sanitizer sees a step over)
                    const Block canvas = RandomBytes(nShift + n * 3, static_cast<unsigned>(n + nMode * 100));
                    const Block source = RandomBytes(nShift + n * 4, static_cast<unsigned>(n + nMode * 100 + 7));
                    Block expected(nShift + n * 4 + 16, 0x5A), out = expected;
                    plain(canvas.data() + nShift, source.data() + nShift, expected.data() + nShift, n);
                    VectorBlendRow(nMode, canvas.data() + nShift, source.data() + nShift, out.data() + nShift, n);
                    ASSERT_EQ(out, expected) << c_aBlendNames[nMode] << " width " << n;
                }
            }
        }
    });
}

TEST(Blend, VectorsAgreeOnEveryPairOfBytes)
{
    Block canvas(65536 * 3), source(65536 * 4), expected(65536 * 4), out(65536 * 4);
    for (int i = 0; i < 65536; i++)
        for (int k = 0; k < 4; k++) {
            if (k < 3)
                canvas[i * 3 + k] = static_cast<std::uint8_t>(i);
            source[i * 4 + k] = static_cast<std::uint8_t>(i >> 8);
        }
    OnEveryTarget([&] {
        for (int nMode = BLEND_MULTIPLY; nMode <= BLEND_LIGHTEN; nMode++) {
            PlainBlendRow(nMode, 4)(canvas.data(), source.data(), expected.data(), 65536);
            VectorBlendRow(nMode, canvas.data(), source.data(), out.data(), 65536);
            ASSERT_EQ(out, expected) << c_aBlendNames[nMode];
        }
    });
}

// A million colours against others, on the best target: the doubles have to fall on the same side of every whole
// number.
TEST(Blend, VectorsAgreeOnManyColours)
{
    constexpr std::size_t n = 1 << 20;
    Block canvas = RandomBytes(n * 3, 11), source = RandomBytes(n * 4, 12), expected(n * 4), out(n * 4);
    for (std::size_t i = 0; i < n / 4; i++) { // a quarter with few levels, where quotients are whole
        for (int k = 0; k < 3; k++) {
            canvas[i * 3 + k] = static_cast<std::uint8_t>(canvas[i * 3 + k] / 51 * 51);
            source[i * 4 + k] = static_cast<std::uint8_t>(source[i * 4 + k] / 17 * 17);
        }
    }
    for (int nMode = BLEND_HUE; nMode <= BLEND_VALUE; nMode++) {
        PlainBlendRow(nMode, 4)(canvas.data(), source.data(), expected.data(), n);
        VectorBlendRow(nMode, canvas.data(), source.data(), out.data(), n);
        ASSERT_EQ(out, expected) << c_aBlendNames[nMode];
    }
}

TEST(Dissolve, DrawsAsStatedFromTheBlocksCorner)
{
    // The statement of the noise, drawn number by number.
    const int w = 37, h = 5;
    const Block source = RandomBytes(w * h * 4, 21), canvas(60 * 60 * 3);
    std::vector<int> table(4096);
    Srand(314159265);
    for (int& n : table)
        n = Rand();
    for (int i = 0; i < 4096; i++)
        std::swap(table[i], table[i + Rand() % (4096 - i)]);
    Block expected = source;
    for (int j = 0; j < h; j++) {
        Srand(static_cast<std::uint32_t>(table[j]));
        for (int i = 0; i < w; i++) {
            std::uint8_t& a = expected[(j * w + i) * 4 + 3];
            a = (Rand() & 255) <= a ? a : std::uint8_t{0};
        }
    }
    const int nNext = Rand();

    for (const auto& [x, y] : {std::pair{0, 0}, std::pair{20, 50}}) { // the same noise wherever the dab lies
        Block out(source.size());
        Srand(99);
        BlendBlock(BLEND_DISSOLVE, canvas.data(), source.data(), out.data(), 60, 60, w, h, x, y, 4);
        EXPECT_EQ(out, expected);
        EXPECT_EQ(Rand(), nNext); // the generator goes on where the last pixel left it
    }
}

TEST(Dissolve, KeepsFullAndHidesEmptyAlphaOnEveryTarget)
{
    OnEveryTarget([] {
        for (std::size_t n : c_aWidths) {
            const Block source = RandomBytes(n * 4 + 1, static_cast<unsigned>(n));
            Block expected(n * 4 + 17, 0x5A), out = expected;
            std::uint32_t nPlain = 12345, nVector = 12345;
            PlainDissolveRow(nPlain, source.data() + 1, expected.data() + 1, n, 4);
            VectorDissolveRow(nVector, source.data() + 1, out.data() + 1, n);
            ASSERT_EQ(out, expected) << n;
            ASSERT_EQ(nVector, nPlain);
        }
    });
    Block source(64 * 4, 255), out(64 * 4);
    std::uint32_t nState = 1;
    VectorDissolveRow(nState, source.data(), out.data(), 64);
    EXPECT_EQ(out, source);
    for (std::size_t i = 3; i < source.size(); i += 4)
        source[i] = 0;
    VectorDissolveRow(nState, source.data(), out.data(), 64);
    EXPECT_EQ(out, source);
}

TEST(Mix, VectorsAgreeForEveryAlphaAndOpacity)
{
    OnEveryTarget([] {
        // Every difference of two bytes under every alpha: the sign must not change how a half is rounded.
        Block canvas(511 * 3), block(511 * 4), expected(511 * 3), out(511 * 3);
        for (int i = 0; i < 511; i++)
            for (int k = 0; k < 3; k++) {
                canvas[i * 3 + k] = static_cast<std::uint8_t>(i < 256 ? 255 : 510 - i);
                block[i * 4 + k] = static_cast<std::uint8_t>(i < 256 ? i : 255);
            }
        for (int i = 0; i < 511; i++)
            canvas[i * 3] = static_cast<std::uint8_t>(i < 256 ? 255 - i : 0);
        for (int a = 0; a < 256; a++) {
            for (int i = 0; i < 511; i++)
                block[i * 4 + 3] = static_cast<std::uint8_t>(a);
            PlainMixRun(canvas.data(), block.data(), expected.data(), 511, {255, false, nullptr});
            VectorMixRun(canvas.data(), block.data(), out.data(), 511, {255, false, nullptr});
            ASSERT_EQ(out, expected) << a;
        }
        const Block texture = RandomBytes(200, 31);
        for (std::size_t n : c_aWidths)
            for (int nOpacity = 0; nOpacity < 256; nOpacity++)
                for (int nKind = 0; nKind < 4; nKind++) {
                    const MixRun run{nOpacity, (nKind & 1) != 0, nKind & 2 ? texture.data() + 1 : nullptr};
                    const Block b = RandomBytes(n * 4, static_cast<unsigned>(nOpacity));
                    Block inPlace = RandomBytes(n * 3, static_cast<unsigned>(nOpacity + 1000)), plain = inPlace;
                    PlainMixRun(plain.data(), b.data(), plain.data(), n, run);
                    VectorMixRun(inPlace.data(), b.data(), inPlace.data(), n, run);
                    ASSERT_EQ(inPlace, plain) << n << " opacity " << nOpacity << " kind " << nKind;
                }
    });
}

TEST(Mix, TheTextureLiesOnThePictureNotOnTheDab)
{
    const std::uint8_t aTile[] = {255, 0, 255, 255, 255, 0}; // 3 x 2
    const BlendTexture texture{aTile, 3, 2};
    const Block canvas(12 * 3, 10), block(12 * 4, 255);
    for (int y = 0; y < 4; y++)
        for (int x = 0; x < 5; x++) {
            Block out(12 * 3);
            MixRow(canvas.data(), block.data(), out.data(), {x, y, 12}, {255, false, &texture});
            for (int i = 0; i < 12; i++)
                ASSERT_EQ(out[i * 3], aTile[y % 2 * 3 + (x + i) % 3] ? 255 : 10) << x << ' ' << y << ' ' << i;
        }
    // Opacity, hardening and texture apply in this order: 128 x 255 hardens to 255, then the texture weakens it.
    const std::uint8_t aHalf[] = {128};
    const BlendTexture half{aHalf, 1, 1};
    const Block faint = {255, 255, 255, 128}, fainter = {255, 255, 255, 127};
    Block out(3);
    MixRow(Block(3, 0).data(), faint.data(), out.data(), {0, 0, 1}, {255, true, &half});
    EXPECT_EQ(out, Block(3, 128));
    MixRow(Block(3, 0).data(), fainter.data(), out.data(), {0, 0, 1}, {255, true, &half});
    EXPECT_EQ(out, Block(3, 0));
}

TEST(AlphaRows, VectorsAgreeAndConstantsHold)
{
    OnEveryTarget([] {
        for (std::size_t n : c_aWidths) {
            const Block mask = RandomBytes(n + 1, 41);
            for (int nOpacity : {0, 1, 100, 127, 128, 254, 255}) {
                Block plain = RandomBytes(n * 4, 42), vector = plain;
                PlainMultiplyAlphaRow(plain.data(), mask.data() + 1, nOpacity, n, 4);
                VectorMultiplyAlphaRow(vector.data(), mask.data() + 1, nOpacity, n);
                ASSERT_EQ(vector, plain) << n << ' ' << nOpacity;
            }
            Block plain = RandomBytes(n, 43), vector = plain;
            PlainAccumulateRow(plain.data(), mask.data() + 1, n);
            VectorAccumulateRow(vector.data(), mask.data() + 1, n);
            ASSERT_EQ(vector, plain) << n;
        }
    });
    Block pixel = {1, 2, 3, 200};
    const std::uint8_t nMask = 100;
    MultiplyAlphaRow(pixel.data(), &nMask, 50, 1);
    EXPECT_EQ(pixel, (Block{1, 2, 3, 15})); // 200 x 100 x 50 / 65025 = 15.38
    std::uint8_t nCoverage = 100;
    AccumulateRow(&nCoverage, &nMask, 1);
    EXPECT_EQ(nCoverage, 161); // 100 + 155 x 100 / 255
}
