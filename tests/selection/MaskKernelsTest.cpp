// What is done to a mask as a whole: every fast form against the plain one, byte for byte, and the results that users know.
#include "MaskTestKit.h"

#include "base/Messages.h"
#include "selection/MaskBounds.h"
#include "selection/MaskDisc.h"
#include "selection/MaskFeather.h"
#include "selection/MaskFill.h"
#include "selection/Shapes.h"

#include <gtest/gtest.h>
#include <hwy/targets.h>

#include <numeric>
#include <string>

using namespace kestrune;
using namespace kestrune::test;

namespace {

/// Holds two ways of changing a mask together.
template <typename Fast, typename Plain>
void ExpectSame(const OwnMask& mask, const Fast& fast, const Plain& plain, const std::string& strWhat)
{
    OwnMask a = mask, b = mask;
    fast(a.Plane());
    plain(b.Plane());
    if (a == b)
        return;
    const auto it = std::mismatch(a.bytes.begin(), a.bytes.end(), b.bytes.begin());
    const auto n = it.first - a.bytes.begin();
    ADD_FAILURE() << strWhat << " on " << mask << "\n(" << n % mask.nWidth << ", " << n / mask.nWidth << ") is " << static_cast<int>(*it.first)
                  << ", should be " << static_cast<int>(*it.second);
}

OwnMask Rectangle(int w, int h, int x1, int y1, int x2, int y2)
{
    OwnMask mask(w, h);
    for (int y = y1; y < y2; y++)
        for (int x = x1; x < x2; x++)
            mask.At(x, y) = 255;
    return mask;
}

/// The plain form takes the disc's area for each pixel.
bool IsQuick(const OwnMask& mask, int nRadius)
{
    return nRadius < 8 || (nRadius < 30 ? mask.bytes.size() < 5000 : mask.bytes.size() < 1200);
}

/// Every instruction set's form against the plain one.
void ExpectPlainFeather(const OwnMask& mask, double fRadius, FeatherTaps taps)
{
    OwnMask plain = mask;
    PlainFeatherMask(plain.Plane(), fRadius, taps);
    for (const std::int64_t nTarget : hwy::SupportedAndGeneratedTargets()) {
        hwy::SetSupportedTargetsForTest(nTarget);
        ExpectSame(mask, [&](const MaskPlane& plane) { FeatherMask(plane, fRadius, taps); },
                   [&](const MaskPlane& plane) { std::copy(plain.bytes.begin(), plain.bytes.end(), plane.pBytes); },
                   "feather " + std::to_string(fRadius) + " on " + hwy::TargetName(nTarget));
    }
    hwy::SetSupportedTargetsForTest(0);
}

class CSilentSink : public CMessageSink {
public:
    CSilentSink() { SetMessageSink(this); }
    ~CSilentSink() override { SetMessageSink(nullptr); }
    MessageAnswer Message(const std::string& strText, MessageButtons, MessageAnswer nDefault) override
    {
        m_strText = strText;
        return nDefault;
    }
    void StatusText(const std::string&) override {}
    std::string m_strText;
};

} // namespace

TEST(MaskFeather, IsThePlainFormInEveryInstructionSet)
{
    for (const double fRadius : {0.2, 0.7, 1.0, 3.5, 20.0, 100.3})
        for (const FeatherTaps taps : {FeatherTaps::All, FeatherTaps::WithoutLast})
            ForMasks([&](const OwnMask& mask) { ExpectPlainFeather(mask, fRadius, taps); });
}

TEST(MaskFeather, TheWidestOnMasksThatAreNarrowerAndWider)
{
    std::vector<OwnMask> masks;
    for (const MaskKind kind : c_aMaskKinds)
        for (const auto& size : {std::pair{1, 1}, {7, 600}, {1100, 3}})
            masks.push_back(MakeMask(size.first, size.second, kind, 5));
    // Soft as a second feather finds it: long slopes, up, down and both within the curve's reach.
    for (const CRect& rc : {CRect{150, 40, 700, 260}, {400, -30, 520, 420}, {-300, 100, 640, 110}}) {
        OwnMask soft(777, 301);
        DrawEllipse(soft.Plane(), rc);
        PlainFeatherMask(soft.Plane(), 30, FeatherTaps::All);
        masks.push_back(soft);
    }
    for (const double fRadius : {60.0, 249.9, 250.0})
        for (const FeatherTaps taps : {FeatherTaps::All, FeatherTaps::WithoutLast})
            for (const OwnMask& mask : masks)
                ExpectPlainFeather(mask, fRadius, taps);
}

