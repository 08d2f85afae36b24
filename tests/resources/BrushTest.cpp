// Brushes without a window: the generator against figures worked out by hand, the soft edge against a plain sum over its taps, the
// response curve, and what the painting tools get of it all.

#include "resources/BrushBlur.h"
#include "resources/BrushGenerator.h"
#include "resources/BrushPrepare.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

using namespace kestrune;

namespace {

using Plane = std::vector<std::uint8_t>;

int At(const BrushEntry& entry, int x, int y)
{
    return entry.m_pMask[static_cast<std::size_t>((entry.m_nHeight / 2 + y) * entry.m_nWidth + entry.m_nWidth / 2 + x)];
}

BrushEntry FlatEntry(int nWidth, int nHeight, std::uint8_t nValue)
{
    BrushEntry entry;
    entry.m_nWidth = nWidth;
    entry.m_nHeight = nHeight;
    entry.m_pMask.assign(static_cast<std::size_t>(nWidth * nHeight), nValue);
    return entry;
}

/// The soft edge with no thought for speed: every tap of every pixel.
Plane BlurPlainly(const Plane& plane, int nWidth, int nHeight, int nRadius)
{
    const double dLog = std::log(1.0 / 255.0), dDeviation = std::sqrt(-(double(nRadius) * nRadius) / (2 * dLog)), D = 2 * dDeviation * dDeviation;
    int nTaps = int(2 * std::ceil(std::sqrt(-dLog * D)));
    nTaps += nTaps % 2 == 0;
    const int nHalf = nTaps / 2;
    const auto weight = [&](int i) { return i ? int(std::exp(-i * i / D) * 255) : 255; };
    int nDivisor = 0;
    for (int i = -nHalf; i < nHalf; i++)
        nDivisor += weight(i);
    const auto pass = [&](const Plane& in, int dx, int dy) {
        Plane out(in.size());
        for (int y = 0; y < nHeight; y++)
            for (int x = 0; x < nWidth; x++) {
                int nSum = 0;
                for (int i = -nHalf; i < nHalf; i++)
                    nSum += weight(i) * in[std::size_t(std::clamp(y + i * dy, 0, nHeight - 1) * nWidth + std::clamp(x + i * dx, 0, nWidth - 1))];
                out[std::size_t(y * nWidth + x)] = std::uint8_t(nSum / nDivisor);
            }
        return out;
    };
    return pass(pass(plane, 0, 1), 1, 0);
}

} // namespace

TEST(BrushGenerator, FollowsItsTable)
{
    // Radius 1, hardness 0: five samples 0.68 0.92 1 0.92 0.68 at the centre, and 0.4 of them left five steps out.
    const BrushEntry small = GenerateBrush({1.0, 0, 0, 1});
    EXPECT_EQ(small.m_nWidth, 3);
    EXPECT_EQ(small.m_nHeight, 3);
    EXPECT_EQ(small.m_pMask, (Plane{0, 20, 0, 20, 214, 20, 0, 20, 0}));
    EXPECT_EQ(small.m_nSpacing, 20);
    EXPECT_EQ(small.m_nSecondValue, 100);
    EXPECT_TRUE(small.m_bGenerated);

    const BrushEntry least = GenerateBrush({0.1, 20, 0, 1});
    EXPECT_EQ(least.m_nWidth, 3) << "one sample of five lies inside";
    EXPECT_EQ(At(least, 0, 0), 51);
    EXPECT_EQ(At(least, 1, 0), 0);
}

TEST(BrushGenerator, HardnessShapeAndAxes)
{
    const BrushEntry hard = GenerateBrush({20.0, 100, 0, 1});
    EXPECT_EQ(hard.m_nWidth, 41);
    EXPECT_EQ(At(hard, 0, 0), 255);
    EXPECT_EQ(At(hard, 19, 0), 255) << "hard up to the edge";
    EXPECT_GT(At(hard, 20, 0), 0) << "which is smoothed all the same";
    EXPECT_LT(At(hard, 20, 0), 255);
    const BrushEntry soft = GenerateBrush({20.0, 0, 0, 1});
    EXPECT_NEAR(At(soft, 10, 0), 128, 4) << "half way out the bell is at one half";
    EXPECT_LT(At(soft, 19, 0), 6);

    const BrushEntry thin = GenerateBrush({30.0, 80, 45, 20});
    for (int y = -thin.m_nHeight / 2; y <= thin.m_nHeight / 2; y++)
        for (int x = -thin.m_nWidth / 2; x <= thin.m_nWidth / 2; x++)
            ASSERT_EQ(At(thin, x, y), At(thin, -x, -y));
    EXPECT_GT(At(thin, 15, -15), 200) << "an angle turns to the left, as y runs downwards";
    EXPECT_EQ(At(thin, 15, 15), 0);

    // The angle's constant is 6.28: 180 degrees are not quite half a turn.
    const BrushEntry turned = GenerateBrush({10.0, 50, 180, 4});
    EXPECT_DOUBLE_EQ(turned.m_xAxis[0], std::cos(3.14) * 10);
    EXPECT_DOUBLE_EQ(turned.m_xAxis[1], -std::sin(3.14) * 10);
    EXPECT_DOUBLE_EQ(turned.m_yAxis[0], std::sin(3.14) * 10 / 4);
    EXPECT_DOUBLE_EQ(turned.m_yAxis[1], std::cos(3.14) * 10 / 4);
    EXPECT_EQ(turned.m_dRoundness, 4.0);
    EXPECT_EQ(turned.m_nWidth, 21);
    EXPECT_EQ(turned.m_nHeight, 7) << "no larger than the ellipse lying down";
    EXPECT_EQ(GenerateBrush({1e9, 300, -5, 0}).m_nWidth, 201) << "limited to the sliders' ranges";
}

