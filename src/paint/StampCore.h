#pragma once

#include "paint/PaintCore.h"

namespace kestrune {

/// The clone stamp: lays what stands at a fixed distance from the dab, as it was before the stroke.
///
/// The source is one for the whole process: it survives strokes and documents. Each stroke begins to copy from the same source
/// point again.
class StampCore : public PaintCore {
public:
    using PaintCore::PaintCore;

    /// The flags of the press that sets the source: the left button and Control, nothing else.
    static constexpr unsigned c_nSourceFlags = 9;

    /// Takes the source of a press with those flags, and lays the first dab of any other.
    void Begin(unsigned nFlags, double x, double y) override;
    void End() override;

    /// Where the next dab's pixels come from, in image pixels; it moves with the dabs of a stroke.
    static CPoint Source();

protected:
    void Dab() override;

private:
    void CopySource(const CRect& rcRegion);

    CPoint m_ptKept;   ///< the source as it stood at the press
    CPoint m_ptOffset; ///< from the dab to its source
};

} // namespace kestrune
