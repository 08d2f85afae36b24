#include "doc/files/PngFile.h"

#include "base/ParallelRows.h"

#include <array>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <memory>

#include <libdeflate.h>

namespace kestrune {

namespace {

void AppendBig(std::vector<std::uint8_t>& out, std::uint32_t n)
{
    for (int nShift = 24; nShift >= 0; nShift -= 8)
        out.push_back(static_cast<std::uint8_t>(n >> nShift));
}

void AppendChunk(std::vector<std::uint8_t>& out, const char* pszType, std::span<const std::uint8_t> data)
{
    AppendBig(out, static_cast<std::uint32_t>(data.size()));
    const std::size_t nStart = out.size();
    out.insert(out.end(), pszType, pszType + 4);
    out.insert(out.end(), data.begin(), data.end());
    AppendBig(out, libdeflate_crc32(0, out.data() + nStart, out.size() - nStart));
}

int Paeth(int a, int b, int c)
{
    const int pa = std::abs(b - c), pb = std::abs(a - c), pc = std::abs(a + b - 2 * c);
    return pa <= pb && pa <= pc ? a : pb <= pc ? b : c;
}

/// One row by one filter; `pAbove` is the row before it, or zeroes. `nStep` bytes lie between a pixel and its neighbour.
template <int FILTER>
void FilterRow(const std::uint8_t* p, const std::uint8_t* pAbove, std::size_t nBytes, std::size_t nStep, std::uint8_t* pTo)
{
    for (std::size_t i = 0; i < nBytes; i++) {
        const int a = i >= nStep ? p[i - nStep] : 0, b = pAbove[i], c = i >= nStep ? pAbove[i - nStep] : 0;
        int nGuess = 0;
        if constexpr (FILTER == 1)
            nGuess = a;
        else if constexpr (FILTER == 2)
            nGuess = b;
        else if constexpr (FILTER == 3)
            nGuess = (a + b) >> 1;
        else if constexpr (FILTER == 4)
            nGuess = Paeth(a, b, c);
        pTo[i] = static_cast<std::uint8_t>(p[i] - nGuess);
    }
}

using FilterFunction = void (*)(const std::uint8_t*, const std::uint8_t*, std::size_t, std::size_t, std::uint8_t*);
constexpr std::array<FilterFunction, 5> c_aFilters = {FilterRow<0>, FilterRow<1>, FilterRow<2>, FilterRow<3>, FilterRow<4>};

std::uint64_t SumOfDifferences(const std::uint8_t* p, std::size_t nBytes)
{
    std::uint64_t nSum = 0;
    for (std::size_t i = 0; i < nBytes; i++)
        nSum += static_cast<std::uint64_t>(std::abs(static_cast<std::int8_t>(p[i])));
    return nSum;
}

/// The row in the order of the file: red first, or indices packed.
void PackRow(const LBitmapBase& bitmap, int y, std::uint8_t* pTo)
{
    const std::uint8_t* p = bitmap.Row(y);
    const int nWidth = bitmap.GetWidth(), nBits = bitmap.GetBitsPerPixel();
    if (nBits == 24) {
        for (int x = 0; x < nWidth; x++, p += 3, pTo += 3) {
            pTo[0] = p[2];
            pTo[1] = p[1];
            pTo[2] = p[0];
        }
    } else if (nBits == 8) {
        std::memcpy(pTo, p, static_cast<std::size_t>(nWidth));
    } else {
        const int nPerByte = 8 / nBits, nMask = (1 << nBits) - 1;
        std::memset(pTo, 0, static_cast<std::size_t>((nWidth + nPerByte - 1) / nPerByte));
        for (int x = 0; x < nWidth; x++)
            pTo[x / nPerByte] |= static_cast<std::uint8_t>((p[x] & nMask) << (8 - nBits - x % nPerByte * nBits));
    }
}

/// All rows filtered, each led by its filter's number. Indices are left as they are: their differences mean nothing.
std::unique_ptr<std::uint8_t[]> FilteredRows(const LBitmapBase& bitmap, std::size_t nBytes)
{
    const int nHeight = bitmap.GetHeight();
    std::unique_ptr<std::uint8_t[]> filtered(new std::uint8_t[(nBytes + 1) * static_cast<std::size_t>(nHeight)]);
    const bool bChoose = bitmap.GetBitsPerPixel() == 24 || (bitmap.GetBitsPerPixel() == 8 && bitmap.IsGrayScale());
    const std::size_t nStep = bitmap.GetBitsPerPixel() == 24 ? 3 : 1;
    ParallelRows(nHeight, 32, [&](int y0, int y1) {
        std::vector<std::uint8_t> rows(nBytes * 3);
        std::uint8_t *pRow = rows.data(), *pAbove = pRow + nBytes, *pTry = pAbove + nBytes;
        if (y0 > 0)
            PackRow(bitmap, y0 - 1, pAbove);
        for (int y = y0; y < y1; y++) {
            std::uint8_t* pTo = filtered.get() + static_cast<std::size_t>(y) * (nBytes + 1);
            PackRow(bitmap, y, pRow);
            pTo[0] = 0;
            std::memcpy(pTo + 1, pRow, nBytes);
            std::uint64_t nLeast = bChoose ? SumOfDifferences(pRow, nBytes) : 0;
            for (std::size_t i = 1; bChoose && i < c_aFilters.size(); i++) {
                c_aFilters[i](pRow, pAbove, nBytes, nStep, pTry);
                if (const std::uint64_t nSum = SumOfDifferences(pTry, nBytes); nSum < nLeast) {
                    nLeast = nSum;
                    pTo[0] = static_cast<std::uint8_t>(i);
                    std::memcpy(pTo + 1, pTry, nBytes);
                }
            }
            std::swap(pRow, pAbove);
        }
    });
    return filtered;
}

void AppendHeader(const LBitmapBase& bitmap, std::vector<std::uint8_t>& out)
{
    constexpr std::uint8_t aMark[] = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};
    out.insert(out.end(), std::begin(aMark), std::end(aMark));
    const int nBits = bitmap.GetBitsPerPixel();
    std::vector<std::uint8_t> data;
    AppendBig(data, static_cast<std::uint32_t>(bitmap.GetWidth()));
    AppendBig(data, static_cast<std::uint32_t>(bitmap.GetHeight()));
    constexpr std::uint8_t nGrey = 0, nColor = 2, nIndexed = 3;
    data.push_back(static_cast<std::uint8_t>(nBits == 24 ? 8 : nBits));
    data.push_back(nBits == 24 ? nColor : bitmap.IsGrayScale() ? nGrey : nIndexed);
    data.insert(data.end(), {0, 0, 0}); // the only packing and filter methods there are; not interlaced
    AppendChunk(out, "IHDR", data);
    if (bitmap.GetXResolution() > 0 && bitmap.GetYResolution() > 0) {
        data.clear();
        AppendBig(data, static_cast<std::uint32_t>(std::lround(bitmap.GetXResolution() / 0.0254)));
        AppendBig(data, static_cast<std::uint32_t>(std::lround(bitmap.GetYResolution() / 0.0254)));
        data.push_back(1); // dots a metre
        AppendChunk(out, "pHYs", data);
    }
    if (nBits < 24 && !bitmap.IsGrayScale()) {
        data.clear();
        for (const RGBQUAD& color : bitmap.Palette())
            data.insert(data.end(), {color.rgbRed, color.rgbGreen, color.rgbBlue});
        AppendChunk(out, "PLTE", data);
    }
}

} // namespace

