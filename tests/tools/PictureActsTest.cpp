// Picture commands without their dialogs: pixels, selection and history.
#include "../undo/UndoTestImage.h"

#include "doc/Canvas.h"
#include "doc/PictureTurn.h"
#include "resources/PaletteColors.h"
#include "tools/PictureActs.h"
#include "tools/SelectionActs.h"
#include "undo/UndoKinds.h"

#include <gtest/gtest.h>

#include <sys/resource.h>

using namespace kestrune;
using namespace kestrune::test;

namespace {

LBitmapBase Noise(int nWidth, int nHeight, int nBits, unsigned nSeed)
{
    std::mt19937 random(nSeed);
    LBitmapBase bitmap;
    bitmap.Create(nWidth, nHeight, nBits);
    for (int y = 0; y < nHeight; y++)
        for (std::size_t i = 0; i < bitmap.GetRowBytes(); i++)
            bitmap.WriteRow(y)[i] = static_cast<std::uint8_t>(random());
    return bitmap;
}

/// Selects a soft triangle within the rectangle, as a selection tool does.
void SelectTriangle(CPaintImage& image, const CRect& rc)
{
    PushMask(image, 8);
    std::fill_n(image.m_pMask.get(), image.m_nWidth * image.m_nHeight, std::uint8_t{0});
    for (int y = rc.top; y < rc.bottom; y++)
        for (int x = rc.left; x <= rc.left + (y - rc.top) * (rc.Width() - 1) / std::max(rc.Height() - 1, 1); x++)
            image.m_pMask[y * image.m_nWidth + x] = static_cast<std::uint8_t>(x == rc.left ? 90 : 255);
    FinishSelection(image);
}

COLORREF At(const LBitmapBase& bitmap, int x, int y)
{
    return bitmap.GetPixelColor(x, y);
}

void ExpectNoSelection(CPaintImage& image)
{
    CRect rc;
    EXPECT_FALSE(image.GetMaskBounds(rc.left, rc.top, rc.right, rc.bottom));
    EXPECT_TRUE(!image.m_pFloatMask && !image.m_FloatBitmap.IsAllocated());
    EXPECT_TRUE(!image.m_bSelection && !image.m_bFloatReady && !image.m_bFloating);
    EXPECT_EQ(image.m_nWidth, image.m_Bitmap.GetWidth());
    EXPECT_EQ(image.m_nHeight, image.m_Bitmap.GetHeight());
    EXPECT_TRUE(IsSamePicture(image.m_Bitmap, image.m_BaseBitmap));
}

class CBackground {
public:
    explicit CBackground(COLORREF cr) { SetBackground(cr); }
    ~CBackground() { SetBackground(m_crBefore); }

private:
    COLORREF m_crBefore = g_crBackground;
};

} // namespace

TEST(PictureTurn, EveryPixelGoesToItsPlaceInBothFormsAtEverySize)
{
    std::mt19937 random(5);
    for (int i = 0; i < 150; i++) {
        const auto Side = [&] { return 1 + static_cast<int>(random() % (i % 5 == 0 ? 140 : 24)); };
        const int w = Side(), h = Side(), nBits = i % 8 == 7 ? 8 : 24;
        const LBitmapBase source = Noise(w, h, nBits, random());
        for (const auto turn : {PictureTurn::Left, PictureTurn::Right, PictureTurn::Half, PictureTurn::Mirror, PictureTurn::Flip}) {
            const LBitmapBase fast = TurnedBitmap(source, turn), plain = TurnedBitmap(source, turn, TurnForm::Plain);
            ASSERT_TRUE(IsSamePicture(fast, plain)) << w << 'x' << h << ' ' << static_cast<int>(turn);
            const bool bQuarter = turn == PictureTurn::Left || turn == PictureTurn::Right;
            ASSERT_EQ(fast.GetWidth(), bQuarter ? h : w);
            ASSERT_EQ(fast.GetHeight(), bQuarter ? w : h);
            for (int y = 0; y < h; y++)
                for (int x = 0; x < w; x++) {
                    const CPoint to = turn == PictureTurn::Left  ? CPoint{y, w - 1 - x}
                        : turn == PictureTurn::Right ? CPoint{h - 1 - y, x}
                        : turn == PictureTurn::Half  ? CPoint{w - 1 - x, h - 1 - y}
                        : turn == PictureTurn::Mirror ? CPoint{w - 1 - x, y}
                                                      : CPoint{x, h - 1 - y};
                    ASSERT_EQ(At(fast, to.x, to.y), At(source, x, y));
                }
        }
    }
}

