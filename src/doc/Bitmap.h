#pragma once

#include "base/Color.h"
#include "base/Geometry.h"
#include "doc/BandStore.h"
#include "doc/Buffer.h"

#include <cstdint>
#include <filesystem>
#include <span>
#include <string>
#include <vector>

namespace kestrune {

/// Colour order codes of `Create`. Rows are always blue, green, red or indices; the code tells what the caller expects.
enum BitmapOrder { ORDER_BGR = 1, ORDER_BGRORGRAY = 4 };

/// How `Size` resamples. 0, plain resize, is the nearest pixel.
enum SizeFlags { SIZE_NEAREST = 0, SIZE_BILINEAR = 1, SIZE_BICUBIC = 2, SIZE_AREA = 3 };

/// Flags of `ColorRes`: the low word chooses the palette, the high word the dithering. They are or-ed together.
enum ColorResFlags : std::uint32_t {
    CRF_FIXEDPALETTE = 0x0001,     ///< black and white; the 16 system colours; a 6 x 7 x 6 colour cube with greys
    CRF_OPTIMIZEDPALETTE = 0x0002, ///< the palette that fits the picture
    CRF_TRUECOLOR = 0x0004,        ///< up to 24 bits
    CRF_NETSCAPEPALETTE = 0x0008,  ///< a 6 x 6 x 6 cube
    CRF_GRAYPALETTE = 0x0010,      ///< an even grey ramp
    CRF_USERPALETTE = 0x0020,      ///< the palette handed in
    CRF_ERRORDIFFUSION = 0x10000,  ///< Floyd-Steinberg
    CRF_ORDEREDDITHER = 0x20000,   ///< 8 x 8 threshold matrix
    CRF_NODITHER = 0x40000         ///< nearest colour alone; also what happens without a dither flag
};

/// One bitmap: the only owner of pixels. Row 0 is the top row.
///
/// 24 bits: a row holds exactly width x 3 bytes, blue, green, red. 1, 4 and 8 bits: one byte a pixel, the index into the
/// palette (unpacked, since every picture goes to 24 bits before it is worked on). Storage is copy-on-write in bands of
/// whole rows, so `Copy` costs next to nothing and a write costs its band.
/// A row or column outside the bitmap reads and writes nothing: the buffer stays as it was.
class LBitmapBase {
public:
    LBitmapBase() = default;

    /// Allocates pixels, contents undefined; depth 1, 4, 8 or 24. Without a palette a bitmap of at most 8 bits gets an even
    /// grey ramp. False, with the bitmap as it was, for a size that is not positive or a depth not listed.
    /// Throws std::bad_alloc.
    bool Create(int nWidth, int nHeight, int nBitsPerPixel, int nOrder = ORDER_BGR, std::span<const RGBQUAD> palette = {});
    void Free();
    bool IsAllocated() const { return m_nWidth > 0; }

    int GetWidth() const { return m_nWidth; }
    int GetHeight() const { return m_nHeight; }
    int GetBitsPerPixel() const { return m_nBitsPerPixel; }
    std::size_t GetRowBytes() const { return m_store.RowBytes(); }

    /// Dots per inch of the file; 0 when it does not say.
    int GetXResolution() const { return m_nXResolution; }
    int GetYResolution() const { return m_nYResolution; }
    void SetResolution(int nX, int nY);

    void SetFileName(const std::filesystem::path& path) { m_pathFile = path; }
    const std::filesystem::path& GetFileName() const { return m_pathFile; }

    /// Makes this bitmap a full copy of the source: size, depth, palette, resolution and pixels. Shares bands.
    void Copy(const LBitmapBase& source);
    /// Copies the pixels between two bitmaps of like size and depth; nothing otherwise.
    void CopyData(const LBitmapBase& source);

    /// Whole rows; the byte count, or 0 for a row outside or a buffer that is too small.
    std::size_t GetRow(LBuffer& buffer, int y) const;
    std::size_t PutRow(const LBuffer& buffer, int y);
    /// From column `x` on, as many bytes as the buffer holds, but not past the row's end.
    std::size_t GetRowCol(LBuffer& buffer, int y, int x) const;
    std::size_t PutRowCol(const LBuffer& buffer, int y, int x);

