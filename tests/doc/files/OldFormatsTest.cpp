#include "CodecTestKit.h"

#include "doc/files/ByteWriter.h"
#include "doc/files/ClpFile.h"
#include "doc/files/CutFile.h"
#include "doc/files/MspFile.h"
#include "doc/files/PcxWriter.h"
#include "doc/files/WpgFile.h"

using namespace kestrune;
using namespace kestrune::codectest;

namespace {

struct ClipPart {
    unsigned nFormat;
    FileBytes bytes;
};

/// A clipboard file of these parts, in the narrow or the wide form.
FileBytes ClipboardFile(const std::vector<ClipPart>& parts, bool bWide)
{
    FileBytes bytes;
    CByteWriter w(bytes);
    w.U16LE(bWide ? 0xC351 : 0xC350);
    w.U16LE(static_cast<unsigned>(parts.size()));
    const std::size_t nEntry = bWide ? 12 + 158 : 10 + 79;
    std::size_t nAt = 4 + nEntry * parts.size();
    for (const ClipPart& part : parts) {
        if (bWide)
            w.U32LE(part.nFormat);
        else
            w.U16LE(part.nFormat);
        w.U32LE(static_cast<std::uint32_t>(part.bytes.size()));
        w.U32LE(static_cast<std::uint32_t>(nAt));
        w.Zeros(bWide ? 158 : 79);
        nAt += part.bytes.size();
    }
    for (const ClipPart& part : parts)
        w.Raw(part.bytes);
    KeepSeed("clp", bytes);
    return bytes;
}

/// A device dependent bitmap: its structure, in 16-bit or 32-bit numbers, and the rows.
FileBytes DeviceBitmap(int nWidth, int nHeight, int nRowBytes, int nPlanes, int nBits, const FileBytes& rows,
                       bool bWide)
{
    FileBytes bytes;
    CByteWriter w(bytes);
    for (int v : {0, nWidth, nHeight, nRowBytes}) {
        if (bWide)
            w.U32LE(static_cast<std::uint32_t>(v));
        else
            w.U16LE(static_cast<unsigned>(v));
    }
    if (bWide) {
        w.U16LE(static_cast<unsigned>(nPlanes));
        w.U16LE(static_cast<unsigned>(nBits));
    } else {
        w.U8(static_cast<unsigned>(nPlanes));
        w.U8(static_cast<unsigned>(nBits));
    }
    w.U32LE(0);
    w.Raw(rows);
    return bytes;
}

/// The second version of MSP of a picture in black and white, with runs wherever two equal bytes follow each other.
FileBytes MspCoded(const LBitmapBase& picture)
{
    FileBytes lengths, rows;
    for (int y = 0; y < picture.GetHeight(); y++) {
        FileBytes packed(static_cast<std::size_t>(picture.GetWidth() + 7) / 8, 0);
        for (int x = 0; x < picture.GetWidth(); x++)
            if (picture.GetPixelColor(x, y) != 0)
                packed[static_cast<std::size_t>(x) / 8] |= static_cast<std::uint8_t>(0x80 >> x % 8);
        FileBytes coded;
        for (std::size_t i = 0; i < packed.size();) {
            std::size_t nRun = 1;
            while (i + nRun < packed.size() && packed[i + nRun] == packed[i])
                nRun++;
            if (nRun > 1) {
                coded.push_back(0);
                coded.push_back(static_cast<std::uint8_t>(nRun));
            } else {
                coded.push_back(1);
            }
            coded.push_back(packed[i]);
            i += nRun;
        }
        if (y == 0)
            coded.clear(); // a row of no bytes is white
        lengths.push_back(static_cast<std::uint8_t>(coded.size()));
        lengths.push_back(0);
        rows.insert(rows.end(), coded.begin(), coded.end());
    }
    FileBytes bytes;
    CByteWriter w(bytes);
    w.Text("LinS");
    w.U16LE(static_cast<unsigned>(picture.GetWidth()));
    w.U16LE(static_cast<unsigned>(picture.GetHeight()));
    w.Zeros(24);
    w.Raw(lengths);
    w.Raw(rows);
    return bytes;
}

} // namespace

TEST(Clp, HoldsADib)
{
    for (bool bWide : {false, true})
        for (const char* pszCommand :
             {"ppmtobmp -windows -bpp=4 in.ppm > out", "ppmtobmp -windows -bpp=8 in.ppm > out"}) {
            const LBitmapBase picture = FewColorsPicture(16);
            const FileBytes bmp = MadeBy(pszCommand, picture);
            const FileBytes file
                = ClipboardFile({{1, {'t', 'e', 'x', 't'}}, {8, FileBytes(bmp.begin() + 14, bmp.end())}}, bWide);
            EXPECT_TRUE(SamePicture(picture, ReadOk(ReadClp, file)));
        }
    LBitmapBase bitmap;
    EXPECT_EQ(ReadClp(ClipboardFile({{1, {'t', 'e', 'x', 't'}}}, false), bitmap), IMG_ERROR_BITS);
}

