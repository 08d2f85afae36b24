// The crop tool, driven by its events.
#include "tools/ToolTable.h"
#include "tools/ToolTestKit.h"

#include <gtest/gtest.h>

using namespace kestrune;
using namespace kestrune::test;

namespace {

class CropToolTest : public testing::Test {
protected:
    CropToolTest() { view.Use(TOOL_CROP); }
    ~CropToolTest() override
    {
        g_nCurrentTool = TOOL_RECT_SELECT;
        g_nCurrentToolCommand = 1001;
    }
    const CRect& Rect() const { return view.m_image.m_rcCrop; }
    int CursorAt(CPoint pt)
    {
        view.Tool().OnSetCursor(view, view.ImageToClient(pt));
        return view.m_nCursor;
    }

    CPictureView view{120, 90};
};

} // namespace

TEST_F(CropToolTest, TheRectangleIsDrawnMovedAndPulledByItsSides)
{
    view.Drag({70, 60}, {20, 10}); // from the far corner
    EXPECT_EQ(Rect(), (CRect{20, 10, 70, 60}));
    EXPECT_EQ(view.m_overlay.aHandles.size(), 8u);
    EXPECT_FALSE(view.m_overlay.aShades.empty());
    view.Drag({40, 30}, {45, 50});
    EXPECT_EQ(Rect(), (CRect{25, 30, 75, 80}));
    view.Drag({45, 50}, {300, -50}); // stays inside as a whole
    EXPECT_EQ(Rect(), (CRect{70, 0, 120, 50}));
    view.Drag({71, 20}, {61, 5}); // the left side, from a pixel beside it
    EXPECT_EQ(Rect(), (CRect{60, 0, 120, 50}));
    view.Drag({60, 50}, {50, 60});
    EXPECT_EQ(Rect(), (CRect{50, 0, 120, 60}));
    view.Drag({80, 60}, {90, 40});
    EXPECT_EQ(Rect(), (CRect{50, 0, 120, 40}));
    view.Drag({50, 20}, {130, 20}); // onto the other side: nothing is left, the rectangle goes
    EXPECT_FALSE(view.m_image.m_bCropActive);
    EXPECT_TRUE(view.m_overlay.IsEmpty());
    view.Drag({20, 20}, {60, 60});
    view.Drag({20, 40}, {90, 40}); // a side may cross the other
    EXPECT_EQ(Rect(), (CRect{60, 20, 90, 60}));
    EXPECT_EQ(view.m_image.m_UndoList.size(), 1u);
}

TEST_F(CropToolTest, CursorsTellWhatAPressWouldDo)
{
    EXPECT_EQ(CursorAt({5, 5}), 162);
    view.Drag({20, 10}, {70, 60});
    EXPECT_EQ(CursorAt({5, 5}), 162);
    EXPECT_EQ(CursorAt({20, 10}), 176);
    EXPECT_EQ(CursorAt({70, 60}), 176);
    EXPECT_EQ(CursorAt({72, 30}), 163);
    EXPECT_EQ(CursorAt({40, 10}), 163);
    EXPECT_EQ(CursorAt({45, 35}), 15024);
}

TEST_F(CropToolTest, DoubleClickAndEnterCrop)
{
    const LBitmapBase picture = view.m_image.m_Bitmap;
    const std::vector<std::uint8_t> before = BytesOfBitmap(picture);
    for (const bool bKey : {false, true}) {
        view.Select({0, 0, 50, 50});
        view.Drag({20, 10}, {70, 60});
        if (bKey)
            EXPECT_TRUE(view.Key(VK_RETURN));
        else
            view.DoubleClick({40, 30});
        EXPECT_EQ(view.m_image.m_nWidth, 50);
        EXPECT_EQ(view.m_image.m_nHeight, 50);
        EXPECT_EQ(view.m_image.m_Bitmap.GetPixelColor(0, 0), picture.GetPixelColor(20, 10));
        EXPECT_EQ(view.NewestKind(), 39u);
        EXPECT_FALSE(view.m_image.m_bCropActive || view.m_image.m_bSelection || view.m_image.m_bFloatReady);
        EXPECT_TRUE(view.m_overlay.IsEmpty());
        UndoCommand(view.m_image);
        EXPECT_EQ(BytesOfBitmap(view.m_image.m_Bitmap), before);
    }
}

TEST_F(CropToolTest, EscapeAndAClickOutsideDropTheRectangle)
{
    view.Drag({20, 10}, {70, 60});
    EXPECT_TRUE(view.Key(VK_ESCAPE));
    EXPECT_FALSE(view.m_image.m_bCropActive);
    EXPECT_FALSE(view.Key(VK_ESCAPE));
    view.Drag({20, 10}, {70, 60});
    view.DoubleClick({100, 80});
    EXPECT_FALSE(view.m_image.m_bCropActive);
    EXPECT_EQ(view.m_image.m_nWidth, 120);
    EXPECT_FALSE(view.Key(VK_RETURN));
    // The hand may come in between, and a smaller picture under the rectangle.
    view.Drag({20, 10}, {70, 60});
    view.Use(TOOL_HAND);
    EXPECT_TRUE(view.m_overlay.IsEmpty());
    view.Use(TOOL_CROP);
    EXPECT_FALSE(view.m_overlay.IsEmpty());
    view.m_image.m_rcCrop = {500, 500, 600, 600};
    EXPECT_TRUE(view.Key(VK_RETURN));
    EXPECT_EQ(view.m_image.m_nWidth, 120);
}