/// The plain form itself against the sum over the window as one would write it down.
TEST(MaskFeather, IsTheMeanUnderTheCurveWithTheLastPixelGoingOn)
{
    for (const FeatherTaps taps : {FeatherTaps::All, FeatherTaps::WithoutLast}) {
        const FeatherCurve curve(3, taps);
        ASSERT_EQ(curve.nHalf, 3);
        EXPECT_EQ(curve.weights[3], 255);
        EXPECT_EQ(curve.weights[0], curve.weights[6]);
        const int nEnd = taps == FeatherTaps::All ? 3 : 2;
        OwnMask mask = MakeMask(11, 9, MaskKind::Noise, 3);
        const auto Blurred = [&](const OwnMask& in, int dx, int dy) {
            OwnMask out(in.nWidth, in.nHeight);
            for (int y = 0; y < in.nHeight; y++)
                for (int x = 0; x < in.nWidth; x++) {
                    int nSum = 0, nWeight = 0;
                    for (int i = -3; i <= nEnd; i++) {
                        nWeight += curve.weights[i + 3];
                        nSum += curve.weights[i + 3] * in.At(std::clamp(x + i * dx, 0, in.nWidth - 1), std::clamp(y + i * dy, 0, in.nHeight - 1));
                    }
                    out.At(x, y) = static_cast<std::uint8_t>(nSum / nWeight);
                }
            return out;
        };
        const OwnMask expected = Blurred(Blurred(mask, 0, 1), 1, 0);
        FeatherMask(mask.Plane(), 3, taps);
        EXPECT_EQ(mask, expected);
    }
}

TEST(MaskFeather, NothingAtRadiusNullAndHardlyAnythingAtTheSmallest)
{
    const OwnMask rectangle = Rectangle(20, 20, 5, 5, 15, 15);
    OwnMask mask = rectangle;
    FeatherMask(mask.Plane(), 0, FeatherTaps::All);
    EXPECT_EQ(mask, rectangle);
    FeatherMask(mask.Plane(), 0.2, FeatherTaps::All);
    EXPECT_EQ(mask, rectangle) << "a curve whose neighbours weigh nothing";
}

TEST(MaskDisc, GrowAndShrinkArePlain)
{
    for (const int nRadius : {0, 1, 2, 3, 7, 20, 64, 100})
        ForMasks([&](const OwnMask& mask) {
            if (!IsQuick(mask, nRadius))
                return;
            ExpectSame(mask, [&](const MaskPlane& plane) { GrowMask(plane, nRadius); },
                       [&](const MaskPlane& plane) { PlainGrowMask(plane, nRadius); }, "grow " + std::to_string(nRadius));
            ExpectSame(mask, [&](const MaskPlane& plane) { ShrinkMask(plane, nRadius); },
                       [&](const MaskPlane& plane) { PlainShrinkMask(plane, nRadius); }, "shrink " + std::to_string(nRadius));
        });
}

TEST(MaskDisc, WiderThanOneTile)
{
    for (const MaskKind kind : {MaskKind::Blocks, MaskKind::Noise, MaskKind::Sparse})
        for (const int nRadius : {1, 9, 17}) {
            const OwnMask mask = MakeMask(1700, 23, kind, 8);
            ExpectSame(mask, [&](const MaskPlane& plane) { GrowMask(plane, nRadius); },
                       [&](const MaskPlane& plane) { PlainGrowMask(plane, nRadius); }, "grow");
            ExpectSame(mask, [&](const MaskPlane& plane) { ShrinkMask(plane, nRadius); },
                       [&](const MaskPlane& plane) { PlainShrinkMask(plane, nRadius); }, "shrink");
            ExpectSame(mask, [&](const MaskPlane& plane) { BorderMask(plane, nRadius, nRadius); },
                       [&](const MaskPlane& plane) { PlainBorderMask(plane, nRadius, nRadius); }, "border");
        }
}

