#pragma once

#include <array>
#include <cmath>

namespace kestrune {

/// A point with fractions.
struct PointF {
    double x = 0;
    double y = 0;
    bool operator==(const PointF&) const = default;
};

/// A projective map of the plane, row by row; it starts as the identity. Every operation puts its effect behind what the
/// matrix does already (left multiplication).
struct Matrix3 {
    double a[3][3] = {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}};

    bool operator==(const Matrix3&) const = default;

    void Translate(double dx, double dy)
    {
        for (int c = 0; c < 3; c++) {
            a[0][c] += dx * a[2][c];
            a[1][c] += dy * a[2][c];
        }
    }
    void Scale(double sx, double sy)
    {
        for (int c = 0; c < 3; c++) {
            a[0][c] *= sx;
            a[1][c] *= sy;
        }
    }
    /// `fAngle` in radians, clockwise as the picture is seen (y runs down).
    void Rotate(double fAngle)
    {
        const double fCos = std::cos(fAngle), fSin = std::sin(fAngle);
        for (int c = 0; c < 3; c++) {
            const double r0 = a[0][c], r1 = a[1][c];
            a[0][c] = fCos * r0 - fSin * r1;
            a[1][c] = fSin * r0 + fCos * r1;
        }
    }
    void ShearX(double k)
    {
        for (int c = 0; c < 3; c++)
            a[0][c] += k * a[1][c];
    }
    void ShearY(double k)
    {
        for (int c = 0; c < 3; c++)
            a[1][c] += k * a[0][c];
    }

    /// A point on the horizon (w of 0) is taken as if w were 1.
    PointF Apply(PointF pt) const
    {
        double w = a[2][0] * pt.x + a[2][1] * pt.y + a[2][2];
        w = w == 0 ? 1 : 1 / w;
        return {(a[0][0] * pt.x + a[0][1] * pt.y + a[0][2]) * w, (a[1][0] * pt.x + a[1][1] * pt.y + a[1][2]) * w};
    }

    double Determinant() const
    {
        return a[0][0] * (a[1][1] * a[2][2] - a[1][2] * a[2][1]) - a[0][1] * (a[1][0] * a[2][2] - a[1][2] * a[2][0])
            + a[0][2] * (a[1][0] * a[2][1] - a[1][1] * a[2][0]);
    }
    /// Adjugate over determinant. False for a singular matrix, with `inverse` as it was.
    bool Invert(Matrix3& inverse) const
    {
        const double fDet = Determinant();
        if (fDet == 0)
            return false;
        Matrix3 m;
        for (int r = 0; r < 3; r++)
            for (int c = 0; c < 3; c++) {
                const int r1 = (c + 1) % 3, r2 = (c + 2) % 3, c1 = (r + 1) % 3, c2 = (r + 2) % 3;
                m.a[r][c] = (a[r1][c1] * a[r2][c2] - a[r1][c2] * a[r2][c1]) / fDet;
            }
        inverse = m;
        return true;
    }
};

/// First `second`, then `first`.
inline Matrix3 operator*(const Matrix3& first, const Matrix3& second)
{
    Matrix3 m;
    for (int r = 0; r < 3; r++)
        for (int c = 0; c < 3; c++)
            m.a[r][c] = first.a[r][0] * second.a[0][c] + first.a[r][1] * second.a[1][c] + first.a[r][2] * second.a[2][c];
    return m;
}

/// Four corners in the order top left, top right, bottom right, bottom left.
using Quad = std::array<PointF, 4>;

/// The map from the unit square to a quadrilateral. Corners of which three lie on a line give a matrix that collapses or is not finite.
inline Matrix3 UnitSquareTo(const Quad& q)
{
    const auto& [p0, p1, p2, p3] = q;
    const double sx = p0.x - p1.x + p2.x - p3.x, sy = p0.y - p1.y + p2.y - p3.y;
    if (sx == 0 && sy == 0)
        return {{{p1.x - p0.x, p2.x - p1.x, p0.x}, {p1.y - p0.y, p2.y - p1.y, p0.y}, {0, 0, 1}}};
    const double dx1 = p1.x - p2.x, dx2 = p3.x - p2.x, dy1 = p1.y - p2.y, dy2 = p3.y - p2.y;
    const double fDet = dx1 * dy2 - dy1 * dx2;
    const double g = (sx * dy2 - sy * dx2) / fDet, h = (dx1 * sy - dy1 * sx) / fDet;
    return {{{p1.x - p0.x + g * p1.x, p3.x - p0.x + h * p3.x, p0.x}, {p1.y - p0.y + g * p1.y, p3.y - p0.y + h * p3.y, p0.y}, {g, h, 1}}};
}

} // namespace kestrune
