// The stroke engine on one core: dabs of each tool on a picture of 3840 x 2160, against copying their bytes, against the plain
// brush, and against libmypaint where it is installed; press and release on pictures of 1 and of 100 megapixels.
#include "Harness.h"

#include "doc/PaintImage.h"
#include "paint/AirBrushCore.h"
#include "paint/BlurCore.h"
#include "paint/BrushCore.h"
#include "paint/DodgeCore.h"
#include "paint/SharpenCore.h"
#include "paint/SmudgeCore.h"
#include "paint/StampCore.h"
#include "resources/PaintSources.h"
#include "tools/ToolOptions.h"
#include "tools/ToolRegistry.h"
#include "tools/ToolTable.h"
#include "undo/UndoStack.h"

#ifdef BENCH_HAS_LIBMYPAINT
extern "C" {
#include <mypaint-fixed-tiled-surface.h>
}
#endif

#include <cmath>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

namespace kestrune::bench {

namespace {

constexpr int c_nWidth = 3840, c_nHeight = 2160;
constexpr double c_fHardness = 0.6; ///< part of the radius at full strength

/// A round brush with a soft rim.
void SetRoundBrush(int nSize)
{
    g_activeBrush = {std::vector<std::uint8_t>(static_cast<std::size_t>(nSize) * nSize), nSize, nSize, {nSize / 2.0, 0}, {0, nSize / 2.0}, 20};
    for (int y = 0; y < nSize; y++)
        for (int x = 0; x < nSize; x++) {
            const double r = std::hypot(x + 0.5 - nSize / 2.0, y + 0.5 - nSize / 2.0) / (nSize / 2.0);
            const double f = r <= c_fHardness ? 1 : r >= 1 ? 0 : (1 - r) / (1 - c_fHardness);
            g_activeBrush.aMask[static_cast<std::size_t>(y) * nSize + x] = static_cast<std::uint8_t>(f * 255);
        }
}

void FillNoise(CPaintImage& image, int nWidth, int nHeight)
{
    image.Create(nWidth, nHeight, FILL_WHITE, COLOR_RGB);
    std::uint32_t n = 1;
    for (int y = 0; y < nHeight; y++) {
        std::uint8_t* p = image.m_Bitmap.WriteRow(y);
        for (int x = 0; x < nWidth * 3; x++)
            p[x] = static_cast<std::uint8_t>((n = n * 1664525u + 1013904223u) >> 24);
    }
    image.m_BaseBitmap.Copy(image.m_Bitmap);
}

struct Canvas {
    CPaintImage image;
    Canvas() { FillNoise(image, c_nWidth, c_nHeight); }
};

/// The corners of a path through the whole picture: lines to and fro, slanting, each a little lower.
template <typename To>
void WalkPath(double fLength, const To& to)
{
    double x = 0, y = 0, dx = 1;
    while (fLength > 0) {
        const double fStep = std::min(fLength, 37.0); // about what a quick hand makes between two events
        fLength -= fStep;
        x += dx * fStep;
        y += 0.21 * fStep;
        if (x < 0 || x > c_nWidth) {
            dx = -dx;
            x += dx * fStep;
        }
        if (y > c_nHeight)
            y = 0;
        to(x, y);
    }
}

template <typename Core>
void Stroke(CPaintImage& image, int nDabs, int nSize, double fSpacing)
{
    StrokeSettings settings;
    settings.nOpacity = 80;
    settings.nSpacing = static_cast<int>(fSpacing * 100);
    Core core(image, settings);
    core.Begin(1, 0, 0);
    WalkPath(nDabs * fSpacing * nSize / std::hypot(1, 0.21), [&](double x, double y) { core.StrokeTo(x, y); });
    core.End();
}

#ifdef BENCH_HAS_LIBMYPAINT
/// The same dabs by libmypaint, on a surface of the picture's size, ended after each event as its brush engine does.
struct Peer {
    MyPaintFixedTiledSurface* pFixed = mypaint_fixed_tiled_surface_new(c_nWidth, c_nHeight);
    ~Peer() { mypaint_surface_unref(Surface()); }
    MyPaintSurface* Surface() const { return mypaint_fixed_tiled_surface_interface(pFixed); }
    void Stroke(int nDabs, int nSize)
    {
        MyPaintSurface* p = Surface();
        const double fStep = nSize * 0.2 / std::hypot(1, 0.21);
        int n = 0;
        mypaint_surface_begin_atomic(p);
        WalkPath(nDabs * fStep, [&](double x, double y) {
            // The path's steps are not the dabs' distance: lay as many as are due, all near this point.
            for (; n * fStep < m_fWalked + 37 && n < nDabs; n++)
                mypaint_surface_draw_dab(p, static_cast<float>(x + std::fmod(n * fStep, 37)), static_cast<float>(y), nSize / 2.0f, 0.8f,
                                         0.1f, 0.1f, 0.8f, static_cast<float>(c_fHardness), 1, 1, 0, 0, 0);
            m_fWalked += 37;
            MyPaintRectangle roi;
            mypaint_surface_end_atomic(p, &roi);
            mypaint_surface_begin_atomic(p);
        });
        mypaint_surface_end_atomic(p, nullptr);
        m_fWalked = 0;
    }
    double m_fWalked = 0;
};
#endif

template <typename Core>
void RegisterTool(const std::shared_ptr<Canvas>& canvas, const char* pszTool, double fSpacing)
{
    constexpr int c_nDabs = 4000, c_nSize = 100;
    Register({"paint: " + std::string(pszTool) + ", size 100, against the plain brush, 4000 dabs", 4,
              [=] { Stroke<Core>(canvas->image, c_nDabs, c_nSize, fSpacing); }, [=] { Stroke<BrushCore>(canvas->image, c_nDabs, c_nSize, 0.2); },
              [] { SetRoundBrush(c_nSize); }});
}

void RegisterDabs()
{
    const auto canvas = std::make_shared<Canvas>();
    g_crForeground = Rgb(200, 20, 20);
#ifdef BENCH_HAS_LIBMYPAINT
    const auto peer = std::make_shared<Peer>();
    struct Size {
        int nSize, nDabs;
        double fAtMost;
    };
    for (const Size& s : {Size{20, 100000, 0.5}, Size{100, 8000, 0.25}, Size{300, 1500, 0.25}})
        Register({"paint: plain brush, size " + std::to_string(s.nSize) + ", against libmypaint, " + std::to_string(s.nDabs) + " dabs", s.fAtMost,
                  [=] { Stroke<BrushCore>(canvas->image, s.nDabs, s.nSize, 0.2); }, [=] { peer->Stroke(s.nDabs, s.nSize); },
                  [=] { SetRoundBrush(s.nSize); }});
#endif
    const auto buffer = std::make_shared<std::vector<std::uint8_t>>(2 * 300 * 300 * 4);
    Register({"paint: plain brush, size 300, against copying the dab's RGBA, 1500 dabs", 6,
              [=] { Stroke<BrushCore>(canvas->image, 1500, 300, 0.2); },
              [=] {
                  for (int i = 0; i < 1500; i++) {
                      std::memcpy(buffer->data(), buffer->data() + 300 * 300 * 4, 300 * 300 * 4);
                      buffer->data()[300 * 300 * 4 + i]++;
                  }
              },
              [] { SetRoundBrush(300); }});
    RegisterTool<AirBrushCore>(canvas, "air brush", 0.2);
    RegisterTool<SmudgeCore>(canvas, "smudge", 0.05);
    RegisterTool<BlurCore>(canvas, "blur", 0.2);
    RegisterTool<SharpenCore>(canvas, "sharpen", 0.2);
    RegisterTool<DodgeCore>(canvas, "dodge", 0.2);
    RegisterTool<StampCore>(canvas, "stamp", 0.2);
}

/// A view without a window.
class CBareView : public CToolView {
public:
    explicit CBareView(CPaintImage& image) : m_image(image) {}
    CPaintImage* GetImage() const override { return &m_image; }
    float GetZoom() const override { return 1; }
    CPoint GetImageOrigin() const override { return {}; }
    CPoint ClientToImage(CPoint pt) const override { return pt; }
    CPoint ImageToClient(CPoint pt) const override { return pt; }
    CSize GetClientSize() const override { return {1600, 1000}; }
    CPoint GetScrollPosition() const override { return {}; }
    void ScrollToPosition(CPoint) override {}
    bool HasHScroll() const override { return false; }
    bool HasVScroll() const override { return false; }
    void ZoomAt(bool, CPoint) override {}
    void SetCapture() override {}
    void ReleaseCapture() override {}
    bool HasCapture() const override { return false; }
    void SetToolCursor(int) override {}
    void SetOverlay(ToolOverlay) override {}
    void StartTimer(int, int) override {}
    void KillTimer(int) override {}
    void RepaintRect(const CRect&) override {}
    void RepaintAll() override {}
    void StopOutline() override {}
    void StartOutline() override {}

private:
    CPaintImage& m_image;
};

struct Picture {
    CPaintImage image;
    CBareView view{image};
    int nPress = 0;
    bool bDown = false;
    explicit Picture(int nSide)
    {
        FillNoise(image, nSide, nSide);
        RecordFirstState(image, 2);
    }
    CPaintTool& Tool() const { return *FindTool(TOOL_BRUSH); }
    CPoint Point() const { return {200 + nPress % 7 * 90, 300 + nPress % 5 * 80}; }
    static constexpr int c_nPlaces = 35;
    void Press()
    {
        Tool().OnLButtonDown(view, MK_LBUTTON, Point());
        bDown = true;
    }
    void Release()
    {
        if (bDown)
            Tool().OnLButtonUp(view, 0, Point());
        bDown = false;
        nPress++;
    }
    void Line()
    {
        Press();
        Tool().OnMouseMove(view, MK_LBUTTON, {Point().x + 200, Point().y + 100});
    }
};

void RegisterPress()
{
    SetRoundBrush(100);
    const auto large = std::make_shared<Picture>(10000), small = std::make_shared<Picture>(1000);
    const std::size_t nBytes = 300'000'000;
    const auto from = std::make_shared<std::vector<std::uint8_t>>(nBytes, 1), to = std::make_shared<std::vector<std::uint8_t>>(nBytes, 2);
    const auto copy = [=] { std::memcpy(to->data(), from->data(), nBytes); };
    const auto atRest = [=] {
        large->Release();
        small->Release();
        HistoryBytes(large->image); // what settles on the other core is over
        HistoryBytes(small->image);
    };
    Register({"paint: press and first dab, 100 megapixels, against copying them", 0.05, [=] { large->Press(); }, copy, atRest});
    // One tool serves both pictures, so the stroke on the one ends before that on the other begins. On the small one every place was
    // soon painted on; so it shall be on the large one, or the system's slowness in giving fresh memory is all that is compared.
    const auto paintedOn = [=] {
        for (; large->nPress < Picture::c_nPlaces; large->Release())
            large->Press();
        atRest();
    };
    Register({"paint: press and first dab, 100 megapixels, against 1 megapixel", 2.5, [=] { large->Press(); }, [=] { small->Press(); }, paintedOn, atRest});
    Register({"paint: release, 100 megapixels, against copying them", 0.05, [=] { large->Release(); }, copy, [=] {
                  atRest();
                  large->Line();
              }});
    // One fraction of a pixel is built when it is first met: what a stroke with this brush pays 25 times at most.
    static SubpixelMaskCache s_cache;
    SetRoundBrush(200);
    const auto mask = std::make_shared<std::vector<std::uint8_t>>(g_activeBrush.aMask);
    Register({"paint: one phase of a brush of 200 pixels, 25 times, against copying the mask 1000 times", 25,
              [=] {
                  for (int i = 0; i < 25; i++)
                      s_cache.GetSubpixelMask(i / 5, i % 5);
              },
              [=] {
                  for (int i = 0; i < 1000; i++) {
                      std::memcpy(to->data(), mask->data(), mask->size());
                      mask->data()[i]++;
                  }
              },
              [=] { s_cache.SetMask(*mask, 200, 200, true); }});
}

const Group g_dabs("paint", RegisterDabs);
const Group g_press("press", RegisterPress);

} // namespace

} // namespace kestrune::bench