/// Much of a large mask is of one value far around.
TEST(MaskDisc, FlatStretchesKeepTheirValue)
{
    OwnMask steps(460, 330);
    for (int y = 0; y < 330; y++)
        for (int x = 0; x < 460; x++)
            steps.At(x, y) = static_cast<std::uint8_t>(x < 200 ? 77 : y < 170 ? 255 : 3);
    steps.At(449, 320) = 4;
    steps.At(64, 128) = 76;
    OwnMask faint = MakeMask(460, 330, MaskKind::Full, 1), line(700, 3);
    faint.At(191, 191) = 254;
    line.At(300, 1) = 9;
    for (const auto& [mask, nRadius] : std::vector<std::pair<OwnMask, int>>{
             {steps, 1}, {steps, 6}, {faint, 5}, {MakeMask(460, 330, MaskKind::Blocks, 6), 5}, {MakeMask(460, 330, MaskKind::Full, 1), 3}, {line, 70}}) {
        ExpectSame(mask, [n = nRadius](const MaskPlane& plane) { GrowMask(plane, n); }, [n = nRadius](const MaskPlane& plane) { PlainGrowMask(plane, n); }, "grow");
        ExpectSame(mask, [n = nRadius](const MaskPlane& plane) { ShrinkMask(plane, n); },
                   [n = nRadius](const MaskPlane& plane) { PlainShrinkMask(plane, n); }, "shrink");
    }
}

TEST(MaskDisc, APixelGrowsIntoItsDisc)
{
    OwnMask mask(9, 9), expected(9, 9);
    mask.At(4, 4) = 77;
    GrowMask(mask.Plane(), 3);
    for (int i = -3; i <= 3; i++) // reaches 1, 2, 2, 3, 2, 2, 1
        for (int j = -DiscReach(3, i); j <= DiscReach(3, i); j++)
            expected.At(4 + i, 4 + j) = 77;
    EXPECT_EQ(mask, expected);
    EXPECT_EQ(DiscReach(3, 0), 3);
    EXPECT_EQ(DiscReach(3, -1), 2);
    EXPECT_EQ(DiscReach(3, 3), 1);
    EXPECT_EQ(std::accumulate(mask.bytes.begin(), mask.bytes.end(), 0) / 77, 3 + 5 + 5 + 7 + 5 + 5 + 3);
}

TEST(MaskDisc, ShrinkingTakesTheRimOfWhatTouchesTheEdge)
{
    OwnMask mask = MakeMask(12, 10, MaskKind::Full, 1);
    ShrinkMask(mask.Plane(), 1);
    // First the rim is cleared, then one more pixel goes on each side.
    EXPECT_EQ(mask, Rectangle(12, 10, 2, 2, 10, 8));
}

TEST(MaskDisc, BorderIsPlain)
{
    for (const auto& radii : {std::pair{0, 0}, {1, 1}, {2, 2}, {1, 2}, {2, 1}, {5, 5}, {9, 4}, {4, 9}, {60, 60}, {200, 200}, {0, 3}})
        ForMasks([&](const OwnMask& mask) {
            if (IsQuick(mask, radii.first))
                ExpectSame(mask, [&](const MaskPlane& plane) { BorderMask(plane, radii.first, radii.second); },
                           [&](const MaskPlane& plane) { PlainBorderMask(plane, radii.first, radii.second); },
                           "border " + std::to_string(radii.first) + ", " + std::to_string(radii.second));
        });
}

