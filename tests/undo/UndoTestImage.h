#pragma once

#include "undo/UndoStack.h"

#include <cstring>
#include <memory>
#include <random>
#include <vector>

namespace kestrune::test {

/// The picture's pixels, size and mask (one known to be empty reads as 0 everywhere), as one number.
inline std::uint64_t HashOf(const CPaintImage& image)
{
    std::uint64_t h = 1469598103934665603ull;
    const auto Add = [&h](const std::uint8_t* p, std::size_t n) {
        for (std::size_t i = 0; i < n; i++)
            h = (h ^ p[i]) * 1099511628211ull;
    };
    const int aSize[] = {image.m_nWidth, image.m_nHeight, image.m_Bitmap.GetWidth(), image.m_Bitmap.GetHeight()};
    Add(reinterpret_cast<const std::uint8_t*>(aSize), sizeof aSize);
    for (int y = 0; y < image.m_Bitmap.GetHeight(); y++)
        Add(image.m_Bitmap.Row(y), image.m_Bitmap.GetRowBytes());
    const bool bRead = image.m_pMask && !(image.m_bMaskBoundsValid && image.m_bMaskEmpty);
    const std::uint8_t nZero = 0;
    for (std::size_t i = 0; i < static_cast<std::size_t>(image.m_nWidth) * image.m_nHeight; i++)
        Add(bRead ? &image.m_pMask[i] : &nZero, 1);
    return h;
}

inline bool IsSamePicture(const LBitmapBase& a, const LBitmapBase& b)
{
    if (a.GetWidth() != b.GetWidth() || a.GetHeight() != b.GetHeight())
        return false;
    for (int y = 0; y < a.GetHeight(); y++)
        if (std::memcmp(a.Row(y), b.Row(y), a.GetRowBytes()))
            return false;
    return true;
}

/// A new picture with noise in every band (a plain one shares a single band), its first state recorded.
inline std::unique_ptr<CPaintImage> MakePicture(int nWidth, int nHeight)
{
    auto pImage = std::make_unique<CPaintImage>();
    pImage->Create(nWidth, nHeight, FILL_WHITE, COLOR_RGB);
    std::uint32_t n = 7;
    for (int y = 0; y < nHeight; y++) {
        std::uint8_t* p = pImage->m_Bitmap.WriteRow(y);
        for (int x = 0; x < nWidth * 3; x++)
            p[x] = static_cast<std::uint8_t>((n = n * 1664525u + 1013904223u) >> 24);
    }
    pImage->m_BaseBitmap.Copy(pImage->m_Bitmap);
    RecordFirstState(*pImage, 2);
    return pImage;
}

/// Changes every byte of a rectangle, as an act does: the base bitmap follows.
inline void ChangeRect(CPaintImage& image, const CRect& rc, int nBy)
{
    for (int y = rc.top; y < rc.bottom; y++) {
        std::uint8_t* p = image.m_Bitmap.WriteRow(y);
        for (int x = rc.left * 3; x < rc.right * 3; x++)
            p[x] = static_cast<std::uint8_t>(p[x] + nBy);
    }
    image.m_BaseBitmap.Copy(image.m_Bitmap);
}

/// Every test begins and ends with the default limit.
struct HistoryLimitGuard {
    explicit HistoryLimitGuard(int nRecords) { SetHistoryLimit(nRecords); }
    ~HistoryLimitGuard() { SetHistoryLimit(c_nDefaultHistoryLimit); }
};

} // namespace kestrune::test
