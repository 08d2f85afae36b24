#include "DocTestTools.h"

#include "base/StringTable.h"
#include "doc/PaintImage.h"
#include "doc/Palettes.h"
#include "doc/files/DecodedImage.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <cstring>

using namespace kestrune;
using namespace kestrune::test;

namespace {

struct Site final : CImageSite {
    int FloatOpacity() const override { return nOpacity; }
    int MoveMode() const override { return nMoveMode; }
    void RepaintRect(const CRect& rc) override { rcRepainted = rc; }
    int nOpacity = 100;
    int nMoveMode = 0;
    CRect rcRepainted;
};

class PaintImageTest : public testing::Test {
protected:
    ~PaintImageTest() override
    {
        CPaintImage::Deactivate();
        g_crBackground = Rgb(255, 255, 255);
    }
};

/// A bitmap file with rows that are given from the bottom up.
std::string Bmp(int nWidth, int nHeight, int nBits, const std::vector<RGBQUAD>& palette, const std::string& strRows)
{
    const auto U32 = [](std::uint32_t v) { return std::string{char(v), char(v >> 8), char(v >> 16), char(v >> 24)}; };
    const auto U16 = [&](std::uint32_t v) { return U32(v).substr(0, 2); };
    std::string colors;
    for (const RGBQUAD& q : palette)
        colors += std::string{char(q.rgbBlue), char(q.rgbGreen), char(q.rgbRed), 0};
    const std::uint32_t nOffset = 54 + static_cast<std::uint32_t>(colors.size());
    return "BM" + U32(nOffset + static_cast<std::uint32_t>(strRows.size())) + U32(0) + U32(nOffset) + U32(40) + U32(nWidth) + U32(nHeight)
        + U16(1) + U16(nBits) + U32(0) + U32(0) + U32(2835) + U32(2835) + U32(static_cast<std::uint32_t>(palette.size())) + U32(0) + colors + strRows;
}

/// Pages of memory that the process holds, in bytes.
std::size_t Resident()
{
    std::size_t nSize = 0, nResident = 0;
    if (FILE* pFile = std::fopen("/proc/self/statm", "r")) {
        if (std::fscanf(pFile, "%zu %zu", &nSize, &nResident) != 2)
            nResident = 0;
        std::fclose(pFile);
    }
    return nResident * 4096;
}

} // namespace

TEST_F(PaintImageTest, ANewImageHasNoSelectionWhateverItsMaskHolds)
{
    CPaintImage image;
    EXPECT_TRUE(image.m_bMaskEmpty && image.m_bMaskBoundsValid);
    EXPECT_FALSE(image.IsInMask(0, 0));
    image.Create(30, 20, FILL_WHITE, COLOR_RGB);
    std::memset(image.m_pMask.get(), 255, 600); // as an allocator may leave it
    CRect rc;
    EXPECT_FALSE(image.GetMaskBounds(rc.left, rc.top, rc.right, rc.bottom));
    EXPECT_FALSE(image.IsInMask(5, 5));
    image.MoveMask(3, 3);
    EXPECT_FALSE(image.GetMaskBounds(rc.left, rc.top, rc.right, rc.bottom));
    image.CaptureFloat(0, 0, 30, 20);
    EXPECT_EQ(std::count(image.m_pFloatMask.get(), image.m_pFloatMask.get() + 600, 0), 600);
    image.CutFloatHole();
    EXPECT_EQ(BytesOf(image.m_BaseBitmap), BytesOf(image.m_Bitmap));
}

TEST_F(PaintImageTest, CreateSetsModePaletteAndFill)
{
    g_crBackground = Rgb(200, 100, 40);
    struct {
        int nColorKind, nMode, nBits, nColors;
        COLORREF crBackground;
    } const rows[] = {{COLOR_BITMAP, MODE_BITMAP, 1, 2, Rgb(0, 0, 0)}, {COLOR_GRAY, MODE_GRAY, 8, 256, Rgb(113, 113, 113)},
                      {COLOR_RGB, MODE_RGB, 24, 16777216, g_crBackground}};
    for (const auto& row : rows) {
        CPaintImage image;
        image.Create(6, 5, FILL_BACKGROUND, row.nColorKind);
        EXPECT_EQ(image.m_nColorMode, row.nMode);
        EXPECT_EQ(image.m_nBitsPerPixel, row.nBits);
        EXPECT_EQ(g_nColors, row.nColors);
        EXPECT_EQ(image.m_Bitmap.GetBitsPerPixel(), 24);
        EXPECT_EQ(image.m_Bitmap.GetPixelColor(5, 4), row.crBackground);
        EXPECT_EQ(BytesOf(image.m_BaseBitmap), BytesOf(image.m_Bitmap));
        EXPECT_FALSE(image.m_bPaletteMode);
        ASSERT_EQ(image.m_pPalette != nullptr, row.nColors <= 256);
        if (image.m_pPalette) {
            EXPECT_EQ(*image.m_pPalette, GreyRamp(row.nColors));
            EXPECT_EQ(g_pPalette, image.m_pPalette.get());
        }
        image.Create(6, 5, FILL_BLACK, row.nColorKind);
        EXPECT_EQ(image.m_Bitmap.GetPixelColor(0, 0), 0u);
    }
    EXPECT_EQ(g_pPalette, nullptr) << "the palette went with its picture";
}

