#include "selection/MaskFill.h"

#include "base/Messages.h"
#include "base/ParallelRows.h"
#include "base/StringTable.h"

#include <algorithm>
#include <cstring>

namespace kestrune {

namespace {

/// Bytes that one thread takes at a time: whole masks of less are not worth a second thread.
constexpr std::size_t c_nPiece = std::size_t{1} << 18;

template <typename Work>
void ForPieces(std::size_t nBytes, const Work& work)
{
    ParallelRows(static_cast<int>((nBytes + c_nPiece - 1) / c_nPiece), 4, [&](int n0, int n1) {
        work(n0 * c_nPiece, std::min(n1 * c_nPiece, nBytes));
    });
}

/// One loop for each way; the way is no choice inside it.
template <typename Mix>
void CombineBytes(const MaskPlane& mask, const std::uint8_t* pShape, const Mix& mix)
{
    ForPieces(mask.Size(), [&](std::size_t n0, std::size_t n1) {
        std::uint8_t* p = mask.pBytes;
        for (std::size_t i = n0; i < n1; i++)
            p[i] = static_cast<std::uint8_t>(mix(p[i], pShape[i]));
    });
}

} // namespace

void FillMask(const MaskPlane& mask, std::uint8_t nValue)
{
    std::memset(mask.pBytes, nValue, mask.Size());
}

void InvertMask(const MaskPlane& mask)
{
    ForPieces(mask.Size(), [&](std::size_t n0, std::size_t n1) {
        std::uint8_t* p = mask.pBytes;
        for (std::size_t i = n0; i < n1; i++)
            p[i] = static_cast<std::uint8_t>(255 - p[i]);
    });
}

void CombineMask(const MaskPlane& mask, const std::uint8_t* pShape, SelectMode mode)
{
    switch (mode) {
    case SelectMode::New:
    case SelectMode::Add:
        CombineBytes(mask, pShape, [](std::uint8_t a, std::uint8_t b) {
            const auto nSum = static_cast<std::uint8_t>(a + b); // in bytes alone, as a vector adds them
            return nSum < a ? std::uint8_t{255} : nSum;
        });
        break;
    case SelectMode::Subtract:
        CombineBytes(mask, pShape, [](std::uint8_t a, std::uint8_t b) { return a - std::min(a, b); });
        break;
    case SelectMode::Intersect:
        CombineBytes(mask, pShape, [](std::uint8_t a, std::uint8_t b) { return std::min(a, b); });
        break;
    default:
        SayMessage(IDS_COMBINE_UNKNOWN);
    }
}

void ColumnsReadAsRows(const MaskPlane& plane, std::uint8_t* pOut)
{
    constexpr int c_nTile = 64; // both sides of a tile stay in the first cache
    ParallelRows(plane.nWidth, c_nTile, [&](int x0, int x1) {
        for (int yTile = 0; yTile < plane.nHeight; yTile += c_nTile) {
            const int nEnd = std::min(yTile + c_nTile, plane.nHeight);
            for (int x = x0; x < x1; x++)
                for (int y = yTile; y < nEnd; y++)
                    pOut[static_cast<std::size_t>(x) * plane.nHeight + y] = plane.Row(y)[x];
        }
    });
}

} // namespace kestrune
