#include "NaiveStroke.h"

#include "paint/AirBrushCore.h"
#include "paint/BlurCore.h"
#include "paint/BrushCore.h"
#include "paint/BurnCore.h"
#include "paint/EraserCore.h"
#include "paint/PencilCore.h"
#include "paint/SharpenCore.h"
#include "paint/SmudgeCore.h"
#include "paint/StampCore.h"

#include <gtest/gtest.h>
#include <hwy/targets.h>

#include <memory>
#include <random>

using namespace kestrune;
using namespace kestrune::test;

namespace {

class CRandomSource {
public:
    explicit CRandomSource(unsigned nSeed) : m_random(nSeed) {}
    int operator()(int nFrom, int nTo) { return std::uniform_int_distribution<int>(nFrom, nTo)(m_random); }
    bool Chance(int nPercent) { return (*this)(0, 99) < nPercent; }
    Bytes Noise(std::size_t n)
    {
        Bytes out(n);
        for (auto& b : out)
            b = static_cast<std::uint8_t>(m_random());
        return out;
    }

private:
    std::mt19937 m_random;
};

struct OpacitySite : CImageSite {
    int FloatOpacity() const override { return nOpacity; }
    void RepaintRect(const CRect& rc) override { rcPainted = Unite(rcPainted, rc); }
    int nOpacity = 100;
    CRect rcPainted;
};

/// A round brush that is neither flat nor symmetric, so that a mask that is shifted or mirrored shows.
void SetBrush(int nWidth, int nHeight, CRandomSource& random)
{
    g_activeBrush = {};
    g_activeBrush.nWidth = nWidth;
    g_activeBrush.nHeight = nHeight;
    for (int y = 0; y < nHeight; y++)
        for (int x = 0; x < nWidth; x++) {
            const double u = (x + 0.5) / nWidth * 2 - 1, v = (y + 0.5) / nHeight * 2 - 1;
            g_activeBrush.aMask.push_back(u * u + v * v > 1 ? 0 : static_cast<std::uint8_t>(random(1, 255)));
        }
    g_activeBrush.xAxis[0] = nWidth / 2.0;
    g_activeBrush.yAxis[1] = nHeight / 2.0;
    if (random.Chance(30)) { // a turned one
        g_activeBrush.xAxis[1] = nWidth / 4.0;
        g_activeBrush.yAxis[0] = -nHeight / 5.0;
    }
}

std::unique_ptr<PaintCore> MakeCore(NaiveStroke::Kind kind, CPaintImage& image, const StrokeSettings& settings)
{
    switch (kind) {
    case NaiveStroke::Pencil: return std::make_unique<PencilCore>(image, settings);
    case NaiveStroke::Brush: return std::make_unique<BrushCore>(image, settings);
    case NaiveStroke::Eraser: return std::make_unique<EraserCore>(image, settings);
    case NaiveStroke::Air: return std::make_unique<AirBrushCore>(image, settings);
    case NaiveStroke::Stamp: return std::make_unique<StampCore>(image, settings);
    case NaiveStroke::Blur: return std::make_unique<BlurCore>(image, settings);
    case NaiveStroke::Sharpen: return std::make_unique<SharpenCore>(image, settings);
    case NaiveStroke::Dodge: return std::make_unique<DodgeCore>(image, settings);
    case NaiveStroke::Burn: return std::make_unique<BurnCore>(image, settings);
    default: return std::make_unique<SmudgeCore>(image, settings);
    }
}

void Scribble(CPaintImage& image, CRandomSource& random)
{
    for (LBitmapBase* pBitmap : {&image.m_Bitmap, &image.m_BaseBitmap, &image.m_FloatBitmap})
        for (int y = 0; y < pBitmap->GetHeight(); y++) {
            const Bytes row = random.Noise(pBitmap->GetRowBytes());
            std::ranges::copy(row, pBitmap->WriteRow(y));
        }
}

/// A captured selection, which may have been moved, also over the picture's edge.
void AddFloat(CPaintImage& image, CRandomSource& random)
{
    const int w = random(1, image.m_nWidth), h = random(1, image.m_nHeight);
    const int x = random(0, image.m_nWidth - w), y = random(0, image.m_nHeight - h);
    image.m_pMask = std::make_unique<std::uint8_t[]>(static_cast<std::size_t>(image.m_nWidth) * image.m_nHeight);
    const Bytes mask = random.Noise(static_cast<std::size_t>(image.m_nWidth) * image.m_nHeight);
    std::ranges::copy(mask, image.m_pMask.get());
    image.InvalidateMaskBounds();
    image.CaptureFloat(x, y, w, h);
    image.m_nFloatX = x;
    image.m_nFloatY = y;
    image.m_nFloatW = w;
    image.m_nFloatH = h;
    image.m_rcFloat = image.m_rcFloatStart = {x, y, x + w, y + h};
    image.m_bFloatReady = image.m_bSelection = true;
    if (random.Chance(50)) {
        const int dx = random(-w / 2, w / 2), dy = random(-h / 2, h / 2);
        image.m_nFloatX += dx;
        image.m_nFloatY += dy;
        image.m_rcFloat = Intersect({x + dx, y + dy, x + dx + w, y + dy + h}, {0, 0, image.m_nWidth, image.m_nHeight});
        image.m_bFloating = true;
    }
}

StrokeSettings RandomSettings(CRandomSource& random)
{
    StrokeSettings settings;
    settings.nOpacity = random.Chance(40) ? 100 : random(0, 100);
    settings.nSpacing = random(3, 150);
    settings.nMode = random.Chance(50) ? 0 : random(0, 15);
    settings.nPressure = random.Chance(10) ? 0 : random(0, 100);
    settings.bFade = random.Chance(50);
    settings.bEraseFloat = random.Chance(50);
    settings.nCurve = random(0, 2);
    return settings;
}

void RandomSources(CRandomSource& random)
{
    g_paintPattern = {};
    g_brushTexture = {};
    if (random.Chance(30))
        g_paintPattern = {random.Noise(7 * 5 * 3), 7, 5, random(0, 100)};
    if (random.Chance(30))
        g_brushTexture = {random.Noise(9 * 11), 9, 11};
    g_crForeground = Rgb(random(0, 255), random(0, 255), random(0, 255));
    g_crBackground = Rgb(random(0, 255), random(0, 255), random(0, 255));
}

class PaintCoreTest : public testing::Test {
protected:
    ~PaintCoreTest() override
    {
        g_activeBrush = {};
        g_paintPattern = {};
        g_brushTexture = {};
        g_crForeground = 0;
        g_crBackground = 0xFFFFFF;
        CPaintImage::Deactivate();
        hwy::SetSupportedTargetsForTest(0);
    }

