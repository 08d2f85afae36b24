// Opening and saving a photograph of 12 megapixels, against the bare library on the same file.

#include "Harness.h"

#include "base/Files.h"
#include "doc/Bitmap.h"
#include "doc/files/ImageFile.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <vector>

#include <jpeglib.h>
#include <png.h>
#include <unistd.h>

namespace kestrune::bench {

namespace {

namespace fs = std::filesystem;

constexpr int c_nWidth = 4000, c_nHeight = 3000;

/// The folder of the test picture, removed at the end.
class CTempFolder {
public:
    CTempFolder() : m_path(fs::temp_directory_path() / ("kestrune-bench-" + std::to_string(::getpid()))) { fs::create_directories(m_path); }
    ~CTempFolder()
    {
        std::error_code error;
        fs::remove_all(m_path, error);
    }
    const fs::path& Path() const { return m_path; }

private:
    fs::path m_path;
};

/// The largest photograph of the system's picture packages.
fs::path FindPhoto()
{
    fs::path best;
    std::uintmax_t nBest = 0;
    std::error_code error;
    for (const auto& entry : fs::recursive_directory_iterator("/usr/share/backgrounds", error))
        if (entry.path().extension() == ".jpg" && entry.is_regular_file() && entry.file_size() > nBest) {
            nBest = entry.file_size();
            best = entry.path();
        }
    return best;
}

/// The photograph brought to 12 megapixels by the cheapest way that keeps its detail; a made one where none is installed.
void MakePicture(LBitmapBase& bitmap)
{
    bitmap.SetFileName(FindPhoto());
    if (bitmap.Load() == IMG_SUCCESS) {
        bitmap.Size(c_nWidth, c_nHeight, SIZE_AREA);
        return;
    }
    std::fprintf(stderr, "no photograph is installed (package mate-backgrounds): a made picture serves\n");
    bitmap.Create(c_nWidth, c_nHeight, 24);
    unsigned nState = 1;
    for (int y = 0; y < c_nHeight; y++)
        for (int x = 0; x < c_nWidth * 3; x++) {
            nState = nState * 214013 + 2531011;
            bitmap.WriteRow(y)[x] = static_cast<std::uint8_t>((x / 30 + y / 10 + (nState >> 28)) & 255);
        }
}

std::vector<unsigned char> BareRead(const fs::path& path)
{
    std::FILE* pFile = std::fopen(path.c_str(), "rb");
    std::fseek(pFile, 0, SEEK_END);
    std::vector<unsigned char> bytes(static_cast<std::size_t>(std::ftell(pFile)));
    std::rewind(pFile);
    if (std::fread(bytes.data(), 1, bytes.size(), pFile) != bytes.size())
        std::abort();
    std::fclose(pFile);
    return bytes;
}

void BareDecodeJpeg(const fs::path& path)
{
    const auto bytes = BareRead(path);
    jpeg_decompress_struct info{};
    jpeg_error_mgr errors;
    info.err = jpeg_std_error(&errors);
    jpeg_create_decompress(&info);
    jpeg_mem_src(&info, bytes.data(), bytes.size());
    jpeg_read_header(&info, TRUE);
    info.out_color_space = JCS_EXT_BGR;
    jpeg_start_decompress(&info);
    const std::size_t nRow = std::size_t{info.output_width} * 3;
    const std::unique_ptr<unsigned char[]> pixels(new unsigned char[nRow * info.output_height]);
    while (info.output_scanline < info.output_height) {
        unsigned char* pRow = pixels.get() + info.output_scanline * nRow;
        jpeg_read_scanlines(&info, &pRow, 1);
    }
    jpeg_finish_decompress(&info);
    jpeg_destroy_decompress(&info);
}

struct Cursor {
    const unsigned char* p;
};

void BareDecodePng(const fs::path& path)
{
    const auto bytes = BareRead(path);
    Cursor cursor{bytes.data()};
    png_structp pPng = png_create_read_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop pInfo = png_create_info_struct(pPng);
    if (setjmp(png_jmpbuf(pPng)))
        std::abort();
    png_set_read_fn(pPng, &cursor, [](png_structp pReader, png_bytep pTo, png_size_t n) {
        auto* pCursor = static_cast<Cursor*>(png_get_io_ptr(pReader));
        std::copy_n(pCursor->p, n, pTo);
        pCursor->p += n;
    });
    png_read_info(pPng, pInfo);
    png_set_bgr(pPng);
    const std::size_t nRow = png_get_rowbytes(pPng, pInfo), nRows = png_get_image_height(pPng, pInfo);
    const std::unique_ptr<unsigned char[]> pixels(new unsigned char[nRow * nRows]);
    for (std::size_t y = 0; y < nRows; y++)
        png_read_row(pPng, pixels.get() + y * nRow, nullptr);
    png_read_end(pPng, nullptr);
    png_destroy_read_struct(&pPng, &pInfo, nullptr);
}

/// The bare encoder at the same quality and colour resolution, from one buffer to a file.
void BareEncodeJpeg(const std::vector<unsigned char>& pixels, const fs::path& path)
{
    jpeg_compress_struct info{};
    jpeg_error_mgr errors;
    info.err = jpeg_std_error(&errors);
    jpeg_create_compress(&info);
    std::FILE* pFile = std::fopen(path.c_str(), "wb");
    jpeg_stdio_dest(&info, pFile);
    info.image_width = c_nWidth;
    info.image_height = c_nHeight;
    info.input_components = 3;
    info.in_color_space = JCS_EXT_BGR;
    jpeg_set_defaults(&info);
    jpeg_set_quality(&info, QualityOfFactor(30), TRUE);
    info.comp_info[0].h_samp_factor = info.comp_info[0].v_samp_factor = 1;
    jpeg_start_compress(&info, TRUE);
    while (info.next_scanline < info.image_height) {
        JSAMPROW pRow = const_cast<JSAMPROW>(pixels.data() + info.next_scanline * std::size_t{c_nWidth} * 3);
        jpeg_write_scanlines(&info, &pRow, 1);
    }
    jpeg_finish_compress(&info);
    jpeg_destroy_compress(&info);
    std::fclose(pFile);
}

void OpenPicture(const fs::path& path)
{
    LBitmapBase bitmap;
    bitmap.SetFileName(path);
    if (bitmap.Load() != IMG_SUCCESS)
        std::abort();
}

void BuildFiles()
{
    static CTempFolder s_folder;
    const fs::path jpeg = s_folder.Path() / "photo.jpg", png = s_folder.Path() / "photo.png", saved = s_folder.Path() / "saved.jpg";
    static LBitmapBase s_bitmap;
    MakePicture(s_bitmap);
    Bytes bytes;
    if (s_bitmap.Save(jpeg, 10, 24, 30) != IMG_SUCCESS || EncodeImage(ImageFormat::Png, s_bitmap, 255, bytes) != IMG_SUCCESS
        || WriteFileDurably(png, bytes))
        std::abort();
    static std::vector<unsigned char> s_pixels;
    s_pixels.clear();
    for (int y = 0; y < c_nHeight; y++)
        s_pixels.insert(s_pixels.end(), s_bitmap.Row(y), s_bitmap.Row(y) + s_bitmap.GetRowBytes());
    Register({"open a JPEG of 12 megapixels / bare decoder", 1.3, [=] { OpenPicture(jpeg); }, [=] { BareDecodeJpeg(jpeg); }});
    Register({"open a PNG of 12 megapixels / bare decoder", 1.3, [=] { OpenPicture(png); }, [=] { BareDecodePng(png); }});
    Register({"save a JPEG of 12 megapixels / bare encoder", 1.3, [=] { s_bitmap.Save(saved, 10, 24, 30); },
              [=] { BareEncodeJpeg(s_pixels, saved); }});
}

const Group g_files("files", BuildFiles);

} // namespace

} // namespace kestrune::bench
