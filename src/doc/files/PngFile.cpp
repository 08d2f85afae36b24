#include "doc/files/PngFile.h"

#include "base/Arith.h"
#include "base/Log.h"
#include "doc/files/ByteReader.h"
#include "doc/files/Orientation.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <string>

#include <png.h>

namespace kestrune {

namespace {

/// Text and profiles of honest files stay far below; a hostile one unpacks without end.
constexpr png_alloc_size_t c_nMostChunkBytes = 32u << 20;

struct PngInput {
    std::span<const std::uint8_t> rest;
};

/// The file up to the first chunk beside the pixels that claims more bytes than there are. The library makes room for the
/// whole claim, and clears it, before it finds the file too short: some bytes would cost two gigabytes.
std::span<const std::uint8_t> WithoutHollowChunk(std::span<const std::uint8_t> file)
{
    constexpr std::uint32_t c_dwPixels = 0x49444154; // "IDAT", which is read piece by piece
    constexpr std::uint64_t c_nChecksum = 4;
    CByteReader in(file);
    in.Skip(8);
    while (in.Remaining() > 0) {
        const std::size_t nChunk = in.Pos();
        const std::uint64_t nBytes = in.U32BE();
        const std::uint32_t dwKind = in.U32BE();
        in.Skip(nBytes + c_nChecksum);
        if (!in.Ok())
            return dwKind == c_dwPixels ? file : file.first(nChunk);
    }
    return file;
}

void OnPngWarning(png_structp, png_const_charp pszText)
{
    LogWarning(std::string("PNG: ") + pszText);
}

[[noreturn]] void OnPngError(png_structp pPng, png_const_charp pszText)
{
    OnPngWarning(pPng, pszText);
    png_longjmp(pPng, 1);
}

void OnPngRead(png_structp pPng, png_bytep pTo, png_size_t nBytes)
{
    auto* pInput = static_cast<PngInput*>(png_get_io_ptr(pPng));
    if (nBytes > pInput->rest.size())
        png_error(pPng, "the file is cut short");
    std::memcpy(pTo, pInput->rest.data(), nBytes);
    pInput->rest = pInput->rest.subspan(nBytes);
}

/// The decoder. The library's errors come back by a jump, so each step keeps only plain values between call and jump,
/// and returns false after an error.
class CPngDecoder {
public:
    explicit CPngDecoder(std::span<const std::uint8_t> file)
        : m_input{WithoutHollowChunk(file)}
    {
        m_pPng = png_create_read_struct(PNG_LIBPNG_VER_STRING, nullptr, OnPngError, OnPngWarning);
        m_pInfo = m_pPng ? png_create_info_struct(m_pPng) : nullptr;
    }
    ~CPngDecoder() { png_destroy_read_struct(&m_pPng, &m_pInfo, nullptr); }
    CPngDecoder(const CPngDecoder&) = delete;
    CPngDecoder& operator=(const CPngDecoder&) = delete;

