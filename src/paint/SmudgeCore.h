#pragma once

#include "paint/PaintCore.h"

namespace kestrune {

/// The smudge tool: a smear of the brush's size carries colour from dab to dab, taking up what it passes.
class SmudgeCore : public PaintCore {
public:
    using PaintCore::PaintCore;
    void Begin(unsigned nFlags, double x, double y) override;

protected:
    void Dab() override;

private:
    std::uint8_t* SmearAt(int x, int y);
    CPoint SmearOrigin() const;
    int SmearWidth() const { return m_nBrushWidth + 2; }

    std::vector<std::uint8_t> m_aSmear; ///< (brush width + 2) x (height + 2) pixels, blue, green, red
    int m_nKeep = 0;                    ///< how much of the smear stays at each dab, 0..255
};

} // namespace kestrune
