#include "doc/Resample.h"

#include "base/ParallelRows.h"
#include "doc/ResampleKernels.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace kestrune {

namespace {

double Triangle(double x)
{
    return x < 1 ? 1 - x : 0;
}

/// Catmull-Rom: passes through the pixels, sharp, with the slight overshoot at edges that photographs want.
double Cubic(double x)
{
    if (x < 1)
        return (1.5 * x - 2.5) * x * x + 1;
    return x < 2 ? ((-0.5 * x + 2.5) * x - 4) * x + 2 : 0;
}

/// The weight of old pixel `j` in the new pixel whose middle is at `fMiddle` and which is `fScale` old pixels wide.
double Weight(int nFlags, int j, double fMiddle, double fScale)
{
    if (nFlags == SIZE_AREA)
        return std::min(j + 1.0, fMiddle + fScale / 2) - std::max<double>(j, fMiddle - fScale / 2);
    const double x = std::abs(j + 0.5 - fMiddle) / std::max(fScale, 1.0);
    return nFlags == SIZE_BICUBIC ? Cubic(x) : Triangle(x);
}

double SupportOf(int nFlags, double fScale)
{
    if (nFlags == SIZE_AREA)
        return fScale / 2;
    return (nFlags == SIZE_BICUBIC ? 2 : 1) * std::max(fScale, 1.0);
}

} // namespace

AxisWeights MakeAxisWeights(int nOld, int nNew, int nFlags)
{
    const double fScale = static_cast<double>(nOld) / nNew;
    const double fSupport = SupportOf(nFlags, fScale);
    const auto Reach = [&](int i) { // the old pixels that new pixel i may touch, both ends tight
        const double fMiddle = (i + 0.5) * fScale;
        int j0 = std::clamp(static_cast<int>(std::floor(fMiddle - fSupport)), 0, nOld - 1);
        int j1 = std::clamp(static_cast<int>(std::ceil(fMiddle + fSupport)), j0 + 1, nOld);
        while (j0 + 1 < j1 && Weight(nFlags, j0, fMiddle, fScale) == 0)
            j0++;
        while (j0 + 1 < j1 && Weight(nFlags, j1 - 1, fMiddle, fScale) == 0)
            j1--;
        return std::pair(j0, j1);
    };
    AxisWeights axis;
    for (int i = 0; i < nNew; i++) {
        const auto [j0, j1] = Reach(i);
        axis.nTaps = std::max(axis.nTaps, j1 - j0);
    }
    axis.first.resize(nNew);
    axis.value.assign(static_cast<std::size_t>(nNew) * axis.nTaps, 0.0f);
    std::vector<double> row(axis.nTaps);
    for (int i = 0; i < nNew; i++) {
        const auto [j0, j1] = Reach(i);
        double fSum = 0;
        for (int j = j0; j < j1; j++)
            fSum += row[j - j0] = Weight(nFlags, j, (i + 0.5) * fScale, fScale);
        axis.first[i] = std::min(j0, nOld - axis.nTaps);
        float* pValue = axis.value.data() + static_cast<std::size_t>(i) * axis.nTaps + (j0 - axis.first[i]);
        for (int j = j0; j < j1; j++)
            pValue[j - j0] = static_cast<float>(row[j - j0] / fSum);
    }
    return axis;
}

namespace {

/// Pixels of three bytes at the given offsets. Four bytes are moved at once, the last of which the next pixel overwrites,
/// up to `nWhole`, behind which a fourth byte may not be there.
void GatherPixels(const std::uint8_t* pSrc, const std::vector<std::size_t>& offset, int nWhole, std::uint8_t* pDst)
{
    for (int x = 0; x < nWhole; x++)
        std::memcpy(pDst + x * 3, pSrc + offset[x], 4);
    for (std::size_t x = nWhole; x < offset.size(); x++)
        std::memcpy(pDst + x * 3, pSrc + offset[x], 3);
}

} // namespace

void ResampleNearest(const LBitmapBase& source, CBandStore& target)
{
    const std::size_t nPixel = source.GetBitsPerPixel() == 24 ? 3 : 1;
    const int nWidth = static_cast<int>(target.RowBytes() / nPixel);
    std::vector<std::size_t> offset(nWidth);
    for (int x = 0; x < nWidth; x++)
        offset[x] = nPixel * NearestSource(x, source.GetWidth(), nWidth);
    const std::size_t nLast = nPixel * (source.GetWidth() - 1);
    const auto nBeforeLast = static_cast<int>(std::lower_bound(offset.begin(), offset.end(), nLast) - offset.begin());
    const int nWhole = std::min(nBeforeLast, nWidth - 1);
    ParallelRows(target.Rows(), 16, [&](int y0, int y1) {
        for (int y = y0; y < y1; y++) {
            const int nSource = NearestSource(y, source.GetHeight(), target.Rows());
            std::uint8_t* pDst = target.WriteRow(y);
            if (y > y0 && nSource == NearestSource(y - 1, source.GetHeight(), target.Rows()))
                std::memcpy(pDst, target.Row(y - 1), target.RowBytes());
            else if (nPixel == 3)
                GatherPixels(source.Row(nSource), offset, nWhole, pDst);
            else
                for (int x = 0; x < nWidth; x++)
                    pDst[x] = source.Row(nSource)[offset[x]];
        }
    });
}

void ResampleSmooth(const LBitmapBase& source, CBandStore& target, int nFlags, KernelForm form)
{
    const int nWidth = static_cast<int>(target.RowBytes() / 3);
    const AxisWeights across = MakeAxisWeights(source.GetWidth(), nWidth, nFlags);
    const AxisWeights down = MakeAxisWeights(source.GetHeight(), target.Rows(), nFlags);
    const ResampleKernels kernels = form == KernelForm::Plain ? PlainResampleKernels() : VectorResampleKernels();
    ParallelRows(target.Rows(), 16, [&](int y0, int y1) {
        std::vector<float> mixed(source.GetRowBytes() + 4); // the kernels read four channels of the last pixel
        std::vector<const std::uint8_t*> rows(down.nTaps);
        for (int y = y0; y < y1; y++) {
            for (int k = 0; k < down.nTaps; k++)
                rows[k] = source.Row(down.first[y] + k);
            kernels.mixRows(rows, down.Of(y), mixed.data(), source.GetRowBytes());
            kernels.mixAcross(mixed.data(), across, target.WriteRow(y), nWidth);
        }
    });
}

} // namespace kestrune
