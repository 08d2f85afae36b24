#include "doc/files/ImageFile.h"

#include "doc/files/BmpFile.h"
#include "doc/files/ByteReader.h"
#include "doc/files/ClpFile.h"
#include "doc/files/CutFile.h"
#include "doc/files/GifFile.h"
#include "doc/files/IcoFile.h"
#include "doc/files/ImportProcess.h"
#include "doc/files/JpegFile.h"
#include "doc/files/MspFile.h"
#include "doc/files/PcxWriter.h"
#include "doc/files/PictWriter.h"
#include "doc/files/PngFile.h"
#include "doc/files/PsdReader.h"
#include "doc/files/PsdWriter.h"
#include "doc/files/TiffFile.h"
#include "doc/files/WebpFile.h"
#include "doc/files/WpgFile.h"

#include <array>
#include <iterator>

namespace kestrune {

namespace {

using Span = std::span<const std::uint8_t>;

bool HasText(Span file, std::size_t nOffset, std::string_view text)
{
    if (file.size() < nOffset + text.size())
        return false;
    for (std::size_t i = 0; i < text.size(); i++)
        if (file[nOffset + i] != static_cast<std::uint8_t>(text[i]))
            return false;
    return true;
}

int ByteAt(Span file, std::size_t nOffset)
{
    return nOffset < file.size() ? file[nOffset] : -1;
}

bool IsBmp(Span file)
{
    return HasText(file, 0, "BM") && file.size() >= 26;
}

bool IsClp(Span file)
{
    CByteReader in(file);
    const int nKey = in.U16LE(), nFormats = in.U16LE();
    return in.Ok() && nKey == 0xC350 && nFormats < 256;
}

bool IsDcx(Span file)
{
    return HasText(file, 0, "\xB1\x68\xDE\x3A");
}

bool IsEps(Span file)
{
    return HasText(file, 0, "%!PS") || HasText(file, 0, "\xC5\xD0\xD3\xC6");
}

bool IsGif(Span file)
{
    return HasText(file, 0, "GIF87a") || HasText(file, 0, "GIF89a");
}

bool IsIco(Span file)
{
    CByteReader in(file);
    const int nReserved = in.U16LE(), nKind = in.U16LE();
    const unsigned nIcons = in.U16LE();
    in.Skip(12);
    const std::uint32_t nOffset = in.U32LE(); // of the first icon: behind the directory
    return in.Ok() && nReserved == 0 && nKind == 1 && nIcons > 0 && nOffset >= 6 + 16 * nIcons;
}

bool IsJpeg(Span file)
{
    return HasText(file, 0, "\xFF\xD8\xFF");
}

/// Only one that kept its envelope of the other system; the bare bytes have no mark.
bool IsPntg(Span file)
{
    return ByteAt(file, 0) == 0 && HasText(file, 65, "PNTG");
}

bool IsMsp(Span file)
{
    return HasText(file, 0, "DanM") || HasText(file, 0, "LinS");
}

bool IsPcd(Span file)
{
    return HasText(file, 2048, "PCD_IPI") || HasText(file, 0, "PCD_OPA");
}

bool IsPcx(Span file)
{
    const int nVersion = ByteAt(file, 1), nCoding = ByteAt(file, 2), nBits = ByteAt(file, 3);
    return ByteAt(file, 0) == 10 && nVersion <= 5 && nVersion != 1 && nCoding >= 0 && nCoding <= 1
        && (nBits == 1 || nBits == 2 || nBits == 4 || nBits == 8) && file.size() >= 128;
}

/// The version opcode stands behind 512 bytes that belong to nobody, the size and the frame.
bool IsPict(Span file)
{
    return HasText(file, 522, std::string_view("\x00\x11\x02\xFF", 4)) || HasText(file, 522, "\x11\x01");
}

bool IsPng(Span file)
{
    return HasText(file, 0, "\x89PNG\r\n\x1A\n");
}

bool IsPsd(Span file)
{
    return HasText(file, 0, "8BPS");
}

bool IsSgi(Span file)
{
    return HasText(file, 0, "\x01\xDA") && ByteAt(file, 2) >= 0 && ByteAt(file, 2) <= 1 && ByteAt(file, 3) >= 1
        && ByteAt(file, 3) <= 2 && ByteAt(file, 4) == 0;
}

/// Only the second version has a mark, and it stands at the end.
bool IsTga(Span file)
{
    return file.size() > 44 && HasText(file, file.size() - 18, "TRUEVISION-XFILE.");
}

bool IsTiff(Span file)
{
    return HasText(file, 0, std::string_view("II*\0", 4)) || HasText(file, 0, std::string_view("MM\0*", 4))
        || HasText(file, 0, std::string_view("II+\0", 4)) || HasText(file, 0, std::string_view("MM\0+", 4));
}

bool IsWmf(Span file)
{
    CByteReader in(file);
    if (in.U32LE() == 0x9AC6CDD7)
        return true;
    in = CByteReader(file);
    const int nKind = in.U16LE(), nHeaderWords = in.U16LE(), nVersion = in.U16LE();
    return in.Ok() && (nKind == 1 || nKind == 2) && nHeaderWords == 9 && (nVersion == 0x100 || nVersion == 0x300);
}

bool IsWpg(Span file)
{
    return HasText(file, 0, "\xFFWPC") && ByteAt(file, 9) == 0x16;
}

bool IsWebP(Span file)
{
    return HasText(file, 0, "RIFF") && HasText(file, 8, "WEBP");
}

/// True when a box file's main brand, or one it is compatible with, is among these.
bool HasBrand(Span file, std::initializer_list<std::string_view> brands)
{
    if (!HasText(file, 4, "ftyp"))
        return false;
    CByteReader in(file);
    const std::size_t nEnd = std::min<std::size_t>({in.U32BE(), file.size(), 512});
    for (std::size_t n = 8; n + 4 <= nEnd; n += n == 8 ? 8 : 4) // the number of the brand's version follows the main one
        for (const std::string_view brand : brands)
            if (HasText(file, n, brand))
                return true;
    return false;
}

bool IsAvif(Span file)
{
    return HasBrand(file, {"avif", "avis"});
}

bool IsHeic(Span file)
{
    return !IsAvif(file) && HasBrand(file, {"heic", "heix", "heim", "heis", "hevc", "hevx", "mif1", "msf1"});
}

bool IsJpegXl(Span file)
{
    return HasText(file, 0, "\xFF\x0A") || HasText(file, 0, std::string_view("\0\0\0\x0CJXL \r\n\x87\n", 12));
}

/// Markup whose first lines open the picture's element.
bool IsSvg(Span file)
{
    const std::size_t nHead = std::min<std::size_t>(file.size(), 8192);
    const std::string_view head(reinterpret_cast<const char*>(file.data()), nHead);
    const std::size_t nFirst = head.find_first_not_of("\xEF\xBB\xBF \t\r\n");
    return nFirst != head.npos && head[nFirst] == '<' && head.find("<svg") != head.npos
        && head.find('\0') == head.npos;
}

constexpr ImageFormatRow c_aFormats[] = {
    // format, name, description, extensions, content, reader, helper's name, writer, save: extension, code, bits, quality, index
    {ImageFormat::Bmp, "BMP", "비트맵", "bmp rle", IsBmp, ReadBmp, nullptr, WriteBmp, "bmp", 6, 24, 0, 3},
    {ImageFormat::Clp, "CLP", "클립보드 파일", "clp", IsClp, ReadClp, nullptr, nullptr, "", 0, 0, 0, 0},
    {ImageFormat::Cut, "CUT", "닥터 할로", "cut", nullptr, ReadCut, nullptr, WriteCut, "cut", 108, 8, 0, 6},
    {ImageFormat::Dib, "DIB", "장치 독립 비트맵", "dib", nullptr, ReadBmp, nullptr, nullptr, "", 0, 0, 0, 0},
    {ImageFormat::Dcx, "DCX", "여러 쪽 페인트브러시", "dcx", IsDcx, nullptr, "DCX", nullptr, "", 0, 0, 0, 0},
    {ImageFormat::Eps, "EPS", "캡슐화된 포스트스크립트", "eps epsf epsi", IsEps, nullptr, "EPS", nullptr, "", 0, 0, 0, 0},
    {ImageFormat::Gif, "GIF", "그래픽 교환 형식", "gif", IsGif, ReadGif, nullptr, nullptr, "", 0, 0, 0, 0},
    {ImageFormat::Ico, "ICO", "아이콘", "ico", IsIco, ReadIco, nullptr, nullptr, "", 0, 0, 0, 0},
    {ImageFormat::Jpeg, "JPEG", "JPEG 사진", "jpg jpeg jpe jfif", IsJpeg, ReadJpeg, nullptr, WriteJpeg, "jpg", 10, 24, 30, 2},
    {ImageFormat::Pntg, "PNTG", "맥페인트", "pntg mac", IsPntg, nullptr, "MAC", nullptr, "", 0, 0, 0, 0},
    {ImageFormat::Msp, "MSP", "초기 그림판", "msp", IsMsp, ReadMsp, nullptr, nullptr, "", 0, 0, 0, 0},
    {ImageFormat::Pcd, "PCD", "포토 CD", "pcd", IsPcd, nullptr, "PCD", nullptr, "", 0, 0, 0, 0},
    {ImageFormat::Pcx, "PCX", "페인트브러시", "pcx", IsPcx, nullptr, "PCX", WritePcx, "pcx", 1, 24, 0, 10},
    {ImageFormat::Pict, "PICT", "퀵드로 그림", "pict pct pic", IsPict, nullptr, "PICT", WritePict, "pct", 56, 24, 0, 7},
    {ImageFormat::Png, "PNG", "이동식 네트워크 그래픽", "png apng", IsPng, ReadPng, nullptr, WritePng, "", 0, 0, 0, 0},
    {ImageFormat::Psd, "PSD", "PSD 문서", "psd psb", IsPsd, ReadPsd, nullptr, WritePsd, "psd", 76, 24, 0, 4},
    {ImageFormat::Sgi, "SGI", "SGI 그림", "sgi rgb rgba bw", IsSgi, nullptr, "SGI", WriteSgi, "sgi", 142, 24, 0, 8},
    {ImageFormat::Tga, "TGA", "타가", "tga icb vda vst", IsTga, nullptr, "TGA", nullptr, "", 0, 0, 0, 0},
    {ImageFormat::Tiff, "TIFF", "태그 이미지 파일", "tif tiff", IsTiff, ReadTiff, nullptr, WriteTiff, "tif", 3, 24, 0, 5},
    {ImageFormat::Wmf, "WMF", "윈도우 메타파일", "wmf", IsWmf, nullptr, "WMF", nullptr, "", 0, 0, 0, 0},
    {ImageFormat::Wpg, "WPG", "워드퍼펙트 그래픽", "wpg", IsWpg, ReadWpg, "WPG", WriteWpg, "wpg", 54, 8, 0, 9},
    {ImageFormat::WebP, "WebP", "웹 사진", "webp", IsWebP, ReadWebP, nullptr, WriteWebP, "", 0, 0, 0, 0},
    {ImageFormat::Avif, "AVIF", "AV1 사진", "avif avifs", IsAvif, nullptr, "AVIF", nullptr, "", 0, 0, 0, 0},
    {ImageFormat::Heic, "HEIC", "고효율 사진", "heic heif hif", IsHeic, nullptr, "HEIC", nullptr, "", 0, 0, 0, 0},
    {ImageFormat::JpegXl, "JPEG XL", "JPEG XL 사진", "jxl", IsJpegXl, nullptr, "JXL", nullptr, "", 0, 0, 0, 0},
    {ImageFormat::Svg, "SVG", "벡터 그래픽", "svg svgz", IsSvg, nullptr, nullptr, nullptr, "", 0, 0, 0, 0},
};

constexpr bool RowsStandAtTheirNumbers()
{
    for (std::size_t i = 0; i < std::size(c_aFormats); i++)
        if (c_aFormats[i].format != static_cast<ImageFormat>(i))
            return false;
    return std::size(c_aFormats) == static_cast<std::size_t>(ImageFormat::Count);
}
static_assert(RowsStandAtTheirNumbers());

constexpr bool EachSaveIndexStandsOnce()
{
    for (int nIndex = 2; nIndex <= 10; nIndex++) {
        int nRows = 0;
        for (const ImageFormatRow& row : c_aFormats)
            nRows += row.nSaveIndex == nIndex && row.nSaveCode != 0 && !row.saveExtension.empty();
        if (nRows != 1)
            return false;
    }
    return true;
}
static_assert(EachSaveIndexStandsOnce());

} // namespace

std::span<const ImageFormatRow> ImageFormats()
{
    return c_aFormats;
}

} // namespace kestrune