TEST_F(PaintImageTest, DepthAndPaletteOfTheFileDecideTheMode)
{
    const std::vector<RGBQUAD> grey16 = GreyRamp(16), grey256 = GreyRamp(256), two{{0, 0, 255, 0}, {0, 255, 0, 0}};
    std::vector<RGBQUAD> odd = grey256;
    odd[7].rgbRed++;
    struct {
        int nBits;
        std::vector<RGBQUAD> palette;
        std::string row;
        int nMode, nColors;
        bool bPalette, bHard;
    } const rows[] = {{1, GreyRamp(2), std::string("\x80\0\0\0", 4), MODE_BITMAP, 2, false, true},
                      {1, two, std::string("\x80\0\0\0", 4), MODE_16COLORS, 2, true, true},
                      {4, grey16, std::string("\x1f\0\0\0", 4), MODE_16COLORS, 16, true, true},
                      {8, grey256, std::string("\x01\xff\0\0", 4), MODE_GRAY, 256, false, false},
                      {8, odd, std::string("\x01\xff\0\0", 4), MODE_256COLORS, 256, true, true},
                      {24, {}, std::string("\x01\x02\x03\x04\x05\x06\0\0", 8), MODE_RGB, 16777216, false, false}};
    const CTempFolder folder;
    CSaid said;
    for (const auto& row : rows) {
        WriteText(folder / "a.bmp", Bmp(2, 1, row.nBits, row.palette, row.row));
        CPaintImage image;
        ASSERT_TRUE(image.Load(folder / "a.bmp"));
        EXPECT_EQ(image.m_strPathName, folder / "a.bmp");
        EXPECT_EQ(image.m_nColorMode, row.nMode) << row.nBits;
        EXPECT_EQ(image.m_nBitsPerPixel, row.nBits);
        EXPECT_EQ(image.m_bPaletteMode, row.bPalette);
        EXPECT_EQ(image.m_dwColorResFlags, row.bPalette ? 0x10002u : 0u);
        EXPECT_EQ(image.IsHardAlpha(), row.bHard);
        EXPECT_EQ(image.m_Bitmap.GetBitsPerPixel(), 24);
        EXPECT_EQ(image.m_Bitmap.GetXResolution(), 72);
        if (row.bPalette) {
            ASSERT_NE(image.m_pPalette, nullptr);
            EXPECT_EQ((*image.m_pPalette)[1], row.palette[1]);
        }
        CPaintImage::Deactivate();
        EXPECT_EQ(g_nColors, 1000);
        EXPECT_EQ(g_pPalette, nullptr);
        image.Activate();
        EXPECT_EQ(g_nColors, row.nColors);
        EXPECT_EQ(g_pPalette, image.m_pPalette.get());
    }
    EXPECT_TRUE(said.messages.empty());
}