TEST(Clp, HoldsADeviceBitmap)
{
    for (bool bWide : {false, true}) {
        const LBitmapBase bits
            = ReadOk(ReadClp, ClipboardFile({{2, DeviceBitmap(3, 2, 2, 1, 1, {0x40, 0, 0xA0, 0}, bWide)}}, bWide));
        EXPECT_EQ(bits.GetBitsPerPixel(), 1);
        EXPECT_EQ(bits.GetPixelColor(0, 0), 0U);
        EXPECT_EQ(bits.GetPixelColor(1, 0), Rgb(255, 255, 255));
        EXPECT_EQ(bits.GetPixelColor(2, 1), Rgb(255, 255, 255));

        // Four planes: blue, green, red, intensity.
        const FileBytes planes = {0x80, 0, 0x40, 0, 0x20, 0, 0xE0, 0};
        const LBitmapBase display
            = ReadOk(ReadClp, ClipboardFile({{2, DeviceBitmap(3, 1, 2, 4, 1, planes, bWide)}}, bWide));
        EXPECT_EQ(display.GetBitsPerPixel(), 4);
        EXPECT_EQ(display.GetPixelColor(0, 0), Rgb(0, 0, 255));
        EXPECT_EQ(display.GetPixelColor(1, 0), Rgb(0, 255, 0));
        EXPECT_EQ(display.GetPixelColor(2, 0), Rgb(255, 0, 0));

        const FileBytes palette = {0, 3, 2, 0, 10, 20, 30, 0, 40, 50, 60, 0};
        const LBitmapBase indexed
            = ReadOk(ReadClp, ClipboardFile({{2, DeviceBitmap(2, 1, 2, 1, 8, {1, 0}, bWide)}, {9, palette}}, bWide));
        EXPECT_EQ(indexed.GetPixelColor(0, 0), Rgb(40, 50, 60));
        EXPECT_EQ(indexed.GetPixelColor(1, 0), Rgb(10, 20, 30));

        const LBitmapBase deep
            = ReadOk(ReadClp, ClipboardFile({{2, DeviceBitmap(1, 1, 4, 1, 32, {1, 2, 3, 0}, bWide)}}, bWide));
        EXPECT_EQ(deep.GetPixelColor(0, 0), Rgb(3, 2, 1));
        const LBitmapBase high
            = ReadOk(ReadClp, ClipboardFile({{2, DeviceBitmap(1, 1, 2, 1, 16, {0xE0, 0x07}, bWide)}}, bWide));
        EXPECT_EQ(high.GetPixelColor(0, 0), Rgb(0, 255, 0));
    }
}

TEST(Msp, BothVersions)
{
    const LBitmapBase picture = BlackWhitePicture(45, 23);
    const LBitmapBase plain = ReadOk(ReadMsp, MadeBy(PillowMakes("1", "MSP"), picture, "msp"));
    EXPECT_EQ(plain.GetBitsPerPixel(), 1);
    EXPECT_TRUE(plain.IsGrayScale());
    EXPECT_TRUE(SamePicture(picture, plain));

    FileBytes coded = MspCoded(picture);
    KeepSeed("msp", coded);
    LBitmapBase firstRowWhite;
    firstRowWhite.Copy(picture);
    for (int x = 0; x < 45; x++)
        firstRowWhite.PutPixelColor(x, 0, Rgb(255, 255, 255));
    EXPECT_TRUE(SamePicture(firstRowWhite, ReadOk(ReadMsp, coded)));
    coded.resize(coded.size() - 1);
    LBitmapBase bitmap;
    EXPECT_EQ(ReadMsp(coded, bitmap), IMG_ERROR_FILE_READ);
}

TEST(Cut, GreyAloneAndColouredByItsPalette)
{
    const LBitmapBase picture = GreyPicture();
    const FileBytes ours = WriteOk(WriteCut, picture);
    KeepSeed("cut", ours);
    EXPECT_TRUE(SamePicture(picture, ReadOk(ReadCut, ours)));
    EXPECT_TRUE(ReadOk(ReadCut, ours).IsGrayScale());
    EXPECT_TRUE(SamePicture(picture, SeenBy("gm convert CUT:ours.cut PPM:back.pnm", ours, ".cut")));
    MadeBy("ppmtopgm in.ppm > out", ColorfulPicture());
    EXPECT_TRUE(SamePicture(ReadPnm(TestFolder() / "out"), ReadOk(ReadCut, WriteOk(WriteCut, ColorfulPicture())), 1));

    FileBytes palette;
    CByteWriter w(palette);
    w.Text("AH");
    w.Zeros(10);
    for (unsigned v : {255U, 255U, 255U, 255U})
        w.U16LE(v);
    w.Zeros(20);
    for (unsigned i = 0; i < 256; i++) {
        if (palette.size() % 512 > 506)
            w.Zeros(512 - palette.size() % 512);
        for (unsigned v : {i, 255 - i, 7U})
            w.U16LE(v);
    }
    LBitmapBase colored;
    ASSERT_EQ(ReadCutWithPalette(ours, palette, colored), IMG_SUCCESS);
    for (int x = 0; x < 37; x++) {
        const int v = RedOf(picture.GetPixelColor(x, 20));
        EXPECT_EQ(colored.GetPixelColor(x, 20), Rgb(v, 255 - v, 7));
    }
    FileBytes pair;
    CByteWriter p(pair);
    p.U16LE(static_cast<unsigned>(ours.size()));
    p.Raw(ours);
    p.Raw(palette);
    KeepSeed("cut", pair);
}

