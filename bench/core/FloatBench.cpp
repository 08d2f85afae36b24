// A float of 1000 x 1000: a step of its move on pictures of two sizes, and its projective transform.
#include "Harness.h"

#include "doc/PaintImage.h"

#ifdef BENCH_HAS_OPENCV
#include <opencv2/imgproc.hpp>
#include <tbb/info.h>
#endif

#include <cstring>
#include <memory>
#include <string>
#include <vector>

namespace kestrune::bench {

namespace {

constexpr int c_nSide = 1000;
constexpr int c_nStepX = 7, c_nStepY = 5; ///< of a move, as a hand makes them between two events

struct LiftedFloat {
    CPaintImage image;
    bool bForth = false;

    LiftedFloat(int nWidth, int nHeight)
    {
        image.Create(nWidth, nHeight, FILL_WHITE, COLOR_RGB);
        std::uint32_t n = 1;
        for (int y = 0; y < nHeight; y++) {
            std::uint8_t* pRow = image.m_Bitmap.WriteRow(y);
            for (int i = 0; i < nWidth * 3; i++)
                pRow[i] = static_cast<std::uint8_t>((n = n * 1664525u + 1013904223u) >> 28 ^ (i / 5 + y));
        }
        image.m_BaseBitmap.Copy(image.m_Bitmap);
        const CRect rc{200, 300, 200 + c_nSide, 300 + c_nSide};
        std::memset(image.m_pMask.get(), 0, static_cast<std::size_t>(nWidth) * nHeight);
        for (int y = rc.top; y < rc.bottom; y++) // faded at the sides, as a feather leaves it
            for (int x = rc.left; x < rc.right; x++)
                image.m_pMask[static_cast<std::size_t>(y) * nWidth + x]
                    = static_cast<std::uint8_t>(std::min({255, 13 * (x - rc.left), 13 * (rc.right - 1 - x), 13 * (y - rc.top), 13 * (rc.bottom - 1 - y)}));
        image.InvalidateMaskBounds();
        image.m_nFloatX = rc.left;
        image.m_nFloatY = rc.top;
        image.m_nFloatW = image.m_nFloatH = c_nSide;
        image.m_rcFloat = image.m_rcFloatStart = rc;
        image.CaptureFloat(rc.left, rc.top, c_nSide, c_nSide);
        image.m_bFloatReady = image.m_bSelection = true;
    }
    void Lift()
    {
        image.m_bFloating = true;
        image.CutFloatHole();
        image.MoveFloatTo(201, 301, CPaintImage::CompositeFrom::Base);
    }
    void Step()
    {
        bForth = !bForth;
        image.MoveFloatTo(201 + bForth * c_nStepX, 301 + bForth * c_nStepY, CPaintImage::CompositeFrom::LastStep);
    }
};

void RegisterMove(int nWidth, int nHeight)
{
    const auto lifted = std::make_shared<LiftedFloat>(nWidth, nHeight);
    lifted->Lift();
    const std::size_t nStride = static_cast<std::size_t>(nWidth) * 3;
    const auto from = std::make_shared<std::vector<std::uint8_t>>(nStride * 1400, 1), to = std::make_shared<std::vector<std::uint8_t>>(nStride * 1400, 2);
    Register({"step of a float's move, " + std::to_string(nWidth) + " x " + std::to_string(nHeight) + " / copying what it repaints", 3,
              [=] { lifted->Step(); },
              [=] {
                  for (int y = 300; y < 300 + c_nSide + c_nStepY; y++)
                      std::memcpy(to->data() + y * nStride + 600, from->data() + y * nStride + 600, (c_nSide + c_nStepX) * 3);
              }});
}

/// A perspective that shows all of the float, about as large as it was.
Matrix3 Perspective()
{
    const double x = 200, y = 300, s = c_nSide;
    Matrix3 toUnit;
    toUnit.Translate(-x, -y);
    toUnit.Scale(1 / s, 1 / s);
    return UnitSquareTo({PointF{x + 30, y}, {x + s, y + 60}, {x + s - 60, y + s}, {x, y + s - 70}}) * toUnit;
}

void RegisterTransform()
{
    const auto lifted = std::make_shared<LiftedFloat>(1600, 1600);
    const Matrix3 m = Perspective();
    const auto transform = [=] { (void)lifted->image.TransformedFloat(m); };
#ifdef BENCH_HAS_OPENCV
    cv::setNumThreads(tbb::info::default_concurrency());
    Matrix3 local = m * Matrix3{{{1, 0, 200}, {0, 1, 300}, {0, 0, 1}}};
    local.Translate(-200, -300);
    const cv::Mat map = (cv::Mat_<double>(3, 3) << local.a[0][0], local.a[0][1], local.a[0][2], local.a[1][0], local.a[1][1], local.a[1][2],
                         local.a[2][0], local.a[2][1], local.a[2][2]);
    for (const int nChannels : {3, 4}) {
        const auto source = std::make_shared<cv::Mat>(c_nSide, c_nSide, CV_8UC(nChannels));
        cv::randu(*source, 0, 255);
        Register({"projective transform / OpenCV warpPerspective, " + std::to_string(nChannels) + " channels", 2.5, transform,
                  [=] {
                      cv::Mat out;
                      cv::warpPerspective(*source, out, map, {c_nSide, c_nSide}, cv::INTER_CUBIC);
                  }});
    }
#else
    const auto from = std::make_shared<std::vector<std::uint8_t>>(c_nSide * c_nSide * 3, 1), to = std::make_shared<std::vector<std::uint8_t>>(c_nSide * c_nSide * 3, 2);
    Register({"projective transform / copying the float (no peer here)", 1e9, transform, [=] { std::memcpy(to->data(), from->data(), from->size()); }});
#endif
}

const Group g_move("float, move", [] { RegisterMove(3840, 2160); });
const Group g_moveLarge("float, move on 100 megapixels", [] { RegisterMove(10000, 10000); });
const Group g_transform("float, transform", [] { RegisterTransform(); });

} // namespace

} // namespace kestrune::bench
