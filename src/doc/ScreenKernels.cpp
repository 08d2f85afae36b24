#include "doc/ScreenKernels.h"

#include <algorithm>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "doc/ScreenKernels.cpp"
#include <hwy/foreach_target.h> // includes this file once for each instruction set
#include <hwy/highway.h>

#ifndef KESTRUNE_PLAIN_SCREEN // the file is read many times over
#define KESTRUNE_PLAIN_SCREEN
namespace kestrune {
namespace {

void PlainConvert(const std::uint8_t* pBgr, std::uint32_t* pOut, int nPixels)
{
    for (int x = 0; x < nPixels; x++, pBgr += 3)
        pOut[x] = ScreenPixel(pBgr[0], pBgr[1], pBgr[2]);
}

void PlainSpread(const std::uint32_t* pPixels, std::span<const ScreenRun> runs, std::uint32_t* pOut)
{
    for (std::size_t i = 0; i < runs.size(); i++)
        std::fill(pOut + runs[i].nStart, pOut + runs[i].nEnd, pPixels[i]);
}

void PlainMixScreenRows(std::span<const std::uint8_t* const> rows, const std::uint16_t* pWeights, std::uint16_t* pOut,
                        std::size_t nBytes)
{
    for (std::size_t i = 0; i < nBytes; i++) {
        unsigned nSum = 0; // at most 255 x 256
        for (std::size_t k = 0; k < rows.size(); k++)
            nSum += static_cast<unsigned>(rows[k][i]) * pWeights[k];
        pOut[i] = static_cast<std::uint16_t>(nSum);
    }
}

void PlainMixScreenAcross(const std::uint16_t* pMixed, std::span<const ScreenTap> taps, int nOrigin, std::uint32_t* pOut)
{
    for (std::size_t x = 0; x < taps.size(); x++) {
        const std::uint16_t* p = pMixed + static_cast<std::size_t>(taps[x].nFirst - nOrigin) * 3;
        unsigned sum[3] = {32768, 32768, 32768};
        for (int k = 0; k < taps[x].nCount; k++)
            for (int c = 0; c < 3; c++)
                sum[c] += static_cast<unsigned>(p[k * 3 + c]) * taps[x].pWeights[k];
        pOut[x] = ScreenPixel(sum[0] >> 16, sum[1] >> 16, sum[2] >> 16);
    }
}

} // namespace
} // namespace kestrune
#endif

