#pragma once

#include "base/Arith.h"
#include "doc/PaintImage.h"
#include "paint/Blend.h"
#include "paint/PaintCore.h"
#include "paint/SubpixelMaskCache.h"
#include "resources/PaintSources.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <functional>
#include <vector>

namespace kestrune::test {

using Bytes = std::vector<std::uint8_t>;

inline Bytes RgbOf(const LBitmapBase& bitmap)
{
    Bytes out;
    for (int y = 0; y < bitmap.GetHeight(); y++)
        for (int x = 0; x < bitmap.GetWidth(); x++)
            for (int k = 2; k >= 0; k--)
                out.push_back(bitmap.Row(y)[x * 3 + k]);
    return out;
}

/// The stroke engine said once more, as plainly as it can be: whole arrays of red, green, blue, one pixel after the other, no
/// cache, no skipping. It works on copies and tells what the picture must look like.
class NaiveStroke {
public:
    enum Kind { Pencil, Brush, Eraser, Air, Stamp, Blur, Sharpen, Dodge, Burn, Smudge };

    NaiveStroke(const CPaintImage& image, Kind kind, const StrokeSettings& settings)
        : w(image.m_nWidth), h(image.m_nHeight), m_image(image), m_kind(kind), m_settings(settings)
    {
        bitmap = RgbOf(image.m_Bitmap);
        base = RgbOf(image.m_BaseBitmap);
        if (image.m_pFloatMask) {
            fw = image.m_FloatBitmap.GetWidth();
            fh = image.m_FloatBitmap.GetHeight();
            floatBitmap = RgbOf(image.m_FloatBitmap);
            floatMask.assign(image.m_pFloatMask.get(), image.m_pFloatMask.get() + fw * fh);
        }
    }

    void Begin(double x, double y, CPoint ptSource = {})
    {
        canvas = base;
        coverage.assign(w * h, 0);
        if (fw) {
            floatCanvas = floatBitmap;
            const CRect rc = Intersect(m_image.m_rcFloat, {0, 0, w, h});
            const int sx = std::max(-m_image.m_nFloatX, 0), sy = std::max(-m_image.m_nFloatY, 0);
            for (int j = 0; j < std::min(rc.Height(), fh - sy); j++)
                for (int i = 0; i < std::min(rc.Width(), fw - sx); i++)
                    for (int k = 0; k < 3; k++)
                        canvas[((rc.top + j) * w + rc.left + i) * 3 + k] = floatCanvas[((j + sy) * fw + i + sx) * 3 + k];
        }
        opacity = m_settings.nOpacity * 255 / 100;
        spacing = m_settings.nSpacing / 100.0;
        mode = m_settings.nMode;
        bw = g_activeBrush.nWidth;
        bh = g_activeBrush.nHeight;
        cx = lx = x;
        cy = ly = y;
        incremental = m_kind == Air || m_kind == Blur || m_kind == Sharpen || m_kind == Smudge;
        hardEdge = (m_kind == Pencil || m_kind == Eraser) && bw < 4;
        erase = m_kind == Eraser && m_settings.bEraseFloat;
        if (m_kind == Eraser || m_kind == Blur || m_kind == Sharpen || m_kind == Smudge)
            mode = 0;
        if (m_kind == Air)
            opacity = opacity * m_settings.nPressure / 100;
        if (m_kind == Stamp) {
            offx = ptSource.x - static_cast<int>(x);
            offy = ptSource.y - static_cast<int>(y);
        }
        if (m_kind == Smudge)
            BeginSmudge();
        Dab();
    }

    void StrokeTo(double x, double y)
    {
        cx = x;
        cy = y;
        const double dx = cx - lx, dy = cy - ly;
        const double* xa = g_activeBrush.xAxis;
        const double* ya = g_activeBrush.yAxis;
        const double u = (dx * xa[0] + dy * xa[1]) / (xa[0] * xa[0] + xa[1] * xa[1]);
        const double v = (dx * ya[0] + dy * ya[1]) / (ya[0] * ya[0] + ya[1] * ya[1]);
        const double len = std::sqrt(u * u + v * v) * 0.5, pixels = std::sqrt(dx * dx + dy * dy);
        const double start = distance, end = distance + len, oldPixels = pixelDistance;
        while (distance < end) {
            const int n = static_cast<int>(distance / spacing + 1.0 + 1e-5);
            distance = n * spacing;
            if (end + 1e-5 >= distance) {
                const double t = (distance - start) / len;
                cx = lx + dx * t;
                cy = ly + dy * t;
                pixelDistance = oldPixels + pixels * t;
                Dab();
            }
        }
        distance = end;
        pixelDistance = oldPixels + pixels;
        cx = lx + dx;
        cy = ly + dy;
        lx = cx;
        ly = cy;
    }