TEST(MaskDisc, BorderOfOneIsTheInnerRim)
{
    OwnMask mask = Rectangle(14, 12, 3, 2, 11, 9), rim = mask;
    for (int y = 3; y < 8; y++)
        for (int x = 4; x < 10; x++)
            rim.At(x, y) = 0;
    BorderMask(mask.Plane(), 1, 1);
    EXPECT_EQ(mask, rim);

    // Where the selection runs into the picture's edge there is no rim: beyond it is no neighbour.
    OwnMask half = Rectangle(6, 5, 0, 0, 3, 5), column(6, 5);
    BorderMask(half.Plane(), 1, 1);
    for (int y = 0; y < 5; y++)
        column.At(2, y) = 255;
    EXPECT_EQ(half, column);

    // One column: what lies above and below tells.
    OwnMask line(1, 7), ends(1, 7);
    for (const int y : {2, 3, 4, 5, 6})
        line.At(0, y) = 200;
    ends.At(0, 2) = 255;
    BorderMask(line.Plane(), 1, 1);
    EXPECT_EQ(line, ends);
}

TEST(MaskBounds, AreTheSmallestRectangleOfAllThatIsNotNull)
{
    unsigned nSeed = 0;
    for (const auto& size : c_aSizes)
        for (int i = 0; i < 20; i++) {
            OwnMask mask(size[0], size[1]);
            std::mt19937 random(++nSeed);
            for (unsigned n = random() % 4; n > 0; n--) // 0 to 3 pixels, however faint
                mask.bytes[random() % mask.bytes.size()] = static_cast<std::uint8_t>(1 + random() % 255);
            CRect expected{mask.nWidth, mask.nHeight, 0, 0};
            for (int y = 0; y < mask.nHeight; y++)
                for (int x = 0; x < mask.nWidth; x++)
                    if (mask.At(x, y))
                        expected = {std::min(expected.left, x), std::min(expected.top, y), std::max(expected.right, x + 1),
                                    std::max(expected.bottom, y + 1)};
            if (expected.right == 0)
                expected = {};
            EXPECT_EQ(ScanMaskBounds(mask.Plane()), expected) << mask;
        }
}

TEST(MaskFill, FourWaysToMeetTheSelection)
{
    // Enough bytes for more than one piece, and a rest.
    OwnMask mask = MakeMask(1237, 1711, MaskKind::Noise, 1);
    const OwnMask shape = MakeMask(1237, 1711, MaskKind::Noise, 2), before = mask;
    const auto Check = [&](SelectMode mode, auto expected) {
        mask = before;
        CombineMask(mask.Plane(), shape.bytes.data(), mode);
        for (std::size_t i = 0; i < mask.bytes.size(); i++)
            if (mask.bytes[i] != expected(before.bytes[i], shape.bytes[i]))
                return testing::AssertionFailure() << "byte " << i;
        return testing::AssertionSuccess();
    };
    EXPECT_TRUE(Check(SelectMode::New, [](int a, int b) { return std::min(a + b, 255); }));
    EXPECT_TRUE(Check(SelectMode::Add, [](int a, int b) { return std::min(a + b, 255); }));
    EXPECT_TRUE(Check(SelectMode::Subtract, [](int a, int b) { return std::max(a - b, 0); }));
    EXPECT_TRUE(Check(SelectMode::Intersect, [](int a, int b) { return std::min(a, b); }));

    CSilentSink sink;
    EXPECT_TRUE(Check(static_cast<SelectMode>(5), [](int a, int) { return a; }));
    EXPECT_EQ(sink.m_strText, "Error: unknown opperation type in channel_combine_mask\n");

    mask = before;
    InvertMask(mask.Plane());
    for (std::size_t i = 0; i < mask.bytes.size(); i++)
        ASSERT_EQ(mask.bytes[i] + before.bytes[i], 255) << i;
}

TEST(MaskFill, ColumnsReadAsRows)
{
    ForMasks([](OwnMask mask) {
        OwnMask read(mask.nWidth, mask.nHeight);
        ColumnsReadAsRows(mask.Plane(), read.bytes.data());
        for (int y = 0; y < mask.nHeight; y++)
            for (int x = 0; x < mask.nWidth; x++)
                ASSERT_EQ(read.bytes[static_cast<std::size_t>(x) * mask.nHeight + y], mask.At(x, y));
    });
}