HWY_BEFORE_NAMESPACE();
namespace kestrune {
namespace HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

#if HWY_TARGET == HWY_SCALAR

void Convert(const std::uint8_t* pBgr, std::uint32_t* pOut, int nPixels)
{
    PlainConvert(pBgr, pOut, nPixels);
}
void Spread(const std::uint32_t* pPixels, std::span<const ScreenRun> runs, std::uint32_t* pOut)
{
    PlainSpread(pPixels, runs, pOut);
}
void MixScreenRows(std::span<const std::uint8_t* const> rows, const std::uint16_t* pWeights, std::uint16_t* pOut, std::size_t nBytes)
{
    PlainMixScreenRows(rows, pWeights, pOut, nBytes);
}
void MixScreenAcross(const std::uint16_t* pMixed, std::span<const ScreenTap> taps, int nOrigin, std::uint32_t* pOut)
{
    PlainMixScreenAcross(pMixed, taps, nOrigin, pOut);
}

#else

void Convert(const std::uint8_t* pBgr, std::uint32_t* pOut, int nPixels)
{
    const hn::FixedTag<std::uint8_t, 16> du;
    const hn::Repartition<std::uint32_t, decltype(du)> dw;
    alignas(16) static constexpr std::uint8_t c_aFour[16] = {0, 1, 2, 15, 3, 4, 5, 15, 6, 7, 8, 15, 9, 10, 11, 15};
    const auto four = hn::Load(du, c_aFour);
    const auto opaque = hn::Set(dw, 0xff000000u);
    int x = 0;
    for (; x + 6 <= nPixels; x += 4) { // sixteen bytes are read, twelve are used
        const auto bytes = hn::TableLookupBytes(hn::LoadU(du, pBgr + x * 3), four);
        hn::StoreU(hn::Or(hn::BitCast(dw, bytes), opaque), dw, pOut + x);
    }
    PlainConvert(pBgr + x * 3, pOut + x, nPixels - x);
}

void Spread(const std::uint32_t* pPixels, std::span<const ScreenRun> runs, std::uint32_t* pOut)
{
    const hn::FixedTag<std::uint32_t, 4> dw;
    const int nEnd = runs.empty() ? 0 : runs.back().nEnd;
    std::size_t i = 0;
    // A run is written in fours; what goes over its end, the next run writes again.
    for (; i < runs.size() && runs[i].nEnd + 3 <= nEnd; i++) {
        const auto pixel = hn::Set(dw, pPixels[i]);
        for (int x = runs[i].nStart; x < runs[i].nEnd; x += 4)
            hn::StoreU(pixel, dw, pOut + x);
    }
    PlainSpread(pPixels + i, runs.subspan(i), pOut);
}

void MixScreenRows(std::span<const std::uint8_t* const> rows, const std::uint16_t* pWeights, std::uint16_t* pOut, std::size_t nBytes)
{
    const hn::ScalableTag<std::uint16_t> dh;
    const hn::Rebind<std::uint8_t, decltype(dh)> du;
    const std::size_t nLanes = hn::Lanes(dh);
    std::size_t i = 0;
    for (; i + 2 * nLanes <= nBytes; i += 2 * nLanes) {
        auto a = hn::Zero(dh), b = hn::Zero(dh);
        for (std::size_t k = 0; k < rows.size(); k++) {
            const auto w = hn::Set(dh, pWeights[k]);
            a = hn::Add(a, hn::Mul(hn::PromoteTo(dh, hn::LoadU(du, rows[k] + i)), w));
            b = hn::Add(b, hn::Mul(hn::PromoteTo(dh, hn::LoadU(du, rows[k] + i + nLanes)), w));
        }
        hn::StoreU(a, dh, pOut + i);
        hn::StoreU(b, dh, pOut + i + nLanes);
    }
    for (; i < nBytes; i++) {
        unsigned nSum = 0;
        for (std::size_t k = 0; k < rows.size(); k++)
            nSum += static_cast<unsigned>(rows[k][i]) * pWeights[k];
        pOut[i] = static_cast<std::uint16_t>(nSum);
    }
}

void MixScreenAcross(const std::uint16_t* pMixed, std::span<const ScreenTap> taps, int nOrigin, std::uint32_t* pOut)
{
    const hn::FixedTag<std::int32_t, 4> di; // one pixel and a channel of the next
    const hn::Rebind<std::uint16_t, decltype(di)> dh;
    const hn::Rebind<std::uint8_t, decltype(di)> du;
    for (std::size_t x = 0; x < taps.size(); x++) {
        const std::uint16_t* p = pMixed + static_cast<std::size_t>(taps[x].nFirst - nOrigin) * 3;
        auto sum = hn::Set(di, 32768);
        for (int k = 0; k < taps[x].nCount; k++)
            sum = hn::Add(sum, hn::Mul(hn::PromoteTo(di, hn::LoadU(dh, p + k * 3)), hn::Set(di, taps[x].pWeights[k])));
        alignas(4) std::uint8_t bgr[4];
        hn::StoreU(hn::DemoteTo(du, hn::ShiftRight<16>(sum)), du, bgr);
        pOut[x] = ScreenPixel(bgr[0], bgr[1], bgr[2]);
    }
}

#endif

} // namespace HWY_NAMESPACE
} // namespace kestrune
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace kestrune {

HWY_EXPORT(Convert);
HWY_EXPORT(Spread);
HWY_EXPORT(MixScreenRows);
HWY_EXPORT(MixScreenAcross);

ScreenKernels PlainScreenKernels()
{
    return {PlainConvert, PlainSpread, PlainMixScreenRows, PlainMixScreenAcross};
}

ScreenKernels VectorScreenKernels()
{
    return {[](const std::uint8_t* pBgr, std::uint32_t* pOut, int nPixels) { HWY_DYNAMIC_DISPATCH(Convert)(pBgr, pOut, nPixels); },
            [](const std::uint32_t* pPixels, std::span<const ScreenRun> runs, std::uint32_t* pOut) {
                HWY_DYNAMIC_DISPATCH(Spread)(pPixels, runs, pOut);
            },
            [](std::span<const std::uint8_t* const> rows, const std::uint16_t* pWeights, std::uint16_t* pOut, std::size_t nBytes) {
                HWY_DYNAMIC_DISPATCH(MixScreenRows)(rows, pWeights, pOut, nBytes);
            },
            [](const std::uint16_t* pMixed, std::span<const ScreenTap> taps, int nOrigin, std::uint32_t* pOut) {
                HWY_DYNAMIC_DISPATCH(MixScreenAcross)(pMixed, taps, nOrigin, pOut);
            }};
}

} // namespace kestrune
#endif
