#include "UndoTestImage.h"

#include "undo/PixelSnapshot.h"

#include <gtest/gtest.h>
#include <malloc.h>

using namespace kestrune;
using namespace kestrune::test;

namespace {

#ifdef __SANITIZE_ADDRESS__
constexpr bool c_bHeapCounts = false; // the sanitizer has a heap of its own
#else
constexpr bool c_bHeapCounts = true;
#endif

std::size_t HeapBytes()
{
    const auto info = mallinfo2();
    return info.uordblks + info.hblkhd;
}

} // namespace

// Rectangles of every relation to bands, exchanged like a plain copy of the pixels would be.
TEST(PixelSnapshot, ExchangesExactlyTheRectangle)
{
    const auto pImage = MakePicture(700, 500); // bands of 64 rows
    const int nBand = pImage->m_Bitmap.Bands().BandRows();
    ASSERT_LT(nBand * 3, 500);
    const CRect rects[] = {{0, 0, 700, 500},        {0, 0, 700, nBand}, {0, nBand, 700, nBand * 3},
                           {1, 0, 700, 500},        {0, 1, 699, 499},   {100, nBand - 1, 600, nBand * 2 + 1},
                           {300, 200, 310, 230},    {0, 499, 700, 500}, {350, 0, 700, 500},
                           {0, nBand, 0, nBand * 2}};
    for (const CRect& rc : rects) {
        for (bool bThin : {false, true}) {
            LBitmapBase bitmap = pImage->m_Bitmap;
            CPixelSnapshot snapshot(bitmap, rc);
            for (int y = 0; y < 500; y += 3) // the act changes pixels inside and outside, and leaves whole bands alone
                if (y / nBand != 1)
                    for (int x = 0; x < 2100; x += 7)
                        bitmap.WriteRow(y)[x] ^= 0x55;
            LBitmapBase expected = bitmap;
            for (int y = rc.top; y < rc.bottom; y++)
                std::memcpy(expected.WriteRow(y) + rc.left * 3, pImage->m_Bitmap.Row(y) + rc.left * 3, rc.Width() * 3);
            const LBitmapBase after = bitmap;
            if (bThin)
                snapshot.StartThinning(bitmap);
            snapshot.Swap(bitmap);
            EXPECT_TRUE(IsSamePicture(bitmap, expected)) << rc.left << ' ' << rc.top << " thin " << bThin;
            snapshot.Swap(bitmap);
            EXPECT_TRUE(IsSamePicture(bitmap, after)) << rc.left << ' ' << rc.top << " thin " << bThin;
            LBitmapBase state = bitmap;
            snapshot.Pin(state);
            EXPECT_TRUE(IsSamePicture(state, expected));
            snapshot.Swap(bitmap);
            EXPECT_TRUE(IsSamePicture(bitmap, expected));
        }
    }
}

TEST(PixelSnapshot, ABitmapOfAnotherShapeIsLeftAlone)
{
    LBitmapBase big, small;
    big.Create(700, 500, 24);
    big.Fill(0);
    small.Create(300, 100, 24);
    small.Fill(Rgb(1, 2, 3));
    CPixelSnapshot shared(big, {0, 0, 700, 500}), packed(big, {250, 90, 350, 110});
    shared.Swap(small);
    EXPECT_EQ(small.GetPixelColor(299, 99), Rgb(1, 2, 3));
    packed.Swap(small); // the part that both have
    EXPECT_EQ(small.GetPixelColor(299, 99), 0u);
    EXPECT_EQ(small.GetPixelColor(249, 99), Rgb(1, 2, 3));
}

// Steps that change 1 % of a picture cost about that, whatever the shape: a block, rows, a slanting stroke.
TEST(History, TwentyWholePictureRecordsCostWhatTheStepsChanged)
{
    const HistoryLimitGuard limit(0); // so that all steps can be undone
    constexpr int nWidth = 4000, nHeight = 3000;
    constexpr double fPicture = nWidth * 3.0 * nHeight;
    for (int nShape = 0; nShape < 3; nShape++) {
        const auto pImage = MakePicture(nWidth, nHeight);
        const std::uint64_t nStart = HashOf(*pImage);
        const std::size_t nHeap = HeapBytes();
        for (int i = 0; i < 20; i++) {
            PushRect(*pImage, 0, 0, nWidth, nHeight, 22);
            if (nShape == 0)
                ChangeRect(*pImage, {i * 170, i * 130, i * 170 + 400, i * 130 + 300}, 1);
            else if (nShape == 1)
                ChangeRect(*pImage, {0, i * 140, nWidth, i * 140 + 30}, 1);
            else
                for (int y = 0; y < nHeight; y += 10) // 40 pixels wide from top to bottom
                    ChangeRect(*pImage, {y + i * 40, y, y + i * 40 + 40, y + 10}, 1);
        }
        if (nShape == 2) { // the newest record shares every band that the stroke touched, until the act is said to have ended
            EXPECT_GT(HistoryBytes(*pImage) / fPicture, 0.6);
        }
        SettleHistory(*pImage);
        const double fCounted = HistoryBytes(*pImage) / fPicture, fHeap = (HeapBytes() - nHeap) / fPicture;
        EXPECT_LE(fCounted, 0.6) << nShape;
        if (c_bHeapCounts) {
            EXPECT_NEAR(fHeap, fCounted, 0.02) << nShape;
        }
        PushRect(*pImage, 0, 0, nWidth, nHeight, 22);
        EXPECT_LE(HistoryBytes(*pImage) / fPicture, 0.6) << nShape;
        while (CanUndo(*pImage))
            UndoCommand(*pImage);
        EXPECT_EQ(HashOf(*pImage), nStart) << nShape;
    }
}

// A change of colour mode makes no record. Undoing across it brings back the older picture in full.
TEST(History, PinnedRecordsRestoreAPictureThatChangedWithoutARecord)
{
    const auto pImage = MakePicture(700, 500);
    std::vector<LBitmapBase> states = {pImage->m_Bitmap};
    for (int i = 0; i < 4; i++) {
        PushRect(*pImage, 0, 0, 700, 500, 22);
        ChangeRect(*pImage, {i * 50, i * 100, i * 50 + 70, i * 100 + 60}, 1);
        states.push_back(pImage->m_Bitmap);
    }
    UndoCommand(*pImage);
    PinHistory(*pImage);
    pImage->m_Bitmap.Fill(Rgb(9, 9, 9));
    pImage->m_BaseBitmap.Copy(pImage->m_Bitmap);
    UndoCommand(*pImage);
    EXPECT_TRUE(IsSamePicture(pImage->m_Bitmap, states[2]));
    UndoCommand(*pImage);
    EXPECT_TRUE(IsSamePicture(pImage->m_Bitmap, states[1]));
    RedoCommand(*pImage);
    EXPECT_TRUE(IsSamePicture(pImage->m_Bitmap, states[2]));
    RedoCommand(*pImage);
    EXPECT_EQ(pImage->m_Bitmap.GetPixelColor(350, 250), Rgb(9, 9, 9));
    RedoCommand(*pImage);
    EXPECT_TRUE(IsSamePicture(pImage->m_Bitmap, states[4]));
}
