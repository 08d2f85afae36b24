#include "CodecTestKit.h"

#include "base/Log.h"
#include "doc/MetaFile.h"
#include "doc/files/BmpFile.h"
#include "doc/files/ByteWriter.h"
#include "doc/files/ClpFile.h"
#include "doc/files/CutFile.h"
#include "doc/files/FileHeader.h"
#include "doc/files/GifFile.h"
#include "doc/files/IcoFile.h"
#include "doc/files/MspFile.h"
#include "doc/files/PcxWriter.h"
#include "doc/files/PngFile.h"
#include "doc/files/PsdReader.h"
#include "doc/files/PsdWriter.h"
#include "doc/files/WpgFile.h"

#include <random>

#include <sys/resource.h>

using namespace kestrune;
using namespace kestrune::codectest;

namespace {

/// The header reader seen as a reader.
template <ImageFormat c_format>
int ReadHeaderOf(std::span<const std::uint8_t> file, LBitmapBase& bitmap)
{
    FileHeader header;
    if (!ReadFileHeader(c_format, file, header))
        return IMG_ERROR_FILE_READ;
    bitmap.Create(2, 2, 24);
    bitmap.Fill(0);
    MatchFileHeader(header, bitmap);
    return IMG_SUCCESS;
}

int ReadMetaFileHeader(std::span<const std::uint8_t> file, LBitmapBase&)
{
    CPaintMetaFile metafile;
    metafile.ReadHeader(file);
    return metafile.IsUsable() ? IMG_ERROR_BITS : IMG_ERROR_FILE_FORMAT;
}

/// The loader that recognises a file by its content.
int ReadByContent(std::span<const std::uint8_t> file, LBitmapBase& bitmap) { return DecodeImage(file, "", bitmap); }

struct HostileCase {
    const char* pszName;
    ReaderFunction reader;
    FileBytes (*makeFile)();
    bool bWholeFileNeeded; ///< every shorter prefix must be refused
};

FileBytes SmallBmp() { return MadeBy("ppmtobmp -windows -bpp=8 in.ppm > out", FewColorsPicture(40, 12, 7)); }
FileBytes SmallRle()
{
    return MadeBy("convert in.ppm -type Palette -compress RLE BMP3:out", FewColorsPicture(40, 12, 7));
}
FileBytes SmallMasks() { return MadeBy("convert in.ppm -alpha set BMP:out", ColorfulPicture(12, 7)); }
FileBytes SmallIco() { return MadeBy("ppmtowinicon in.ppm > out", FewColorsPicture(16, 16, 16)); }
FileBytes SmallGif() { return MadeBy("pamtogif -interlace in.ppm > out", FewColorsPicture(40, 12, 7)); }
FileBytes SmallPsd() { return WriteOk(WritePsd, ColorfulPicture(12, 7)); }
FileBytes DeepPsd()
{
    return MadeBy("convert in.ppm -alpha set -depth 16 -compress None PSD:out", ColorfulPicture(12, 7));
}
FileBytes SmallCut() { return WriteOk(WriteCut, ColorfulPicture(12, 7)); }
FileBytes SmallWpg() { return WriteOk(WriteWpg, ColorfulPicture(12, 7)); }
FileBytes SmallMsp() { return MadeBy(PillowMakes("1", "MSP"), BlackWhitePicture(40, 7)); }
FileBytes SmallPcx() { return WriteOk(WritePcx, ColorfulPicture(12, 7)); }
FileBytes SmallPict() { return MadeBy("ppmtopict in.ppm > out", FewColorsPicture(40, 12, 7)); }

FileBytes SmallTga() { return MadeBy("ppmtotga -cmap in.ppm > out", FewColorsPicture(40, 12, 7)); }
FileBytes SmallSgi() { return MadeBy("pnmtosgi in.ppm > out", ColorfulPicture(12, 7)); }

FileBytes SmallJpeg() { return MadeBy("convert in.ppm -density 72 JPEG:out", ColorfulPicture(12, 7)); }
FileBytes SmallPng() { return MadeBy("convert in.ppm -alpha set PNG:out", ColorfulPicture(12, 7)); }
FileBytes SmallTiff() { return MadeBy("convert in.ppm -compress LZW TIFF:out", ColorfulPicture(12, 7)); }
FileBytes SmallWebp() { return MadeBy("cwebp -quiet -lossless in.ppm -o out", ColorfulPicture(12, 7)); }

FileBytes SmallClp()
{
    const FileBytes bmp = SmallBmp();
    FileBytes clp(4 + 89);
    clp[0] = 0x50;
    clp[1] = 0xC3;
    clp[2] = 1;
    clp[4] = 8;
    const std::size_t nDib = bmp.size() - 14;
    clp[6] = static_cast<std::uint8_t>(nDib);
    clp[7] = static_cast<std::uint8_t>(nDib >> 8);
    clp[10] = static_cast<std::uint8_t>(clp.size());
    for (std::size_t i = 14; i < bmp.size(); i++)
        clp.push_back(bmp[i]);
    return clp;
}

FileBytes SmallMetaFile()
{
    FileBytes file(40);
    const std::uint8_t aHead[] = {0xD7, 0xCD, 0xC6, 0x9A, 0, 0, 0, 0, 0, 0, 100, 0, 50, 0, 96, 0};
    std::copy(std::begin(aHead), std::end(aHead), file.begin());
    return file;
}

const HostileCase c_aCases[] = {
    {"bmp", ReadBmp, SmallBmp, true},
    {"rle", ReadBmp, SmallRle, false},
    {"masks", ReadBmp, SmallMasks, true},
    {"ico", ReadIco, SmallIco, false},
    {"gif", ReadGif, SmallGif, false},
    {"psd", ReadPsd, SmallPsd, true},
    {"psd16", ReadPsd, DeepPsd, false},
    {"cut", ReadCut, SmallCut, true},
    {"wpg", ReadWpg, SmallWpg, false},
    {"msp", ReadMsp, SmallMsp, true},
    {"clp", ReadClp, SmallClp, true},
    {"pcx header", ReadHeaderOf<ImageFormat::Pcx>, SmallPcx, false},
    {"pict header", ReadHeaderOf<ImageFormat::Pict>, SmallPict, false},
    {"tga header", ReadHeaderOf<ImageFormat::Tga>, SmallTga, false},
    {"sgi header", ReadHeaderOf<ImageFormat::Sgi>, SmallSgi, false},
    {"jpeg", ReadByContent, SmallJpeg, false},
    {"png", ReadByContent, SmallPng, false},
    {"tiff", ReadByContent, SmallTiff, false},
    {"webp", ReadByContent, SmallWebp, false},
    {"metafile", ReadMetaFileHeader, SmallMetaFile, false},
};

/// Reads from a buffer of exactly the file's length, so that a read past its end is seen by the sanitizer, and checks
/// that what comes out is whole: pixels inside the limits, indices inside the palette.
int ReadChecked(ReaderFunction reader, const FileBytes& file)
{
    const std::unique_ptr<std::uint8_t[]> exact(new std::uint8_t[file.size()]);
    std::copy(file.begin(), file.end(), exact.get());
    LBitmapBase bitmap;
    const int nResult = reader({exact.get(), file.size()}, bitmap);
    if (nResult != IMG_SUCCESS)
        return nResult;
    EXPECT_TRUE(IsSaneSize(bitmap.GetWidth(), bitmap.GetHeight(), Limits()));
    if (bitmap.GetBitsPerPixel() <= 8)
        for (int y = 0; y < bitmap.GetHeight(); y++)
            for (int x = 0; x < bitmap.GetWidth(); x++)
                if (bitmap.Row(y)[x] >= bitmap.Palette().size()) {
                    ADD_FAILURE() << "index outside the palette";
                    return nResult;
                }
    return nResult;
}

/// Keeps the pictures of damaged headers small, and the log of thousands of damaged files quiet, while a test runs.
class SmallLimits {
public:
    SmallLimits()
    {
        Limits().nMaxPixels = 1'000'000;
        SetLogSink([](const std::string&) {});
    }
    ~SmallLimits()
    {
        Limits() = m_kept;
        SetLogSink(nullptr);
    }

private:
    ReadLimits m_kept = Limits();
};

} // namespace