TEST_F(PaintImageTest, AMetafileTakesTheSizeThatItStates)
{
    const auto Words = [](std::initializer_list<int> words) {
        std::string bytes;
        for (const int w : words)
            bytes += std::string{char(w), char(w >> 8)};
        return bytes;
    };
    const auto Metafile = [&](int nRight, int nInch) {
        const std::string records = Words({5, 0, 0x20B, 0, 0, 5, 0, 0x20C, 1440, 2880, 7, 0, 0x41B, 1000, 2000, 300, 300, 3, 0, 0});
        int nCheck = 0;
        const auto key = {0xCDD7, 0x9AC6, 0, 0, 0, nRight, 1440, nInch, 0, 0};
        for (const int w : key)
            nCheck ^= w;
        return Words(key) + Words({nCheck, 1, 9, 0x300, 9 + static_cast<int>(records.size()) / 2, 0, 0, 7, 0, 0}) + records;
    };
    const CTempFolder folder;
    CSaid said;
    WriteText(folder / "a.WMF", Metafile(2880, 1440));
    CPaintImage image;
    ASSERT_TRUE(image.Load(folder / "a.WMF"));
    EXPECT_EQ(image.m_nWidth, 192); // two inches of 96 pixels
    EXPECT_EQ(image.m_nHeight, 96);
    EXPECT_EQ(image.m_Bitmap.GetWidth(), 192);
    EXPECT_TRUE(said.messages.empty());

    WriteText(folder / "b.wmf", Metafile(32000, 1)); // three million pixels wide
    EXPECT_FALSE(image.Load(folder / "b.wmf"));
    WriteText(folder / "c.wmf", Metafile(2880, 0));
    EXPECT_FALSE(image.Load(folder / "c.wmf"));
    EXPECT_EQ(said.messages, (std::vector<std::string>{LoadErrorText(IMG_ERROR_MEMORY), std::string(StringText(IDS_BAD_FORMAT))}));
}

TEST_F(PaintImageTest, AHoldingBitmapBringsItsModeAndAPaletteIsFoundForIt)
{
    const LBitmapBase photo = PhotoLike(40, 30, 1);
    LBitmapBase indexed = photo;
    indexed.ColorRes(8, 0x10002);
    CPaintImage image;
    image.CreateFromClipboardBitmap(indexed, 8, MODE_256COLORS);
    EXPECT_TRUE(std::equal(image.m_pPalette->begin(), image.m_pPalette->end(), indexed.Palette().begin(), indexed.Palette().end()));
    image.CreateFromClipboardBitmap(photo, 4, MODE_16COLORS);
    EXPECT_EQ(image.m_pPalette->size(), 16u);
    EXPECT_EQ(BytesOf(image.m_Bitmap), BytesOf(photo));
    EXPECT_EQ(g_pPalette, image.m_pPalette.get());
    image.CreateFromClipboardBitmap(photo, 24, MODE_RGB);
    EXPECT_EQ(image.m_pPalette, nullptr);
    EXPECT_EQ(g_pPalette, nullptr);
}

TEST_F(PaintImageTest, MaskQueriesFollowTheirThreeThresholds)
{
    std::mt19937 random(2);
    CPaintImage image;
    image.Create(67, 31, FILL_WHITE, COLOR_RGB);
    for (int i = 0; i < 300; i++) {
        std::fill_n(image.m_pMask.get(), 67 * 31, std::uint8_t{0});
        CRect rcWanted;
        for (int n = random() % 4; n > 0; n--) {
            const int x = random() % 67, y = random() % 31;
            image.m_pMask[y * 67 + x] = static_cast<std::uint8_t>(1 + random() % 255); // any byte but 0 counts for the bounds
            rcWanted = Unite(rcWanted, {x, y, x + 1, y + 1});
        }
        image.InvalidateMaskBounds();
        const int x = static_cast<int>(random() % 80) - 6, y = static_cast<int>(random() % 40) - 4;
        const bool bIn = CRect{0, 0, 67, 31}.Contains(x, y) && image.m_pMask[y * 67 + x] > 127;
        EXPECT_EQ(image.IsInMask(x, y), bIn) << "without bounds";
        CRect rc;
        EXPECT_EQ(image.GetMaskBounds(rc.left, rc.top, rc.right, rc.bottom), !rcWanted.IsEmpty());
        EXPECT_EQ(rc, rcWanted.IsEmpty() ? (CRect{0, 0, 67, 31}) : rcWanted);
        EXPECT_EQ(image.IsInMask(x, y), bIn);
    }
    image.m_nMaskX1 = 10; // known bounds are believed without a look at the mask
    std::fill_n(image.m_pMask.get(), 67 * 31, std::uint8_t{255});
    image.m_bMaskEmpty = false;
    EXPECT_FALSE(image.IsInMask(9, 5));
}