    void DabAgain() { Dab(); }

    void End()
    {
        if (!fw)
            base = bitmap;
        else if (incremental)
            floatBitmap = floatCanvas;
    }

    int w, h;
    Bytes bitmap, base, floatBitmap, floatMask;
    int nDabs = 0;

private:
    struct Tile {
        int x, y, w, h;
        Bytes rgba;
    };

    bool GetTile(Tile& t) const
    {
        const int x0 = static_cast<int>(cx) - (bw >> 1), y0 = static_cast<int>(cy) - (bh >> 1);
        const int x1 = std::clamp(x0 + bw, 0, w), y1 = std::clamp(y0 + bh, 0, h);
        t.x = std::clamp(x0, 0, w);
        t.y = std::clamp(y0, 0, h);
        t.w = x1 - t.x;
        t.h = y1 - t.y;
        if (t.w <= 0 || t.h <= 0)
            return false;
        t.rgba.assign(t.w * t.h * 4, 255);
        return true;
    }

    template <typename Fn>
    static void EachPixel(Tile& t, Fn fn)
    {
        for (int j = 0; j < t.h; j++)
            for (int i = 0; i < t.w; i++)
                fn(i, j, &t.rgba[(j * t.w + i) * 4]);
    }

    void Fill(Tile& t, COLORREF cr, bool bPattern)
    {
        EachPixel(t, [&](int i, int j, std::uint8_t* p) {
            p[0] = RedOf(cr), p[1] = GreenOf(cr), p[2] = BlueOf(cr);
            if (bPattern && !g_paintPattern.aPixels.empty()) {
                const PaintPattern& pat = g_paintPattern;
                const std::uint8_t* s = &pat.aPixels[((j + t.y) % pat.nHeight * pat.nWidth + (i + t.x) % pat.nWidth) * 3];
                for (int k = 0; k < 3; k++)
                    p[k] = Lerp255(p[k], s[k], pat.nPercent * 255 / 100);
            }
        });
    }

    COLORREF Snap(COLORREF cr) const { return g_nColors <= 256 ? SnapToPalette(cr, *g_pPalette) : cr; }
    const std::uint8_t* Canvas(int x, int y) const { return &canvas[(y * w + x) * 3]; }

    void Dab()
    {
        nDabs++;
        Tile t;
        if (!GetTile(t))
            return;
        dabAlpha = 255;
        switch (m_kind) {
        case Pencil: Fill(t, Snap(g_crForeground), true); break;
        case Eraser: Fill(t, Snap(g_crBackground), false); break;
        case Air: Fill(t, g_crForeground, true); break;
        case Brush:
            if (m_settings.bFade) {
                const double x = pixelDistance / (m_settings.nPressure * 10.0);
                const double f = 255 * std::exp(-x * x * 5.541);
                dabAlpha = f == f ? static_cast<int>(f) : 0;
            }
            if (dabAlpha == 0)
                return;
            Fill(t, g_crForeground, true);
            break;
        case Stamp: CloneDab(t); break;
        case Blur:
        case Sharpen: ConvolveDab(t); break;
        case Dodge:
        case Burn: DodgeDab(t); break;
        case Smudge: SmudgeDab(t); break;
        }
        Paint(t);
    }

    void CloneDab(Tile& t)
    {
        EachPixel(t, [&](int i, int j, std::uint8_t* p) {
            std::fill_n(p, 4, std::uint8_t{0});
            const int sx = t.x + i + offx, sy = t.y + j + offy;
            if (sx < 0 || sy < 0 || sx >= w || sy >= h)
                return;
            std::copy_n(Canvas(sx, sy), 3, p);
            p[3] = fw ? m_image.m_pMask[(t.y + j) * w + t.x + i] : 255;
        });
    }

    void ConvolveDab(Tile& t)
    {
        const double s = std::min(m_settings.nPressure / 100.0, 1.0);
        double kernel[5][5] = {};
        for (int y = 1; y < 4; y++)
            for (int x = 1; x < 4; x++)
                kernel[y][x] = 1;
        kernel[2][2] = m_kind == Blur ? 64 - 63.75 * s : 448 * s - 512;
        int entries[5][5], divisor = 0;
        for (int y = 0; y < 5; y++)
            for (int x = 0; x < 5; x++)
                divisor += entries[y][x] = static_cast<int>(kernel[y][x] * 10000);
        if (divisor == 0)
            divisor = 1;
        EachPixel(t, [&](int i, int j, std::uint8_t* p) {
            std::copy_n(Canvas(t.x + i, t.y + j), 3, p);
            if (t.w < 5 || t.h < 5 || i < 2 || j < 2 || i >= t.w - 2 || j >= t.h - 2)
                return;
            for (int k = 0; k < 3; k++) {
                int sum = 0;
                for (int y = 0; y < 5; y++)
                    for (int x = 0; x < 5; x++)
                        sum += entries[y][x] * Canvas(t.x + i + x - 2, t.y + j + y - 2)[k];
                int v = sum / divisor;
                if (v < 0)
                    v = -v;
                p[k] = static_cast<std::uint8_t>(std::min(v, 255));
            }
        });
    }

