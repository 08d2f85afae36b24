#include "selection/MaskFeather.h"

#include <algorithm>

namespace kestrune {

namespace {

/// How far the run of equal bytes goes on from here, and their value.
struct Run {
    int nLength;
    int nValue;
};

class CPlainFeather {
public:
    CPlainFeather(double fRadius, FeatherTaps taps)
        : m_curve(fRadius, taps)
        , m_nHalf(m_curve.nHalf)
        , m_nEnd(taps == FeatherTaps::All ? m_nHalf + 1 : m_nHalf)
        , m_sums(2 * static_cast<std::size_t>(m_nHalf) + 2)
    {
        for (int i = -m_nHalf; i <= m_nHalf; i++)
            m_sums[i + m_nHalf + 1] = m_sums[i + m_nHalf] + m_curve.weights[i + m_nHalf];
    }

    /// `nStride` parts the bytes of the line; the result is written to `pOut` without gaps.
    void Line(const std::uint8_t* pIn, std::size_t nStride, int nLength, std::uint8_t* pOut)
    {
        m_runs.resize(nLength);
        for (int i = nLength - 1; i >= 0; i--) {
            const int nValue = pIn[i * nStride];
            const bool bGoesOn = i + 1 < nLength && m_runs[i + 1].nValue == nValue;
            m_runs[i] = {bGoesOn ? m_runs[i + 1].nLength + 1 : 1, nValue};
        }
        for (int p = 0; p < nLength; p++) {
            // Offsets from nStart on, and before nEnd, lie in the line; the others see its end pixels.
            const int nStart = std::max(-m_nHalf, -p), nEnd = std::min(m_nEnd, nLength - p);
            std::int64_t nSum = std::int64_t{m_runs.front().nValue} * Sum(-m_nHalf, nStart);
            for (int i = nStart; i < nEnd;) {
                const Run& run = m_runs[p + i];
                const int nNext = std::min(i + run.nLength, nEnd);
                nSum += std::int64_t{run.nValue} * Sum(i, nNext);
                i = nNext;
            }
            nSum += std::int64_t{m_runs.back().nValue} * Sum(nEnd, m_nEnd);
            pOut[p] = static_cast<std::uint8_t>(nSum / m_curve.nTotal);
        }
    }

private:
    /// The weights of the offsets [a, b).
    std::int64_t Sum(int a, int b) const { return b > a ? m_sums[b + m_nHalf] - m_sums[a + m_nHalf] : 0; }

    FeatherCurve m_curve;
    int m_nHalf;
    int m_nEnd; ///< one past the last offset that counts
    std::vector<std::int64_t> m_sums;
    std::vector<Run> m_runs;
};

} // namespace

void PlainFeatherMask(const MaskPlane& mask, double fRadius, FeatherTaps taps)
{
    if (!(fRadius > 0))
        return;
    CPlainFeather feather(fRadius, taps);
    std::vector<std::uint8_t> line(std::max(mask.nWidth, mask.nHeight));
    for (int x = 0; x < mask.nWidth; x++) {
        feather.Line(mask.pBytes + x, mask.nWidth, mask.nHeight, line.data());
        for (int y = 0; y < mask.nHeight; y++)
            mask.Row(y)[x] = line[y];
    }
    for (int y = 0; y < mask.nHeight; y++) {
        feather.Line(mask.Row(y), 1, mask.nWidth, line.data());
        std::copy_n(line.data(), mask.nWidth, mask.Row(y));
    }
}

} // namespace kestrune