TEST_F(PaintImageTest, MoveMaskClipsAtTheEdges)
{
    std::mt19937 random(3);
    for (int i = 0; i < 200; i++) {
        CPaintImage image;
        image.Create(23, 19, FILL_WHITE, COLOR_RGB);
        std::fill_n(image.m_pMask.get(), 23 * 19, std::uint8_t{0});
        for (int y = 4; y < 12; y++)
            for (int x = 6; x < 15; x++)
                image.m_pMask[y * 23 + x] = static_cast<std::uint8_t>(random() | 1);
        image.InvalidateMaskBounds();
        const std::vector<std::uint8_t> before(image.m_pMask.get(), image.m_pMask.get() + 23 * 19);
        const int dx = static_cast<int>(random() % 60) - 30, dy = static_cast<int>(random() % 50) - 25;
        image.MoveMask(dx, dy);
        bool bAny = false;
        for (int y = 0; y < 19; y++)
            for (int x = 0; x < 23; x++) {
                const bool bFrom = CRect{0, 0, 23, 19}.Contains(x - dx, y - dy);
                const int nWanted = bFrom ? before[(y - dy) * 23 + x - dx] : 0;
                ASSERT_EQ(image.m_pMask[y * 23 + x], nWanted);
                bAny |= nWanted != 0;
            }
        const CRect rcMoved = Intersect({6 + dx, 4 + dy, 15 + dx, 12 + dy}, {0, 0, 23, 19});
        CRect rc;
        EXPECT_EQ(image.GetMaskBounds(rc.left, rc.top, rc.right, rc.bottom), bAny);
        EXPECT_EQ(rc, rcMoved.IsEmpty() ? (CRect{0, 0, 23, 19}) : rcMoved);
    }
}

namespace {

int Div255(int v) // the rounding of the whole program, which for differences below 0 is its own
{
    const int t = v + 128;
    return ((t >> 8) + t) >> 8;
}

/// Captures what the mask selects as the float, at its own place; the place.
CRect LiftMask(CPaintImage& image)
{
    CRect rc;
    EXPECT_TRUE(image.GetMaskBounds(rc.left, rc.top, rc.right, rc.bottom));
    image.CaptureFloat(rc.left, rc.top, rc.Width(), rc.Height());
    image.m_rcFloat = image.m_rcFloatStart = rc;
    image.m_nFloatX = rc.left;
    image.m_nFloatY = rc.top;
    image.m_nFloatW = rc.Width();
    image.m_nFloatH = rc.Height();
    return rc;
}

} // namespace

TEST_F(PaintImageTest, TheFloatAgreesWithAPlainReference)
{
    std::mt19937 random(4);
    for (int i = 0; i < 150; i++) {
        g_crBackground = random() & 0xffffff;
        const int w = 20 + random() % 30, h = 15 + random() % 20;
        const LBitmapBase source = RandomBitmap(w, h, 24, random());
        CPaintImage image;
        const bool bHard = i % 3 == 0;
        image.CreateFromClipboardBitmap(source, bHard ? 4 : i % 3 == 1 ? 8 : 24, bHard ? MODE_16COLORS : i % 3 == 1 ? MODE_GRAY : MODE_RGB);
        Site site;
        site.nOpacity = i % 2 ? 100 : random() % 101;
        image.SetSite(&site);
        std::generate_n(image.m_pMask.get(), w * h, [&] { return static_cast<std::uint8_t>(random() % 3 ? random() : 0); });
        std::fill_n(image.m_pMask.get(), w * 3, std::uint8_t{0});
        image.InvalidateMaskBounds();
        const CRect rc = LiftMask(image);
        const auto Alpha = [&](int x, int y, int nOpacity) {
            const int a = Div255(image.m_pMask[y * w + x] * nOpacity);
            return bHard ? (a < 128 ? 0 : 255) : a;
        };
        const COLORREF cr = image.m_pPalette ? SnapToPalette(g_crBackground, *image.m_pPalette) : g_crBackground; // no colour of few is another
        const int bgr[3] = {BlueOf(cr), GreenOf(cr), RedOf(cr)};

        site.nMoveMode = 1;
        image.CutFloatHole();
        ASSERT_EQ(BytesOf(image.m_BaseBitmap), BytesOf(source)) << "a copy leaves the picture as it is";
        site.nMoveMode = 0;
        image.CutFloatHole();
        std::vector<std::uint8_t> base = BytesOf(source);
        for (int y = 0; y < h; y++)
            for (int x = 0; x < w; x++)
                for (int c = 0; c < 3; c++) {
                    std::uint8_t& v = base[(y * w + x) * 3 + c];
                    v = static_cast<std::uint8_t>(v + Div255((bgr[c] - v) * Alpha(x, y, 255)));
                }
        ASSERT_EQ(BytesOf(image.m_BaseBitmap), base) << i;

        CRect rcSeen = rc;
        for (int nMove = 0; nMove < 6; nMove++) {
            const int dx = static_cast<int>(random() % 90) - 45, dy = static_cast<int>(random() % 60) - 30;
            const bool bAll = nMove == 0 || random() % 3 == 0;
            image.MoveFloatTo(rc.left + dx, rc.top + dy, bAll ? CPaintImage::CompositeFrom::Base : CPaintImage::CompositeFrom::LastStep);
            EXPECT_EQ(image.m_rcFloat, Intersect({rc.left + dx, rc.top + dy, rc.right + dx, rc.bottom + dy}, {0, 0, w, h}));
            std::vector<std::uint8_t> wanted = base;
            for (int y = rc.top; y < rc.bottom; y++)
                for (int x = rc.left; x < rc.right; x++) {
                    const int tx = x + dx, ty = y + dy;
                    if (!CRect{0, 0, w, h}.Contains(tx, ty))
                        continue;
                    for (int c = 0; c < 3; c++) {
                        std::uint8_t& v = wanted[(ty * w + tx) * 3 + c];
                        v = static_cast<std::uint8_t>(v + Div255((source.Row(y)[x * 3 + c] - v) * Alpha(x, y, site.nOpacity * 255 / 100)));
                    }
                }
            ASSERT_EQ(BytesOf(image.m_Bitmap), wanted) << i << ' ' << nMove;
            EXPECT_EQ(BytesOf(image.m_BaseBitmap), base);
            EXPECT_EQ(site.rcRepainted, Unite(rcSeen, image.m_rcFloat));
            rcSeen = image.m_rcFloat.IsEmpty() ? rc : image.m_rcFloat; // where nothing is, the place that it was lifted from stands
        }
    }
}