    void DodgeDab(Tile& t)
    {
        const double e = (m_kind == Dodge ? 1 : -1) * (m_settings.nPressure / 100.0);
        const auto table = [&](int i) {
            const double x = i / 255.0;
            double y = 0;
            if (m_settings.nCurve == 0)
                y = x * (1 + e * 0.333333);
            else if (m_settings.nCurve == 1)
                y = e >= 0 ? std::pow(x, 1 / (1 + e)) : std::pow(x, 1 - e * 0.333333);
            else if (e >= 0)
                y = 0.333333 * e + x - 0.333333 * e * x;
            else
                y = x < -0.333333 * e ? 0 : (x - -0.333333 * e) / (1 - -0.333333 * e);
            return static_cast<std::uint8_t>(std::clamp(static_cast<int>(y * 255), 0, 255));
        };
        EachPixel(t, [&](int i, int j, std::uint8_t* p) {
            for (int k = 0; k < 3; k++)
                p[k] = table(Canvas(t.x + i, t.y + j)[k]);
        });
    }

    void BeginSmudge()
    {
        spacing = 0.05;
        smear.assign((bw + 2) * (bh + 2) * 3, 0);
        const int ux = static_cast<int>(cx) - bw / 2 - 1, uy = static_cast<int>(cy) - bh / 2 - 1;
        Tile t;
        const bool bTile = GetTile(t);
        const std::uint8_t* p = Canvas(std::min(static_cast<int>(cx), w - 1), std::min(static_cast<int>(cy), h - 1));
        for (std::size_t i = 0; i < smear.size(); i++)
            smear[i] = p[i % 3];
        if (bTile)
            for (int j = 0; j < t.h; j++)
                for (int i = 0; i < t.w; i++)
                    std::copy_n(Canvas(t.x + i, t.y + j), 3, &smear[((t.y + j - uy) * (bw + 2) + t.x + i - ux) * 3]);
    }

    void SmudgeDab(Tile& t)
    {
        const int ux = static_cast<int>(cx) - bw / 2 - 1, uy = static_cast<int>(cy) - bh / 2 - 1;
        const int p = static_cast<int>(m_settings.nPressure / 100.0 * 255 + 0.5), q = 255 - p;
        EachPixel(t, [&](int i, int j, std::uint8_t* pOut) {
            std::uint8_t* pSmear = &smear[((t.y + j - uy) * (bw + 2) + t.x + i - ux) * 3];
            for (int k = 0; k < 3; k++)
                pOut[k] = pSmear[k] = static_cast<std::uint8_t>((Canvas(t.x + i, t.y + j)[k] * q + pSmear[k] * p) / 255);
        });
    }

    /// The padded mask at the dab's fraction of a pixel.
    Bytes Mask() const
    {
        const int pw = bw + 2;
        Bytes out(pw * (bh + 2));
        const auto phase = [](double f, int n) {
            f += f < 0 ? n : 0;
            return std::min(static_cast<int>((f - std::floor(f)) * 5), 4);
        };
        const int ix = phase(cx, bw), iy = phase(cy, bh);
        for (int row = 0; row < bh; row++)
            for (int col = 0; col < bw; col++) {
                const int m = g_activeBrush.aMask[row * bw + col];
                if (hardEdge) {
                    out[(row + 1) * pw + col + 1] = m ? 255 : 0;
                    continue;
                }
                for (int ky = 0; ky < 3; ky++)
                    for (int kx = 0; kx < 3; kx++) {
                        std::uint8_t& cell = out[(row + ky) * pw + col + kx];
                        cell = static_cast<std::uint8_t>(
                            std::min(255, cell + ((m * c_aSubpixelKernels[iy][ix][ky * 3 + kx] + 128) >> 8)));
                    }
            }
        return out;
    }

