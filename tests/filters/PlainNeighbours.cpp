#include "PlainFilters.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>

namespace kestrune::plain {

namespace {

using Line = std::vector<int>;

/// The recursive Gaussian of one line.
class CPlainGaussian {
public:
    explicit CPlainGaussian(int nRadius)
    {
        const double r = std::abs(nRadius) + 1.0;
        const double s = std::sqrt(-(r * r) / (2 * std::log(1 / 255.0)));
        const double x0 = -1.783 / s, x1 = -1.723 / s, x2 = 0.6318 / s, x3 = 1.997 / s, d = std::sqrt(6.28) * s;
        const double a0 = 1.6803 / d, a1 = 3.735 / d, a2 = -0.6803 / d, a3 = -0.2598 / d;
        using std::cos, std::exp, std::sin;
        np[0] = a0 + a2;
        np[1] = exp(x1) * (a3 * sin(x3) - cos(x3) * (2 * a0 + a2)) + exp(x0) * (a1 * sin(x2) - cos(x2) * (2 * a2 + a0));
        np[2] = 2 * exp(x0 + x1) * (cos(x3) * np[0] * cos(x2) - sin(x2) * cos(x3) * a1 - sin(x3) * cos(x2) * a3)
            + exp(2 * x0) * a2 + exp(2 * x1) * a0;
        np[3] = exp(2 * x0 + x1) * (a3 * sin(x3) - cos(x3) * a2) + exp(2 * x1 + x0) * (a1 * sin(x2) - cos(x2) * a0);
        dp[1] = -2 * exp(x1) * cos(x3) - 2 * exp(x0) * cos(x2);
        dp[2] = 4 * cos(x3) * cos(x2) * exp(x0 + x1) + exp(2 * x1) + exp(2 * x0);
        dp[3] = -2 * cos(x2) * exp(2 * x1 + x0) - 2 * cos(x3) * exp(2 * x0 + x1);
        dp[4] = exp(2 * x0 + 2 * x1);
        for (int i = 1; i <= 4; ++i)
            nm[i] = np[i] - dp[i] * np[0];
        double sp = 0, sm = 0, sd = 0;
        for (int i = 0; i <= 4; ++i) {
            sp += np[i];
            sm += nm[i];
            sd += dp[i];
        }
        for (int i = 0; i <= 4; ++i) {
            bdp[i] = sp / (1 + sd) * dp[i];
            bdm[i] = sm / (1 + sd) * dp[i];
        }
    }

