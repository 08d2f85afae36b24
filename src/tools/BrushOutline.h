#pragma once

#include "tools/ToolView.h"

#include <cstdint>
#include <vector>

namespace kestrune {

/// The outline of the active brush as it will paint at the pointer, at the view's zoom. It is traced once for a brush and a
/// zoom and only moved after that.
class BrushOutline {
public:
    /// Puts the outline into the overlay, for the pointer at that client point; nothing without a brush. `bHard`: the tool
    /// lays the mask hardened.
    void Place(const CToolView& view, CPoint pt, bool bHard, ToolOverlay& overlay);

private:
    void Trace(float fZoom);

    std::vector<std::uint8_t> m_aMask; ///< the brush that was traced
    int m_nWidth = 0, m_nHeight = 0;
    float m_fZoom = 0;
    std::shared_ptr<const OverlayShape> m_pShape;
};

} // namespace kestrune
