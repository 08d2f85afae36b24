// Selections on 3840 x 2160: the scans and fills against copying the mask, the soft and the round against another library's
// operation of the same meaning.
#include "Harness.h"

#include "doc/PaintImage.h"
#include "selection/BoundaryTracer.h"
#include "selection/FloodFill.h"
#include "selection/MaskBounds.h"
#include "selection/MaskDisc.h"
#include "selection/MaskFeather.h"
#include "selection/MaskFill.h"
#include "selection/Shapes.h"

#ifdef BENCH_HAS_OPENCV
#include <opencv2/imgproc.hpp>
#include <tbb/info.h>
#endif

#include <cmath>
#include <cstring>
#include <memory>
#include <random>
#include <string>
#include <vector>

namespace kestrune::bench {

namespace {

constexpr int c_nWidth = 3840, c_nHeight = 2160;
constexpr std::size_t c_nPixels = std::size_t{c_nWidth} * c_nHeight;

using Bytes = std::shared_ptr<std::vector<std::uint8_t>>;
Bytes NewBytes(std::size_t n = c_nPixels)
{
    return std::make_shared<std::vector<std::uint8_t>>(n);
}
MaskPlane PlaneOf(const Bytes& bytes)
{
    return {bytes->data(), c_nWidth, c_nHeight};
}
std::function<void()> CopyOf(std::size_t nBytes)
{
    const Bytes from = NewBytes(nBytes), to = NewBytes(nBytes);
    std::memset(from->data(), 1, nBytes);
    std::memset(to->data(), 2, nBytes);
    return [=] { std::memcpy(to->data(), from->data(), nBytes); };
}

/// A soft-edged ellipse over half the picture.
Bytes HalfPicture()
{
    const Bytes bytes = NewBytes();
    DrawEllipse(PlaneOf(bytes), {384, 150, 3456, 1869});
    FeatherMask(PlaneOf(bytes), 15, FeatherTaps::WithoutLast);
    return bytes;
}

/// Three bytes a pixel as a camera leaves them: clouds of several sizes with grain, in rows of the bitmap.
Bytes Photo(double fClouds, int nGrain)
{
    const Bytes bytes = NewBytes(c_nPixels * 3);
    std::minstd_rand random(1);
    for (int y = 0; y < c_nHeight; y++)
        for (int x = 0; x < c_nWidth; x++) {
            const double f = std::sin(x * 0.004 + std::sin(y * 0.011) * 2) + std::sin(y * 0.006 + std::sin(x * 0.009) * 2)
                + 0.3 * std::sin(x * 0.07 + y * 0.05) * std::sin(y * 0.06 - x * 0.03);
            const int n = 120 + static_cast<int>(fClouds * f) + static_cast<int>(random() % static_cast<unsigned>(nGrain + 1));
            for (int c = 0; c < 3; c++)
                (*bytes)[(static_cast<std::size_t>(y) * c_nWidth + x) * 3 + c] = static_cast<std::uint8_t>(n + c * 5);
        }
    return bytes;
}

CRect Wand(const Bytes& photo, CPoint pt, int nTolerance, const Bytes& mask)
{
    FloodParams params{pt, {}, nTolerance, true};
    std::memcpy(params.aSeed, photo->data() + (static_cast<std::size_t>(pt.y) * c_nWidth + pt.x) * 3, 3);
    const std::uint8_t* pRows = photo->data();
    return FloodFill({c_nWidth, c_nHeight, [=](int y) { return pRows + static_cast<std::size_t>(y) * c_nWidth * 3; }}, params, PlaneOf(mask));
}

double PartSelected(const Bytes& mask)
{
    std::size_t n = 0;
    for (const std::uint8_t nByte : *mask)
        n += nByte != 0;
    return static_cast<double>(n) / c_nPixels;
}

const Group g_scan("selection: scans and fills", [] {
    const Bytes mask = HalfPicture();
    Register({"selection: bounds of half the picture / P", 3, [=] { (void)ScanMaskBounds(PlaneOf(mask)); }, CopyOf(c_nPixels)});
    const Bytes empty = NewBytes();
    Register({"selection: bounds of an empty mask / P", 3, [=] { (void)ScanMaskBounds(PlaneOf(empty)); }, CopyOf(c_nPixels)});
    const Bytes all = NewBytes();
    Register({"selection: select all / P", 2, [=] { FillMask(PlaneOf(all), 255); }, CopyOf(c_nPixels)});
    Register({"selection: invert / P", 2, [=] { InvertMask(PlaneOf(all)); }, CopyOf(c_nPixels)});
});

const Group g_boundary("selection: boundary", [] {
    const Bytes photo = Photo(20, 9), mask = NewBytes();
    Wand(photo, {1900, 1000}, 22, mask);
    const auto segments = std::make_shared<std::vector<MaskSegment>>();
    TraceBoundary(PlaneOf(mask), {0, 0, c_nWidth, c_nHeight}, *segments);
    const std::string strHow = std::to_string(segments->size()) + " segments, " + std::to_string(static_cast<int>(PartSelected(mask) * 100)) + " %";
    Register({"selection: boundary of a wand's area (" + strHow + ") / P", 60,
              [=] { TraceBoundary(PlaneOf(mask), {0, 0, c_nWidth, c_nHeight}, *segments); }, CopyOf(c_nPixels)});
});

const Group g_flood("selection: flood fill", [] {
    const Bytes photo = Photo(8, 20), mask = NewBytes();
    Wand(photo, {1900, 1000}, 30, mask);
    const std::string strPart = std::to_string(static_cast<int>(PartSelected(mask) * 100));
    Register({"selection: flood fill over " + strPart + " % / P of the picture", 12, [=] { Wand(photo, {1900, 1000}, 30, mask); }, CopyOf(c_nPixels * 3),
              [=] { std::memset(mask->data(), 0, c_nPixels); }});
    const Bytes plain = NewBytes(c_nPixels * 3);
    Register({"selection: flood fill over one colour / P of the picture", 12, [=] { Wand(plain, {1900, 1000}, 6, mask); }, CopyOf(c_nPixels * 3),
              [=] { std::memset(mask->data(), 0, c_nPixels); }});
});

/// A change of a mask, on a fresh one each time.
struct Change {
    Bytes source = HalfPicture(), work = NewBytes();

