#pragma once

#include "selection/MaskPlane.h"

#include <algorithm>
#include <cstdint>
#include <ostream>
#include <random>
#include <vector>

namespace kestrune::test {

/// A mask that owns its bytes.
struct OwnMask {
    OwnMask(int w, int h)
        : nWidth(w)
        , nHeight(h)
        , bytes(static_cast<std::size_t>(w) * h)
    {
    }
    MaskPlane Plane() { return {bytes.data(), nWidth, nHeight}; }
    std::uint8_t& At(int x, int y) { return bytes[static_cast<std::size_t>(y) * nWidth + x]; }
    std::uint8_t At(int x, int y) const { return bytes[static_cast<std::size_t>(y) * nWidth + x]; }
    bool operator==(const OwnMask&) const = default;

    int nWidth, nHeight;
    std::vector<std::uint8_t> bytes;
};

inline std::ostream& operator<<(std::ostream& stream, const OwnMask& mask)
{
    stream << mask.nWidth << " x " << mask.nHeight;
    for (int y = 0; mask.bytes.size() <= 400 && y < mask.nHeight; y++)
        for (int x = 0; x < mask.nWidth; x++)
            stream << (x ? " " : "\n") << static_cast<int>(mask.At(x, y));
    return stream;
}

/// Whole blocks as a hand selects them, slopes as a feather leaves them, noise, single pixels, all, nothing.
enum class MaskKind { Blocks, Slopes, Noise, Sparse, Full, Empty };
inline constexpr MaskKind c_aMaskKinds[]
    = {MaskKind::Blocks, MaskKind::Slopes, MaskKind::Noise, MaskKind::Sparse, MaskKind::Full, MaskKind::Empty};

inline OwnMask MakeMask(int w, int h, MaskKind kind, unsigned nSeed)
{
    std::mt19937 random(nSeed);
    OwnMask mask(w, h);
    const auto Below = [&](int n) { return static_cast<int>(random() % static_cast<unsigned>(n)); };
    switch (kind) {
    case MaskKind::Blocks:
        for (int i = 0; i < 6; i++) {
            const int x1 = Below(w), y1 = Below(h), x2 = x1 + 1 + Below(w), y2 = y1 + 1 + Below(h);
            const auto n = static_cast<std::uint8_t>(i % 3 == 2 ? 0 : 255);
            for (int y = y1; y < std::min(y2, h); y++)
                for (int x = x1; x < std::min(x2, w); x++)
                    mask.At(x, y) = n;
        }
        break;
    case MaskKind::Slopes: {
        const int nStep = 1 + Below(40), nDown = Below(30), nStart = Below(300);
        for (int y = 0; y < h; y++)
            for (int x = 0; x < w; x++)
                mask.At(x, y) = static_cast<std::uint8_t>(std::clamp(nStart - x * nStep + y * nDown, 0, 255));
        break;
    }
    case MaskKind::Noise:
        for (std::uint8_t& n : mask.bytes)
            n = static_cast<std::uint8_t>(Below(256));
        break;
    case MaskKind::Sparse:
        for (std::uint8_t& n : mask.bytes)
            n = static_cast<std::uint8_t>(Below(30) ? 0 : 1 + Below(255));
        break;
    case MaskKind::Full:
        std::fill(mask.bytes.begin(), mask.bytes.end(), std::uint8_t{255});
        break;
    case MaskKind::Empty:
        break;
    }
    return mask;
}

/// Below and above what vectors, tiles and pieces of threads hold.
inline constexpr int c_aSizes[][2] = {{1, 1}, {1, 2}, {2, 1}, {1, 70}, {70, 1}, {3, 3}, {5, 17}, {16, 16}, {33, 31}, {65, 64}, {97, 130}, {131, 67}};

/// Runs `check` on each kind of mask in each size.
template <typename Check>
void ForMasks(const Check& check)
{
    unsigned nSeed = 1;
    for (const auto& size : c_aSizes)
        for (const MaskKind kind : c_aMaskKinds)
            check(MakeMask(size[0], size[1], kind, nSeed++));
}

} // namespace kestrune::test
