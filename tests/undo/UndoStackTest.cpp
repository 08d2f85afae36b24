#include "UndoTestImage.h"

#include "undo/UndoKinds.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

using namespace kestrune;
using namespace kestrune::test;

namespace {

/// A list box as a window would keep it, told of rows one at a time.
class CRowSite final : public CImageSite {
public:
    void SyncHistoryBox(int nMode) override
    {
        switch (nMode) {
        case HISTORY_ROW_ADDED:
            m_rows.resize(std::min<std::size_t>(m_rows.size(), m_nCurrent + 1));
            m_rows.push_back(m_pImage->m_UndoList.front()->nKind);
            m_nCurrent = static_cast<int>(m_rows.size()) - 1;
            break;
        case HISTORY_ROW_TRIMMED:
            m_rows.erase(m_rows.begin());
            m_nCurrent--;
            break;
        case HISTORY_ROW_UP:
            m_nCurrent--;
            break;
        case HISTORY_ROW_DOWN:
            m_nCurrent++;
            break;
        }
    }
    void SizeChanged() override { m_nSizes++; }

    CPaintImage* m_pImage = nullptr;
    std::vector<std::uint32_t> m_rows;
    int m_nCurrent = -1;
    int m_nSizes = 0;
};

std::vector<std::uint32_t> KindsOf(const CPaintImage& image)
{
    std::vector<std::uint32_t> kinds;
    for (const HistoryRow& row : HistoryRows(image))
        kinds.push_back(row.nKind);
    return kinds;
}

void SelectRect(CPaintImage& image, const CRect& rc)
{
    PushMask(image, 8);
    std::memset(image.m_pMask.get(), 0, static_cast<std::size_t>(image.m_nWidth) * image.m_nHeight);
    for (int y = rc.top; y < rc.bottom; y++)
        std::memset(image.m_pMask.get() + static_cast<std::size_t>(y) * image.m_nWidth + rc.left, 255, rc.Width());
    image.InvalidateMaskBounds();
    CRect b;
    image.m_BaseBitmap.Copy(image.m_Bitmap);
    if (!image.GetMaskBounds(b.left, b.top, b.right, b.bottom)) {
        image.ReleaseFloat();
        image.m_bSelection = false;
        return;
    }
    image.m_nFloatX = b.left;
    image.m_nFloatY = b.top;
    image.m_nFloatW = b.Width();
    image.m_nFloatH = b.Height();
    image.m_rcFloat = image.m_rcFloatStart = b;
    image.CaptureFloat(b.left, b.top, b.Width(), b.Height());
    image.m_bFloatReady = image.m_bSelection = true;
}

} // namespace

TEST(UndoStack, HistoryBoxAndListsAgreeThroughLimitUndoAndNewActs)
{
    CRowSite site;
    CPaintImage image;
    site.m_pImage = &image;
    image.SetSite(&site);
    image.Create(20, 20, FILL_WHITE, COLOR_RGB);
    RecordFirstState(image, UNDO_NEW);
    EXPECT_EQ(KindsOf(image), (std::vector<std::uint32_t>{2}));
    EXPECT_EQ(image.m_nHistoryIndex, 0);
    EXPECT_FALSE(CanUndo(image)); // the origin is never undone
    UndoCommand(image);
    EXPECT_EQ(image.m_UndoList.size(), 1u);

    const auto Check = [&](std::size_t nRows, int nCurrent) {
        EXPECT_EQ(site.m_rows, KindsOf(image));
        EXPECT_EQ(site.m_rows.size(), nRows);
        EXPECT_EQ(site.m_nCurrent, nCurrent);
        EXPECT_EQ(image.m_nHistoryIndex, nCurrent);
    };
    for (std::uint32_t i = 0; i < 20; i++) {
        PushRect(image, 0, 0, 5, 5, 21 + i % 13);
        ChangeRect(image, {0, 0, 5, 5}, 1);
    }
    Check(21, 20); // one more than the limit: it is applied before the push
    PushRect(image, 0, 0, 5, 5, 46);
    Check(21, 20);
    EXPECT_EQ(site.m_rows.front(), 21u); // the first state has gone
    UndoCommand(image);
    UndoCommand(image);
    Check(21, 18);
    EXPECT_TRUE(HistoryRows(image)[19].bUndone);
    EXPECT_FALSE(HistoryRows(image)[18].bUndone);
    RedoCommand(image);
    Check(21, 19);
    PushRect(image, 0, 0, 5, 5, 47); // a new act takes what redo would have brought back
    Check(21, 20);
    EXPECT_FALSE(CanRedo(image));
    for (int i = 0; i < 30; i++)
        UndoCommand(image);
    Check(21, 0); // one step short of the oldest kept record
    image.SetSite(nullptr);
}

