#pragma once

#include "resources/BrushEntry.h"

#include <cstdint>
#include <functional>
#include <vector>

/// A random source of its own: the brushes that ship must not change with the program's.
class CDice {
public:
    explicit CDice(std::uint32_t nSeed)
        : m_nState(nSeed * 2654435761u + 12345u)
    {
    }
    /// 0 <= result < 1.
    double Roll();
    double Roll(double dFrom, double dTo) { return dFrom + (dTo - dFrom) * Roll(); }

private:
    std::uint32_t m_nState;
};

/// Smooth noise over the plane, 0..1; features about one unit large. Each seed gives another plane.
double Noise(double x, double y, std::uint32_t nSeed);
/// The same with finer and finer detail added.
double Clouds(double x, double y, std::uint32_t nSeed, int nOctaves);

/// 0 below `dFrom`, 1 above `dTo`, smooth between.
double Ramp(double dFrom, double dTo, double d);

/// A square of coverage being made. Coordinates run from -1 to 1 over the square, y downwards.
class CCanvas {
public:
    explicit CCanvas(int nSide);

    int Side() const { return m_nSide; }
    /// Adds a shape given by its coverage (0..1) at a point, sampled four by four times a pixel. Where shapes meet the stronger wins.
    void Add(const std::function<double(double x, double y)>& shape);
    /// Multiplies the coverage of every pixel; `x`, `y` are pixels.
    void Scale(const std::function<double(int x, int y)>& factor);
    void Disc(double x, double y, double dRadius, double dStrength);
    kestrune::BrushEntry Entry() const;

private:
    int m_nSide;
    std::vector<double> m_aCover;
};