TEST_F(PaintImageTest, CaptureOutsideThePictureIsBlackAndUnselected)
{
    CPaintImage image;
    image.CreateFromClipboardBitmap(RandomBitmap(10, 10, 24, 5), 24, MODE_RGB);
    std::fill_n(image.m_pMask.get(), 100, std::uint8_t{255});
    image.InvalidateMaskBounds();
    image.CaptureFloat(-3, 7, 8, 6);
    for (int y = 0; y < 6; y++)
        for (int x = 0; x < 8; x++) {
            EXPECT_EQ(image.m_FloatBitmap.GetPixelColor(x, y), image.m_Bitmap.GetPixelColor(x - 3, y + 7));
            EXPECT_EQ(image.m_pFloatMask[y * 8 + x], CRect(0, 0, 10, 10).Contains(x - 3, y + 7) ? 255 : 0);
        }
    image.CaptureFloat(2, 2, 0, 5);
    EXPECT_EQ(image.m_pFloatMask, nullptr);
    EXPECT_FALSE(image.m_FloatBitmap.IsAllocated());
}

TEST_F(PaintImageTest, APictureInMemoryCostsLittleMoreThanItsPixels)
{
    const CTempFolder folder;
    PhotoLike(4000, 3000, 6).Save(folder / "a.jpg", 10, 24, 30);
    for (int nRound = 0; nRound < 2; nRound++) { // the first time brings in the decoder's own pages
        const std::size_t nBefore = Resident();
        CPaintImage image;
        ASSERT_TRUE(image.Load(folder / "a.jpg"));
        ASSERT_EQ(image.m_nWidth, 4000);
        EXPECT_LE(static_cast<double>(Resident()) - static_cast<double>(nBefore), 1.4 * 36e6);
        EXPECT_TRUE(image.m_BaseBitmap.Bands().SharesBand(image.m_Bitmap.Bands(), 1500));
    }
}

TEST_F(PaintImageTest, SnappingTakesTheLowestIndexOnATie)
{
    const std::vector<RGBQUAD> palette{{0, 0, 10, 0}, {0, 0, 20, 0}, {255, 255, 255, 0}};
    EXPECT_EQ(SnapToPalette(Rgb(15, 0, 0), palette), Rgb(10, 0, 0));
    EXPECT_EQ(SnapToPalette(Rgb(16, 0, 0), palette), Rgb(20, 0, 0));
    EXPECT_EQ(SnapToPalette(Rgb(250, 255, 250), palette), Rgb(255, 255, 255));
    EXPECT_EQ(HardenAlpha(127), 0);
    EXPECT_EQ(HardenAlpha(128), 255);
    EXPECT_EQ(ColorsOfDepth(1), 2);
    EXPECT_EQ(ColorsOfDepth(24), 16777216);
}
