#pragma once

#include <algorithm>
#include <cstdint>
#include <limits>

// Points, sizes and rectangles in pixels. A rectangle's right and bottom edges lie outside it.
struct CPoint {
    int x = 0;
    int y = 0;
    friend bool operator==(const CPoint&, const CPoint&) = default;
};

struct CSize {
    int cx = 0;
    int cy = 0;
    friend bool operator==(const CSize&, const CSize&) = default;
};

struct CRect {
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;

    int Width() const { return right - left; }
    int Height() const { return bottom - top; }
    CPoint TopLeft() const { return {left, top}; }
    bool IsRectEmpty() const { return right <= left || bottom <= top; }
    bool PtInRect(CPoint p) const {
        return p.x >= left && p.x < right && p.y >= top && p.y < bottom;
    }
    void OffsetRect(int dx, int dy) {
        left += dx, right += dx;
        top += dy, bottom += dy;
    }
    void DeflateRect(int dx, int dy) {
        left += dx, right -= dx;
        top += dy, bottom -= dy;
    }
    // True if the two have pixels in common; an empty rectangle otherwise.
    bool IntersectRect(const CRect& a, const CRect& b) {
        *this = {std::max(a.left, b.left), std::max(a.top, b.top), std::min(a.right, b.right),
                 std::min(a.bottom, b.bottom)};
        if (IsRectEmpty()) *this = {};
        return !IsRectEmpty();
    }
    // The smallest rectangle around both; an empty one counts for nothing.
    bool UnionRect(const CRect& a, const CRect& b) {
        if (a.IsRectEmpty() || b.IsRectEmpty()) {
            *this = a.IsRectEmpty() ? b : a;
        } else {
            *this = {std::min(a.left, b.left), std::min(a.top, b.top), std::max(a.right, b.right),
                     std::max(a.bottom, b.bottom)};
        }
        return !IsRectEmpty();
    }
    friend bool operator==(const CRect&, const CRect&) = default;
};

namespace vesk {

// A coordinate that was worked out in more bits. Beyond 32 bits it lies outside of everything that
// is drawn on, and stays on its side.
constexpr int ToCoordinate(std::int64_t value) {
    using Limits = std::numeric_limits<int>;
    return static_cast<int>(std::clamp<std::int64_t>(value, Limits::min(), Limits::max()));
}

}  // namespace vesk