TEST(BrushBlur, RunsGiveWhatEveryTapGives)
{
    std::mt19937 dice(7);
    for (int nRound = 0; nRound < 60; nRound++) {
        const int nRadius = 1 + nRound % 10, nWidth = 1 + int(dice() % 40), nHeight = 1 + int(dice() % 40);
        Plane plane(std::size_t(nWidth * nHeight));
        std::uint8_t nValue = 0;
        for (std::uint8_t& n : plane) { // runs long and short
            if (dice() % (nRound % 3 ? 6 : 1) == 0)
                nValue = std::uint8_t(dice() % 3 ? dice() : 255);
            n = nValue;
        }
        const Plane expected = BlurPlainly(plane, nWidth, nHeight, nRadius);
        BlurBrush(plane, nWidth, nHeight, nRadius);
        ASSERT_EQ(plane, expected) << nWidth << " x " << nHeight << " radius " << nRadius;
    }
    Plane flat(35, 77);
    BlurBrush(flat, 7, 5, 10);
    EXPECT_EQ(flat, Plane(35, 77)) << "the edges repeat: a flat plane stays flat";
}

TEST(ResponseCurve, StraightAndBent)
{
    CResponseCurve curve;
    EXPECT_EQ(curve.Table(), IdentityResponse());
    curve.Press(255, 255); // takes hold of the end, and the curve is drawn anew: still the same straight line
    EXPECT_EQ(curve.Table(), IdentityResponse());

    EXPECT_EQ(curve.Press(128, 200), 8);
    EXPECT_EQ(curve.Table()[0], 1) << "the last step inside a column wins, in the first one too";
    EXPECT_EQ(curve.Table()[255], 255);
    EXPECT_NEAR(curve.Table()[128], 200, 1) << "through its points";
    // Between (0, 0) and (128, 200), whose direction is that of the line between its neighbours, at the middle of the way: the cubic
    // (-0.5 p0 + 4.5 p1 + 4.5 p2 - 0.5 p3) / 8, end doubled.
    const double dX = (-0.0625 * 0 + 0.5625 * 0 + 0.5625 * 128 - 0.0625 * 255), dY = (0.5625 * 200 - 0.0625 * 255);
    EXPECT_NEAR(curve.Table()[std::size_t(dX)], dY, 2);

    curve.Drag(8, 300, -20);
    EXPECT_EQ(curve.Point(8), (CPoint{254, 0})) << "kept beside its neighbour and inside the field";
    EXPECT_FALSE(curve.Remove(0));
    EXPECT_FALSE(curve.Remove(5));
    EXPECT_TRUE(curve.Remove(8));
    EXPECT_EQ(curve.Table(), IdentityResponse());

    EXPECT_EQ(curve.Press(8, 90), 0) << "as near as 8 it is the end that moves";
    EXPECT_EQ(curve.Table()[0], 90) << "level before the first point";
    EXPECT_EQ(curve.Press(17, 30), 1) << "farther away a new point";
    curve.Reset();
    EXPECT_EQ(curve.Table(), IdentityResponse());

    curve.Press(255, 100);
    EXPECT_EQ(curve.Table()[255], 100) << "the last column follows its point";
}

TEST(ResponseCurve, PointsNeverCross)
{
    std::mt19937 dice(3);
    CResponseCurve curve;
    for (int n = 0; n < 3000; n++) {
        const int iSlot = curve.Press(int(dice() % 300) - 20, int(dice() % 300) - 20);
        curve.Drag(iSlot, int(dice() % 300) - 20, int(dice() % 300) - 20);
        if (dice() % 4 == 0)
            curve.Remove(int(dice() % 17));
        int nLast = -1;
        for (int i = 0; i < CResponseCurve::c_nSlots; i++)
            if (curve.IsUsed(i)) {
                ASSERT_GE(curve.Point(i).x, nLast);
                nLast = curve.Point(i).x;
            }
        ASSERT_LE(nLast, 255);
        for (const int nValue : curve.Table())
            ASSERT_TRUE(nValue >= 0 && nValue <= 255);
    }
}