int WritePng(const LBitmapBase& bitmap, int nQuality, std::vector<std::uint8_t>& out)
{
    const auto nWidth = static_cast<std::size_t>(bitmap.GetWidth());
    const int nBits = bitmap.GetBitsPerPixel();
    const std::size_t nBytes = nBits == 24 ? nWidth * 3 : (nWidth * static_cast<std::size_t>(nBits) + 7) / 8;
    const std::size_t nTotal = (nBytes + 1) * static_cast<std::size_t>(bitmap.GetHeight());
    AppendHeader(bitmap, out);
    const auto filtered = FilteredRows(bitmap, nBytes);
    const int nLevel = nQuality <= 2 ? 9 : nQuality <= 128 ? 6 : 1;
    const std::unique_ptr<libdeflate_compressor, decltype(&libdeflate_free_compressor)> compressor(
        libdeflate_alloc_compressor(nLevel), &libdeflate_free_compressor);
    if (!compressor)
        return IMG_ERROR_MEMORY;
    const std::size_t nBound = libdeflate_zlib_compress_bound(compressor.get(), nTotal);
    std::unique_ptr<std::uint8_t[]> packed(new std::uint8_t[nBound]);
    const std::size_t nPacked = libdeflate_zlib_compress(compressor.get(), filtered.get(), nTotal, packed.get(), nBound);
    if (nPacked == 0)
        return IMG_ERROR_MEMORY;
    // One chunk may hold at most 2^31 - 1 bytes; smaller ones also let a reader show the picture as it arrives.
    constexpr std::size_t nMost = 1u << 24;
    out.reserve(out.size() + nPacked + (nPacked / nMost + 2) * 12);
    for (std::size_t i = 0; i < nPacked; i += nMost)
        AppendChunk(out, "IDAT", {packed.get() + i, std::min(nMost, nPacked - i)});
    AppendChunk(out, "IEND", {});
    return IMG_SUCCESS;
}

} // namespace kestrune