TEST(UndoStack, LimitZeroKeepsAllAndFreeRecordsCountsBack)
{
    const HistoryLimitGuard limit(0);
    const auto pImage = MakePicture(10, 10);
    for (int i = 0; i < 100; i++)
        PushRect(*pImage, 0, 0, 10, 10, 22);
    EXPECT_EQ(pImage->m_UndoList.size(), 101u);
    EXPECT_EQ(pImage->m_nUndoBytes, 101u * (300 + 24));
    EXPECT_EQ(pImage->m_nUndoDepth, 101);
    Undo(*pImage);
    FreeRecords(*pImage, DIRECTION_UNDO, pImage->m_UndoList);
    FreeRecords(*pImage, DIRECTION_REDO, pImage->m_RedoList);
    EXPECT_EQ(pImage->m_nUndoBytes, 0u);
}

TEST(UndoStack, JumpStepsBothWays)
{
    const HistoryLimitGuard limit(0);
    const auto pImage = MakePicture(30, 20);
    std::vector<std::uint64_t> states = {HashOf(*pImage)};
    for (int i = 0; i < 9; i++) {
        PushRect(*pImage, i, i, i + 9, i + 9, 22);
        ChangeRect(*pImage, {i, i, i + 9, i + 9}, i + 1);
        states.push_back(HashOf(*pImage));
    }
    for (int nRow : {4, 8, 0, 9, 9, 1, -1, 10, 2}) {
        const int nBefore = pImage->m_nHistoryIndex;
        JumpToHistory(*pImage, nRow);
        EXPECT_EQ(pImage->m_nHistoryIndex, nRow < 0 || nRow > 9 ? nBefore : nRow);
        EXPECT_EQ(HashOf(*pImage), states[pImage->m_nHistoryIndex]);
    }
}

TEST(UndoStack, GroupsAreMarkedOnceHoweverTheyNest)
{
    const auto pImage = MakePicture(10, 10);
    const int nDepth = pImage->m_nUndoDepth;
    BeginGroup(*pImage, 46);
    BeginGroup(*pImage, 47);
    PushRect(*pImage, 0, 0, 3, 3, 22);
    EndGroup(*pImage);
    EXPECT_EQ(pImage->m_nGroupKind, 46u);
    EndGroup(*pImage);
    EndGroup(*pImage); // one too many
    EXPECT_EQ(KindsOf(*pImage), (std::vector<std::uint32_t>{2, 46, 22, 46}));
    EXPECT_TRUE(pImage->m_UndoList.front()->bGroupMark);
    EXPECT_EQ(pImage->m_UndoList.front()->nBytes, 24u);
    EXPECT_EQ(pImage->m_nUndoDepth, nDepth);
    EXPECT_EQ(pImage->m_nGroupKind, 0u);
    for (int i = 0; i < 3; i++)
        UndoCommand(*pImage);
    EXPECT_FALSE(CanUndo(*pImage));
}

TEST(UndoKinds, LookUp)
{
    EXPECT_EQ(FindUndoKind(22).name, "[브러시] 브러시 도구");
    EXPECT_EQ(FindUndoKind(22).nGroup, 9);
    EXPECT_EQ(FindUndoKind(90).name, "[필터] 디지털카메라 화질향상");
    EXPECT_EQ(FindUndoKind(91).nGroup, 41);
    EXPECT_EQ(FindUndoKind(92).name, "");
    EXPECT_EQ(FindUndoKind(92).nGroup, 0);
}

TEST(RectRecord, ClampsAndFollowsTheFloat)
{
    const auto pImage = MakePicture(40, 30);
    const std::uint64_t nStart = HashOf(*pImage);
    PushRect(*pImage, -5, -5, 1000, 1000, 46);
    EXPECT_EQ(pImage->m_UndoList.front()->nBytes, 40u * 30 * 3 + 24);
    PushRect(*pImage, 50, 10, -3, 5, 46); // nothing of it is left
    EXPECT_EQ(pImage->m_UndoList.front()->nBytes, 24u);
    ChangeRect(*pImage, {0, 0, 40, 30}, 3);
    UndoCommand(*pImage);
    UndoCommand(*pImage);
    EXPECT_EQ(HashOf(*pImage), nStart);

    SelectRect(*pImage, {10, 5, 20, 15});
    PushRect(*pImage, 0, 0, 40, 30, 22);
    EXPECT_EQ(pImage->m_UndoList.front()->nBytes, 10u * 10 * 3 + 24);
    const std::uint64_t nSelected = HashOf(*pImage);
    ChangeRect(*pImage, {10, 5, 20, 15}, 9);
    UndoCommand(*pImage);
    EXPECT_EQ(HashOf(*pImage), nSelected);
    EXPECT_EQ(pImage->m_FloatBitmap.GetPixelColor(0, 0), pImage->m_Bitmap.GetPixelColor(10, 5)); // captured anew
}