    Bar Against(std::string strName, double fAtMost, std::function<void(const MaskPlane&)> change, std::function<void()> base) const
    {
        return {std::move(strName), fAtMost, [work = work, change] { change(PlaneOf(work)); }, std::move(base),
                [*this] { std::memcpy(work->data(), source->data(), c_nPixels); }};
    }
};

const Group g_feather("selection: feather", [] {
    const Change change;
    const auto Feather = [](double fRadius) { return [=](const MaskPlane& plane) { FeatherMask(plane, fRadius, FeatherTaps::All); }; };
    const Bytes other = NewBytes();
    Register(change.Against("selection: feather 250 / feather 20", 3, Feather(250), [=, work = change.work, source = change.source] {
        std::memcpy(other->data(), source->data(), c_nPixels);
        FeatherMask(PlaneOf(other), 20, FeatherTaps::All);
    }));
#ifdef BENCH_HAS_OPENCV
    cv::setNumThreads(tbb::info::default_concurrency());
    for (const int nRadius : {20, 250}) {
        const double fSigma = std::sqrt(-(static_cast<double>(nRadius) * nRadius) / (2 * std::log(1 / 255.0)));
        Register(change.Against("selection: feather " + std::to_string(nRadius) + " / OpenCV GaussianBlur", 2, Feather(nRadius), [=, source = change.source] {
            const cv::Mat in(c_nHeight, c_nWidth, CV_8UC1, source->data());
            cv::Mat out;
            cv::GaussianBlur(in, out, {2 * nRadius + 1, 2 * nRadius + 1}, fSigma, fSigma, cv::BORDER_REPLICATE);
        }));
    }
#endif
});

#ifdef BENCH_HAS_OPENCV
/// The disc as a structuring element.
cv::Mat DiscElement(int nRadius)
{
    cv::Mat element = cv::Mat::zeros(2 * nRadius + 1, 2 * nRadius + 1, CV_8UC1);
    for (int i = -nRadius; i <= nRadius; i++)
        for (int j = -DiscReach(nRadius, i); j <= DiscReach(nRadius, i); j++)
            element.at<std::uint8_t>(nRadius + j, nRadius + i) = 1;
    return element;
}
#endif

const Group g_disc("selection: grow, shrink, border", [] {
    const Change change;
    for (const int nRadius : {10, 50}) {
        const auto Grow = [=](const MaskPlane& plane) { GrowMask(plane, nRadius); };
        const auto Shrink = [=](const MaskPlane& plane) { ShrinkMask(plane, nRadius); };
        const std::string strRadius = std::to_string(nRadius);
#ifdef BENCH_HAS_OPENCV
        cv::setNumThreads(tbb::info::default_concurrency());
        const cv::Mat element = DiscElement(nRadius);
        const auto Morph = [=, source = change.source](int nOperation) {
            return [=] {
                const cv::Mat in(c_nHeight, c_nWidth, CV_8UC1, source->data());
                cv::Mat out;
                cv::morphologyEx(in, out, nOperation, element);
            };
        };
        Register(change.Against("selection: grow " + strRadius + " / OpenCV dilate", 2, Grow, Morph(cv::MORPH_DILATE)));
        Register(change.Against("selection: shrink " + strRadius + " / OpenCV erode", 2, Shrink, Morph(cv::MORPH_ERODE)));
        Register(change.Against("selection: border " + strRadius + " / OpenCV dilate less erode", 2,
                                [=](const MaskPlane& plane) { BorderMask(plane, nRadius, nRadius); }, Morph(cv::MORPH_GRADIENT)));
#else
        Register(change.Against("selection: grow " + strRadius + " / P (no peer here)", 1e9, Grow, CopyOf(c_nPixels)));
        Register(change.Against("selection: shrink " + strRadius + " / P (no peer here)", 1e9, Shrink, CopyOf(c_nPixels)));
#endif
    }
});

} // namespace

} // namespace kestrune::bench