TEST(Wpg, OtherProgramsReadOurs)
{
    LBitmapBase picture = FewColorsPicture(200);
    picture.SetResolution(300, 150);
    const FileBytes ours = WriteOk(WriteWpg, picture);
    KeepSeed("wpg", ours);
    for (const char* pszCommand : {"gm convert WPG:ours.wpg PPM:back.pnm", "convert ours.wpg PPM:back.pnm"}) {
        SCOPED_TRACE(pszCommand);
        EXPECT_TRUE(SamePicture(picture, SeenBy(pszCommand, ours, ".wpg")));
    }
    const LBitmapBase back = ReadOk(ReadWpg, ours);
    EXPECT_EQ(back.GetBitsPerPixel(), 8);
    EXPECT_TRUE(SamePicture(picture, back));
    EXPECT_EQ(back.GetXResolution(), 300);
    EXPECT_EQ(back.GetYResolution(), 150);
    // A photograph's colours are reduced, not changed at large: the mean stays.
    const LBitmapBase photo = ColorfulPicture(200, 150);
    const LBitmapBase reduced = ReadOk(ReadWpg, WriteOk(WriteWpg, photo));
    double dGiven = 0, dRead = 0;
    for (int y = 0; y < 150; y++)
        for (int x = 0; x < 200; x++) {
            dGiven += GreenOf(photo.GetPixelColor(x, y));
            dRead += GreenOf(reduced.GetPixelColor(x, y));
        }
    EXPECT_NEAR(dGiven / 30000, dRead / 30000, 3);
}

TEST(Wpg, RowCodesAndStandardColours)
{
    FileBytes bytes;
    CByteWriter w(bytes);
    w.Raw(FileBytes{0xFF, 'W', 'P', 'C', 16, 0, 0, 0, 1, 0x16, 1, 0, 0, 0, 0, 0});
    const FileBytes body = {4,    0,    5,    0, 4, 0, 75, 0, 75, 0, // 4 x 5, 4 bits
                            2,    0x12, 0x3E, // literals
                            0,    2, // the row twice more
                            0x82, 0x44, // a run
                            0x80, 2}; // a run of full bytes
    w.U8(0x0B);
    w.U8(static_cast<unsigned>(body.size()));
    w.Raw(body);
    KeepSeed("wpg", bytes);
    const LBitmapBase bitmap = ReadOk(ReadWpg, bytes);
    EXPECT_EQ(bitmap.GetXResolution(), 75);
    for (int y = 0; y < 3; y++) {
        EXPECT_EQ(bitmap.GetPixelColor(0, y), Rgb(0, 0, 170)) << y; // blue
        EXPECT_EQ(bitmap.GetPixelColor(1, y), Rgb(0, 170, 0)) << y; // green
        EXPECT_EQ(bitmap.GetPixelColor(2, y), Rgb(0, 170, 170)) << y; // cyan
        EXPECT_EQ(bitmap.GetPixelColor(3, y), Rgb(255, 255, 85)) << y; // yellow
    }
    EXPECT_EQ(bitmap.GetPixelColor(0, 3), Rgb(170, 0, 0));
    EXPECT_EQ(bitmap.GetPixelColor(3, 4), Rgb(255, 255, 255));
    LBitmapBase none;
    bytes[10] = 2; // the second version is not read here
    EXPECT_EQ(ReadWpg(bytes, none), IMG_ERROR_BITS);
}

TEST(Pcx, OtherProgramsReadOurs)
{
    for (int nWidth : {37, 38}) {
        LBitmapBase picture = ColorfulPicture(nWidth, 23);
        picture.SetResolution(300, 150);
        const FileBytes ours = WriteOk(WritePcx, picture);
        for (const char* pszCommand : {"pcxtoppm ours.pcx > back.pnm", "gm convert PCX:ours.pcx PPM:back.pnm",
                                       "convert ours.pcx PPM:back.pnm"}) {
            SCOPED_TRACE(pszCommand);
            EXPECT_TRUE(SamePicture(picture, SeenBy(pszCommand, ours, ".pcx")));
        }
        EXPECT_TRUE(Runs("test \"$(identify -format '%x %y' ours.pcx | sed 's/ Undefined//g')\" = '300 150'"));
    }
}