TEST(PictureTurn, AQuarterTurnExchangesTheResolutions)
{
    LBitmapBase source = Noise(3, 1, 24, 1);
    source.SetResolution(300, 72);
    const LBitmapBase turned = TurnedBitmap(source, PictureTurn::Right);
    EXPECT_EQ(turned.GetXResolution(), 72);
    EXPECT_EQ(turned.GetYResolution(), 300);
    EXPECT_EQ(TurnedBitmap(source, PictureTurn::Half).GetXResolution(), 300);
}

TEST(PictureActs, EachWholePictureActDropsTheSelectionAndComesBack)
{
    const auto pImage = MakePicture(37, 23);
    const LBitmapBase before = pImage->m_Bitmap;
    const struct {
        void (*act)(CPaintImage&);
        std::uint32_t nKind;
        CSize size;
    } c_aActs[] = {
        {[](CPaintImage& image) { TurnPicture(image, PictureTurn::Left); }, UNDO_ROTATE, {23, 37}},
        {[](CPaintImage& image) { TurnPicture(image, PictureTurn::Right); }, UNDO_ROTATE, {23, 37}},
        {[](CPaintImage& image) { TurnPicture(image, PictureTurn::Half); }, UNDO_ROTATE, {37, 23}},
        {[](CPaintImage& image) { TurnPicture(image, PictureTurn::Mirror); }, UNDO_ROTATE, {37, 23}},
        {[](CPaintImage& image) { ResizePicture(image, 80, 11, SIZE_BICUBIC); }, UNDO_RESIZE, {80, 11}},
        {[](CPaintImage& image) { ResizeCanvas(image, 20, 60, 4); }, UNDO_CANVAS, {20, 60}},
        {[](CPaintImage& image) { CropPicture(image, {30, 20, -5, 3}); }, UNDO_CROP, {30, 17}},
    };
    for (const auto& act : c_aActs) {
        SelectTriangle(*pImage, {5, 4, 21, 15});
        pImage->m_bCropActive = true;
        act.act(*pImage);
        EXPECT_EQ(pImage->m_nWidth, act.size.cx);
        EXPECT_EQ(pImage->m_nHeight, act.size.cy);
        EXPECT_FALSE(pImage->m_bCropActive);
        EXPECT_EQ(HistoryRows(*pImage).back().nKind, act.nKind);
        ExpectNoSelection(*pImage);
        const LBitmapBase after = pImage->m_Bitmap;
        UndoCommand(*pImage);
        EXPECT_TRUE(IsSamePicture(pImage->m_Bitmap, before));
        ExpectNoSelection(*pImage);
        RedoCommand(*pImage);
        EXPECT_TRUE(IsSamePicture(pImage->m_Bitmap, after));
        UndoCommand(*pImage);
    }
}

TEST(PictureActs, TheCanvasGrowsAndShrinksAroundItsAnchor)
{
    const CBackground background(Rgb(9, 8, 7));
    for (int nAnchor = 0; nAnchor < 9; nAnchor++)
        for (const CSize size : {CSize{8, 8}, {2, 2}, {8, 2}, {5, 5}}) {
            const auto pImage = MakePicture(5, 5);
            const LBitmapBase before = pImage->m_Bitmap;
            ResizeCanvas(*pImage, size.cx, size.cy, nAnchor);
            // 3 more or 3 less: all on one side, or 1 and 2, the greater part right and below.
            const auto Offset = [](int nNew, int nThird) { return nThird == 0 ? 0 : nThird == 2 ? nNew - 5 : nNew == 8 ? 1 : nNew == 2 ? -1 : 0; };
            const CPoint pt{Offset(size.cx, nAnchor % 3), Offset(size.cy, nAnchor / 3)};
            for (int y = 0; y < size.cy; y++)
                for (int x = 0; x < size.cx; x++) {
                    const CRect rcOld{0, 0, 5, 5};
                    const bool bOld = rcOld.Contains(x - pt.x, y - pt.y);
                    ASSERT_EQ(At(pImage->m_Bitmap, x, y), bOld ? At(before, x - pt.x, y - pt.y) : Rgb(9, 8, 7)) << nAnchor << ' ' << x << ' ' << y;
                }
        }
}

