#include "ViewTestKit.h"

#include "base/Messages.h"
#include "view/Printing.h"

#include <QDir>
#include <QPrinter>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <cmath>

using namespace kestrune;
using namespace kestrune::test;

namespace {

constexpr int c_nDots = 144; ///< at which the page is read back

/// Fills the picture with a grid of flat colours, which survive any resampling in their middles.
void FillBlocks(LBitmapBase& bitmap, int nBlock)
{
    for (int y = 0; y < bitmap.GetHeight(); y++) {
        std::uint8_t* p = bitmap.WriteRow(y);
        for (int x = 0; x < bitmap.GetWidth(); x++, p += 3) {
            const int i = x / nBlock, j = y / nBlock;
            p[0] = static_cast<std::uint8_t>(i * 60 + 10);
            p[1] = static_cast<std::uint8_t>(j * 80 + 5);
            p[2] = static_cast<std::uint8_t>((i + j) % 2 * 200);
        }
    }
}

/// Prints through the view's command into a PDF and reads the page back with another program.
QImage PrintedPage(CPaintView& view)
{
    QTemporaryDir dir;
    const QString strPdf = dir.filePath("page.pdf");
    SetPrintDriver([&](QPrinter& printer) {
        printer.setOutputFormat(QPrinter::PdfFormat);
        printer.setOutputFileName(strPdf);
        printer.setPageSize(QPageSize(QPageSize::A4));
        printer.setPageMargins(QMarginsF(20, 10, 10, 10), QPageLayout::Millimeter); // uneven, to see where it lands
        return true;
    });
    EXPECT_TRUE(view.RunCommand(57607));
    SetPrintDriver({});
    QProcess::execute("pdftoppm", {"-r", QString::number(c_nDots), "-png", "-singlefile", strPdf, dir.filePath("page")});
    return QImage(dir.filePath("page.png")).convertToFormat(QImage::Format_RGB32);
}

void ExpectBlocks(const QImage& page, const LBitmapBase& bitmap, int nBlock, double fDotsPerPixel)
{
    ASSERT_NEAR(page.width(), 210 / 25.4 * c_nDots, 2);
    const QPointF centre((20 + 200) / 2.0 / 25.4 * c_nDots, 297 / 2.0 / 25.4 * c_nDots);
    const QPointF corner = centre - QPointF(bitmap.GetWidth(), bitmap.GetHeight()) * fDotsPerPixel / 2;
    for (int y = nBlock / 2; y < bitmap.GetHeight(); y += nBlock) {
        for (int x = nBlock / 2; x < bitmap.GetWidth(); x += nBlock) {
            const QPointF at = corner + QPointF(x + 0.5, y + 0.5) * fDotsPerPixel;
            const COLORREF cr = bitmap.GetPixelColor(x, y);
            const QRgb got = page.pixel(at.toPoint());
            EXPECT_LE(std::abs(qRed(got) - RedOf(cr)) + std::abs(qGreen(got) - GreenOf(cr)) + std::abs(qBlue(got) - BlueOf(cr)), 3)
                << x << "," << y;
        }
    }
    // A pixel beyond each edge the paper is white, one within it is not.
    const double w = bitmap.GetWidth() * fDotsPerPixel, h = bitmap.GetHeight() * fDotsPerPixel;
    for (const auto& [edge, out] : {std::pair(QPointF(0, h / 3), QPointF(-2, 0)), {QPointF(w, h / 3), QPointF(2, 0)},
                                    {QPointF(w / 3, 0), QPointF(0, -2)}, {QPointF(w / 3, h), QPointF(0, 2)}}) {
        EXPECT_EQ(page.pixel((corner + edge + out).toPoint()), 0xFFFFFFFF) << out.x() << "," << out.y();
        EXPECT_NE(page.pixel((corner + edge - out * 1.5).toPoint()), 0xFFFFFFFF) << out.x() << "," << out.y();
    }
}

} // namespace

TEST(Print, PictureLiesOnThePageAtItsOwnSizeWithItsColours)
{
    Picture picture(320, 240);
    CNotingHost host;
    CPaintView view(picture.doc, host);
    LBitmapBase& bitmap = picture.doc.m_pImage->m_Bitmap;
    FillBlocks(bitmap, 80);
    ExpectBlocks(PrintedPage(view), bitmap, 80, c_nDots / 96.0); // the file does not say
    bitmap.SetResolution(200, 200);
    ExpectBlocks(PrintedPage(view), bitmap, 80, c_nDots / 200.0);
}

TEST(Print, LargePictureIsMadeToFitBetweenTheMargins)
{
    Picture picture(1500, 900);
    CNotingHost host;
    CPaintView view(picture.doc, host);
    LBitmapBase& bitmap = picture.doc.m_pImage->m_Bitmap;
    FillBlocks(bitmap, 300);
    ExpectBlocks(PrintedPage(view), bitmap, 300, 180 / 25.4 * c_nDots / 1500);
}

TEST(Print, CancelPrintsNothingAndAFailureIsSaid)
{
    class CSink : public CMessageSink {
    public:
        MessageAnswer Message(const std::string& str, MessageButtons, MessageAnswer nDefault) override
        {
            m_strText = str;
            return nDefault;
        }
        void StatusText(const std::string&) override {}
        std::string m_strText;
    } sink;
    SetMessageSink(&sink);
    Picture picture(20, 20);
    CNotingHost host;
    CPaintView view(picture.doc, host);
    QTemporaryDir dir;
    SetPrintDriver([&](QPrinter& printer) {
        printer.setOutputFormat(QPrinter::PdfFormat);
        printer.setOutputFileName(dir.filePath("a.pdf"));
        return false;
    });
    view.RunCommand(57607);
    EXPECT_TRUE(QDir(dir.path()).isEmpty());
    EXPECT_EQ(sink.m_strText, "");
    SetPrintDriver([&](QPrinter& printer) {
        printer.setOutputFileName(dir.filePath("missing/a.pdf"));
        return true;
    });
    view.RunCommand(57607);
    EXPECT_NE(sink.m_strText, "");
    SetPrintDriver({});
    SetMessageSink(nullptr);
}
