// Pictures as bytes on the clipboard: every form in which other programs offer them, and every way to offer them wrong.
#include "acquire/ClipboardPicture.h"

#include "doc/PaintImage.h"
#include "doc/files/ByteWriter.h"

#include <gtest/gtest.h>

#include <cstring>
#include <random>

using namespace kestrune;

namespace {

using Bytes = std::vector<std::uint8_t>;

LBitmapBase Noise(int nWidth, int nHeight, unsigned nSeed)
{
    std::mt19937 random(nSeed);
    LBitmapBase bitmap;
    bitmap.Create(nWidth, nHeight, 24);
    for (int y = 0; y < nHeight; y++)
        for (std::size_t i = 0; i < bitmap.GetRowBytes(); i++)
            bitmap.WriteRow(y)[i] = static_cast<std::uint8_t>(random());
    return bitmap;
}

bool IsSame(const LBitmapBase& a, const LBitmapBase& b)
{
    if (a.GetWidth() != b.GetWidth() || a.GetHeight() != b.GetHeight() || a.GetBitsPerPixel() != b.GetBitsPerPixel())
        return false;
    for (int y = 0; y < a.GetHeight(); y++)
        if (std::memcmp(a.Row(y), b.Row(y), a.GetRowBytes()))
            return false;
    return true;
}

const ClipboardFormat& Bmp() { return *FindClipboardFormat("image/bmp"); }
const ClipboardFormat& Png() { return *FindClipboardFormat("image/png"); }

/// A bare bitmap without a file's header, 3 x 2 indices of `nBits`, as other systems keep it in memory.
Bytes BareDib(int nBits, int nHeight, const Bytes& rows)
{
    Bytes bytes;
    CByteWriter w(bytes);
    w.U32LE(40);
    w.U32LE(3);
    w.U32LE(static_cast<std::uint32_t>(nHeight));
    w.U16LE(1);
    w.U16LE(static_cast<unsigned>(nBits));
    w.Zeros(24);
    for (int i = 0; i < 1 << nBits; i++) {
        w.U8(static_cast<unsigned>(i * 7) & 255);
        w.U8(static_cast<unsigned>(i * 3) & 255);
        w.U8(static_cast<unsigned>(i * 5) & 255);
        w.U8(0);
    }
    w.Raw(rows);
    return bytes;
}

} // namespace

TEST(ClipboardPicture, WhatIsOfferedComesBack)
{
    for (const auto& [w, h] : {std::pair{1, 1}, {3, 5}, {64, 2}, {131, 77}}) {
        LBitmapBase bitmap = Noise(w, h, w);
        bitmap.SetResolution(300, 150);
        for (const ClipboardFormat* pFormat : {&Bmp(), &Png()}) {
            ClipboardPicture picture;
            ASSERT_TRUE(DecodeClipboard(EncodeClipboard(bitmap, *pFormat), *pFormat, picture));
            EXPECT_TRUE(IsSame(picture.bitmap, bitmap)) << w << ' ' << pFormat->mimeType;
            EXPECT_EQ(picture.nColorMode, MODE_RGB);
            EXPECT_EQ(picture.nBitsPerPixel, 24);
            EXPECT_EQ(picture.bitmap.GetXResolution(), 300);
        }
    }
}

TEST(ClipboardPicture, TheBytesAreADeviceIndependentBitmapFromTheBottomUp)
{
    LBitmapBase bitmap;
    bitmap.Create(1, 2, 24);
    bitmap.PutPixelColor(0, 0, Rgb(1, 2, 3));
    bitmap.PutPixelColor(0, 1, Rgb(4, 5, 6));
    const Bytes bytes = EncodeClipboard(bitmap, Bmp());
    ASSERT_EQ(bytes.size(), 14u + 40 + 8);
    EXPECT_EQ(bytes[0], 'B');
    EXPECT_EQ(bytes[14], 40);
    EXPECT_EQ(Bytes(bytes.begin() + 54, bytes.end()), (Bytes{6, 5, 4, 0, 3, 2, 1, 0}));
}

TEST(ClipboardPicture, AColourTableBecomesThePalette)
{
    ClipboardPicture picture;
    for (const bool bTopDown : {false, true}) {
        ASSERT_TRUE(DecodeClipboard(BareDib(8, bTopDown ? -2 : 2, {1, 2, 3, 0, 200, 100, 50, 0}), Bmp(), picture));
        EXPECT_EQ(picture.nBitsPerPixel, 8);
        EXPECT_EQ(picture.nColorMode, MODE_256COLORS);
        ASSERT_EQ(picture.bitmap.Palette().size(), 256u);
        EXPECT_EQ(picture.bitmap.GetPixelColor(1, bTopDown ? 1 : 0), Rgb(100 * 5 & 255, 100 * 3 & 255, 100 * 7 & 255));
    }
    ASSERT_TRUE(DecodeClipboard(BareDib(4, 2, {0x12, 0x30, 0, 0, 0x45, 0x60, 0, 0}), Bmp(), picture));
    EXPECT_EQ(picture.nBitsPerPixel, 4);
    EXPECT_EQ(picture.nColorMode, MODE_16COLORS);
    EXPECT_EQ(picture.bitmap.GetPixelColor(2, 0), Rgb(30, 18, 42));
}

TEST(ClipboardPicture, NonsenseIsRefusedAndChangesNothing)
{
    const Bytes bmp = EncodeClipboard(Noise(40, 30, 1), Bmp()), png = EncodeClipboard(Noise(40, 30, 1), Png());
    ClipboardPicture before;
    ASSERT_TRUE(DecodeClipboard(bmp, Bmp(), before));
    ClipboardPicture picture = before;
    for (const Bytes* pBytes : {&bmp, &png})
        for (const ClipboardFormat* pFormat : {&Bmp(), &Png()})
            for (const std::size_t nLength : {std::size_t{0}, std::size_t{1}, std::size_t{14}, std::size_t{33}, std::size_t{53}, pBytes->size() / 2}) {
                EXPECT_FALSE(DecodeClipboard({pBytes->data(), nLength}, *pFormat, picture)) << nLength;
                ASSERT_TRUE(IsSame(picture.bitmap, before.bitmap));
            }
    EXPECT_FALSE(DecodeClipboard(png, Bmp(), picture));
    Bytes claims = bmp; // more pixels than memory, and than the bytes could hold
    for (const std::size_t i : {18u, 22u})
        std::memcpy(claims.data() + i, "\xFF\xFF\xFF\x7F", 4);
    EXPECT_FALSE(DecodeClipboard(claims, Bmp(), picture));
    std::memcpy(claims.data() + 18, "\x60\xEA\0\0\x60\xEA\0\0", 8); // 60000 a side
    EXPECT_FALSE(DecodeClipboard(claims, Bmp(), picture));
    std::mt19937 random(4);
    for (int i = 0; i < 3000; i++) { // bytes changed at random: anything but a fault
        Bytes broken = i % 2 ? bmp : png;
        for (int k = 0; k < 1 + i % 8; k++)
            broken[random() % (k % 2 ? broken.size() : 60)] = static_cast<std::uint8_t>(random());
        ClipboardPicture any;
        if (DecodeClipboard(broken, i % 2 ? Bmp() : Png(), any)) {
            EXPECT_GT(any.bitmap.GetWidth(), 0);
        }
    }
}
