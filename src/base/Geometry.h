#pragma once

#include <algorithm>

namespace kestrune {

struct CPoint {
    int x = 0;
    int y = 0;
    bool operator==(const CPoint&) const = default;
};

struct CSize {
    int cx = 0;
    int cy = 0;
    bool operator==(const CSize&) const = default;
};

/// A rectangle of pixels; right and bottom lie outside.
struct CRect {
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;

    int Width() const { return right - left; }
    int Height() const { return bottom - top; }
    bool IsEmpty() const { return right <= left || bottom <= top; }
    bool Contains(int x, int y) const { return x >= left && x < right && y >= top && y < bottom; }

    void Normalize()
    {
        if (left > right)
            std::swap(left, right);
        if (top > bottom)
            std::swap(top, bottom);
    }

    void Offset(int dx, int dy)
    {
        left += dx;
        right += dx;
        top += dy;
        bottom += dy;
    }

    bool operator==(const CRect&) const = default;
};

/// The common part, or an empty rectangle at the origin when there is none.
inline CRect Intersect(const CRect& a, const CRect& b)
{
    const CRect r{std::max(a.left, b.left), std::max(a.top, b.top), std::min(a.right, b.right), std::min(a.bottom, b.bottom)};
    return r.IsEmpty() ? CRect{} : r;
}

/// The smallest rectangle that holds both; an empty one adds nothing.
inline CRect Unite(const CRect& a, const CRect& b)
{
    if (a.IsEmpty())
        return b;
    if (b.IsEmpty())
        return a;
    return {std::min(a.left, b.left), std::min(a.top, b.top), std::max(a.right, b.right), std::max(a.bottom, b.bottom)};
}

} // namespace kestrune
