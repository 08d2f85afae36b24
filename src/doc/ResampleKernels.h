#pragma once

#include "doc/Resample.h"

#include <span>

namespace kestrune {

/// The two passes of `ResampleSmooth` over one row, in one of their forms.
struct ResampleKernels {
    /// `out[i]` = sum of weight k x row k at `i`, for `nBytes` bytes.
    void (*mixRows)(std::span<const std::uint8_t* const> rows, const float* pWeights, float* pOut, std::size_t nBytes);
    /// The new row of `nWidth` pixels, rounded to bytes, from a mixed row, which has four floats behind its last pixel.
    void (*mixAcross)(const float* pMixed, const AxisWeights& across, std::uint8_t* pOut, int nWidth);
};
ResampleKernels PlainResampleKernels();
/// The form for this processor.
ResampleKernels VectorResampleKernels();

/// One pixel of `mixAcross`, also the last pixel of the vector form, behind which nothing may be written.
inline void MixPixel(const float* pMixed, const AxisWeights& across, std::uint8_t* pOut, int x)
{
    const float* p = pMixed + static_cast<std::size_t>(across.first[x]) * 3;
    const float* pWeights = across.Of(x);
    float sum[3] = {p[0] * pWeights[0], p[1] * pWeights[0], p[2] * pWeights[0]};
    for (int k = 1; k < across.nTaps; k++)
        for (int c = 0; c < 3; c++)
            sum[c] = sum[c] + p[k * 3 + c] * pWeights[k];
    for (int c = 0; c < 3; c++) {
        const float fValue = sum[c] + 0.5f;
        pOut[x * 3 + c] = static_cast<std::uint8_t>(fValue < 0.0f ? 0.0f : fValue > 255.0f ? 255.0f : fValue);
    }
}

} // namespace kestrune