    bool IsReady() const { return m_pInfo != nullptr; }
    bool ReadHeader()
    {
        if (setjmp(png_jmpbuf(m_pPng)))
            return false;
        png_set_user_limits(m_pPng, 0x7FFFFFFF, 0x7FFFFFFF); // the size is judged by the caller, who gives another error
        png_set_chunk_malloc_max(m_pPng, c_nMostChunkBytes);
        png_set_read_fn(m_pPng, &m_input, OnPngRead);
        png_read_info(m_pPng, m_pInfo);
        return true;
    }
    /// Asks for the rows in the form that the bitmap keeps; `nPasses` is 7 for an interlaced file.
    bool SetTransforms(bool bAsIndex, int& nPasses)
    {
        if (setjmp(png_jmpbuf(m_pPng)))
            return false;
        const int nDepth = png_get_bit_depth(m_pPng, m_pInfo);
        const int nType = png_get_color_type(m_pPng, m_pInfo);
        if (bAsIndex) {
            png_set_packing(m_pPng);
        } else {
            png_set_expand(m_pPng);
            // The white paper in the file's own depth, for the laying over happens before 16 bits come to 8.
            const png_uint_16 nWhite = nDepth == 16 ? 65535 : 255;
            const png_color_16 white{0, nWhite, nWhite, nWhite, nWhite};
            if ((nType & PNG_COLOR_MASK_ALPHA) != 0 || png_get_valid(m_pPng, m_pInfo, PNG_INFO_tRNS))
                png_set_background(m_pPng, &white, PNG_BACKGROUND_GAMMA_SCREEN, 0, 1.0);
            if (nDepth == 16)
                png_set_scale_16(m_pPng);
            png_set_bgr(m_pPng);
        }
        nPasses = png_set_interlace_handling(m_pPng);
        png_read_update_info(m_pPng, m_pInfo);
        return true;
    }
    /// Reads all rows, and what follows them for the sake of an orientation that stands there.
    bool ReadRows(std::uint8_t** ppRows, int nHeight, int nPasses)
    {
        if (setjmp(png_jmpbuf(m_pPng)))
            return false;
        for (int i = 0; i < nPasses; i++)
            png_read_rows(m_pPng, ppRows, nullptr, static_cast<png_uint_32>(nHeight));
        return true;
    }
    /// What stands behind the pixels. A fault there loses nothing that is shown.
    void ReadEnd()
    {
        if (setjmp(png_jmpbuf(m_pPng)))
            return;
        png_read_end(m_pPng, m_pInfo);
    }
    png_structp Png() const { return m_pPng; }
    png_infop Info() const { return m_pInfo; }

private:
    PngInput m_input;
    png_structp m_pPng = nullptr;
    png_infop m_pInfo = nullptr;
};

/// The palette with each entry laid over white by its own transparency.
std::vector<RGBQUAD> PaletteOverWhite(const CPngDecoder& png)
{
    png_colorp pColors = nullptr;
    png_bytep pAlpha = nullptr;
    int nColors = 0, nAlpha = 0;
    png_get_PLTE(png.Png(), png.Info(), &pColors, &nColors);
    png_get_tRNS(png.Png(), png.Info(), &pAlpha, &nAlpha, nullptr);
    std::vector<RGBQUAD> palette(static_cast<std::size_t>(std::max(nColors, 0)));
    for (int i = 0; i < nColors; i++) {
        const int a = i < nAlpha ? pAlpha[i] : 255;
        palette[static_cast<std::size_t>(i)] = {Lerp255(255, pColors[i].blue, a), Lerp255(255, pColors[i].green, a),
                                                Lerp255(255, pColors[i].red, a), 0};
    }
    return palette;
}

/// The one grey value that shows the paper, or -1.
int TransparentGrey(const CPngDecoder& png)
{
    png_color_16p pColor = nullptr;
    if (png_get_color_type(png.Png(), png.Info()) != PNG_COLOR_TYPE_GRAY
        || !(png_get_tRNS(png.Png(), png.Info(), nullptr, nullptr, &pColor) & PNG_INFO_tRNS) || !pColor)
        return -1;
    return pColor->gray;
}

/// Rows of a grey file of at most 8 bits: 2 bits spread over the 16 greys, and the transparent grey made white.
void FinishGreyRows(LBitmapBase& bitmap, int nFileDepth, int nTransparent)
{
    if (nFileDepth != 2 && nTransparent < 0)
        return;
    std::uint8_t aMap[256];
    const int nTop = (1 << nFileDepth) - 1, nScale = nFileDepth == 2 ? 5 : 1;
    for (int i = 0; i < 256; i++)
        aMap[i] = static_cast<std::uint8_t>((i == nTransparent ? nTop : std::min(i, nTop)) * nScale);
    for (int y = 0; y < bitmap.GetHeight(); y++) {
        std::uint8_t* p = bitmap.WriteRow(y);
        for (int x = 0; x < bitmap.GetWidth(); x++)
            p[x] = aMap[p[x]];
    }
}

void SetResolutionOf(const CPngDecoder& png, LBitmapBase& bitmap)
{
    png_uint_32 nX = 0, nY = 0;
    int nUnit = 0;
    if (png_get_pHYs(png.Png(), png.Info(), &nX, &nY, &nUnit) && nUnit == PNG_RESOLUTION_METER && nX < 4000000 && nY < 4000000)
        bitmap.SetResolution(static_cast<int>(std::lround(nX * 0.0254)), static_cast<int>(std::lround(nY * 0.0254)));
}

int OrientationOf(CPngDecoder& png)
{
    png_uint_32 nBytes = 0;
    png_bytep pBlock = nullptr;
    if (png_get_eXIf_1(png.Png(), png.Info(), &nBytes, &pBlock) && pBlock)
        return ReadExif({pBlock, nBytes}).nOrientation;
    return 1;
}

} // namespace

int ReadPng(std::span<const std::uint8_t> file, LBitmapBase& bitmap)
{
    if (file.size() < 8 || png_sig_cmp(file.data(), 0, 8) != 0)
        return IMG_ERROR_FILE_FORMAT;
    CPngDecoder png(file);
    if (!png.IsReady())
        return IMG_ERROR_MEMORY;
    if (!png.ReadHeader())
        return IMG_ERROR_FILE_READ;
    const png_uint_32 nWidth = png_get_image_width(png.Png(), png.Info());
    const png_uint_32 nHeight = png_get_image_height(png.Png(), png.Info());
    if (!IsSaneSize(nWidth, nHeight, Limits()))
        return IMG_ERROR_MEMORY;
    const int nDepth = png_get_bit_depth(png.Png(), png.Info());
    const int nType = png_get_color_type(png.Png(), png.Info());
    const bool bPalette = nType == PNG_COLOR_TYPE_PALETTE;
    const bool bGrey = (nType & PNG_COLOR_MASK_COLOR) == 0;
    const bool bAsIndex = bPalette || (nType == PNG_COLOR_TYPE_GRAY && nDepth <= 8);
    const int nBits = bAsIndex ? (nDepth == 2 ? 4 : nDepth) : bGrey ? 8 : 24;
    const std::vector<RGBQUAD> palette = bPalette ? PaletteOverWhite(png) : std::vector<RGBQUAD>();
    const int nTransparent = TransparentGrey(png);

    int nPasses = 1;
    if (!png.SetTransforms(bAsIndex, nPasses))
        return IMG_ERROR_FILE_READ;
    LBitmapBase picture;
    picture.Create(static_cast<int>(nWidth), static_cast<int>(nHeight), nBits, ORDER_BGRORGRAY, palette);
    if (png_get_rowbytes(png.Png(), png.Info()) != picture.GetRowBytes())
        return IMG_ERROR_BITS;
    std::vector<std::uint8_t*> rows(nHeight);
    for (png_uint_32 y = 0; y < nHeight; y++)
        rows[y] = picture.WriteRow(static_cast<int>(y));
    if (!png.ReadRows(rows.data(), static_cast<int>(nHeight), nPasses))
        return IMG_ERROR_FILE_READ;
    if (bAsIndex && !bPalette)
        FinishGreyRows(picture, nDepth, nTransparent);
    png.ReadEnd();
    SetResolutionOf(png, picture);
    ApplyOrientation(picture, OrientationOf(png));
    bitmap.Copy(picture);
    return IMG_SUCCESS;
}

} // namespace kestrune