TEST(HostileFiles, CutShortAtEveryLength)
{
    const SmallLimits limits;
    for (const HostileCase& row : c_aCases) {
        SCOPED_TRACE(row.pszName);
        const FileBytes whole = row.makeFile();
        KeepSeed("imagefile", whole);
        ASSERT_LT(whole.size(), 20000U);
        for (std::size_t n = 0; n < whole.size(); n++) {
            const int nResult
                = ReadChecked(row.reader, FileBytes(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(n)));
            const bool bMustFail
                = n < 14 || (row.bWholeFileNeeded && n + 4 < whole.size()); // the last row's padding may be missing
            EXPECT_TRUE(nResult < 0 || !bMustFail) << n;
        }
    }
}

TEST(HostileFiles, FlippedBits)
{
    const SmallLimits limits;
    for (const HostileCase& row : c_aCases) {
        SCOPED_TRACE(row.pszName);
        const FileBytes whole = row.makeFile();
        std::minstd_rand random(20240);
        int nRefused = 0;
        for (int i = 0; i < 2000; i++) {
            FileBytes file = whole;
            const int nFlips = 1 + i % 4;
            for (int k = 0; k < nFlips; k++) {
                // Half of the damage goes into the first bytes, where the numbers stand.
                const std::size_t nRange = i % 2 != 0 ? std::min<std::size_t>(64, file.size()) : file.size();
                file[(random() >> 4) % nRange] ^= static_cast<std::uint8_t>(1 << (random() >> 4) % 8);
            }
            nRefused += ReadChecked(row.reader, file) != IMG_SUCCESS;
        }
        EXPECT_GT(nRefused, 0);
    }
}

