#include "doc/files/PsdStructure.h"

#include "doc/files/ByteReader.h"
#include "doc/files/PixelRows.h"

#include <string_view>

namespace kestrune {

namespace {

constexpr std::uint32_t c_dwMark = 0x38425053; // "8BPS"
constexpr std::uint32_t c_dwBlockMark = 0x3842494D; // "8BIM"
constexpr std::uint32_t c_dwBigBlockMark = 0x38423634; // "8B64"

enum ResourceId { RES_RESOLUTION = 1005, RES_ALPHA_NAMES = 1006, RES_ICC_PROFILE = 1039, RES_TRANSPARENT_INDEX = 1047 };

void ReadPalette(std::span<const std::uint8_t> section, PsdStructure& psd)
{
    constexpr std::size_t c_nEntries = 256; // all reds, then all greens, then all blues
    psd.palette.assign(c_nEntries, RGBQUAD{});
    if (section.size() < c_nEntries * 3)
        return;
    for (std::size_t i = 0; i < c_nEntries; i++)
        psd.palette[i] = {section[2 * c_nEntries + i], section[c_nEntries + i], section[i], 0};
}

int DpiOfFixed(std::uint32_t nFixed)
{
    constexpr std::uint32_t c_nMaxDpi = 100'000;
    const std::uint32_t nDpi = static_cast<std::uint32_t>((std::uint64_t{nFixed} + 0x8000) >> 16);
    return nDpi <= c_nMaxDpi ? static_cast<int>(nDpi) : 0;
}

/// What the file says of the channels behind the colours: whether it names them, and whether the first is called
/// transparency.
struct AlphaNames {
    bool bAny = false;
    bool bTransparency = false;
};

void ReadResources(CByteReader in, PsdStructure& psd, AlphaNames& names)
{
    while (in.Remaining() >= 12) {
        in.Skip(4); // the mark differs between writers
        const unsigned nId = in.U16BE();
        const unsigned nName = in.U8();
        in.Skip(nName | 1); // with its length byte, padded to an even count
        const std::uint32_t nBytes = in.U32BE();
        const auto body = in.Take(nBytes);
        in.TakeUpTo(nBytes & 1);
        if (!in.Ok())
            return;
        CByteReader data(body);
        if (nId == RES_RESOLUTION && body.size() >= 16) {
            psd.nXDpi = DpiOfFixed(data.U32BE()); // always per inch; the units beside it are for display
            data.Skip(4);
            psd.nYDpi = DpiOfFixed(data.U32BE());
        } else if (nId == RES_ALPHA_NAMES && !body.empty()) {
            constexpr std::string_view c_transparency = "Transparency";
            const auto name = data.TakeUpTo(data.U8());
            names.bAny = true;
            names.bTransparency = std::equal(name.begin(), name.end(), c_transparency.begin(), c_transparency.end());
        } else if (nId == RES_ICC_PROFILE) {
            psd.iccProfile = body;
        } else if (nId == RES_TRANSPARENT_INDEX && body.size() >= 2) {
            psd.iTransparent = data.U16BE();
        }
    }
}

/// True when a block's length is counted in 64 bits in the big variant of the format.
bool HasWideLength(std::uint32_t dwKey)
{
    constexpr std::string_view c_aKeys[]
        = {"LMsk", "Lr16", "Lr32", "Layr", "Mt16", "Mt32", "Mtrn", "Alph", "FMsk", "lnk2", "FEid", "FXid", "PxSD"};
    const char aKey[4] = {static_cast<char>(dwKey >> 24), static_cast<char>(dwKey >> 16), static_cast<char>(dwKey >> 8),
                          static_cast<char>(dwKey)};
    for (const auto key : c_aKeys)
        if (key == std::string_view(aKey, 4))
            return true;
    return false;
}

/// A negative count of layers says that the first channel behind the colours is transparency. Deep pictures keep the
/// layers in a block of their own, behind the masks.
bool LayersSayTransparency(CByteReader in, bool bBig)
{
    constexpr std::uint32_t c_dwLayers16 = 0x4C723136, c_dwLayers32 = 0x4C723332, c_dwMerged16 = 0x4D743136,
                            c_dwMerged = 0x4D74726E;
    const std::uint64_t nLayers = bBig ? in.U64BE() : in.U32BE();
    if (nLayers >= 2)
        return in.I16BE() < 0 && in.Ok();
    in.Skip(nLayers);
    in.Skip(in.U32BE()); // masks of the whole picture
    while (in.Remaining() >= 12) {
        const std::uint32_t dwMark = in.U32BE();
        const std::uint32_t dwKey = in.U32BE();
        if (dwMark != c_dwBlockMark && dwMark != c_dwBigBlockMark)
            return false;
        const std::uint64_t nBytes = bBig && HasWideLength(dwKey) ? in.U64BE() : in.U32BE();
        if (dwKey == c_dwMerged16 || dwKey == c_dwMerged)
            return in.Ok();
        CByteReader body(in.Take(nBytes));
        if ((dwKey == c_dwLayers16 || dwKey == c_dwLayers32) && body.I16BE() < 0 && in.Ok())
            return true;
        in.TakeUpTo((4 - nBytes % 4) % 4);
    }
    return false;
}

int CheckKind(const PsdStructure& psd)
{
    const bool bBitmap = psd.nMode == PSD_BITMAP;
    if (bBitmap != (psd.nDepth == 1) || (!bBitmap && psd.nDepth != 8 && psd.nDepth != 16))
        return IMG_ERROR_BITS;
    if (psd.ColorChannels() == 0 || (psd.nMode == PSD_INDEXED && psd.nDepth != 8))
        return IMG_ERROR_BITS;
    return psd.nChannels >= psd.ColorChannels() ? IMG_SUCCESS : IMG_ERROR_FILE_READ;
}

} // namespace

int PsdStructure::ColorChannels() const
{
    switch (nMode) {
    case PSD_BITMAP:
    case PSD_GREY:
    case PSD_INDEXED:
    case PSD_DUOTONE:
        return 1;
    case PSD_RGB:
    case PSD_LAB:
        return 3;
    case PSD_CMYK:
        return 4;
    case PSD_MULTICHANNEL:
        return nChannels < 3 ? 1 : nChannels == 3 ? 3 : 4;
    default:
        return 0;
    }
}

int ReadPsdStructure(std::span<const std::uint8_t> file, PsdStructure& psd)
{
    psd = PsdStructure();
    CByteReader in(file);
    if (in.U32BE() != c_dwMark)
        return IMG_ERROR_FILE_FORMAT;
    const unsigned nVersion = in.U16BE();
    in.Skip(6);
    psd.nChannels = in.U16BE();
    const std::int64_t nHeight = in.U32BE();
    const std::int64_t nWidth = in.U32BE();
    psd.nDepth = in.U16BE();
    psd.nMode = in.U16BE();
    if (!in.Ok())
        return IMG_ERROR_FILE_READ;
    if (nVersion != 1 && nVersion != 2)
        return IMG_ERROR_BITS;
    if (const int nResult = CheckPictureSize(nWidth, nHeight); nResult != IMG_SUCCESS)
        return nResult;
    psd.bBig = nVersion == 2;
    psd.nWidth = static_cast<int>(nWidth);
    psd.nHeight = static_cast<int>(nHeight);
    if (const int nResult = CheckKind(psd); nResult != IMG_SUCCESS)
        return nResult;

    const auto colors = in.Take(in.U32BE());
    if (psd.nMode == PSD_INDEXED)
        ReadPalette(colors, psd);
    AlphaNames names;
    const auto resources = in.Take(in.U32BE());
    ReadResources(CByteReader(resources), psd, names);
    const std::uint64_t nLayerSection = psd.bBig ? in.U64BE() : in.U32BE();
    const auto layers = in.Take(nLayerSection);
    if (!in.Ok())
        return IMG_ERROR_FILE_READ;
    // A file with neither layers nor names for its channels comes from a simple writer that means transparency.
    psd.bTransparency = psd.nMode != PSD_MULTICHANNEL && psd.nMode != PSD_BITMAP && psd.nChannels > psd.ColorChannels()
        && (names.bTransparency || LayersSayTransparency(CByteReader(layers), psd.bBig)
            || (layers.empty() && !names.bAny));
    psd.nPixels = in.Pos();
    return IMG_SUCCESS;
}

} // namespace kestrune
