#include "FuzzReader.h"
#include "doc/files/CutFile.h"

namespace {

/// The first two bytes tell how many of the rest are the picture; the others are the palette file beside it.
int ReadPair(std::span<const std::uint8_t> bytes, kestrune::LBitmapBase& bitmap)
{
    if (bytes.size() < 2)
        return kestrune::ReadCut(bytes, bitmap);
    const std::size_t nPicture = std::min<std::size_t>(bytes[0] | bytes[1] << 8, bytes.size() - 2);
    return kestrune::ReadCutWithPalette(bytes.subspan(2, nPicture), bytes.subspan(2 + nPicture), bitmap);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t nBytes)
{
    kestrune::FuzzReader(kestrune::ReadCut, pData, nBytes);
    return kestrune::FuzzReader(ReadPair, pData, nBytes);
}
