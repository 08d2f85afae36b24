#include "CodecTestKit.h"

#include <cstdlib>
#include <cstring>
#include <fstream>
#include <functional>
#include <iterator>
#include <random>
#include <sstream>

namespace kestrune::codectest {

namespace fs = std::filesystem;

namespace {

LBitmapBase Painted(int nWidth, int nHeight, const std::function<COLORREF(int, int)>& color)
{
    LBitmapBase bitmap;
    bitmap.Create(nWidth, nHeight, 24);
    for (int y = 0; y < nHeight; y++) {
        std::uint8_t* p = bitmap.WriteRow(y);
        for (int x = 0; x < nWidth; x++, p += 3) {
            const COLORREF cr = color(x, y);
            p[0] = BlueOf(cr);
            p[1] = GreenOf(cr);
            p[2] = RedOf(cr);
        }
    }
    return bitmap;
}

/// Flat areas, stripes and noise: index 0..n-1 of a picture of n colours, all of which occur.
int PatternAt(int x, int y, int n)
{
    std::minstd_rand random(static_cast<unsigned>(x * 7919 + y * 104729 + 1));
    random.discard(3);
    if (y == 0)
        return x % n;
    if (y < 8)
        return (x / 9 + y) % n;
    return y < 14 ? (y * 37 + x) % n : static_cast<int>(random() >> 8) % n;
}

} // namespace

LBitmapBase ColorfulPicture(int nWidth, int nHeight)
{
    return Painted(nWidth, nHeight, [](int x, int y) {
        const int n = PatternAt(x, y, 251);
        return y % 5 == 4 ? Rgb(200, 30, 90) : Rgb(x * 6, n, y * 11);
    });
}

LBitmapBase FewColorsPicture(int nColors, int nWidth, int nHeight)
{
    return Painted(nWidth, nHeight, [&](int x, int y) {
        const int i = nColors > nWidth ? (y * nWidth + x) % nColors : PatternAt(x, y, nColors);
        return Rgb(i * 97 & 255, i * 55 & 255, 255 - (i * 29 & 255));
    });
}

LBitmapBase GreyPicture(int nWidth, int nHeight)
{
    return Painted(nWidth, nHeight, [&](int x, int y) {
        const int v = (y * nWidth + x) * 255 / (nWidth * nHeight - 1);
        return Rgb(v, v, v);
    });
}

LBitmapBase BlackWhitePicture(int nWidth, int nHeight)
{
    return Painted(nWidth, nHeight,
                   [](int x, int y) { return PatternAt(x, y, 2) != 0 ? Rgb(255, 255, 255) : Rgb(0, 0, 0); });
}

fs::path TestFolder()
{
    static std::string s_strLast;
    const auto* pInfo = ::testing::UnitTest::GetInstance()->current_test_info();
    std::string strName = std::string(pInfo->test_suite_name()) + "." + pInfo->name();
    for (char& c : strName)
        if (c == '/')
            c = '_';
    const fs::path folder = fs::path(KESTRUNE_BUILD_DIR) / "codec-tests" / strName;
    if (strName != s_strLast) {
        fs::remove_all(folder);
        fs::create_directories(folder);
        s_strLast = strName;
    }
    return folder;
}

FileBytes FileContent(const fs::path& path)
{
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

void WriteContent(const fs::path& path, const FileBytes& bytes)
{
    std::ofstream out(path, std::ios::binary);
    out.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
}

void WritePpm(const fs::path& path, const LBitmapBase& bitmap)
{
    std::ofstream out(path, std::ios::binary);
    out << "P6\n" << bitmap.GetWidth() << ' ' << bitmap.GetHeight() << "\n255\n";
    for (int y = 0; y < bitmap.GetHeight(); y++)
        for (int x = 0; x < bitmap.GetWidth(); x++) {
            const COLORREF cr = bitmap.GetPixelColor(x, y);
            out.put(static_cast<char>(RedOf(cr)))
                .put(static_cast<char>(GreenOf(cr)))
                .put(static_cast<char>(BlueOf(cr)));
        }
}

LBitmapBase ReadPnm(const fs::path& path)
{
    const FileBytes bytes = FileContent(path);
    std::istringstream in(std::string(bytes.begin(), bytes.end()));
    std::string strMark;
    int nWidth = 0, nHeight = 0, nMax = 1;
    in >> strMark >> nWidth >> nHeight;
    if (strMark != "P4")
        in >> nMax;
    in.get();
    LBitmapBase bitmap;
    if (!in || (nMax != 255 && strMark != "P4"))
        return bitmap;
    const auto nAt = static_cast<std::size_t>(in.tellg());
    const std::size_t nChannels = strMark == "P6" ? 3 : 1;
    const std::size_t nRow
        = strMark == "P4" ? static_cast<std::size_t>(nWidth + 7) / 8 : static_cast<std::size_t>(nWidth) * nChannels;
    if (bytes.size() - nAt < nRow * static_cast<std::size_t>(nHeight))
        return bitmap;
    return Painted(nWidth, nHeight, [&](int x, int y) {
        const std::uint8_t* p = &bytes[nAt + static_cast<std::size_t>(y) * nRow];
        if (strMark == "P4")
            return p[x / 8] >> (7 - x % 8) & 1 ? Rgb(0, 0, 0) : Rgb(255, 255, 255);
        p += static_cast<std::size_t>(x) * nChannels;
        return nChannels == 3 ? Rgb(p[0], p[1], p[2]) : Rgb(p[0], p[0], p[0]);
    });
}

::testing::AssertionResult Runs(const std::string& strCommand)
{
    const fs::path folder = TestFolder();
    const std::string strLine = "cd '" + folder.string() + "' && { " + strCommand + " ; } > log 2>&1";
    if (std::system(strLine.c_str()) == 0)
        return ::testing::AssertionSuccess();
    const FileBytes log = FileContent(folder / "log");
    return ::testing::AssertionFailure() << strCommand << "\n" << std::string(log.begin(), log.end());
}

FileBytes MadeBy(const std::string& strCommand, const LBitmapBase& picture, const std::string& strSeedFormat)
{
    fs::remove(TestFolder() / "out");
    WritePpm(TestFolder() / "in.ppm", picture);
    EXPECT_TRUE(Runs(strCommand));
    FileBytes bytes = FileContent(TestFolder() / "out");
    EXPECT_FALSE(bytes.empty()) << strCommand;
    if (!strSeedFormat.empty())
        KeepSeed(strSeedFormat, bytes);
    return bytes;
}

LBitmapBase SeenBy(const std::string& strCommand, const FileBytes& ours, const std::string& strExtension)
{
    fs::remove(TestFolder() / "back.pnm");
    WriteContent(TestFolder() / ("ours" + strExtension), ours);
    EXPECT_TRUE(Runs(strCommand));
    return ReadPnm(TestFolder() / "back.pnm");
}

std::string PillowMakes(const std::string& strMode, const std::string& strFormat)
{
    return "/usr/bin/python3 -c \"from PIL import Image; Image.open('in.ppm').convert('" + strMode + "').save('out', '"
        + strFormat + "')\"";
}

std::string PillowToPpm(const std::string& strFile)
{
    return "/usr/bin/python3 -c \"from PIL import Image; Image.open('" + strFile
        + "').convert('RGB').save('back.pnm', 'PPM')\"";
}

void KeepSeed(const std::string& strFormat, const FileBytes& bytes)
{
    const fs::path folder = fs::path(KESTRUNE_BUILD_DIR) / "fuzz-seeds" / strFormat;
    fs::create_directories(folder);
    std::uint32_t nHash = 2166136261U; // the content names the file, so that a second run adds nothing
    for (std::uint8_t b : bytes)
        nHash = (nHash ^ b) * 16777619U;
    WriteContent(folder / std::to_string(nHash), bytes);
}

::testing::AssertionResult SamePicture(const LBitmapBase& expected, const LBitmapBase& actual, int nTolerance)
{
    if (expected.GetWidth() != actual.GetWidth() || expected.GetHeight() != actual.GetHeight()
        || !expected.IsAllocated())
        return ::testing::AssertionFailure() << expected.GetWidth() << "x" << expected.GetHeight() << " expected, got "
                                             << actual.GetWidth() << "x" << actual.GetHeight();
    for (int y = 0; y < expected.GetHeight(); y++)
        for (int x = 0; x < expected.GetWidth(); x++) {
            const COLORREF a = expected.GetPixelColor(x, y), b = actual.GetPixelColor(x, y);
            if (std::abs(RedOf(a) - RedOf(b)) > nTolerance || std::abs(GreenOf(a) - GreenOf(b)) > nTolerance
                || std::abs(BlueOf(a) - BlueOf(b)) > nTolerance)
                return ::testing::AssertionFailure() << "at " << x << "," << y << std::hex << " expected 0x" << a
                                                     << ", got 0x" << b << " (blue, green, red)";
        }
    return ::testing::AssertionSuccess();
}

LBitmapBase ReadOk(ReaderFunction reader, const FileBytes& bytes)
{
    LBitmapBase bitmap;
    EXPECT_EQ(reader(bytes, bitmap), IMG_SUCCESS);
    return bitmap;
}

FileBytes WriteOk(WriterFunction writer, const LBitmapBase& bitmap)
{
    FileBytes bytes;
    EXPECT_EQ(writer(bitmap, 0, bytes), IMG_SUCCESS);
    return bytes;
}

} // namespace kestrune::codectest