    void Paint(Tile& t)
    {
        const Bytes mask = Mask();
        const int pw = bw + 2, ph = bh + 2;
        const int mx = static_cast<int>(cx) - (pw >> 1), my = static_cast<int>(cy) - (ph >> 1);
        const std::uint8_t* pMask = mask.data() + (mx < 0 ? -mx : 0) + (my < 0 ? -my * pw : 0);
        EachPixel(t, [&](int i, int j, std::uint8_t* p) {
            const int m = pMask[j * pw + i];
            if (incremental) {
                if (opacity == 255) {
                    p[3] = static_cast<std::uint8_t>(Mul255(p[3], m));
                } else {
                    const int n = p[3] * m * opacity + 32603;
                    p[3] = static_cast<std::uint8_t>(((n >> 7) + n) >> 16);
                }
                return;
            }
            std::uint8_t& c = coverage[(t.y + j) * w + t.x + i];
            c = static_cast<std::uint8_t>(c + Mul255(255 - c, dabAlpha == 255 ? m : Mul255(m, dabAlpha)));
            p[3] = static_cast<std::uint8_t>(Mul255(p[3], c));
        });
        Composite(t);
    }

    int Harden(int a) const { return m_image.IsHardAlpha() ? (a < 128 ? 0 : 255) : a; }

    void Composite(Tile& t)
    {
        const int floatOpacity = static_cast<int>(m_image.Site().FloatOpacity() * 255 / 100.0);
        Bytes blended(t.w * t.h * 4);
        BlendBlock(mode, canvas.data(), t.rgba.data(), blended.data(), w, h, t.w, t.h, t.x, t.y, 4);
        for (int j = 0; j < t.h; j++)
            for (int i = 0; i < t.w; i++) {
                const int x = t.x + i, y = t.y + j;
                const int fx = x - m_image.m_nFloatX, fy = y - m_image.m_nFloatY;
                if (fw && (fx < 0 || fy < 0 || fx >= fw || fy >= fh || x >= m_image.m_rcFloat.right || y >= m_image.m_rcFloat.bottom))
                    continue;
                if (erase && !fw)
                    continue;
                Pixel(&blended[(j * t.w + i) * 4], x, y, fw ? fy * fw + fx : 0, floatOpacity, j * t.w + i);
            }
    }

    void Pixel(const std::uint8_t* pBlended, int x, int y, int f, int floatOpacity, int nRawMask)
    {
        std::uint8_t* pOut = &bitmap[(y * w + x) * 3];
        std::uint8_t* pCanvas = &canvas[(y * w + x) * 3];
        const std::uint8_t* pBase = &base[(y * w + x) * 3];
        const BrushTexture& tex = g_brushTexture;
        const int t = tex.aBytes.empty() ? 255 : tex.aBytes[y % tex.nHeight * tex.nWidth + x % tex.nWidth];
        int a = Harden(Mul255(pBlended[3], opacity));
        for (int k = 0; k < 3; k++) {
            if (incremental && !fw) {
                pOut[k] = pCanvas[k] = Lerp255(pCanvas[k], pBlended[k], a);
            } else if (incremental) {
                floatCanvas[f * 3 + k] = pCanvas[k] = Lerp255(floatCanvas[f * 3 + k], pBlended[k], a);
                pOut[k] = Lerp255(pBase[k], floatCanvas[f * 3 + k], Harden(Mul255(floatMask[f], floatOpacity)));
            } else if (erase) {
                if (k == 0)
                    floatMask[f] = static_cast<std::uint8_t>(Mul255(255 - Mul255(g_activeBrush.aMask[nRawMask], opacity), floatMask[f]));
                pOut[k] = Lerp255(pBase[k], floatCanvas[f * 3 + k], Harden(Mul255(floatMask[f], floatOpacity)));
            } else if (!fw) {
                pOut[k] = Lerp255(pCanvas[k], pBlended[k], Mul255(a, t));
            } else {
                const int v = Lerp255(floatCanvas[f * 3 + k], pBlended[k], Mul255(Mul255(a, t), t));
                floatBitmap[f * 3 + k] = static_cast<std::uint8_t>(v);
                pOut[k] = Lerp255(pBase[k], v, Harden(Mul255(floatMask[f], floatOpacity)));
            }
        }
    }

    const CPaintImage& m_image;
    Kind m_kind;
    StrokeSettings m_settings;
    Bytes canvas, floatCanvas, coverage, smear;
    int fw = 0, fh = 0, bw = 0, bh = 0, opacity = 0, mode = 0, dabAlpha = 255, offx = 0, offy = 0;
    double spacing = 0, cx = 0, cy = 0, lx = 0, ly = 0, distance = 0, pixelDistance = 0;
    bool incremental = false, hardEdge = false, erase = false;
};

} // namespace kestrune::test