TEST(PictureActs, ASelectionIsMirroredThroughItsMask)
{
    const auto pImage = MakePicture(40, 30);
    EXPECT_FALSE(TurnSelection(*pImage, PictureTurn::Mirror)) << "nothing is selected";
    SelectTriangle(*pImage, {6, 5, 22, 21});
    const LBitmapBase before = pImage->m_Bitmap, floated = pImage->m_FloatBitmap;
    std::vector<std::uint8_t> mask(pImage->m_pFloatMask.get(), pImage->m_pFloatMask.get() + 16 * 16);
    const std::size_t nRows = HistoryRows(*pImage).size();
    ASSERT_TRUE(TurnSelection(*pImage, PictureTurn::Mirror));
    EXPECT_EQ(HistoryRows(*pImage).size(), nRows + 1);
    EXPECT_EQ(HistoryRows(*pImage).back().nKind, UNDO_MIRROR_SELECTION);
    for (int y = 0; y < 30; y++)
        for (int x = 0; x < 40; x++) {
            const bool bIn = CRect{6, 5, 22, 21}.Contains(x, y);
            const int m = bIn ? mask[(y - 5) * 16 + 15 - (x - 6)] : 0;
            ASSERT_EQ(pImage->m_pMask[y * 40 + x], m);
            if (m == 0) {
                ASSERT_EQ(At(pImage->m_Bitmap, x, y), At(before, x, y));
            } else if (m == 255) {
                ASSERT_EQ(At(pImage->m_Bitmap, x, y), At(floated, 15 - (x - 6), y - 5));
            }
        }
    EXPECT_TRUE(IsSamePicture(pImage->m_Bitmap, pImage->m_BaseBitmap));
    EXPECT_TRUE(pImage->m_bSelection && pImage->m_bFloatReady && !pImage->m_bFloating);
    UndoCommand(*pImage);
    EXPECT_TRUE(IsSamePicture(pImage->m_Bitmap, before));
}

TEST(PictureActs, TheOpacityIsOfWhatFloatsAndNotOfASelectionThatIsFlipped)
{
    struct CFaintSite : CImageSite {
        int FloatOpacity() const override { return 30; }
    } faint;
    const auto pFaint = MakePicture(40, 30), pFull = MakePicture(40, 30);
    pFaint->SetSite(&faint);
    for (CPaintImage* pImage : {pFaint.get(), pFull.get()}) {
        SelectTriangle(*pImage, {6, 5, 22, 21});
        ASSERT_TRUE(TurnSelection(*pImage, PictureTurn::Flip));
    }
    EXPECT_TRUE(IsSamePicture(pFaint->m_Bitmap, pFull->m_Bitmap));
    EXPECT_TRUE(IsSamePicture(pFaint->m_BaseBitmap, pFull->m_Bitmap));
    pFaint->SetSite(nullptr);
}

TEST(PictureActs, ALiftedFloatPartlyOutsideIsFlippedAndStaysLifted)
{
    const auto pImage = MakePicture(20, 20);
    LBitmapBase pasted = Noise(12, 30, 24, 3);
    PasteAsFloat(*pImage, pasted);
    pImage->m_rcFloat.Offset(-4, -7);
    pImage->m_nFloatX = -4;
    pImage->m_nFloatY = -7;
    const LBitmapBase base = pImage->m_BaseBitmap;
    ASSERT_TRUE(TurnSelection(*pImage, PictureTurn::Flip));
    EXPECT_TRUE(pImage->m_bFloating);
    EXPECT_TRUE(IsSamePicture(pImage->m_BaseBitmap, base));
    for (int y = 0; y < 20; y++)
        for (int x = 0; x < 20; x++)
            ASSERT_EQ(At(pImage->m_Bitmap, x, y), x < 8 ? At(pasted, x + 4, 29 - (y + 7)) : At(base, x, y)) << x << ' ' << y;
}