TEST(ResponseCurve, TheTableIsReadBetweenItsEntries)
{
    ResponseTable table = IdentityResponse();
    table[0] = 10;
    table[255] = 200;
    EXPECT_DOUBLE_EQ(EvaluateResponse(table, -1), 10 / 255.0);
    EXPECT_DOUBLE_EQ(EvaluateResponse(table, 1), 200 / 255.0);
    EXPECT_NEAR(EvaluateResponse(table, 0.5 / 255), 5.5 / 255, 1e-12);
    const auto map = ResponseMap(IdentityResponse());
    EXPECT_EQ(map[0], 0);
    EXPECT_EQ(map[255], 255);
    for (int i = 0; i < 256; i++) // truncated: where i / 255 * 255 falls a hair short the coverage is one less
        EXPECT_EQ(map[std::size_t(i)], int(i / 255.0 * 255.0 / 255.0 * 255.0)) << i;
}

TEST(PrepareBrush, RoomForTheSoftEdge)
{
    BrushEntry entry = FlatEntry(3, 2, 200);
    entry.m_nSpacing = 37;
    entry.m_xAxis[0] = 1.5;
    entry.m_yAxis[1] = 1;
    const ActiveBrush plain = PrepareBrush(entry, 0, IdentityResponse());
    EXPECT_EQ(plain.nWidth, 4);
    EXPECT_EQ(plain.nHeight, 3);
    EXPECT_EQ(plain.aMask, (Plane{200, 200, 200, 0, 200, 200, 200, 0, 0, 0, 0, 0})) << "one row and one column more, no blur";
    EXPECT_EQ(plain.dSpacing, 37);
    EXPECT_EQ(plain.xAxis[0], 1.5);
    EXPECT_EQ(plain.yAxis[1], 1);

    const ActiveBrush soft = PrepareBrush(entry, 4, IdentityResponse());
    EXPECT_EQ(soft.nWidth, 12);
    EXPECT_EQ(soft.nHeight, 11);
    EXPECT_EQ(soft.xAxis[0], 1.5) << "the axes are the entry's";
    EXPECT_GT(soft.aMask[4 * 12 + 2], 0);
    EXPECT_LT(soft.aMask[4 * 12 + 5], 200);
    EXPECT_EQ(PrepareBrush(entry, 99, IdentityResponse()).nWidth, 24) << "10 at most";

    ResponseTable half;
    for (std::size_t i = 0; i < half.size(); i++)
        half[i] = int(i / 2);
    EXPECT_EQ(PrepareBrush(entry, 0, half).aMask[0], 100);
    EXPECT_EQ(PrepareBrush(BrushEntry{}, 10, IdentityResponse()).aMask, Plane(21 * 21, 0)) << "a brush of nothing";
}

TEST(SampleBrush, EveryStepInTheMiddle)
{
    BrushEntry ramp = FlatEntry(7, 5, 0);
    for (std::size_t i = 0; i < ramp.m_pMask.size(); i++)
        ramp.m_pMask[i] = std::uint8_t(i);
    const Plane fits = SampleBrush(ramp.m_pMask, 7, 5, 9);
    EXPECT_EQ(fits[std::size_t(2 * 9 + 1)], 255) << "the first byte is 0, white";
    EXPECT_EQ(fits[std::size_t(3 * 9 + 2)], 255 - 8) << "the middle in the middle, not enlarged";
    EXPECT_EQ(fits[0], 255);
    const Plane smaller = SampleBrush(ramp.m_pMask, 7, 5, 4);
    EXPECT_EQ(smaller[std::size_t(1 * 4 + 1)], 255 - 0) << "each second byte from (1, 1): 4 / 2 - 7 / 4, 4 / 2 - 5 / 4";
    EXPECT_EQ(smaller[std::size_t(2 * 4 + 3)], 255 - 18);
    std::mt19937 dice(5);
    for (int n = 0; n < 200; n++) { // never outside, at any proportion
        const int nWidth = 1 + int(dice() % 300), nHeight = 1 + int(dice() % 300), nSide = 1 + int(dice() % 70);
        EXPECT_EQ(SampleBrush(Plane(std::size_t(nWidth * nHeight), 9), nWidth, nHeight, nSide).size(), std::size_t(nSide * nSide));
    }
}