    /// Rows in place, for kernels. `y` must lie inside. Parallel writers call `DetachRows` first.
    const std::uint8_t* Row(int y) const { return m_store.Row(y); }
    /// The address of the row's first byte where only the pixels [x0, x1) will be read: in the middle of a stroke on a wide picture
    /// that spares fetching the others.
    const std::uint8_t* RowPart(int y, int x0, int x1) const
    {
        const std::size_t nPixelBytes = m_nBitsPerPixel == 24 ? 3 : 1;
        return m_store.RowPart(y, x0 * nPixelBytes, x1 * nPixelBytes);
    }
    std::uint8_t* WriteRow(int y) { return m_store.WriteRow(y); }
    void DetachRows(int y0, int y1) { m_store.Detach(y0, y1); }
    /// The same for rows that will be written in whole: what they held is undefined then.
    void ReplaceRows(int y0, int y1) { m_store.Replace(y0, y1); }
    const CBandStore& Bands() const { return m_store; }
    /// The bands to exchange with a snapshot's: same rows, same row length.
    CBandStore& WriteBands() { return m_store; }

    /// One pixel as a colour, through the palette where there is one; 0 outside. Not for loops.
    COLORREF GetPixelColor(int x, int y) const;
    /// Sets one pixel; in a bitmap with a palette its nearest entry.
    void PutPixelColor(int x, int y, COLORREF cr);

    /// Palette entries [iFirst, iFirst + count); the number that was moved. A 24-bit bitmap has none.
    int GetColors(int iFirst, std::span<RGBQUAD> colors) const;
    int PutColors(int iFirst, std::span<const RGBQUAD> colors);
    std::span<const RGBQUAD> Palette() const { return m_palette; }

    void Fill(COLORREF cr);
    /// Resamples to the new size, in place (`SizeFlags`). The old pixels stay when memory does not suffice (std::bad_alloc) or a side is not positive.
    void Size(int nWidth, int nHeight, int nFlags);
    /// Crops in place to the part of the rectangle that lies inside; an empty part changes nothing.
    void Trim(int x, int y, int nWidth, int nHeight);
    /// Puts a rectangle of a 24-bit source at (x, y) with an operation: see `CombineOp`.
    void Combine(int x, int y, int nWidth, int nHeight, const LBitmapBase& source, int xSource, int ySource, int nOperation);
    /// Converts to 8-bit grey (the only depth in use is 8): (77 R + 150 G + 29 B + 128) >> 8, the broadcast weights in whole
    /// numbers that leave a grey as it is.
    void GrayScale(int nBits);
    /// True when the palette is an even grey ramp, from black to white or the other way round (as scanned pages are stored).
    bool IsGrayScale() const;
    /// Converts the depth in place: `ColorResFlags`. A bitmap whose palette fits the new depth keeps it under
    /// CRF_OPTIMIZEDPALETTE. The palette always has 2^bits entries, black behind those in use. `palette` serves CRF_USERPALETTE. False when the depth is not 1, 4, 8 or 24.
    bool ColorRes(int nBits, std::uint32_t dwFlags, std::span<const RGBQUAD> palette = {});
    /// Turns the stored rows so that row 0 is the top (perspective 0); rows are always kept so, nothing is left to do.
    void ChangeViewPerspective(int) {}

    /// Reads the file whose name was set, at the file's own depth: 1 on success, else a negative code of `doc/files/ImageFile.h`.
    int Load();
    /// Writes the file in the coding of a save-table format code: 1 on success, else a negative code; the target is
    /// untouched then.
    int Save(const std::filesystem::path& path, int nFormatCode, int nBits, int nQuality) const;

private:
    void ExpandPalette();

    CBandStore m_store;
    int m_nWidth = 0;
    int m_nHeight = 0;
    int m_nBitsPerPixel = 0;
    int m_nXResolution = 0;
    int m_nYResolution = 0;
    std::vector<RGBQUAD> m_palette;
    std::filesystem::path m_pathFile;
};

/// Operations of `Combine`.
enum CombineOp { CB_COPY = 0, CB_AND = 1, CB_OR = 2, CB_XOR = 3, CB_ADD = 4, CB_SUBTRACT = 5, CB_AVERAGE = 6, CB_MULTIPLY = 7 };

} // namespace kestrune
