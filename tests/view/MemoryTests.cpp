#include "ViewTestKit.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <cstdio>
#include <malloc.h>
#include <unistd.h>

using namespace kestrune;
using namespace kestrune::test;

namespace {

double ResidentBytes()
{
    malloc_trim(0);
    long nPages = 0, nResident = 0;
    if (std::FILE* pFile = std::fopen("/proc/self/statm", "r")) {
        EXPECT_EQ(std::fscanf(pFile, "%ld %ld", &nPages, &nResident), 2);
        std::fclose(pFile);
    }
    return static_cast<double>(nResident) * sysconf(_SC_PAGESIZE);
}

} // namespace

// The base bitmap shares the working bitmap's bands, the mask is not touched before something is selected, and the view keeps
// nothing of the scaled picture.
TEST(Memory, OpenPictureCostsHardlyMoreThanItsPixels)
{
#ifdef __SANITIZE_ADDRESS__
    GTEST_SKIP() << "the sanitizer keeps what was freed";
#endif
    constexpr int c_nWidth = 4000, c_nHeight = 3000;
    QTemporaryDir dir;
    const QString strPath = dir.filePath("photo.png");
    {
        QImage image(c_nWidth, c_nHeight, QImage::Format_RGB888);
        for (int y = 0; y < c_nHeight; y++)
            for (int x = 0; x < c_nWidth * 3; x++)
                image.scanLine(y)[x] = static_cast<uchar>((x * y) >> 8);
        ASSERT_TRUE(image.save(strPath, "PNG", 100));
    }
    CNotingHost host;
    CNoDocumentHost docHost;
    {
        Picture small(100, 100); // the window's own memory belongs to the start
        CPaintView view(small.doc, host);
        ShowView(view, 1280, 800);
        Grab(view);
    }
    const double fBefore = ResidentBytes();
    CPaintDoc doc(docHost);
    ASSERT_TRUE(doc.OnOpenDocument(strPath.toStdString()));
    CPaintView view(doc, host);
    ShowView(view, 1280, 800);
    for (float fZoom : {1.0f, 0.25f, 3.0f}) {
        view.SetZoom(fZoom);
        Grab(view);
    }
    const double fPixels = 3.0 * c_nWidth * c_nHeight;
    EXPECT_LE((ResidentBytes() - fBefore) / fPixels, 1.4);
    EXPECT_GE((ResidentBytes() - fBefore) / fPixels, 0.9); // the measure sees the pixels at all
}
