// Floats and the crop, through the real program.

#include "ScriptHarness.h"

#include <QFile>
#include <QImage>

namespace {

/// A picture of 90 x 90 in which no two neighbours are alike.
class CFloatScriptTest : public CScriptTest {
protected:
    CFloatScriptTest()
        : m_picture(90, 90, QImage::Format_RGB32)
    {
        for (int y = 0; y < 90; y++)
            for (int x = 0; x < 90; x++)
                m_picture.setPixel(x, y, qRgb(x * 2, y * 2, (x * 7 + y * 11) & 255));
        m_picture.save(Path("a.png"));
    }
    QImage Picture(const char* strName) const { return QImage(Path(strName)).convertToFormat(QImage::Format_RGB32); }

    QImage m_picture;
};

} // namespace

TEST_F(CFloatScriptTest, CropTakesTheRectangle)
{
    const QStringList out = Output("open a.png\ncommand 1004\npress 70 60\nmove 30 30\nrelease 20 10\nkeydown 13\nkeyup 13\nprint size\n"
                                   "dump image crop.ppm\nundo\nprint size\npress 5 5\nrelease 50 50\nkeydown 27\nkeyup 27\nkeydown 13\nkeyup 13\n"
                                   "print size\npress 10 20\nrelease 200 30\ndoubleclick 40 25\nprint size\nprint history\n");
    ASSERT_EQ(out.size(), 6);
    EXPECT_EQ(out[0], "50 50");
    EXPECT_EQ(Picture("crop.ppm"), m_picture.copy(20, 10, 50, 50));
    EXPECT_EQ(out.mid(1, 3), (QStringList{"90 90", "90 90", "80 10"}));
    EXPECT_TRUE(out.last().endsWith("이미지 자르기"));
}

TEST_F(CFloatScriptTest, WithoutASelectionTheTransformsAreOff)
{
    EXPECT_EQ(Output("open a.png\nprint command 30053\n"), QStringList{"disabled unchecked"});
}
