#pragma once

#include "doc/BandStore.h"
#include "paint/DabKernels.h"
#include "paint/StampTile.h"
#include "paint/StrokeCoverage.h"
#include "paint/SubpixelMaskCache.h"

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace kestrune {

class CPaintImage;

/// The settings of a stroke, as the tool read them at the press. Percent values are 0..100 unless said otherwise.
struct StrokeSettings {
    int nOpacity = 100;
    int nSpacing = 20; ///< percent of the brush, above 0
    int nMode = 0;     ///< `BlendMode`
    int nPressure = 50; ///< pressure, strength, exposure, or the fade length in tens of pixels
    bool bFade = false;
    bool bEraseFloat = false; ///< remove pixels of the float instead of painting
    int nCurve = 1;    ///< of dodge and burn
};

/// A point in image pixels, between them too.
struct DabPoint {
    double x = 0;
    double y = 0;
};

/// The stroke engine, alive from press to release. It walks the path of the mouse in steps of the brush's spacing and lays a
/// dab at each: a tile of colours, thinned by the brush's mask, mixed into the picture.
///
/// Two ways of laying. Capped: the stroke's coverage grows with the dabs, and each is mixed from the untouched canvas, so that
/// overlapping dabs never get stronger than the opacity. Stacked (`m_bIncremental`): each dab acts on the result of the one
/// before. The canvas is the committed picture, with the float's rectangle over it; it shares the picture's memory until
/// somebody writes, and so does all else here: a stroke costs what it touches.
///
/// A derived class says what a dab's tile holds (`Dab`), and with which settings (`Begin`).
class PaintCore {
public:
    PaintCore(CPaintImage& image, const StrokeSettings& settings);
    virtual ~PaintCore();
    PaintCore(const PaintCore&) = delete;
    PaintCore& operator=(const PaintCore&) = delete;

    /// Takes picture and brush, and sets the start point. Derived classes lay the first dab. Throws std::bad_alloc.
    virtual void Begin(unsigned nFlags, double x, double y);
    /// Lays the dabs from the last point to this one.
    void StrokeTo(double x, double y);
    /// One more dab at the present point: paint that flows while the mouse rests.
    void DabAgain();
    /// At the release: the committed picture follows the working one, or the float's bitmap its canvas.
    virtual void End();

protected:
    /// The dab of the press; ends `Begin` of a derived class.
    void LayFirst() { DabAgain(); }
    /// Lays one dab at `m_ptCurrent`.
    virtual void Dab() = 0;

    /// Clips the brush's rectangle at `m_ptCurrent` into `m_tile`, opaque and of one colour as yet. False when nothing is left.
    bool GetTile();
    /// Thins the tile by the brush mask and mixes it into the picture.
    void Paint();
    /// The brush of the stroke; `Begin` takes the active one, a class with a mask of its own calls it after that.
    void SetBrush(std::span<const std::uint8_t> mask, int nWidth, int nHeight);
    /// Some pixels of a row of the canvas from the column on. They must lie in the picture; `PrepareCanvas` came before.
    const std::uint8_t* CanvasRow(int y, int x, int nCount) const { return ReadPixels(m_canvas, y, x, nCount); }
    /// Lays the float over those rows of the canvas where that was not yet done. `GetTile` does it for the tile's.
    void PrepareCanvas(int y0, int y1);
    /// The tile's own rows for colours, to be filled by the dab.
    std::uint8_t* MakeInk();
    /// The same for the alphas.
    std::uint8_t* MakeAlpha();
    /// A colour as pictures of few colours can show it: the palette's nearest; the colour itself in others.
    static std::uint32_t SnappedColor(std::uint32_t crColor);
    /// Sets the tile's one colour.
    void SetInk(std::uint32_t crColor);
    /// Lays the background pattern, taken at the press, over the tile's colour; nothing without a pattern.
    void OverlayPattern();
    void TakePattern();

    CPaintImage* m_pImage;
    StrokeSettings m_settings;
    CBandStore m_canvas;
    std::optional<CBandStore> m_floatCanvas; ///< without a float none
    StrokeCoverage m_coverage;
    std::vector<DabSpan> m_aFull; ///< columns of each row that are covered in full
    int m_nBrushWidth = 0, m_nBrushHeight = 0;
    const std::uint8_t* m_pBrushMask = nullptr; ///< the mask cache's copy
    int m_nImageWidth = 0, m_nImageHeight = 0;
    DabPoint m_ptStart, m_ptCurrent, m_ptLast;
    DabPoint m_xAxis, m_yAxis;
    double m_fDistance = 0;      ///< walked so far, in brush widths
    double m_fPixelDistance = 0; ///< the same in image pixels
    StampTile m_tile;
    bool m_bMaskDirty = false; ///< drop what the mask cache holds
    bool m_bEraseFloatAlpha = false;
    bool m_bHardEdge = false;
    bool m_bIncremental = false;
    int m_nMode = 0;
    int m_nOpacity = 255;
    double m_fSpacing = 0.2; ///< step as a fraction of the brush
    int m_nDabAlpha = 255;

private:
    struct RowPass;

    static const std::uint8_t* ReadPixels(const CBandStore& store, int y, int x, int nCount);
    static std::uint8_t* WritePixels(CBandStore& store, int y, int x, int nCount);
    void Walk();
    DabMask& GetDabMask();
    void PasteDab(DabMask& mask);
    bool IsHotCase() const;
    void FindSpans(DabMask& mask, CPoint ptMask);
    void PasteRuns(DabMask& mask, CPoint ptMask);
    int Reach() const;
    std::uint8_t* OpenCoverage(int y, int nRows);
    const std::vector<std::uint8_t>& MappedMask(DabMask& mask);
    void PasteRows(const DabMask& mask, CPoint ptMask);
    void AlphaOfRow(RowPass& pass, int j);
    void FinishAlpha(RowPass& pass) const;
    void CompositeRow(RowPass& pass);
    void CompositeFloatRow(RowPass& pass);
    void EraseRow(const RowPass& pass, std::uint8_t* pFloatMask) const;
    void MultiplyTexture(std::uint8_t* pAlpha, int x, int y, int nCount) const;
    void Touch(const CRect& rc);
    void FlushRepaint();

    struct Pattern {
        std::vector<std::uint8_t> aPixels; ///< blue, green, red
        int nWidth = 0, nHeight = 0, nAlpha = 0;
    } m_pattern;
    struct Texture {
        std::vector<std::uint8_t> aBytes;
        int nWidth = 0, nHeight = 0;
    } m_texture;
    bool m_bTexture = false;
    bool m_bHardAlpha = false;
    std::vector<bool> m_aFloatLaid; ///< bands of the canvas that have the float over them
    std::vector<std::uint8_t> m_aInkRows, m_aAlphaRows, m_aScratch;
    std::vector<DabSpan> m_aSpans;
    const DabSpan* m_pSpans = nullptr; ///< of the dab in progress, for each row of the tile
    CRect m_rcDirty; ///< laid and not yet repainted
    CRect m_rcLastDab;
    double m_fDirtyArea = 0; ///< pixels of it that dabs cover
};

} // namespace kestrune
