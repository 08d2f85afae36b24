#include "doc/ResampleKernels.h"


#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "doc/ResampleKernels.cpp"
#include <hwy/foreach_target.h> // includes this file once for each instruction set
#include <hwy/highway.h>

#ifndef KESTRUNE_PLAIN_RESAMPLE // the file is read many times over
#define KESTRUNE_PLAIN_RESAMPLE
namespace kestrune {
namespace {

void PlainMixRows(std::span<const std::uint8_t* const> rows, const float* pWeights, float* pOut, std::size_t nBytes)
{
    for (std::size_t i = 0; i < nBytes; i++) {
        float fSum = static_cast<float>(rows[0][i]) * pWeights[0];
        for (std::size_t k = 1; k < rows.size(); k++)
            fSum = fSum + static_cast<float>(rows[k][i]) * pWeights[k];
        pOut[i] = fSum;
    }
}

void PlainMixAcross(const float* pMixed, const AxisWeights& across, std::uint8_t* pOut, int nWidth)
{
    for (int x = 0; x < nWidth; x++)
        MixPixel(pMixed, across, pOut, x);
}

} // namespace
} // namespace kestrune
#endif

HWY_BEFORE_NAMESPACE();
namespace kestrune {
namespace HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

#if HWY_TARGET == HWY_SCALAR

void MixRows(std::span<const std::uint8_t* const> rows, const float* pWeights, float* pOut, std::size_t nBytes)
{
    PlainMixRows(rows, pWeights, pOut, nBytes);
}
void MixAcross(const float* pMixed, const AxisWeights& across, std::uint8_t* pOut, int nWidth)
{
    PlainMixAcross(pMixed, across, pOut, nWidth);
}

#else

// No fused multiply and add anywhere: the plain form rounds the product, so this one does.

void MixRows(std::span<const std::uint8_t* const> rows, const float* pWeights, float* pOut, std::size_t nBytes)
{
    const hn::ScalableTag<float> df;
    const hn::Rebind<std::int32_t, decltype(df)> di;
    const hn::Rebind<std::uint8_t, decltype(df)> du;
    const std::size_t nLanes = hn::Lanes(df);
    const auto Pixels = [&](const std::uint8_t* p) HWY_ATTR { return hn::ConvertTo(df, hn::PromoteTo(di, hn::LoadU(du, p))); };
    std::size_t i = 0;
    for (; i + 2 * nLanes <= nBytes; i += 2 * nLanes) {
        const auto w0 = hn::Set(df, pWeights[0]);
        auto a = hn::Mul(Pixels(rows[0] + i), w0);
        auto b = hn::Mul(Pixels(rows[0] + i + nLanes), w0);
        for (std::size_t k = 1; k < rows.size(); k++) {
            const auto w = hn::Set(df, pWeights[k]);
            a = hn::Add(a, hn::Mul(Pixels(rows[k] + i), w));
            b = hn::Add(b, hn::Mul(Pixels(rows[k] + i + nLanes), w));
        }
        hn::StoreU(a, df, pOut + i);
        hn::StoreU(b, df, pOut + i + nLanes);
    }
    for (; i < nBytes; i++) {
        float fSum = static_cast<float>(rows[0][i]) * pWeights[0];
        for (std::size_t k = 1; k < rows.size(); k++)
            fSum = fSum + static_cast<float>(rows[k][i]) * pWeights[k];
        pOut[i] = fSum;
    }
}

/// With the number of taps known to the compiler, or 0 for any number.
template <int nKnown>
void MixAcrossTaps(const float* pMixed, const AxisWeights& across, std::uint8_t* pOut, int nWidth)
{
    const hn::FixedTag<float, 4> df; // one pixel and a channel of the next
    const hn::Rebind<std::int32_t, decltype(df)> di;
    const hn::Rebind<std::uint8_t, decltype(df)> du;
    const auto vHalf = hn::Set(df, 0.5f), vMost = hn::Set(df, 255.0f), vZero = hn::Zero(df);
    const int nTaps = nKnown ? nKnown : across.nTaps;
    const int* pFirst = across.first.data();
    const float* pWeights = across.value.data();
    for (int x = 0; x + 1 < nWidth; x++, pWeights += nTaps) {
        const float* p = pMixed + static_cast<std::size_t>(pFirst[x]) * 3;
        auto sum = hn::Mul(hn::LoadU(df, p), hn::Set(df, pWeights[0]));
        for (int k = 1; k < nTaps; k++)
            sum = hn::Add(sum, hn::Mul(hn::LoadU(df, p + k * 3), hn::Set(df, pWeights[k])));
        const auto level = hn::Min(hn::Max(hn::Add(sum, vHalf), vZero), vMost);
        // The fourth byte is the next pixel's, which is written after.
        hn::StoreU(hn::DemoteTo(du, hn::ConvertTo(di, level)), du, pOut + x * 3);
    }
    MixPixel(pMixed, across, pOut, nWidth - 1);
}

void MixAcross(const float* pMixed, const AxisWeights& across, std::uint8_t* pOut, int nWidth)
{
    using Taps = void (*)(const float*, const AxisWeights&, std::uint8_t*, int);
    constexpr Taps c_aTaps[] = {MixAcrossTaps<0>, MixAcrossTaps<1>, MixAcrossTaps<2>, MixAcrossTaps<3>, MixAcrossTaps<4>};
    c_aTaps[across.nTaps <= 4 ? across.nTaps : 0](pMixed, across, pOut, nWidth);
}

#endif

} // namespace HWY_NAMESPACE
} // namespace kestrune
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace kestrune {

HWY_EXPORT(MixRows);
HWY_EXPORT(MixAcross);

ResampleKernels PlainResampleKernels()
{
    return {PlainMixRows, PlainMixAcross};
}

ResampleKernels VectorResampleKernels()
{
    return {[](std::span<const std::uint8_t* const> rows, const float* pWeights, float* pOut, std::size_t nBytes) {
                HWY_DYNAMIC_DISPATCH(MixRows)(rows, pWeights, pOut, nBytes);
            },
            [](const float* pMixed, const AxisWeights& across, std::uint8_t* pOut, int nWidth) {
                HWY_DYNAMIC_DISPATCH(MixAcross)(pMixed, across, pOut, nWidth);
            }};
}

} // namespace kestrune
#endif
