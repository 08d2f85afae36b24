#include "doc/files/PsdReader.h"

#include "doc/files/ByteReader.h"
#include "doc/files/IccTransform.h"
#include "doc/files/PackBits.h"
#include "doc/files/PixelRows.h"
#include "doc/files/PsdStructure.h"

#include <algorithm>
#include <cstring>

namespace kestrune {

namespace {

enum Compression { PLAIN = 0, RUN_LENGTHS = 1 };

/// Rows of the planes, wherever they lie in the file, brought to one byte a pixel.
class PlaneRows {
public:
    /// Finds the rows of the first `nPlanes` planes; an error when the file does not hold them.
    int Open(std::span<const std::uint8_t> file, const PsdStructure& psd, int nPlanes)
    {
        m_psd = &psd;
        m_nRowBytes = (static_cast<std::size_t>(psd.nWidth) * psd.nDepth + 7) / 8;
        m_packed.resize(m_nRowBytes);
        CByteReader in(file);
        in.Seek(psd.nPixels);
        const unsigned nCompression = in.U16BE();
        if (!in.Ok())
            return IMG_ERROR_FILE_READ;
        if (nCompression != PLAIN && nCompression != RUN_LENGTHS)
            return IMG_ERROR_BITS;
        m_bCoded = nCompression == RUN_LENGTHS;
        const std::uint64_t nRows = std::uint64_t(nPlanes) * std::uint64_t(psd.nHeight);
        if (!m_bCoded) {
            m_data = in.Rest();
            return m_data.size() / m_nRowBytes >= nRows ? IMG_SUCCESS : IMG_ERROR_FILE_READ;
        }
        return FindCodedRows(in, nRows);
    }

    /// Row `y` of a plane: one byte a pixel, 16 bits rounded to 8, a bitmap's pixel 0 or 1 (1 is black).
    bool Get(int iPlane, int y, std::uint8_t* pOut)
    {
        const std::size_t iRow
            = static_cast<std::size_t>(iPlane) * static_cast<std::size_t>(m_psd->nHeight) + static_cast<std::size_t>(y);
        const std::uint8_t* p = m_packed.data();
        if (!m_bCoded)
            p = m_data.data() + iRow * m_nRowBytes;
        else if (!UnpackBits(m_data.subspan(m_aStarts[iRow], m_aStarts[iRow + 1] - m_aStarts[iRow]), m_packed))
            return false;
        if (m_psd->nDepth == 16)
            for (int x = 0; x < m_psd->nWidth; x++, p += 2)
                pOut[x] = static_cast<std::uint8_t>(((p[0] << 8 | p[1]) + 128) / 257);
        else
            UnpackIndices(p, m_psd->nWidth, m_psd->nDepth, pOut);
        return true;
    }

private:
    /// The coded length of every row of every plane stands before the first row.
    int FindCodedRows(CByteReader& in, std::uint64_t nRows)
    {
        constexpr std::size_t c_nExpansion = 64; // two bytes give at most 128
        const std::size_t nCount = m_psd->bBig ? 4 : 2;
        const std::uint64_t nAllRows = std::uint64_t(m_psd->nChannels) * std::uint64_t(m_psd->nHeight);
        CByteReader counts(in.Take(nAllRows * nCount));
        if (!in.Ok())
            return IMG_ERROR_FILE_READ;
        m_data = in.Rest();
        m_aStarts.reserve(static_cast<std::size_t>(nRows) + 1);
        std::size_t nAt = 0;
        for (std::uint64_t i = 0; i < nRows; i++) {
            m_aStarts.push_back(nAt);
            const std::size_t nBytes = m_psd->bBig ? counts.U32BE() : counts.U16BE();
            if (nBytes > m_data.size() - nAt || nBytes * c_nExpansion < m_nRowBytes)
                return IMG_ERROR_FILE_READ;
            nAt += nBytes;
        }
        m_aStarts.push_back(nAt);
        return IMG_SUCCESS;
    }

    const PsdStructure* m_psd = nullptr;
    std::span<const std::uint8_t> m_data;
    std::vector<std::size_t> m_aStarts;
    std::vector<std::uint8_t> m_packed;
    std::size_t m_nRowBytes = 0;
    bool m_bCoded = false;
};

/// Decodes the picture plane by plane and row by row.
class Composer {
public:
    Composer(const PsdStructure& psd, PlaneRows& rows)
        : m_psd(psd)
        , m_rows(rows)
        , m_nColors(psd.ColorChannels())
    {
        const auto nWidth = static_cast<std::size_t>(psd.nWidth);
        m_pixels.resize(nWidth * static_cast<std::size_t>(m_nColors));
        m_plane.resize(nWidth);
        m_alpha.resize(nWidth, 255);
        if (psd.nMode == PSD_LAB)
            m_transform = CIccTransform::FromLab();
        else if (psd.nMode == PSD_CMYK && !psd.iccProfile.empty())
            m_transform = CIccTransform::FromInks(psd.iccProfile);
    }