TEST(MaskRecord, UndoToNothingSelectedAndBack)
{
    const auto pImage = MakePicture(40, 30);
    SelectRect(*pImage, {3, 4, 13, 9});
    const std::uint64_t nSelected = HashOf(*pImage);
    UndoCommand(*pImage);
    EXPECT_TRUE(pImage->m_bMaskEmpty);
    EXPECT_TRUE(pImage->m_bMaskBoundsValid);
    EXPECT_TRUE(pImage->m_bSelection); // kept on purpose; m_bMaskEmpty tells the truth
    EXPECT_EQ(pImage->m_rcFloat, (CRect{0, 0, 40, 30}));
    EXPECT_FALSE(pImage->m_pFloatMask);
    EXPECT_FALSE(pImage->m_FloatBitmap.IsAllocated());
    RedoCommand(*pImage);
    EXPECT_EQ(HashOf(*pImage), nSelected);
    EXPECT_EQ(pImage->m_rcFloat, (CRect{3, 4, 13, 9}));
    EXPECT_EQ(pImage->m_FloatBitmap.GetWidth(), 10);
    EXPECT_TRUE(pImage->m_pFloatMask);
    EXPECT_TRUE(pImage->IsInMask(12, 8));
    EXPECT_FALSE(pImage->IsInMask(13, 8));
}

// The mask's memory of a new picture holds whatever was there. No record may let it show.
TEST(MaskRecord, UnwrittenMaskReadsAsEmpty)
{
    const auto pImage = MakePicture(40, 30);
    std::memset(pImage->m_pMask.get(), 0xCC, 40 * 30);
    ASSERT_TRUE(pImage->m_bMaskEmpty && pImage->m_bMaskBoundsValid);
    PushMask(*pImage, 13);
    int x1, y1, x2, y2;
    EXPECT_FALSE(pImage->GetMaskBounds(x1, y1, x2, y2));

    pImage->AllocateMask();
    std::memset(pImage->m_pMask.get(), 0xCC, 40 * 30);
    PushSelection(*pImage, UNDO_PASTE);
    pImage->AllocateMask();
    std::memset(pImage->m_pMask.get(), 0xCC, 40 * 30);
    UndoCommand(*pImage);
    EXPECT_TRUE(
        std::all_of(pImage->m_pMask.get(), pImage->m_pMask.get() + 40 * 30, [](std::uint8_t b) { return b == 0; }));
    EXPECT_FALSE(pImage->GetMaskBounds(x1, y1, x2, y2));
}

TEST(WholeRecord, RestoresSizeAndLosesTheSelectionBothWays)
{
    CRowSite site;
    const auto pImage = MakePicture(40, 30);
    site.m_pImage = pImage.get();
    const std::uint64_t nStart = HashOf(*pImage);
    SelectRect(*pImage, {3, 4, 13, 9});
    PushWhole(*pImage, UNDO_CROP);
    pImage->m_Bitmap.Trim(5, 6, 20, 10);
    pImage->m_BaseBitmap.Copy(pImage->m_Bitmap);
    pImage->m_nWidth = 20;
    pImage->m_nHeight = 10;
    pImage->AllocateMask();
    pImage->ReleaseFloat();
    const std::uint64_t nCropped = HashOf(*pImage);
    pImage->SetSite(&site);
    UndoCommand(*pImage);
    EXPECT_EQ(site.m_nSizes, 1);
    EXPECT_FALSE(pImage->m_bSelection);
    EXPECT_EQ(HashOf(*pImage), nStart); // as it was, but for the selection
    RedoCommand(*pImage);
    EXPECT_EQ(HashOf(*pImage), nCropped);
    EXPECT_TRUE(IsSamePicture(pImage->m_Bitmap, pImage->m_BaseBitmap));
    pImage->SetSite(nullptr);
}

TEST(SelectionRecord, FloatAndMasksComeBack)
{
    const auto pImage = MakePicture(40, 30);
    SelectRect(*pImage, {3, 4, 13, 9});
    const std::uint64_t nBefore = HashOf(*pImage);
    const COLORREF crFloat = pImage->m_FloatBitmap.GetPixelColor(1, 1);
    PushSelection(*pImage, UNDO_MOVE_SELECTION);
    pImage->CutFloatHole();
    pImage->MoveMask(10, 5);
    pImage->m_rcFloat.Offset(10, 5);
    pImage->m_nFloatX += 10;
    pImage->m_nFloatY += 5;
    pImage->m_bFloating = true;
    pImage->CompositeFloat(10, 5, pImage->m_nFloatW);
    const std::uint64_t nAfter = HashOf(*pImage);
    ASSERT_NE(nAfter, nBefore);
    for (int i = 0; i < 2; i++) {
        UndoCommand(*pImage);
        EXPECT_EQ(HashOf(*pImage), nBefore);
        EXPECT_EQ(pImage->m_rcFloat, (CRect{3, 4, 13, 9}));
        EXPECT_EQ(pImage->m_FloatBitmap.GetPixelColor(1, 1), crFloat);
        EXPECT_TRUE(pImage->m_pFloatMask);
        EXPECT_FALSE(pImage->m_bFloating);
        RedoCommand(*pImage);
        EXPECT_EQ(HashOf(*pImage), nAfter);
        EXPECT_EQ(pImage->m_rcFloat, (CRect{13, 9, 23, 14}));
    }
}

