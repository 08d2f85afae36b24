#include "doc/files/TiffFile.h"

#include "base/Arith.h"
#include "doc/files/IccTransform.h"
#include "doc/files/Orientation.h"
#include "doc/files/TiffMemory.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <memory>

namespace kestrune {

namespace {

struct TiffHeader {
    std::uint32_t nWidth = 0, nHeight = 0;
    std::uint16_t nBits = 1, nSamples = 1, nPhotometric = PHOTOMETRIC_MINISBLACK, nPlanar = PLANARCONFIG_CONTIG;
    std::uint16_t nOrientation = ORIENTATION_TOPLEFT, nFormat = SAMPLEFORMAT_UINT;
    bool bTiled = false;
    std::uint32_t nTileWidth = 0, nTileHeight = 0; ///< of a strip: the picture's width and the rows in it
};

bool ReadHeader(TIFF* pTiff, TiffHeader& header)
{
    if (!TIFFGetField(pTiff, TIFFTAG_IMAGEWIDTH, &header.nWidth) || !TIFFGetField(pTiff, TIFFTAG_IMAGELENGTH, &header.nHeight))
        return false;
    TIFFGetFieldDefaulted(pTiff, TIFFTAG_BITSPERSAMPLE, &header.nBits);
    TIFFGetFieldDefaulted(pTiff, TIFFTAG_SAMPLESPERPIXEL, &header.nSamples);
    TIFFGetFieldDefaulted(pTiff, TIFFTAG_PLANARCONFIG, &header.nPlanar);
    TIFFGetFieldDefaulted(pTiff, TIFFTAG_ORIENTATION, &header.nOrientation);
    TIFFGetFieldDefaulted(pTiff, TIFFTAG_SAMPLEFORMAT, &header.nFormat);
    if (!TIFFGetField(pTiff, TIFFTAG_PHOTOMETRIC, &header.nPhotometric))
        header.nPhotometric = header.nSamples >= 3 ? PHOTOMETRIC_RGB : PHOTOMETRIC_MINISBLACK;
    header.bTiled = TIFFIsTiled(pTiff) != 0;
    if (header.bTiled) {
        TIFFGetField(pTiff, TIFFTAG_TILEWIDTH, &header.nTileWidth);
        TIFFGetField(pTiff, TIFFTAG_TILELENGTH, &header.nTileHeight);
    } else {
        header.nTileWidth = header.nWidth;
        TIFFGetFieldDefaulted(pTiff, TIFFTAG_ROWSPERSTRIP, &header.nTileHeight);
        header.nTileHeight = std::min(header.nTileHeight, header.nHeight);
    }
    return header.nTileWidth > 0 && header.nTileHeight > 0;
}

bool IsGrey(const TiffHeader& header)
{
    return header.nPhotometric == PHOTOMETRIC_MINISBLACK || header.nPhotometric == PHOTOMETRIC_MINISWHITE;
}

/// One sample of at most 8 bits a pixel: kept as index or grey, at its own depth.
bool IsIndexed(const TiffHeader& header)
{
    const int n = header.nBits;
    return (IsGrey(header) || header.nPhotometric == PHOTOMETRIC_PALETTE) && header.nSamples == 1
        && (n == 1 || n == 2 || n == 4 || n == 8) && header.nFormat == SAMPLEFORMAT_UINT;
}

/// Decodes strip by strip, or tile by tile, and hands each row piece to `use(x, y, pixels, pointer)`. False on damage.
template <typename Use>
bool ForEachRowPiece(TIFF* pTiff, const TiffHeader& header, const Use& use)
{
    const tmsize_t nBlockBytes = header.bTiled ? TIFFTileSize(pTiff) : TIFFStripSize(pTiff);
    const tmsize_t nRowBytes = header.bTiled ? TIFFTileRowSize(pTiff) : TIFFScanlineSize(pTiff);
    if (nBlockBytes <= 0 || nRowBytes <= 0)
        return false;
    std::vector<std::uint8_t> block(static_cast<std::size_t>(nBlockBytes));
    for (std::uint32_t y0 = 0; y0 < header.nHeight; y0 += header.nTileHeight) {
        const std::uint32_t nRows = std::min(header.nTileHeight, header.nHeight - y0);
        if (static_cast<tmsize_t>(nRows) * nRowBytes > nBlockBytes)
            return false;
        for (std::uint32_t x0 = 0; x0 < header.nWidth; x0 += header.nTileWidth) {
            const tmsize_t nGot = header.bTiled
                ? TIFFReadEncodedTile(pTiff, TIFFComputeTile(pTiff, x0, y0, 0, 0), block.data(), nBlockBytes)
                : TIFFReadEncodedStrip(pTiff, TIFFComputeStrip(pTiff, y0, 0), block.data(), static_cast<tmsize_t>(nRows) * nRowBytes);
            if (nGot < static_cast<tmsize_t>(nRows) * nRowBytes)
                return false;
            const int nPixels = static_cast<int>(std::min(header.nTileWidth, header.nWidth - x0));
            for (std::uint32_t i = 0; i < nRows; i++)
                use(static_cast<int>(x0), static_cast<int>(y0 + i), nPixels, block.data() + static_cast<tmsize_t>(i) * nRowBytes);
        }
    }
    return true;
}

std::vector<RGBQUAD> PaletteOf(TIFF* pTiff, const TiffHeader& header)
{
    std::uint16_t *pRed = nullptr, *pGreen = nullptr, *pBlue = nullptr;
    if (header.nPhotometric != PHOTOMETRIC_PALETTE || !TIFFGetField(pTiff, TIFFTAG_COLORMAP, &pRed, &pGreen, &pBlue))
        return {};
    const std::size_t nColors = std::size_t{1} << header.nBits;
    // Old writers put bytes where 16 bits belong.
    bool bBytes = true;
    for (std::size_t i = 0; i < nColors; i++)
        bBytes = bBytes && pRed[i] < 256 && pGreen[i] < 256 && pBlue[i] < 256;
    const auto byteOf = [&](std::uint16_t n) { return static_cast<std::uint8_t>(bBytes ? n : (n * 255u + 32767) / 65535); };
    std::vector<RGBQUAD> palette(nColors);
    for (std::size_t i = 0; i < nColors; i++)
        palette[i] = {byteOf(pBlue[i]), byteOf(pGreen[i]), byteOf(pRed[i]), 0};
    return palette;
}

int ReadIndexed(TIFF* pTiff, const TiffHeader& header, LBitmapBase& bitmap)
{
    const int nDepth = header.nBits;
    const bool bPalette = header.nPhotometric == PHOTOMETRIC_PALETTE;
    const auto palette = PaletteOf(pTiff, header);
    if (bPalette && palette.empty())
        return IMG_ERROR_FILE_READ;
    bitmap.Create(static_cast<int>(header.nWidth), static_cast<int>(header.nHeight), nDepth == 2 ? 4 : nDepth, ORDER_BGRORGRAY, palette);
    const int nMask = (1 << nDepth) - 1, nPerByte = 8 / nDepth;
    std::uint8_t aMap[256];
    for (int i = 0; i < 256; i++) {
        const int n = header.nPhotometric == PHOTOMETRIC_MINISWHITE ? nMask - (i & nMask) : i & nMask;
        aMap[i] = static_cast<std::uint8_t>(nDepth == 2 && !bPalette ? n * 5 : n); // 4 greys spread over the 16
    }
    const bool bOk = ForEachRowPiece(pTiff, header, [&](int x, int y, int nPixels, const std::uint8_t* p) {
        std::uint8_t* pTo = bitmap.WriteRow(y) + x;
        for (int i = 0; i < nPixels; i++)
            pTo[i] = aMap[(p[i / nPerByte] >> (8 - nDepth - i % nPerByte * nDepth)) & nMask];
    });
    return bOk ? IMG_SUCCESS : IMG_ERROR_FILE_READ;
}

int ReadRgb(TIFF* pTiff, const TiffHeader& header, LBitmapBase& bitmap)
{
    bitmap.Create(static_cast<int>(header.nWidth), static_cast<int>(header.nHeight), 24);
    const bool bOk = ForEachRowPiece(pTiff, header, [&](int x, int y, int nPixels, const std::uint8_t* p) {
        std::uint8_t* pTo = bitmap.WriteRow(y) + static_cast<std::ptrdiff_t>(x) * 3;
        for (int i = 0; i < nPixels; i++, p += 3, pTo += 3) {
            pTo[0] = p[2];
            pTo[1] = p[1];
            pTo[2] = p[0];
        }
    });
    return bOk ? IMG_SUCCESS : IMG_ERROR_FILE_READ;
}

int ReadCmyk(TIFF* pTiff, const TiffHeader& header, LBitmapBase& bitmap)
{
    bitmap.Create(static_cast<int>(header.nWidth), static_cast<int>(header.nHeight), 24);
    std::uint32_t nProfile = 0;
    void* pProfile = nullptr;
    if (!TIFFGetField(pTiff, TIFFTAG_ICCPROFILE, &nProfile, &pProfile))
        nProfile = 0;
    const auto transform = nProfile > 0 ? CIccTransform::FromInks({static_cast<const std::uint8_t*>(pProfile), nProfile}) : nullptr;
    std::vector<std::uint8_t> inks(static_cast<std::size_t>(header.nTileWidth) * 4);
    const int nSamples = header.nSamples, nSampleBytes = header.nBits / 8;
    const bool bOk = ForEachRowPiece(pTiff, header, [&](int x, int y, int nPixels, const std::uint8_t* p) {
        for (int i = 0; i < nPixels; i++)
            for (int c = 0; c < 4; c++, p += c == 4 ? (nSamples - 3) * nSampleBytes : nSampleBytes) {
                std::uint16_t n = *p;
                if (nSampleBytes == 2) {
                    std::memcpy(&n, p, 2); // the library has brought it to this machine's order
                    n = static_cast<std::uint16_t>((n * 255u + 32767) / 65535);
                }
                inks[static_cast<std::size_t>(i) * 4 + static_cast<std::size_t>(c)] = static_cast<std::uint8_t>(255 - n);
            }
        std::uint8_t* pTo = bitmap.WriteRow(y) + static_cast<std::ptrdiff_t>(x) * 3;
        if (transform)
            transform->Row(inks.data(), pTo, nPixels);
        else
            InksToBgr(inks.data(), pTo, nPixels);
    });
    return bOk ? IMG_SUCCESS : IMG_ERROR_FILE_READ;
}

/// Lays a row of the library's own form (red lowest, colours already scaled by their alpha) over white.
void RowOverWhite(const std::uint32_t* p, int nPixels, bool bGrey, bool bOpaque, std::uint8_t* pTo)
{
    for (int i = 0; i < nPixels; i++) {
        const std::uint32_t nPaper = bOpaque ? 0 : 255 - TIFFGetA(p[i]);
        const auto add = [&](std::uint32_t n) { return static_cast<std::uint8_t>(std::min(n + nPaper, 255u)); };
        if (!bGrey) {
            *pTo++ = add(TIFFGetB(p[i]));
            *pTo++ = add(TIFFGetG(p[i]));
        }
        *pTo++ = add(TIFFGetR(p[i]));
    }
}

/// Everything else the library turns into colours itself, a band of rows at a time.
int ReadThroughRgba(TIFF* pTiff, const TiffHeader& header, LBitmapBase& bitmap)
{
    char szError[1024];
    TIFFRGBAImage image;
    if (!TIFFRGBAImageOK(pTiff, szError) || !TIFFRGBAImageBegin(&image, pTiff, 1, szError))
        return IMG_ERROR_BITS;
    const std::unique_ptr<TIFFRGBAImage, decltype(&TIFFRGBAImageEnd)> end(&image, &TIFFRGBAImageEnd);
    image.req_orientation = image.orientation; // rows as stored; turning upright is done afterwards for all alike
    bitmap.Create(static_cast<int>(header.nWidth), static_cast<int>(header.nHeight), IsGrey(header) ? 8 : 24, ORDER_BGRORGRAY);
    // An extra channel that the file does not call transparency is a saved selection or a spot colour: not shown. The
    // library takes it for an alpha by which the colours are scaled already, so they come out as they stand.
    std::uint16_t nExtra = 0, *pExtra = nullptr;
    TIFFGetFieldDefaulted(pTiff, TIFFTAG_EXTRASAMPLES, &nExtra, &pExtra);
    const bool bOpaque = nExtra == 0 || pExtra[0] == EXTRASAMPLE_UNSPECIFIED;
    const std::uint32_t nBand = std::max(1u, std::min(header.nTileHeight, header.nHeight));
    std::vector<std::uint32_t> raster(static_cast<std::size_t>(nBand) * header.nWidth);
    for (std::uint32_t y0 = 0; y0 < header.nHeight; y0 += nBand) {
        const std::uint32_t nRows = std::min(nBand, header.nHeight - y0);
        image.row_offset = static_cast<int>(y0);
        if (!TIFFRGBAImageGet(&image, raster.data(), header.nWidth, nRows))
            return IMG_ERROR_FILE_READ;
        for (std::uint32_t i = 0; i < nRows; i++)
            RowOverWhite(raster.data() + static_cast<std::size_t>(i) * header.nWidth, static_cast<int>(header.nWidth),
                         IsGrey(header), bOpaque, bitmap.WriteRow(static_cast<int>(y0 + i)));
    }
    return IMG_SUCCESS;
}

void SetResolutionOf(TIFF* pTiff, LBitmapBase& bitmap)
{
    float fX = 0, fY = 0;
    std::uint16_t nUnit = RESUNIT_INCH;
    TIFFGetField(pTiff, TIFFTAG_XRESOLUTION, &fX);
    TIFFGetField(pTiff, TIFFTAG_YRESOLUTION, &fY);
    TIFFGetFieldDefaulted(pTiff, TIFFTAG_RESOLUTIONUNIT, &nUnit);
    const double fScale = nUnit == RESUNIT_CENTIMETER ? 2.54 : nUnit == RESUNIT_INCH ? 1.0 : 0.0;
    const auto dpi = [&](double f) { return f * fScale >= 1 && f * fScale < 100000 ? static_cast<int>(std::lround(f * fScale)) : 0; };
    bitmap.SetResolution(dpi(fX), dpi(fY));
}

} // namespace

int ReadTiff(std::span<const std::uint8_t> file, LBitmapBase& bitmap)
{
    const auto nMostBytes = static_cast<std::uint64_t>(Limits().nMaxPixels) * 8;
    CTiffMemory memory(file, nMostBytes);
    TIFF* const pTiff = memory.Get();
    if (!pTiff)
        return IMG_ERROR_FILE_READ;
    TiffHeader header;
    if (!ReadHeader(pTiff, header))
        return IMG_ERROR_FILE_READ;
    if (!IsSaneSize(header.nWidth, header.nHeight, Limits()) || header.nTileWidth > (1u << 20) || header.nTileHeight > (1u << 20))
        return IMG_ERROR_MEMORY;
    const auto nBlock = static_cast<std::uint64_t>(header.bTiled ? TIFFTileSize64(pTiff) : TIFFStripSize64(pTiff));
    if (nBlock == 0 || nBlock > nMostBytes)
        return IMG_ERROR_MEMORY;

    LBitmapBase picture;
    const bool bTogether = header.nPlanar == PLANARCONFIG_CONTIG && header.nFormat == SAMPLEFORMAT_UINT;
    int nResult;
    if (IsIndexed(header))
        nResult = ReadIndexed(pTiff, header, picture);
    else if (bTogether && header.nPhotometric == PHOTOMETRIC_RGB && header.nBits == 8 && header.nSamples == 3)
        nResult = ReadRgb(pTiff, header, picture);
    else if (bTogether && header.nPhotometric == PHOTOMETRIC_SEPARATED && header.nSamples >= 4
             && (header.nBits == 8 || header.nBits == 16))
        nResult = ReadCmyk(pTiff, header, picture);
    else
        nResult = ReadThroughRgba(pTiff, header, picture);
    if (nResult != IMG_SUCCESS)
        return nResult;
    SetResolutionOf(pTiff, picture);
    ApplyOrientation(picture, header.nOrientation);
    bitmap.Copy(picture);
    return IMG_SUCCESS;
}

namespace {

void SetTags(TIFF* pTiff, const LBitmapBase& bitmap, TiffPacking packing)
{
    const bool bColor = bitmap.GetBitsPerPixel() == 24;
    TIFFSetField(pTiff, TIFFTAG_IMAGEWIDTH, bitmap.GetWidth());
    TIFFSetField(pTiff, TIFFTAG_IMAGELENGTH, bitmap.GetHeight());
    TIFFSetField(pTiff, TIFFTAG_BITSPERSAMPLE, 8);
    TIFFSetField(pTiff, TIFFTAG_SAMPLESPERPIXEL, bColor ? 3 : 1);
    TIFFSetField(pTiff, TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG);
    TIFFSetField(pTiff, TIFFTAG_ORIENTATION, ORIENTATION_TOPLEFT);
    const bool bPalette = !bColor && !bitmap.IsGrayScale();
    TIFFSetField(pTiff, TIFFTAG_PHOTOMETRIC,
                 bColor ? PHOTOMETRIC_RGB : bPalette ? PHOTOMETRIC_PALETTE : PHOTOMETRIC_MINISBLACK);
    if (bPalette) {
        std::vector<std::uint16_t> map(3 * 256, 0);
        for (std::size_t i = 0; i < bitmap.Palette().size(); i++) {
            map[i] = static_cast<std::uint16_t>(bitmap.Palette()[i].rgbRed * 257);
            map[256 + i] = static_cast<std::uint16_t>(bitmap.Palette()[i].rgbGreen * 257);
            map[512 + i] = static_cast<std::uint16_t>(bitmap.Palette()[i].rgbBlue * 257);
        }
        TIFFSetField(pTiff, TIFFTAG_COLORMAP, map.data(), map.data() + 256, map.data() + 512);
    }
    TIFFSetField(pTiff, TIFFTAG_COMPRESSION,
                 packing == TiffPacking::None ? COMPRESSION_NONE
                     : packing == TiffPacking::Lzw ? COMPRESSION_LZW : COMPRESSION_ADOBE_DEFLATE);
    if (packing != TiffPacking::None && !bPalette)
        TIFFSetField(pTiff, TIFFTAG_PREDICTOR, PREDICTOR_HORIZONTAL);
    TIFFSetField(pTiff, TIFFTAG_ROWSPERSTRIP, TIFFDefaultStripSize(pTiff, 0) * 8); // 64 KB: large enough to pack well
    if (bitmap.GetXResolution() > 0 && bitmap.GetYResolution() > 0) {
        TIFFSetField(pTiff, TIFFTAG_XRESOLUTION, static_cast<double>(bitmap.GetXResolution()));
        TIFFSetField(pTiff, TIFFTAG_YRESOLUTION, static_cast<double>(bitmap.GetYResolution()));
        TIFFSetField(pTiff, TIFFTAG_RESOLUTIONUNIT, RESUNIT_INCH);
    }
}

} // namespace

int WriteTiffPacked(const LBitmapBase& bitmap, TiffPacking packing, std::vector<std::uint8_t>& out)
{
    if (bitmap.GetBitsPerPixel() != 24 && bitmap.GetBitsPerPixel() != 8)
        return IMG_ERROR_BITS;
    std::vector<std::uint8_t> bytes; // the library seeks from the start of its own file
    CTiffMemory memory(bytes);
    if (!memory.Get())
        return IMG_ERROR_MEMORY;
    SetTags(memory.Get(), bitmap, packing);
    std::vector<std::uint8_t> row(bitmap.GetRowBytes());
    for (int y = 0; y < bitmap.GetHeight(); y++) {
        const std::uint8_t* p = bitmap.Row(y);
        if (bitmap.GetBitsPerPixel() == 24)
            for (std::size_t i = 0; i < row.size(); i += 3) {
                row[i] = p[i + 2];
                row[i + 1] = p[i + 1];
                row[i + 2] = p[i];
            }
        else
            std::memcpy(row.data(), p, row.size()); // the predictor works in the row that it is given
        if (TIFFWriteScanline(memory.Get(), row.data(), static_cast<std::uint32_t>(y), 0) < 0)
            return IMG_ERROR_FILE_WRITE;
    }
    if (!memory.Close())
        return IMG_ERROR_MEMORY;
    out.insert(out.end(), bytes.begin(), bytes.end());
    return IMG_SUCCESS;
}

int WriteTiff(const LBitmapBase& bitmap, int, std::vector<std::uint8_t>& out)
{
    return WriteTiffPacked(bitmap, TiffPacking::Lzw, out);
}

} // namespace kestrune
