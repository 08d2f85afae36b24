// The boundary tracer against one that goes by the definition, run by run and without any shortcut.
#include "MaskTestKit.h"

#include "selection/BoundaryTracer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <ostream>
#include <tuple>

using namespace kestrune;
using namespace kestrune::test;
using testing::ElementsAre;
using testing::IsEmpty;

namespace kestrune {
static void PrintTo(const MaskSegment& s, std::ostream* pStream)
{
    *pStream << s.x1 << ' ' << s.y1 << ' ' << s.x2 << ' ' << s.y2 << ' ' << s.open;
}
} // namespace kestrune

namespace {

constexpr int c_nFar = 0x2000000;

class CPlainTracer {
public:
    CPlainTracer(const OwnMask& mask, const CRect& rc)
        : m_mask(mask)
        , m_rc(rc)
        , m_began(static_cast<std::size_t>(mask.nWidth) + 1, -1)
    {
        for (int y = rc.top; y < rc.bottom; y++) {
            const std::vector<int> row = Scan(y), above = Scan(y - 1), below = Scan(y + 1);
            for (std::size_t i = 1; i + 1 < row.size(); i += 2) {
                Walk(row[i], row[i + 1], above, y, 1);
                Walk(row[i], row[i + 1], below, y + 1, 0);
            }
        }
    }
    std::vector<MaskSegment> m_segments;

private:
    std::vector<int> Scan(int y) const
    {
        std::vector<int> scan{0};
        bool bIn = false;
        for (int x = m_rc.left; y >= m_rc.top && y < m_rc.bottom && x < m_rc.right; x++)
            if ((m_mask.At(x, y) >= 128) != bIn) {
                scan.push_back(x);
                bIn = !bIn;
            }
        if (bIn)
            scan.push_back(m_rc.right);
        scan.push_back(c_nFar);
        return scan;
    }
    void Walk(int s, int e, const std::vector<int>& runs, int y, int nTop)
    {
        for (std::size_t i = 0; i + 1 < runs.size(); i += 2) {
            const int a = runs[i], b = runs[i + 1];
            if (a <= s && b >= e)
                Horizontal(s, e, y, nTop);
            else if ((a > s && a < e) || (b > s && b < e))
                Horizontal(std::max(a, s), std::min(b, e), y, nTop);
        }
    }
    void Horizontal(int xa, int xb, int y, int nTop)
    {
        Vertical(xa, y, !nTop);
        Vertical(xb, y, nTop);
        m_segments.push_back({xa, y, xb, y, nTop});
    }
    void Vertical(int x, int y, int nOpen)
    {
        if (m_began[x] == -1) {
            m_began[x] = y;
            return;
        }
        m_segments.push_back({x, m_began[x], x, y, nOpen});
        m_began[x] = -1;
    }

    const OwnMask& m_mask;
    CRect m_rc;
    std::vector<int> m_began;
};

std::vector<MaskSegment> Trace(OwnMask mask, const CRect& rc)
{
    std::vector<MaskSegment> segments;
    TraceBoundary(mask.Plane(), rc, segments);
    return segments;
}
std::vector<MaskSegment> Trace(const OwnMask& mask)
{
    return Trace(mask, {0, 0, mask.nWidth, mask.nHeight});
}

} // namespace

TEST(Boundary, IsThePlainOneInItsOrder)
{
    unsigned nSeed = 0;
    ForMasks([&](const OwnMask& mask) {
        const CRect rcAll{0, 0, mask.nWidth, mask.nHeight};
        EXPECT_EQ(Trace(mask), CPlainTracer(mask, rcAll).m_segments) << mask;
        std::mt19937 random(++nSeed);
        const int x = static_cast<int>(random() % mask.nWidth), y = static_cast<int>(random() % mask.nHeight);
        const CRect rcPart{x, y, x + 1 + static_cast<int>(random() % (mask.nWidth - x)), y + 1 + static_cast<int>(random() % (mask.nHeight - y))};
        EXPECT_EQ(Trace(mask, rcPart), CPlainTracer(mask, rcPart).m_segments) << mask;
    });
}

/// Whatever the order: each unit of edge between a selected pixel and another is covered once, and nothing else is.
TEST(Boundary, CoversEachEdgeOnceAndTellsItsSide)
{
    ForMasks([](const OwnMask& mask) {
        const auto In = [&](int x, int y) { return x >= 0 && y >= 0 && x < mask.nWidth && y < mask.nHeight && mask.At(x, y) >= 128; };
        using Edge = std::tuple<bool, int, int>; // horizontal, left or upper end
        std::map<Edge, int> expected, found;
        for (int y = 0; y <= mask.nHeight; y++)
            for (int x = 0; x <= mask.nWidth; x++) {
                if (In(x, y) != In(x, y - 1))
                    expected[{true, x, y}] = In(x, y);
                if (In(x, y) != In(x - 1, y))
                    expected[{false, x, y}] = 0;
            }
        for (const MaskSegment& s : Trace(mask)) {
            ASSERT_TRUE((s.x1 == s.x2 && s.y1 < s.y2) || (s.y1 == s.y2 && s.x1 < s.x2)) << testing::PrintToString(s);
            for (int i = s.x1; s.y1 == s.y2 && i < s.x2; i++)
                ASSERT_TRUE(found.emplace(Edge{true, i, s.y1}, s.open).second);
            for (int i = s.y1; s.x1 == s.x2 && i < s.y2; i++)
                ASSERT_TRUE(found.emplace(Edge{false, s.x1, i}, 0).second);
        }
        EXPECT_EQ(found, expected) << mask;
    });
}

TEST(Boundary, OnePixelHasFourSides)
{
    OwnMask mask(5, 4);
    mask.At(2, 1) = 128;
    mask.At(0, 3) = 127; // too faint
    EXPECT_THAT(Trace(mask), ElementsAre(MaskSegment{2, 1, 3, 1, 1}, MaskSegment{2, 1, 2, 2, 1}, MaskSegment{3, 1, 3, 2, 0}, MaskSegment{2, 2, 3, 2, 0}));
}

TEST(Boundary, TheWholePictureIsOutlinedAndTheFaintIsNot)
{
    OwnMask mask = MakeMask(30, 20, MaskKind::Full, 1);
    EXPECT_THAT(Trace(mask), ElementsAre(MaskSegment{0, 0, 30, 0, 1}, MaskSegment{0, 0, 0, 20, 1}, MaskSegment{30, 0, 30, 20, 0}, MaskSegment{0, 20, 30, 20, 0}));
    std::fill(mask.bytes.begin(), mask.bytes.end(), std::uint8_t{100});
    EXPECT_THAT(Trace(mask), IsEmpty());
}

TEST(Boundary, WhatIsLeftOverFromTheLastTraceGoes)
{
    OwnMask mask = MakeMask(30, 20, MaskKind::Noise, 1), empty(30, 20);
    std::vector<MaskSegment> segments;
    TraceBoundary(mask.Plane(), {0, 0, 30, 20}, segments);
    EXPECT_FALSE(segments.empty());
    TraceBoundary(empty.Plane(), {0, 0, 30, 20}, segments);
    EXPECT_THAT(segments, IsEmpty());
}
