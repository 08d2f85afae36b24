#pragma once

#include "tools/BrushOutline.h"
#include "tools/PaintTool.h"

#include <memory>

namespace kestrune {

class PaintCore;
struct StrokeSettings;

/// What all painting tools share: a press takes the settings, records the picture and begins a stroke, every mouse position
/// continues it, the release ends it. A derived class says which stroke and with which settings.
class CStrokeTool : public CPaintTool {
public:
    explicit CStrokeTool(int nToolId);
    ~CStrokeTool() override;

    void OnLButtonDown(CToolView& view, unsigned nFlags, CPoint pt) override;
    void OnMouseMove(CToolView& view, unsigned nFlags, CPoint pt) override;
    void OnLButtonUp(CToolView& view, unsigned nFlags, CPoint pt) override;
    /// The table's cursor, and the brush's outline around it.
    bool OnSetCursor(CToolView& view, CPoint pt) override;
    void OnMouseLeave(CToolView& view) override;
    void OnDrawOverlay(CToolView& view) override;
    /// Takes the outline away, which no other tool would.
    void OnDeactivate() override;
    bool WantsEveryMove() const override { return true; }
    bool TakesSecondPress() const override { return true; }

protected:
    virtual std::unique_ptr<PaintCore> MakeCore(CPaintImage& image) const = 0;
    /// Steps of a tool's own: whether the press paints at all, and what follows the first dab. Called with an image present.
    virtual bool BeforeStroke(CToolView&, unsigned /*nFlags*/, CPoint /*ptImage*/) { return true; }
    virtual void AfterPress(CToolView&) {}
    virtual void BeforeRelease(CToolView&) {}
    /// Whether the active brush is laid without soft edges, which moves the outline.
    virtual bool LaysHardMask() const { return false; }
    /// What the tool draws beside the outline.
    virtual void AddToOverlay(CToolView&, ToolOverlay&) {}
    void ShowOverlay(CToolView& view, CPoint pt);
    CPoint ImagePoint(const CToolView& view, CPoint pt) const;

    bool m_bStroking = false;
    std::unique_ptr<PaintCore> m_pCore; ///< of the present drag

private:
    void DropStroke();

    BrushOutline m_outline;
    CPoint m_ptPointer; ///< where the outline was last shown, in client pixels
    const CToolView* m_pPointerView = nullptr; ///< of which view; only compared, it may be gone. Null: of none
};

} // namespace kestrune