    /// One stroke on one picture, everything by chance; both ways, compared after every event.
    void Run(unsigned nSeed, NaiveStroke::Kind kind, bool bWide = false)
    {
        SCOPED_TRACE(testing::Message() << "seed " << nSeed << " kind " << kind);
        CRandomSource random(nSeed);
        CPaintImage image;
        OpacitySite site;
        image.SetSite(&site);
        const int w = bWide ? random(1000, 6000) : random.Chance(15) ? random(1, 8) : random(20, 140);
        const int h = random.Chance(15) ? random(1, 8) : random(20, bWide ? 40 : 140);
        image.Create(w, h, FILL_WHITE, random.Chance(75) ? COLOR_RGB : random(0, 1));
        image.Activate();
        Scribble(image, random);
        image.m_BaseBitmap.Copy(image.m_Bitmap);
        if (random.Chance(35))
            AddFloat(image, random);
        if (random.Chance(30))
            site.nOpacity = random(0, 100);
        const int nSize = random.Chance(20) ? random(1, 5) : random(6, 70);
        SetBrush(nSize, random.Chance(70) ? nSize : random(1, 40), random);
        RandomSources(random);
        const StrokeSettings settings = RandomSettings(random);

        NaiveStroke naive(image, kind, settings);
        const Bytes before = naive.bitmap;
        const CPoint ptSource{random(0, w), random(0, h)};
        if (kind == NaiveStroke::Stamp)
            MakeCore(kind, image, settings)->Begin(StampCore::c_nSourceFlags, ptSource.x, ptSource.y);
        const auto core = MakeCore(kind, image, settings);
        const CPoint pt{random(0, w), random(0, h)};
        naive.Begin(pt.x, pt.y, ptSource);
        core->Begin(1, pt.x, pt.y);
        Compare(image, naive, "press");
        for (int i = random(0, 4); i > 0 && !HasFailure(); i--) {
            const CPoint to{random(0, w), random(0, h)};
            naive.StrokeTo(to.x, to.y);
            core->StrokeTo(to.x, to.y);
            Compare(image, naive, "move");
        }
        naive.DabAgain();
        core->DabAgain();
        naive.End();
        core->End();
        Compare(image, naive, "release");
        if (kind == NaiveStroke::Stamp) {
            EXPECT_EQ(StampCore::Source(), ptSource);
        }
        m_nStrokes++;
        m_nChanged += naive.bitmap != before;
    }
    int m_nStrokes = 0, m_nChanged = 0;

