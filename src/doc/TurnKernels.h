#pragma once

#include <cstdint>

namespace kestrune {

/// The two loops that turning a 24-bit picture is made of, in one of their forms.
struct TurnKernels {
    /// Writes `nWidth` pixels from the last to the first. `pOut` is another row.
    void (*mirrorRow)(const std::uint8_t* pRow, std::uint8_t* pOut, int nWidth);
    /// Writes a block of a turned picture: pixel `dx` of row `dy` is pixel `xFirst + dy * nStep` of the row `aRows[dx]`.
    /// `nStep` is 1 or -1. Every row of `aRows` has `nRowPixels` pixels, every row of `aOut` at least `nRoom`; what of them lies behind
    /// `nColumns` may be overwritten and is expected to be written later.
    struct Block {
        const std::uint8_t* const* aRows;
        std::uint8_t* const* aOut;
        int nColumns; ///< dx
        int nLines;   ///< dy
        int xFirst;
        int nStep;
        int nRowPixels;
        int nRoom;
    };
    void (*turnBlock)(const Block& block);
};
TurnKernels PlainTurnKernels();
/// The form for this processor.
TurnKernels VectorTurnKernels();

} // namespace kestrune
