#pragma once

#include <cstddef>
#include <cstdint>

// Row kernels of the filters, compiled once for each kind of processor, the best chosen at run time. Rows are bytes, the
// channels in turn; neighbours stand 3 bytes apart. All give the same bytes on every processor.

namespace kestrune {

/// out[i] = max or min over `nRows` (at least 1) rows at i.
void MaxOfRows(const std::uint8_t* const* ppRows, int nRows, std::uint8_t* pOut, std::size_t nBytes);
void MinOfRows(const std::uint8_t* const* ppRows, int nRows, std::uint8_t* pOut, std::size_t nBytes);

/// The mean of 3 x 3 bytes, truncated: sums of three rows first. `pSum` has room for nBytes + 6 numbers and is scratch;
/// the rows' ends stand for the pixels beyond them.
void BoxRow(const std::uint8_t* const* ppRows, std::uint16_t* pSum, std::uint8_t* pOut, std::size_t nBytes);

/// The two weights of each byte of a row for sharpening: positive i x 800 / nDivisor, negative (positive + 4 - 8 i) >> 3.
/// `nDivisor` is 1..99.
void SharpenWeights(const std::uint8_t* pRow, int nDivisor, std::int32_t* pPositive, std::int32_t* pNegative,
                    std::size_t nBytes);
/// Sharpens the pixels between the first and the last one of a row: `ppNegative` are three rows of weights (above, own,
/// below), `pPositive` the own row's, the result their difference with 3 bits of fraction. `pSum` is scratch of nBytes.
void SharpenRow(const std::int32_t* const* ppNegative, const std::int32_t* pPositive, std::int32_t* pSum,
                std::uint8_t* pOut, std::size_t nBytes);

/// sum[i] += row[i].
void AddBytes(std::uint16_t* pSum, const std::uint8_t* pRow, std::size_t nBytes);
/// out[i] = sum[i] / nDivisor, for divisors of 1..257.
void DivideSums(const std::uint16_t* pSum, int nDivisor, std::uint8_t* pOut, std::size_t nBytes);

void BytesToFloats(const std::uint8_t* pIn, float* pOut, std::size_t nBytes);
/// sum[i] += fWeight * row[i]; exact for whole numbers while sums stay below 2^24.
void AddWeighted(float* pSum, const float* pRow, float fWeight, std::size_t nBytes);
/// out[i] = sum[i] / nScale (truncated) + nOffset, limited to 0..255.
void ScaleSums(const float* pSum, int nScale, int nOffset, std::uint8_t* pOut, std::size_t nBytes);

/// Unsharp mask in place: `pBlurred` becomes the result. Sums stay whole: `nFactor` is 0..5.
void UnsharpRow(const std::uint8_t* pSource, std::uint8_t* pBlurred, int nFactor, int nThreshold, std::size_t nBytes);

/// The smallest and the largest byte of a row, joined to what the two hold.
void RangeOfRow(const std::uint8_t* pRow, std::size_t nBytes, std::uint8_t& nMin, std::uint8_t& nMax);

/// (brightest + darkest) / 2 of each pixel, one byte a pixel; the brightest channel of each.
void GreyRow(const std::uint8_t* pRow, std::uint8_t* pGrey, std::size_t nPixels);
void BrightestRow(const std::uint8_t* pRow, std::uint8_t* pBrightest, std::size_t nPixels);

/// Each byte becomes its entry of a table of 256, which stands at an address that is a multiple of 16.
void LookUpBytes(const std::uint8_t* pTable, const std::uint8_t* pIn, std::uint8_t* pOut, std::size_t nBytes);
/// The same with a table for each byte of a pixel, the three after each other.
void LookUpChannels(const std::uint8_t* pTables, const std::uint8_t* pIn, std::uint8_t* pOut, std::size_t nPixels);

} // namespace kestrune