    Line Run(const Line& src) const
    {
        const int n = static_cast<int>(src.size());
        std::vector<double> p(src.size(), 0.0), q(src.size(), 0.0);
        for (int i = 0; i < n; ++i) {
            const int t = std::min(i, 4), j = n - 1 - i;
            for (int k = 0; k <= t; ++k) {
                p[i] += np[k] * src[i - k] - dp[k] * p[i - k];
                q[j] += nm[k] * src[j + k] - dp[k] * q[j + k];
            }
            for (int k = t + 1; k <= 4; ++k) {
                p[i] += (np[k] - bdp[k]) * src.front();
                q[j] += (nm[k] - bdm[k]) * src.back();
            }
        }
        Line out(src.size());
        for (int i = 0; i < n; ++i) {
            const double v = p[i] + q[i];
            out[i] = v >= 255.0 ? 255 : !(v >= 0.0) ? 0 : static_cast<int>(v);
        }
        return out;
    }

private:
    std::array<double, 5> np{}, nm{}, dp{}, bdp{}, bdm{};
};

Picture Gaussian(const Picture& in, int nRadius)
{
    const CPlainGaussian gaussian(nRadius);
    Picture out = in;
    for (int c = 0; c < 3; ++c) {
        for (int x = 0; x < in.w; ++x) {
            Line line;
            for (int y = 0; y < in.h; ++y)
                line.push_back(out.At(x, y, c));
            line = gaussian.Run(line);
            for (int y = 0; y < in.h; ++y)
                out.At(x, y, c) = static_cast<std::uint8_t>(line[y]);
        }
        for (int y = 0; y < in.h; ++y) {
            Line line;
            for (int x = 0; x < in.w; ++x)
                line.push_back(out.At(x, y, c));
            line = gaussian.Run(line);
            for (int x = 0; x < in.w; ++x)
                out.At(x, y, c) = static_cast<std::uint8_t>(line[x]);
        }
    }
    return out;
}

/// Calls `choose(values of the window, sorted)` for each byte.
template <typename Choose>
Picture EachWindow(const PlainRun& run, const Choose& choose)
{
    const Picture& in = run.in;
    Picture out(in.w, in.h);
    const auto start = [](int p, int n, int m) {
        const int nStart = std::max(p - n / 2, 0);
        return nStart < m - n ? nStart : m - n;
    };
    const int nx = std::min(run.values.an[0], in.w), ny = std::min(run.values.an[0], in.h);
    for (int y = 0; y < in.h; ++y)
        for (int x = 0; x < in.w; ++x)
            for (int c = 0; c < 3; ++c) {
                std::vector<std::uint8_t> window;
                for (int j = 0; j < ny; ++j)
                    for (int i = 0; i < nx; ++i)
                        window.push_back(in.At(start(x, nx, in.w) + i, start(y, ny, in.h) + j, c));
                std::ranges::sort(window);
                out.At(x, y, c) = choose(window);
            }
    return out;
}

} // namespace

Picture PlainBlur(const PlainRun& run)
{
    const Picture& in = run.in;
    Picture out(in.w, in.h);
    using Row = std::vector<std::uint8_t>;
    const auto padded = [&](int y) {
        Row row;
        for (int x = -1; x <= in.w; ++x)
            for (int c = 0; c < 3; ++c)
                row.push_back(in.At(std::clamp(x, 0, in.w - 1), y, c));
        return row;
    };
    Row first = padded(0), middle = padded(0); // not filled before the first row: they see it
    for (int y = 0; y < in.h; ++y) {
        const Row third = padded(y + 1 < in.h ? y + 1 : in.h - 1);
        for (int i = 0; i < in.w * 3; ++i) {
            int nSum = 0;
            for (const Row* p : std::initializer_list<const Row*>{&first, &middle, &third})
                nSum += (*p)[i] + (*p)[i + 3] + (*p)[i + 6];
            out.bytes[static_cast<std::size_t>(y) * in.w * 3 + i] = static_cast<std::uint8_t>(nSum / 9);
        }
        first = middle;
        middle = third;
    }
    return out;
}

Picture PlainGaussian(const PlainRun& run) { return Gaussian(run.in, run.values.an[0]); }

Picture PlainMotionBlur(const PlainRun& run)
{
    const Picture& in = run.in;
    const double a = run.values.an[0];
    const int l = run.values.an[1];
    const int dx = static_cast<int>(run.nSourceHeight * std::cos(a / 180 * 3.14));
    const int dy = static_cast<int>(run.nSourceHeight * std::sin(a / 180 * 3.14));
    const int sx = dx > 0 ? 1 : dx < 0 ? -1 : 0, sy = dy > 0 ? 1 : dy < 0 ? -1 : 0;
    const bool bSteep = std::abs(dx) < std::abs(dy);
    const int L = std::max(std::abs(dx), std::abs(dy)), S = std::min(std::abs(dx), std::abs(dy));
    Picture out(in.w, in.h);
    for (int py = 0; py < in.h; ++py)
        for (int px = 0; px < in.w; ++px) {
            int cx = px, cy = py, e = 2 * S - L, n = 0, anSum[3] = {};
            while (n < l + 2) {
                for (int c = 0; c < 3; ++c)
                    anSum[c] += in.At(cx, cy, c);
                ++n;
                if (L == 0)
                    break;
                while (e >= 0) {
                    (bSteep ? cx : cy) += bSteep ? sx : sy;
                    e -= 2 * L;
                }
                (bSteep ? cy : cx) += bSteep ? sy : sx;
                e += 2 * S;
                if (cx < 0 || cy < 0 || cx >= in.w || cy >= in.h)
                    break;
            }
            for (int c = 0; c < 3; ++c)
                out.At(px, py, c) = static_cast<std::uint8_t>(anSum[c] / n);
        }
    return out;
}

Picture PlainSharpen(const PlainRun& run)
{
    const Picture& in = run.in;
    std::array<int, 256> pos, neg;
    for (int i = 0; i < 256; ++i) {
        pos[i] = i * 800 / std::max(100 - run.values.an[0], 1);
        neg[i] = (pos[i] + 4 - i * 8) >> 3;
    }
    const int nBytes = in.w * 3;
    const auto row = [&](int y) { return in.bytes.begin() + static_cast<std::ptrdiff_t>(y) * nBytes; };
    std::array<std::vector<std::uint8_t>, 4> slots;
    slots[0].assign(row(0), row(0) + nBytes);
    Picture out(in.w, in.h);
    std::vector<std::uint8_t> buffer = slots[0];
    for (int y = 0; y < in.h; ++y) {
        if (y + 1 < in.h)
            slots[(y + 1) & 3].assign(row(y + 1), row(y + 1) + nBytes);
        if (y > 0 && y < in.h - 1) {
            const auto &above = slots[(y - 1) & 3], &own = slots[y & 3], &below = slots[(y + 1) & 3];
            buffer = own;
            for (int i = 3; i + 3 < nBytes; ++i) {
                const int nEight = neg[above[i - 3]] + neg[above[i]] + neg[above[i + 3]] + neg[own[i - 3]] + neg[own[i + 3]]
                    + neg[below[i - 3]] + neg[below[i]] + neg[below[i + 3]];
                buffer[i] = static_cast<std::uint8_t>(std::clamp((pos[own[i]] - nEight + 4) >> 3, 0, 255));
            }
        } else if (y > 0 && !slots[2].empty())
            buffer = slots[2];
        std::ranges::copy(buffer, out.bytes.begin() + static_cast<std::ptrdiff_t>(y) * nBytes);
    }
    return out;
}

Picture PlainUnsharp(const PlainRun& run)
{
    Picture out = Gaussian(run.in, run.values.an[0]);
    const double fFactor = run.values.an[1] / 100;
    for (std::size_t i = 0; i < out.bytes.size(); ++i) {
        const int o = run.in.bytes[i], d = o - out.bytes[i];
        const double v = std::fabs(2.0 * d) >= run.values.an[2] ? o + d * fFactor : o;
        out.bytes[i] = static_cast<std::uint8_t>(v < 0 ? 0 : v > 255 ? 255 : static_cast<int>(v + 0.5));
    }
    return out;
}

Picture PlainMedian(const PlainRun& run)
{
    return EachWindow(run, [](const std::vector<std::uint8_t>& window) { return window[window.size() / 2]; });
}
Picture PlainMaximum(const PlainRun& run)
{
    return EachWindow(run, [](const std::vector<std::uint8_t>& window) { return window.back(); });
}
Picture PlainMinimum(const PlainRun& run)
{
    return EachWindow(run, [](const std::vector<std::uint8_t>& window) { return window.front(); });
}

Picture PlainMatrix(const PlainRun& run)
{
    const auto& m = std::get<MatrixValues>(run.values.extra);
    Picture out(run.in.w, run.in.h);
    for (int y = 0; y < out.h; ++y)
        for (int x = 0; x < out.w; ++x)
            for (int c = 0; c < 3; ++c) {
                int nSum = 0;
                for (int j = 0; j < 5; ++j)
                    for (int i = 0; i < 5; ++i)
                        if (x + i - 2 >= 0 && x + i - 2 < out.w && y + j - 2 >= 0 && y + j - 2 < out.h)
                            nSum += m.anMatrix[j * 5 + i] * run.in.At(x + i - 2, y + j - 2, c);
                const int v = nSum / m.nScale + m.nOffset;
                out.At(x, y, c) = static_cast<std::uint8_t>(v > 254 ? 255 : v < 0 ? 0 : v);
            }
    return out;
}

} // namespace kestrune::plain
