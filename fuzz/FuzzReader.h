#pragma once

#include "base/Log.h"
#include "doc/files/DecodedImage.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>

namespace kestrune {

/// Pictures stay small while fuzzing, so that an input costs its coding and not the clearing of giant planes; the log
/// is quiet.
inline void SetFuzzLimits()
{
    Limits().nMaxPixels = 4'000'000;
    static const bool s_bQuiet = (SetLogSink([](const std::string&) {}), true);
    static_cast<void>(s_bQuiet);
}

/// One input for one reader. A bitmap that was read must be whole: of a listed depth, with indices inside its palette.
inline int FuzzReader(ReaderFunction reader, const std::uint8_t* pData, std::size_t nBytes)
{
    SetFuzzLimits();
    LBitmapBase bitmap;
    if (reader({pData, nBytes}, bitmap) != IMG_SUCCESS)
        return 0;
    if (!bitmap.IsAllocated() || !IsSaneSize(bitmap.GetWidth(), bitmap.GetHeight(), Limits()))
        std::abort();
    const std::size_t nColors = bitmap.Palette().size();
    for (int y = 0; y < bitmap.GetHeight(); y++)
        for (std::size_t i = 0; i < bitmap.GetRowBytes(); i++)
            if (bitmap.GetBitsPerPixel() <= 8 && bitmap.Row(y)[i] >= nColors)
                std::abort();
    return 0;
}

} // namespace kestrune
