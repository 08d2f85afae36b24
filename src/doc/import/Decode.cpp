#include "doc/import/Coder.h"

#include "base/Color.h"
#include "doc/files/DecodedImage.h"

#include <Magick++.h>

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <new>
#include <unistd.h>
#include <vector>

namespace kestrune::import {

namespace {

using MagickLib::PixelPacket;

std::uint8_t ByteOf(MagickLib::Quantum n)
{
    return static_cast<std::uint8_t>((n * 255u + MaxRGB / 2) / MaxRGB);
}

/// A colour over white by its opacity (0 is opaque here).
std::uint8_t OverWhite(MagickLib::Quantum n, MagickLib::Quantum opacity)
{
    const unsigned a = 255u - ByteOf(opacity), v = ByteOf(n);
    return static_cast<std::uint8_t>((v * a + 255u * (255u - a) + 127) / 255);
}

std::vector<std::uint8_t> ReadFile()
{
    std::vector<std::uint8_t> file;
    std::size_t nRead = 0;
    for (;;) {
        if (file.size() - nRead < 65536)
            file.resize(std::max<std::size_t>(file.size() * 2, 1u << 20));
        const ssize_t n = ::read(STDIN_FILENO, file.data() + nRead, file.size() - nRead);
        if (n < 0 && errno == EINTR)
            continue;
        if (n <= 0)
            break;
        nRead += static_cast<std::size_t>(n);
    }
    file.resize(nRead);
    return file;
}

/// What a format needs to be told before it is read.
void Prepare(Magick::Image& image, const std::string& strFormat)
{
    image.quiet(true);
    if (strFormat == "PCD") {
        image.subImage(3); // the base picture of 768 x 512; without a number the reader takes a thumbnail
        image.subRange(1);
    } else if (strFormat == "DCX") {
        image.subImage(0);
        image.subRange(1);
    } else if (strFormat == "WMF") {
        image.density(Magick::Geometry(96, 96));
    }
}

void TurnUpright(Magick::Image& image, const std::string& strFormat)
{
    // The decoders of the newer formats turn the picture themselves, and the camera's mark would turn it twice.
    if (strFormat == "AVIF" || strFormat == "HEIC" || strFormat == "JXL")
        return;
    MagickLib::ExceptionInfo exception;
    MagickLib::GetExceptionInfo(&exception);
    if (image.orientation() != MagickLib::UndefinedOrientation && image.orientation() != MagickLib::TopLeftOrientation) {
        MagickLib::Image* pUpright = MagickLib::AutoOrientImage(image.constImage(), image.orientation(), &exception);
        if (pUpright)
            image.replaceImage(pUpright);
    }
    MagickLib::DestroyExceptionInfo(&exception);
}

bool IsIndexed(const Magick::Image& image)
{
    return image.classType() == MagickLib::PseudoClass && !image.matte() && image.constImage()->colors <= 256
        && image.constImage()->colors > 0;
}

/// The rows as bytes, and the palette where the picture has one.
struct Picture {
    ImportPicture header{};
    std::vector<RGBQUAD> palette;
    std::vector<std::uint8_t> rows;
};

void TakeIndexed(const Magick::Image& image, Picture& picture)
{
    const MagickLib::Image* p = image.constImage();
    picture.palette.resize(p->colors);
    for (unsigned i = 0; i < p->colors; i++) {
        const PixelPacket& color = p->colormap[i];
        picture.palette[i] = {ByteOf(color.blue), ByteOf(color.green), ByteOf(color.red), 0};
    }
    picture.header.nColors = p->colors;
    picture.header.nBits = p->colors <= 2 ? 1 : p->colors <= 16 ? 4 : 8;
    picture.rows.resize(static_cast<std::size_t>(p->columns) * p->rows);
    std::uint8_t* pTo = picture.rows.data();
    for (unsigned long y = 0; y < p->rows; y++) {
        if (!image.getConstPixels(0, static_cast<long>(y), static_cast<unsigned>(p->columns), 1))
            throw std::bad_alloc();
        const Magick::IndexPacket* pIndexes = image.getConstIndexes();
        for (unsigned long x = 0; x < p->columns; x++)
            *pTo++ = static_cast<std::uint8_t>(std::min<unsigned>(pIndexes[x], p->colors - 1));
    }
}

void TakeColors(const Magick::Image& image, Picture& picture)
{
    const MagickLib::Image* p = image.constImage();
    picture.header.nBits = 24;
    picture.rows.resize(static_cast<std::size_t>(p->columns) * p->rows * 3);
    std::uint8_t* pTo = picture.rows.data();
    for (unsigned long y = 0; y < p->rows; y++) {
        const PixelPacket* pFrom = image.getConstPixels(0, static_cast<long>(y), static_cast<unsigned>(p->columns), 1);
        if (!pFrom)
            throw std::bad_alloc();
        for (unsigned long x = 0; x < p->columns; x++, pFrom++, pTo += 3) {
            const MagickLib::Quantum opacity = p->matte ? pFrom->opacity : 0;
            pTo[0] = OverWhite(pFrom->blue, opacity);
            pTo[1] = OverWhite(pFrom->green, opacity);
            pTo[2] = OverWhite(pFrom->red, opacity);
        }
    }
}

std::uint32_t DpiOf(const Magick::Image& image, double fResolution)
{
    const double f = image.resolutionUnits() == MagickLib::PixelsPerCentimeterResolution ? fResolution * 2.54 : fResolution;
    return image.resolutionUnits() != MagickLib::UndefinedResolution && f >= 1 && f < 100000
        ? static_cast<std::uint32_t>(std::lround(f)) : 0;
}

int Read(const std::string& strFormat, Picture& picture)
{
    Magick::Image image;
    Prepare(image, strFormat);
    try {
        std::vector<std::uint8_t> file = ReadFile();
        const Magick::Blob blob(file.data(), file.size());
        file = {};
        // The name is given, so that nothing is guessed from the content: guessing would reach decoders that run scripts.
        image.read(blob, Magick::Geometry(), strFormat);
    } catch (const Magick::Warning& warning) {
        std::fprintf(stderr, "%s\n", warning.what());
    }
    if (image.columns() == 0 || image.rows() == 0)
        return IMG_ERROR_FILE_READ;
    if (image.colorSpace() != MagickLib::RGBColorspace && image.colorSpace() != MagickLib::TransparentColorspace
        && image.colorSpace() != MagickLib::sRGBColorspace && image.colorSpace() != MagickLib::GRAYColorspace)
        image.colorSpace(MagickLib::RGBColorspace);
    TurnUpright(image, strFormat);
    picture.header = {c_dwImportMark, IMG_SUCCESS, static_cast<std::uint32_t>(image.columns()),
                      static_cast<std::uint32_t>(image.rows()), 0, DpiOf(image, image.xResolution()),
                      DpiOf(image, image.yResolution()), 0};
    if (strFormat == "EPS" || strFormat == "WMF") // drawn at that resolution
        picture.header.nXResolution = picture.header.nYResolution = strFormat == "EPS" ? 72 : 96;
    if (IsIndexed(image))
        TakeIndexed(image, picture);
    else
        TakeColors(image, picture);
    return IMG_SUCCESS;
}

int ReadCatching(const std::string& strFormat, Picture& picture)
{
    try {
        return Read(strFormat, picture);
    } catch (const Magick::ErrorResourceLimit& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return IMG_ERROR_MEMORY;
    } catch (const Magick::ErrorMissingDelegate& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return IMG_ERROR_HELPER;
    } catch (const Magick::Exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return IMG_ERROR_FILE_READ;
    } catch (const std::bad_alloc&) {
        return IMG_ERROR_MEMORY;
    }
}

} // namespace

bool Decode(const std::string& strFormat)
{
    Picture picture;
    const int nResult = ReadCatching(strFormat, picture);
    if (nResult != IMG_SUCCESS) {
        const ImportPicture failed{c_dwImportMark, nResult, 0, 0, 0, 0, 0, 0};
        return WriteAll(&failed, sizeof failed);
    }
    return WriteAll(&picture.header, sizeof picture.header)
        && WriteAll(picture.palette.data(), picture.palette.size() * sizeof(RGBQUAD))
        && WriteAll(picture.rows.data(), picture.rows.size());
}

} // namespace kestrune::import