// ---- A thousand acts of all kinds, back to the start and forward to the end.

namespace {

class CRandomActs {
public:
    CRandomActs(CPaintImage& image, unsigned nSeed)
        : m_image(image)
        , m_random(nSeed)
    {
    }

    void Act()
    {
        switch (Pick(12)) {
        case 0:
            return Select();
        case 1:
            return Move();
        case 2:
            return Pick(6) ? Paint(true) : Resize();
        default:
            return Paint(Pick(2) == 0);
        }
    }

private:
    int Pick(int n) { return static_cast<int>(m_random() % static_cast<unsigned>(n)); }
    CRect PickRect(int nMost)
    {
        const int w = 1 + Pick(std::min(nMost, m_image.m_nWidth)), h = 1 + Pick(std::min(nMost, m_image.m_nHeight));
        const int x = Pick(m_image.m_nWidth - w + 1), y = Pick(m_image.m_nHeight - h + 1);
        return {x, y, x + w, y + h};
    }

    /// A stroke or a filter: records the whole picture or just what it changes.
    void Paint(bool bWhole)
    {
        CRect rc = PickRect(Pick(8) ? 60 : 600);
        if (m_image.m_pFloatMask) // what a record can hold while something is selected
            rc = Intersect(rc, {m_image.m_nMaskX1, m_image.m_nMaskY1, m_image.m_nMaskX2, m_image.m_nMaskY2});
        if (bWhole)
            PushRect(m_image, 0, 0, m_image.m_nWidth, m_image.m_nHeight, UNDO_BRUSH);
        else
            PushRect(m_image, rc.left, rc.top, rc.right, rc.bottom, UNDO_BRUSH);
        ChangeRect(m_image, rc, 1 + Pick(255));
        if (m_image.m_pFloatMask)
            m_image.CaptureFloat(m_image.m_nFloatX, m_image.m_nFloatY, m_image.m_nFloatW, m_image.m_nFloatH);
    }
    void Select() { SelectRect(m_image, Pick(3) ? PickRect(300) : CRect{}); }
    void Move()
    {
        if (!m_image.m_pFloatMask)
            return Select();
        PushSelection(m_image, UNDO_MOVE_SELECTION);
        ChangeRect(m_image, PickRect(100), 5);
    }
    void Resize()
    {
        PushWhole(m_image, UNDO_RESIZE);
        m_image.m_Bitmap.Size(500 + Pick(400), 300 + Pick(400), SIZE_NEAREST);
        m_image.m_BaseBitmap.Copy(m_image.m_Bitmap);
        m_image.m_nWidth = m_image.m_Bitmap.GetWidth();
        m_image.m_nHeight = m_image.m_Bitmap.GetHeight();
        m_image.AllocateMask();
        m_image.ReleaseFloat();
        m_image.m_bSelection = false;
    }

    CPaintImage& m_image;
    std::mt19937 m_random;
};

} // namespace

TEST(History, AThousandRandomActsUndoToTheStartAndRedoToTheEnd)
{
    const HistoryLimitGuard limit(0);
    const auto pImage = MakePicture(700, 500);
    const std::uint64_t nStart = HashOf(*pImage);
    CRandomActs acts(*pImage, 20);
    std::mt19937 random(3);
    for (int i = 0; i < 1000; i++) {
        acts.Act();
        if (i % 50 == 49) // a detour that leaves thinned and exchanged records mixed
            for (unsigned n = 1 + random() % 20, k = 0; k < 2 * n; k++)
                k < n ? UndoCommand(*pImage) : RedoCommand(*pImage);
    }
    const std::uint64_t nEnd = HashOf(*pImage);
    ASSERT_EQ(pImage->m_UndoList.size(), 1001u);
    for (int nRound = 0; nRound < 2; nRound++) {
        while (CanUndo(*pImage))
            UndoCommand(*pImage);
        EXPECT_EQ(HashOf(*pImage), nStart);
        EXPECT_TRUE(IsSamePicture(pImage->m_Bitmap, pImage->m_BaseBitmap));
        while (CanRedo(*pImage))
            RedoCommand(*pImage);
        EXPECT_EQ(HashOf(*pImage), nEnd);
        EXPECT_TRUE(IsSamePicture(pImage->m_Bitmap, pImage->m_BaseBitmap));
    }
}