TEST(PictureActs, ClearFillsErasesOrDrops)
{
    const CBackground background(Rgb(200, 100, 50));
    const auto pImage = MakePicture(30, 20);
    const LBitmapBase before = pImage->m_Bitmap;

    // Nothing selected: everything.
    ClearPicture(*pImage);
    EXPECT_EQ(HistoryRows(*pImage).back().nKind, UNDO_CLEAR);
    for (const CPoint pt : {CPoint{0, 0}, {29, 19}, {13, 7}})
        EXPECT_EQ(At(pImage->m_Bitmap, pt.x, pt.y), Rgb(200, 100, 50));
    UndoCommand(*pImage);
    EXPECT_TRUE(IsSamePicture(pImage->m_Bitmap, before));

    // A selection: a hole as deep as the mask, and the selection stays.
    SelectTriangle(*pImage, {3, 3, 19, 15});
    ClearPicture(*pImage);
    for (int y = 0; y < 20; y++)
        for (int x = 0; x < 30; x++) {
            const int m = pImage->m_pMask[y * 30 + x];
            for (int c = 0; c < 3; c++) {
                const int nOld = before.Row(y)[x * 3 + c], nTo = c == 0 ? 50 : c == 1 ? 100 : 200, t = (nTo - nOld) * m + 128;
                ASSERT_EQ(pImage->m_Bitmap.Row(y)[x * 3 + c], static_cast<std::uint8_t>(nOld + (((t >> 8) + t) >> 8)));
            }
        }
    EXPECT_TRUE(pImage->m_bSelection && pImage->m_bFloatReady && !pImage->m_bFloating);
    EXPECT_EQ(At(pImage->m_FloatBitmap, 2, 11), Rgb(200, 100, 50)) << "captured again from what stands there now";
    UndoCommand(*pImage);
    EXPECT_TRUE(IsSamePicture(pImage->m_Bitmap, before));

    // A lifted float: what was lifted is gone.
    PasteAsFloat(*pImage, Noise(10, 10, 24, 1));
    EXPECT_FALSE(IsSamePicture(pImage->m_Bitmap, before));
    ClearPicture(*pImage);
    EXPECT_TRUE(IsSamePicture(pImage->m_Bitmap, before));
    EXPECT_TRUE(pImage->m_bSelection && !pImage->m_bFloating);
}

TEST(PictureActs, APasteFloatsLargerThanThePictureAndUndoBringsBackTheSelection)
{
    const auto pImage = MakePicture(16, 12);
    SelectTriangle(*pImage, {2, 2, 9, 9});
    const std::uint64_t nBefore = HashOf(*pImage);
    const LBitmapBase pasted = Noise(40, 7, 24, 9);
    PasteAsFloat(*pImage, pasted);
    EXPECT_EQ(HistoryRows(*pImage).back().nKind, UNDO_PASTE);
    EXPECT_EQ(pImage->m_rcFloat, (CRect{0, 0, 40, 7}));
    EXPECT_TRUE(pImage->m_bSelection && pImage->m_bFloatReady && pImage->m_bFloating);
    CRect rc;
    EXPECT_TRUE(pImage->GetMaskBounds(rc.left, rc.top, rc.right, rc.bottom));
    EXPECT_EQ(rc, (CRect{0, 0, 16, 7}));
    EXPECT_EQ(At(pImage->m_Bitmap, 15, 6), At(pasted, 15, 6));
    EXPECT_EQ(At(pImage->m_Bitmap, 3, 8), At(pImage->m_BaseBitmap, 3, 8));
    UndoCommand(*pImage);
    EXPECT_EQ(HashOf(*pImage), nBefore);
    EXPECT_EQ(pImage->m_FloatBitmap.GetWidth(), 7);
}

/// Every colour of the picture once.
static std::vector<COLORREF> ColorsOf(const LBitmapBase& bitmap)
{
    std::vector<COLORREF> seen;
    for (int y = 0; y < bitmap.GetHeight(); y++)
        for (int x = 0; x < bitmap.GetWidth(); x++)
            seen.push_back(At(bitmap, x, y));
    std::sort(seen.begin(), seen.end());
    seen.erase(std::unique(seen.begin(), seen.end()), seen.end());
    return seen;
}

