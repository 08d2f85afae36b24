#pragma once

#include "tools/SelectTool.h"

#include <memory>

namespace kestrune {

/// Selects what hangs together with the pressed pixel and has nearly its colour. The area is found at the press and joins the
/// selection at the release.
class CMagicWandTool : public CSelectTool {
public:
    using CSelectTool::CSelectTool;

protected:
    void BeginShape(CToolView& view) override;
    void EndShape() override { m_pArea.reset(); }
    bool HasShape() const override { return m_pArea != nullptr; }
    CRect ShapeBounds() const override { return m_rcArea; }
    void DrawShape(const MaskPlane& plane, const CRect& rcPart) const override;
    std::uint32_t UndoKind() const override;

private:
    struct Free {
        void operator()(void* p) const;
    };
    std::unique_ptr<std::uint8_t, Free> m_pArea; ///< a plane of the picture's size
    CRect m_rcArea;
};

} // namespace kestrune