    bool Run(LBitmapBase& bitmap)
    {
        for (int y = 0; y < m_psd.nHeight; y++)
            if (!ComposeRow(y, bitmap.WriteRow(y)))
                return false;
        if (!m_psd.bTransparency)
            return true;
        const bool bOnWhite = IsAlreadyOnWhite(bitmap);
        for (int y = 0; y < m_psd.nHeight && !bOnWhite; y++) {
            if (!m_rows.Get(m_nColors, y, m_alpha.data()))
                return false;
            ShowOverWhite(bitmap.WriteRow(y), bitmap.GetBitsPerPixel() == 24 ? 3 : 1);
        }
        return true;
    }

private:
    bool ComposeRow(int y, std::uint8_t* pOut)
    {
        for (int iPlane = 0; iPlane < m_nColors; iPlane++) {
            if (!m_rows.Get(iPlane, y, m_plane.data()))
                return false;
            std::uint8_t* pPixels = m_pixels.data() + iPlane;
            for (int x = 0; x < m_psd.nWidth; x++, pPixels += m_nColors)
                *pPixels = m_plane[x];
        }
        ToBitmapRow(pOut);
        return true;
    }

    void ToBitmapRow(std::uint8_t* pOut)
    {
        const std::uint8_t* p = m_pixels.data();
        const int nWidth = m_psd.nWidth;
        if (m_psd.nMode == PSD_BITMAP) {
            for (int x = 0; x < nWidth; x++)
                pOut[x] = p[x] ^ 1; // a set bit is black
        } else if (m_nColors == 1) {
            std::memcpy(pOut, p, static_cast<std::size_t>(nWidth));
        } else if (m_transform) {
            m_transform->Row(p, pOut, nWidth);
        } else if (m_nColors == 4) {
            InksToBgr(p, pOut, nWidth);
        } else { // red, green, blue; three inks without black are the same numbers
            for (int x = 0; x < nWidth; x++, p += 3, pOut += 3) {
                pOut[0] = p[2];
                pOut[1] = p[1];
                pOut[2] = p[0];
            }
        }
    }

    /// Editors that keep layers store the flat picture blended with white already, others store the bare colours.
    /// Blended colours are at least as light as the white that shines through; one pixel that is not proves bare
    /// colours.
    bool IsAlreadyOnWhite(const LBitmapBase& bitmap)
    {
        constexpr int c_nTolerance = 2;
        const int nChannels = bitmap.GetBitsPerPixel() == 24 ? 3 : 1;
        for (int y = 0; y < m_psd.nHeight; y++) {
            if (!m_rows.Get(m_nColors, y, m_alpha.data()))
                return true;
            const std::uint8_t* p = bitmap.Row(y);
            for (int x = 0; x < m_psd.nWidth; x++)
                for (int c = 0; c < nChannels; c++)
                    if (*p++ + m_alpha[x] < 255 - c_nTolerance)
                        return false;
        }
        return true;
    }

    void ShowOverWhite(std::uint8_t* pRow, int nChannels) const
    {
        for (int x = 0; x < m_psd.nWidth; x++)
            for (int c = 0; c < nChannels; c++, pRow++)
                *pRow = OverWhite(*pRow, m_alpha[x]);
    }

    const PsdStructure& m_psd;
    PlaneRows& m_rows;
    const int m_nColors;
    std::vector<std::uint8_t> m_pixels, m_plane, m_alpha;
    std::unique_ptr<CIccTransform> m_transform;
};

} // namespace

int ReadPsd(std::span<const std::uint8_t> file, LBitmapBase& bitmap)
{
    PsdStructure psd;
    if (const int nResult = ReadPsdStructure(file, psd); nResult != IMG_SUCCESS)
        return nResult;
    if (psd.nMode == PSD_INDEXED)
        psd.bTransparency = false; // indices cannot be blended
    PlaneRows rows;
    if (const int nResult = rows.Open(file, psd, psd.ColorChannels() + (psd.bTransparency ? 1 : 0));
        nResult != IMG_SUCCESS)
        return nResult;
    const int nBits = psd.nDepth == 1 ? 1 : psd.ColorChannels() == 1 ? 8 : 24;
    if (psd.iTransparent >= 0 && psd.iTransparent < static_cast<int>(psd.palette.size()))
        psd.palette[psd.iTransparent] = {255, 255, 255, 0};
    if (!bitmap.Create(psd.nWidth, psd.nHeight, nBits, ORDER_BGRORGRAY, psd.palette))
        return IMG_ERROR_FILE_READ;
    bitmap.SetResolution(psd.nXDpi, psd.nYDpi);
    return Composer(psd, rows).Run(bitmap) ? IMG_SUCCESS : IMG_ERROR_FILE_READ;
}

} // namespace kestrune
