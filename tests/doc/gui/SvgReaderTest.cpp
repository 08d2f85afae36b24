// SVG through the loader: drawn at its own size over white, and hostile drawings refused.

#include "doc/gui/SvgReader.h"

#include "base/Log.h"
#include "doc/files/ImageFile.h"

#include <QByteArray>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <fstream>

namespace kestrune {

namespace {

int Load(const QByteArray& svg, LBitmapBase& bitmap)
{
    RegisterSvgReader();
    const auto* p = reinterpret_cast<const std::uint8_t*>(svg.constData());
    return DecodeImage({p, static_cast<std::size_t>(svg.size())}, "svg", bitmap);
}

const QByteArray c_head = "<?xml version='1.0'?>\n<svg xmlns='http://www.w3.org/2000/svg' xmlns:xlink='http://www.w3.org/1999/xlink' ";

TEST(SvgReader, DrawsAtItsOwnSizeOverWhite)
{
    LBitmapBase bitmap;
    ASSERT_EQ(Load(c_head + "width='3000' height='20'><rect width='1500' height='20' fill='#ff0000'/>"
                            "<rect x='2900' width='50' height='20' fill='#0000ff' fill-opacity='0.5'/></svg>", bitmap), IMG_SUCCESS);
    EXPECT_EQ(bitmap.GetWidth(), 3000) << "wider than one tile";
    EXPECT_EQ(bitmap.GetHeight(), 20);
    EXPECT_EQ(bitmap.GetBitsPerPixel(), 24);
    EXPECT_EQ(bitmap.GetPixelColor(100, 10), Rgb(255, 0, 0));
    EXPECT_EQ(bitmap.GetPixelColor(2000, 10), Rgb(255, 255, 255));
    EXPECT_NEAR(RedOf(bitmap.GetPixelColor(2920, 10)), 127, 2);
    EXPECT_EQ(BlueOf(bitmap.GetPixelColor(2920, 10)), 255);
}

TEST(SvgReader, UsesAndGradientsWithinTheFileWork)
{
    LBitmapBase bitmap;
    ASSERT_EQ(Load(c_head + "width='40' height='20'><defs><rect id='r' width='20' height='20' fill='#00ff00'/></defs>"
                            "<use xlink:href='#r' x='20'/></svg>", bitmap), IMG_SUCCESS);
    EXPECT_EQ(bitmap.GetPixelColor(30, 10), Rgb(0, 255, 0));
    EXPECT_EQ(bitmap.GetPixelColor(5, 10), Rgb(255, 255, 255));
}

TEST(SvgReader, ReadsNothingOutsideTheFile)
{
    const QTemporaryDir folder;
    const std::string strImage = folder.filePath(QStringLiteral("secret.bmp")).toStdString();
    LBitmapBase secret;
    secret.Create(10, 10, 24);
    secret.Fill(Rgb(1, 2, 3));
    ASSERT_EQ(secret.Save(strImage, 6, 24, 0), IMG_SUCCESS);
    LBitmapBase bitmap;
    for (const std::string& strLink : {strImage, "file://" + strImage}) {
        const QByteArray link = QByteArray::fromStdString(strLink);
        ASSERT_EQ(Load(c_head + "width='10' height='10'><image width='10' height='10' xlink:href='" + link + "'/></svg>", bitmap),
                  IMG_SUCCESS);
        EXPECT_EQ(bitmap.GetPixelColor(5, 5), Rgb(255, 255, 255)) << strLink;
    }
    const QByteArray clean = CleanSvg("<?xml-stylesheet href='a.css'?><svg xmlns:xlink='http://www.w3.org/1999/xlink'><script>x</script>"
                                      "<use xlink:href='http://x/y#z'/></svg>");
    EXPECT_FALSE(clean.isEmpty());
    for (const char* pszOut : {"a.css", "script", "http://x/y"})
        EXPECT_FALSE(clean.contains(pszOut)) << pszOut;
}

TEST(SvgReader, RefusesWhatCannotBeDrawnInTime)
{
    SetLogSink([](const std::string&) {});
    LBitmapBase bitmap;
    // Each group uses the one before ten times: ten to the twelfth rectangles.
    QByteArray repeats = c_head + "width='10' height='10'><defs><rect id='g0' width='1' height='1'/>";
    for (int i = 1; i <= 12; i++) {
        repeats += "<g id='g" + QByteArray::number(i) + "'>";
        for (int k = 0; k < 10; k++)
            repeats += "<use xlink:href='#g" + QByteArray::number(i - 1) + "'/>";
        repeats += "</g>";
    }
    EXPECT_EQ(Load(repeats + "</defs><use xlink:href='#g12'/></svg>", bitmap), IMG_ERROR_FILE_READ);
    EXPECT_EQ(Load(c_head + "width='9' height='9'><g id='a'><use xlink:href='#b'/></g><g id='b'><use xlink:href='#a'/></g></svg>", bitmap),
              IMG_ERROR_FILE_READ);
    EXPECT_EQ(Load(c_head + "width='9' height='9'><g id='a'><use xlink:href='#a'/><rect width='9' height='9'/></g></svg>", bitmap),
              IMG_SUCCESS) << "an element within itself is only left out";
    EXPECT_EQ(Load(c_head + "width='9' height='9'>" + QByteArray("<g>").repeated(100000), bitmap), IMG_ERROR_FILE_READ);
    EXPECT_EQ(Load(c_head + "width='1000000' height='1000000'/>", bitmap), IMG_ERROR_MEMORY);
    EXPECT_EQ(Load(c_head + "width='9' height='9'><rect", bitmap), IMG_ERROR_FILE_READ);
    EXPECT_EQ(Load("<svg", bitmap), IMG_ERROR_FILE_READ);
    EXPECT_EQ(Load(QByteArray("\x1f\x8b") + QByteArray(200, 'x'), bitmap), IMG_ERROR_FILE_READ);
    SetLogSink({});
}

} // namespace

} // namespace kestrune