TEST(PictureActs, ModesReduceThePixelsForGood)
{
    const auto pImage = MakePicture(64, 48);
    pImage->Activate();
    ChangeRect(*pImage, {0, 0, 10, 10}, 0);
    PushRect(*pImage, 0, 0, 64, 48, 22);
    ChangeRect(*pImage, {0, 0, 10, 10}, 100);
    SettleHistory(*pImage);
    SelectTriangle(*pImage, {5, 5, 30, 30});
    const LBitmapBase rgb = pImage->m_Bitmap;
    const auto Colors = [&] { return ColorsOf(pImage->m_Bitmap); };
    const struct {
        int nMode, nBits, nColors;
        bool bPalette;
        std::uint32_t dwFlags;
    } c_aModes[] = {{MODE_256COLORS, 8, 256, true, CRF_OPTIMIZEDPALETTE | CRF_NODITHER},
                    {MODE_16COLORS, 4, 16, true, CRF_FIXEDPALETTE | CRF_ERRORDIFFUSION},
                    {MODE_GRAY, 8, 256, false, 0},
                    {MODE_BITMAP, 1, 2, false, 0}};
    for (const auto& mode : c_aModes) {
        ChangeColorMode(*pImage, mode.nMode, mode.dwFlags);
        EXPECT_EQ(pImage->m_nColorMode, mode.nMode);
        EXPECT_EQ(pImage->m_nBitsPerPixel, mode.nBits);
        EXPECT_EQ(g_nColors, mode.nColors);
        EXPECT_EQ(pImage->m_bPaletteMode, mode.bPalette);
        ASSERT_TRUE(pImage->m_pPalette);
        EXPECT_EQ(g_pPalette, pImage->m_pPalette.get());
        EXPECT_EQ(static_cast<int>(pImage->m_pPalette->size()), mode.nColors);
        EXPECT_EQ(pImage->m_Bitmap.GetBitsPerPixel(), 24);
        EXPECT_TRUE(IsSamePicture(pImage->m_Bitmap, pImage->m_BaseBitmap));
        EXPECT_LE(static_cast<int>(Colors().size()), mode.nColors);
        for (const COLORREF cr : Colors())
            ASSERT_EQ(SnapToPalette(cr, *pImage->m_pPalette), cr);
        EXPECT_TRUE(pImage->m_bSelection && pImage->m_pFloatMask && !pImage->m_bFloating);
        EXPECT_EQ(At(pImage->m_FloatBitmap, 1, 20), At(pImage->m_Bitmap, 6, 25)) << "the float follows";
        if (mode.bPalette) {
            EXPECT_EQ(pImage->m_dwColorResFlags, mode.dwFlags);
        }
    }
    EXPECT_EQ(Colors(), (std::vector<COLORREF>{Rgb(0, 0, 0), Rgb(255, 255, 255)}));
    ChangeColorMode(*pImage, MODE_RGB);
    EXPECT_EQ(g_nColors, 2 << 23);
    EXPECT_FALSE(pImage->m_pPalette);
    EXPECT_EQ(g_pPalette, nullptr);
    EXPECT_EQ(Colors().size(), 2u) << "what was reduced stays so";

    // Undo restores older pixels in full, and leaves the mode.
    UndoCommand(*pImage); // the selection
    UndoCommand(*pImage); // the stroke
    LBitmapBase older = rgb;
    for (int y = 0; y < 10; y++)
        for (int x = 0; x < 30; x++)
            older.WriteRow(y)[x] = static_cast<std::uint8_t>(older.Row(y)[x] - 100);
    EXPECT_TRUE(IsSamePicture(pImage->m_Bitmap, older));
    EXPECT_EQ(pImage->m_nColorMode, MODE_RGB);
    CPaintImage::Deactivate();
}

TEST(PictureActs, WithoutMemoryForTheNewSizeThePictureStaysAsItWas)
{
#ifdef __SANITIZE_ADDRESS__
    GTEST_SKIP() << "the sanitizer takes no bound on its addresses";
#endif
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(
        {
            const auto pImage = MakePicture(30, 20);
            ChangeRect(*pImage, {0, 0, 5, 5}, 1);
            PushRect(*pImage, 0, 0, 5, 5, 22);
            UndoCommand(*pImage);
            const std::uint64_t nBefore = HashOf(*pImage);
            const auto rows = HistoryRows(*pImage);
            rlimit limit{};
            getrlimit(RLIMIT_AS, &limit);
            limit.rlim_cur = std::size_t{2} << 30; // the picture wanted takes more
            setrlimit(RLIMIT_AS, &limit);
            int nCaught = 0;
            for (const auto act : {+[](CPaintImage& image) { ResizePicture(image, 40000, 40000, SIZE_NEAREST); },
                                   +[](CPaintImage& image) { ResizeCanvas(image, 40000, 40000, 4); }}) {
                try {
                    act(*pImage);
                } catch (const std::bad_alloc&) {
                    nCaught++;
                }
            }
            const bool bSame = HashOf(*pImage) == nBefore && HistoryRows(*pImage).size() == rows.size() && CanRedo(*pImage);
            std::exit(nCaught == 2 && bSame ? 0 : nCaught == 2 ? 1 : 2);
        },
        testing::ExitedWithCode(0), "");
}