TEST(HostileFiles, SizesThatTheFileCannotHold)
{
    struct Case {
        const char* pszName;
        ReaderFunction reader;
        FileBytes (*makeFile)();
        std::vector<std::size_t> bytesToSet; ///< all set to 0xFF or, the highest of a signed number, to 0x7F
    };
    const Case c_aSizes[] = {{"psd", ReadPsd, SmallPsd, {14, 15, 16, 17, 18, 19, 20, 21}},
                             {"cut", ReadCut, SmallCut, {0, 1, 2, 3}},
                             {"msp", ReadMsp, SmallMsp, {4, 5, 6, 7}},
                             {"gif frame", ReadGif, SmallGif, {6, 7, 8, 9}},
                             {"bmp", ReadBmp, SmallBmp, {18, 19, 20, 22, 23, 24}}};
    for (const Case& row : c_aSizes) {
        SCOPED_TRACE(row.pszName);
        FileBytes file = row.makeFile();
        for (std::size_t n : row.bytesToSet)
            file[n] = 0xFF;
        LBitmapBase bitmap;
        const int nResult = row.reader(file, bitmap);
        // Refused before anything is allocated, or read at the true size where a screen is not believed.
        EXPECT_EQ(nResult == IMG_SUCCESS, bitmap.IsAllocated());
        EXPECT_LT(bitmap.GetWidth() * bitmap.GetHeight(), 1000);
    }
}

TEST(HostileFiles, AClipboardThatPointsIntoItself)
{
    FileBytes clp = SmallClp();
    clp[10] = clp[11] = clp[12] = clp[13] = 0; // the bitmap is the directory
    LBitmapBase bitmap;
    EXPECT_LT(ReadClp(clp, bitmap), 0);
    clp[2] = clp[3] = 0xFF; // 65535 formats
    EXPECT_LT(ReadClp(clp, bitmap), 0);
}

TEST(HostileFiles, APngChunkThatClaimsGigabytes)
{
    const FileBytes whole = SmallPng();
    constexpr std::size_t c_nEndChunk = 12;
    auto withClaim = [&](std::size_t nAt) {
        FileBytes file(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(nAt));
        CByteWriter w(file);
        w.U32BE(0x61000025);
        w.Text("tEXt");
        w.Zeros(40);
        return file;
    };
    auto mostKilobytes = [] {
        rusage usage{};
        getrusage(RUSAGE_SELF, &usage);
        return usage.ru_maxrss;
    };
    const long nBefore = mostKilobytes();
    LBitmapBase bitmap;
    EXPECT_EQ(ReadPng(withClaim(8 + 25), bitmap), IMG_ERROR_FILE_READ); // behind the first chunk: no pixels follow
    EXPECT_EQ(ReadPng(withClaim(whole.size() - c_nEndChunk), bitmap), IMG_SUCCESS); // behind the pixels nothing is lost
    EXPECT_TRUE(SamePicture(ColorfulPicture(12, 7), bitmap));
    EXPECT_LT(mostKilobytes() - nBefore, 100'000);
}
