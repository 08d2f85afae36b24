#include "doc/import/Coder.h"

#include "doc/files/DecodedImage.h"

#include <Magick++.h>

#include <cstdio>
#include <vector>

namespace kestrune::import {

namespace {

using MagickLib::Quantum; // the scaling macros want it by its bare name

int Write(const std::string& strFormat, const Bounds& bounds, Magick::Blob& blob)
{
    ImportPicture header{};
    if (!ReadAll(&header, sizeof header) || header.dwMark != c_dwImportMark || header.nBits != 24 || header.nWidth == 0
        || header.nHeight == 0 || header.nWidth > bounds.nMostSide || header.nHeight > bounds.nMostSide
        || std::uint64_t{header.nWidth} * header.nHeight > bounds.nMostPixels)
        return IMG_ERROR_BITS;
    Magick::Image image(Magick::Geometry(header.nWidth, header.nHeight), Magick::Color(0, 0, 0));
    image.type(MagickLib::TrueColorType); // also a picture that happens to be grey keeps its 24 bits
    image.modifyImage();
    std::vector<std::uint8_t> row(std::size_t{header.nWidth} * 3);
    for (std::uint32_t y = 0; y < header.nHeight; y++) {
        if (!ReadAll(row.data(), row.size()))
            return IMG_ERROR_FILE_READ;
        MagickLib::PixelPacket* p = image.setPixels(0, static_cast<int>(y), header.nWidth, 1);
        if (!p)
            return IMG_ERROR_MEMORY;
        for (std::uint32_t x = 0; x < header.nWidth; x++, p++) {
            p->blue = ScaleCharToQuantum(row[x * 3]);
            p->green = ScaleCharToQuantum(row[x * 3 + 1]);
            p->red = ScaleCharToQuantum(row[x * 3 + 2]);
            p->opacity = OpaqueOpacity;
        }
        image.syncPixels();
    }
    if (header.nXResolution > 0 && header.nYResolution > 0) {
        image.resolutionUnits(MagickLib::PixelsPerInchResolution);
        image.density(Magick::Geometry(header.nXResolution, header.nYResolution));
    }
    image.depth(8);
    image.compressType(MagickLib::RLECompression);
    image.write(&blob, strFormat);
    return blob.length() > 0 ? IMG_SUCCESS : IMG_ERROR_FILE_WRITE;
}

} // namespace

bool Encode(const std::string& strFormat, const Bounds& bounds)
{
    Magick::Blob blob;
    ImportFile answer{c_dwImportMark, IMG_ERROR_FILE_WRITE, 0};
    try {
        answer.nResult = Write(strFormat, bounds, blob);
    } catch (const Magick::ErrorResourceLimit& error) {
        std::fprintf(stderr, "%s\n", error.what());
        answer.nResult = IMG_ERROR_MEMORY;
    } catch (const Magick::Exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
    } catch (const std::bad_alloc&) {
        answer.nResult = IMG_ERROR_MEMORY;
    }
    if (answer.nResult == IMG_SUCCESS)
        answer.nBytes = blob.length();
    return WriteAll(&answer, sizeof answer) && (answer.nBytes == 0 || WriteAll(blob.data(), blob.length()));
}

} // namespace kestrune::import