    static void Compare(const CPaintImage& image, const NaiveStroke& naive, const char* pszWhen)
    {
        ASSERT_EQ(RgbOf(image.m_Bitmap), naive.bitmap) << pszWhen;
        ASSERT_EQ(RgbOf(image.m_BaseBitmap), naive.base) << pszWhen;
        if (image.m_pFloatMask) {
            ASSERT_EQ(RgbOf(image.m_FloatBitmap), naive.floatBitmap) << pszWhen;
            ASSERT_EQ(Bytes(image.m_pFloatMask.get(), image.m_pFloatMask.get() + naive.floatMask.size()), naive.floatMask) << pszWhen;
        }
    }
};

} // namespace

TEST_F(PaintCoreTest, EveryToolOnRandomPicturesGivesTheBytesOfThePlainForm)
{
    for (unsigned nSeed = 1; nSeed <= 120 && !HasFailure(); nSeed++)
        for (int kind = NaiveStroke::Pencil; kind <= NaiveStroke::Smudge && !HasFailure(); kind++)
            Run(nSeed * 16 + kind, static_cast<NaiveStroke::Kind>(kind));
    EXPECT_GT(m_nChanged, m_nStrokes * 6 / 10) << "the strokes by chance hardly paint: what is compared says little";
}

/// Strokes that begin on some columns of a long row and run on to both sides.
TEST_F(PaintCoreTest, EveryToolOnWidePicturesGivesTheBytesOfThePlainForm)
{
    for (unsigned nSeed = 9000; nSeed < 9012 && !HasFailure(); nSeed++)
        for (int kind = NaiveStroke::Pencil; kind <= NaiveStroke::Smudge && !HasFailure(); kind++)
            Run(nSeed * 16 + kind, static_cast<NaiveStroke::Kind>(kind), true);
    EXPECT_GT(m_nChanged, m_nStrokes * 6 / 10) << "the strokes by chance hardly paint: what is compared says little";
}

TEST_F(PaintCoreTest, EveryKindOfProcessorGivesTheSame)
{
    for (std::int64_t nTarget : hwy::SupportedAndGeneratedTargets()) {
        SCOPED_TRACE(hwy::TargetName(nTarget));
        hwy::SetSupportedTargetsForTest(nTarget);
        for (unsigned nSeed = 5000; nSeed < 5015 && !HasFailure(); nSeed++)
            for (int kind = NaiveStroke::Pencil; kind <= NaiveStroke::Smudge && !HasFailure(); kind++)
                Run(nSeed * 16 + kind, static_cast<NaiveStroke::Kind>(kind));
    }
}

TEST_F(PaintCoreTest, TheFilterOfADabTakesEveryWeightAsThePlainForm)
{
    CRandomSource random(3);
    for (std::int64_t nTarget : hwy::SupportedAndGeneratedTargets()) {
        SCOPED_TRACE(hwy::TargetName(nTarget));
        hwy::SetSupportedTargetsForTest(nTarget);
        for (int i = 0; i < 400; i++) {
            const std::size_t n = random(1, 200);
            Bytes aRows[3];
            for (Bytes& row : aRows)
                row = random.Chance(20) ? Bytes(n + 6, random.Chance(50) ? 0 : 255) : random.Noise(n + 6);
            const int nCenter = i < 20 ? i - 10 - 80000 : random(-5120000, 640000);
            Bytes fast(n), plain(n);
            const ConvolveRows rows{aRows[0].data() + 3, aRows[1].data() + 3, aRows[2].data() + 3};
            ConvolveRow(rows, fast.data(), nCenter, n);
            PlainConvolveRow(rows, plain.data(), nCenter, n);
            ASSERT_EQ(fast, plain) << "centre " << nCenter;
        }
    }
}

TEST(DodgeTable, AnExposureOfNoneChangesNothingAndMoreNeverDarkens)
{
    const auto identity = DodgeCore::MakeTable(DodgeCore::CURVE_MIDTONES, 0);
    for (int i = 0; i < 256; i++)
        EXPECT_EQ(identity[i], i);
    for (int nCurve = 0; nCurve < 3; nCurve++) {
        const auto lighter = DodgeCore::MakeTable(nCurve, 1), darker = DodgeCore::MakeTable(nCurve, -1);
        for (int i = 0; i < 256; i++) {
            EXPECT_GE(lighter[i], i);
            EXPECT_LE(darker[i], i);
        }
    }
}
