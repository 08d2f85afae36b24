#include "doc/files/JpegFile.h"

#include "base/Log.h"
#include "doc/files/IccTransform.h"
#include "doc/files/ImageFile.h"
#include "doc/files/Orientation.h"

#include <algorithm>
#include <cmath>
#include <csetjmp>
#include <cstdio>
#include <cstdlib>
#include <memory>

#include <jpeglib.h>
#include <jerror.h>

namespace kestrune {

namespace {

/// A picture coded in passes has about ten; a hostile file may ask for thousands over a huge area.
constexpr int c_nMostPasses = 64;

/// The library's errors come back by a jump, so nothing that owns memory may live between the call and the jump.
struct JpegErrors {
    jpeg_error_mgr base;
    std::jmp_buf jump;
    bool bEndReached; ///< the file ended before its end mark
    char szText[JMSG_LENGTH_MAX];
};

JpegErrors* ErrorsOf(j_common_ptr pInfo)
{
    return reinterpret_cast<JpegErrors*>(pInfo->err);
}

[[noreturn]] void OnJpegError(j_common_ptr pInfo)
{
    JpegErrors* pErrors = ErrorsOf(pInfo);
    pInfo->err->format_message(pInfo, pErrors->szText);
    std::longjmp(pErrors->jump, 1);
}

void OnJpegMessage(j_common_ptr pInfo, int nLevel)
{
    JpegErrors* pErrors = ErrorsOf(pInfo);
    if (nLevel >= 0)
        return;
    if (pInfo->err->msg_code == JWRN_JPEG_EOF)
        pErrors->bEndReached = true;
    else if (pInfo->err->msg_code == JWRN_HIT_MARKER && pErrors->bEndReached)
        OnJpegError(pInfo); // the decoder needs bits that are not there: from here on every row would be grey
    if (pInfo->err->num_warnings++ == 0)
        pInfo->err->format_message(pInfo, pErrors->szText);
}

void OnJpegProgress(j_common_ptr pInfo)
{
    const auto* pDecoder = reinterpret_cast<j_decompress_ptr>(pInfo);
    if (pInfo->is_decompressor && pDecoder->input_scan_number > c_nMostPasses)
        OnJpegError(pInfo);
}

void SetUpErrors(JpegErrors& errors)
{
    errors = {};
    jpeg_std_error(&errors.base);
    errors.base.error_exit = OnJpegError;
    errors.base.emit_message = OnJpegMessage;
    errors.base.output_message = [](j_common_ptr) {};
}

int ErrorCode(const jpeg_error_mgr& errors)
{
    switch (errors.msg_code) {
    case JERR_OUT_OF_MEMORY:
    case JERR_IMAGE_TOO_BIG:
        return IMG_ERROR_MEMORY;
    case JERR_BAD_PRECISION:
    case JERR_SOF_UNSUPPORTED:
    case JERR_CONVERSION_NOTIMPL:
    case JERR_ARITH_NOTIMPL:
        return IMG_ERROR_BITS;
    case JERR_NO_SOI:
        return IMG_ERROR_FILE_FORMAT;
    default:
        return IMG_ERROR_FILE_READ;
    }
}

/// The decoder and its jump target. Each step returns false after an error, and `Error` tells which.
class CJpegDecoder {
public:
    CJpegDecoder()
    {
        SetUpErrors(m_errors);
        m_info.err = &m_errors.base;
    }
    ~CJpegDecoder() { jpeg_destroy_decompress(&m_info); }
    CJpegDecoder(const CJpegDecoder&) = delete;
    CJpegDecoder& operator=(const CJpegDecoder&) = delete;

    bool ReadHeader(std::span<const std::uint8_t> file)
    {
        if (setjmp(m_errors.jump))
            return false;
        jpeg_create_decompress(&m_info);
        jpeg_mem_src(&m_info, file.data(), static_cast<unsigned long>(file.size()));
        jpeg_save_markers(&m_info, JPEG_APP0 + 1, 0xFFFF);
        jpeg_save_markers(&m_info, JPEG_APP0 + 2, 0xFFFF);
        jpeg_read_header(&m_info, TRUE);
        m_progress.progress_monitor = OnJpegProgress;
        m_info.progress = &m_progress;
        return true;
    }
    bool Start()
    {
        if (setjmp(m_errors.jump))
            return false;
        return jpeg_start_decompress(&m_info);
    }
    /// Reads the next rows to these places.
    bool ReadRows(std::uint8_t** ppRows, int nRows)
    {
        if (setjmp(m_errors.jump))
            return false;
        CopyRows(ppRows, nRows);
        return true;
    }
    /// The embedded colour profile, to be freed by the caller; null when there is none or it is damaged.
    JOCTET* Profile(unsigned int& nBytes)
    {
        nBytes = 0;
        if (setjmp(m_errors.jump))
            return nullptr;
        JOCTET* pProfile = nullptr;
        return jpeg_read_icc_profile(&m_info, &pProfile, &nBytes) ? pProfile : nullptr;
    }
    int Error() const { return ErrorCode(m_errors.base); }
    const char* Text() const { return m_errors.szText; }
    bool HasWarnings() const { return m_errors.base.num_warnings > 0; }
    jpeg_decompress_struct& Info() { return m_info; }

private:
    /// A frame of its own, whose variables the jump cannot spoil.
    void CopyRows(std::uint8_t** ppRows, int nRows)
    {
        const JDIMENSION nEnd = m_info.output_scanline + static_cast<JDIMENSION>(nRows);
        while (m_info.output_scanline < nEnd)
            ppRows += jpeg_read_scanlines(&m_info, ppRows, nEnd - m_info.output_scanline);
    }

    jpeg_decompress_struct m_info{};
    JpegErrors m_errors;
    jpeg_progress_mgr m_progress{};
};

ExifInfo ExifOf(const jpeg_decompress_struct& info)
{
    constexpr std::uint8_t aMark[] = {'E', 'x', 'i', 'f', 0, 0};
    for (const auto* p = info.marker_list; p; p = p->next)
        if (p->marker == JPEG_APP0 + 1 && p->data_length > sizeof aMark && std::equal(aMark, aMark + sizeof aMark, p->data))
            return ReadExif({p->data, p->data_length});
    return {};
}

void SetResolutionOf(const jpeg_decompress_struct& info, const ExifInfo& exif, LBitmapBase& bitmap)
{
    const double fScale = info.density_unit == 2 ? 2.54 : 1.0;
    if (info.saw_JFIF_marker && info.density_unit != 0 && info.X_density > 1 && info.Y_density > 1)
        bitmap.SetResolution(static_cast<int>(std::lround(info.X_density * fScale)),
                             static_cast<int>(std::lround(info.Y_density * fScale)));
    else
        bitmap.SetResolution(exif.nXResolution, exif.nYResolution);
}

bool ReadCmykRows(CJpegDecoder& decoder, LBitmapBase& bitmap)
{
    unsigned int nProfile = 0;
    JOCTET* const pProfile = decoder.Profile(nProfile);
    const std::unique_ptr<JOCTET, decltype(&std::free)> ownProfile(pProfile, &std::free);
    const auto transform = pProfile ? CIccTransform::FromInks({pProfile, nProfile}) : nullptr;
    // Whoever writes the Adobe mark also writes the inks so that 255 is none of it, as the conversion wants them.
    const std::uint8_t flip = decoder.Info().saw_Adobe_marker ? 0 : 255;
    const int nWidth = bitmap.GetWidth();
    std::vector<std::uint8_t> row(static_cast<std::size_t>(nWidth) * 4);
    for (int y = 0; y < bitmap.GetHeight(); y++) {
        std::uint8_t* pRow = row.data();
        if (!decoder.ReadRows(&pRow, 1))
            return false;
        for (std::uint8_t& n : row)
            n ^= flip;
        if (transform)
            transform->Row(row.data(), bitmap.WriteRow(y), nWidth);
        else
            InksToBgr(row.data(), bitmap.WriteRow(y), nWidth);
    }
    return true;
}

bool ReadPlainRows(CJpegDecoder& decoder, LBitmapBase& bitmap)
{
    std::vector<std::uint8_t*> rows(static_cast<std::size_t>(bitmap.GetHeight()));
    for (int y = 0; y < bitmap.GetHeight(); y++)
        rows[static_cast<std::size_t>(y)] = bitmap.WriteRow(y);
    return decoder.ReadRows(rows.data(), bitmap.GetHeight());
}

} // namespace

int ReadJpeg(std::span<const std::uint8_t> file, LBitmapBase& bitmap)
{
    CJpegDecoder decoder;
    const auto fail = [&] {
        LogWarning(std::string("JPEG: ") + decoder.Text());
        return decoder.Error();
    };
    if (!decoder.ReadHeader(file))
        return fail();
    auto& info = decoder.Info();
    if (!IsSaneSize(info.image_width, info.image_height, Limits()))
        return IMG_ERROR_MEMORY;
    const bool bCmyk = info.jpeg_color_space == JCS_CMYK || info.jpeg_color_space == JCS_YCCK;
    const bool bGrey = info.jpeg_color_space == JCS_GRAYSCALE;
    info.out_color_space = bCmyk ? JCS_CMYK : bGrey ? JCS_GRAYSCALE : JCS_EXT_BGR;
    if (!decoder.Start())
        return fail();
    LBitmapBase picture;
    picture.Create(static_cast<int>(info.output_width), static_cast<int>(info.output_height), bGrey ? 8 : 24, ORDER_BGRORGRAY);
    if (!(bCmyk ? ReadCmykRows(decoder, picture) : ReadPlainRows(decoder, picture)))
        return fail();
    if (decoder.HasWarnings())
        LogWarning(std::string("JPEG: ") + decoder.Text());
    const ExifInfo exif = ExifOf(info);
    SetResolutionOf(info, exif, picture);
    ApplyOrientation(picture, exif.nOrientation);
    bitmap.Copy(picture);
    return IMG_SUCCESS;
}

namespace {

/// Collects the coded bytes in pieces and appends them; the library has no notion of a growing array that is ours.
struct JpegOutput {
    jpeg_destination_mgr base;
    std::vector<std::uint8_t>* pOut;
    JOCTET aPiece[64 * 1024];
};

void AppendPiece(j_compress_ptr pInfo, std::size_t nBytes)
{
    auto* pOutput = reinterpret_cast<JpegOutput*>(pInfo->dest);
    bool bOk = true;
    try {
        pOutput->pOut->insert(pOutput->pOut->end(), pOutput->aPiece, pOutput->aPiece + nBytes);
    } catch (const std::bad_alloc&) {
        bOk = false;
    }
    if (!bOk)
        ERREXIT1(pInfo, JERR_OUT_OF_MEMORY, 0);
    pOutput->base.next_output_byte = pOutput->aPiece;
    pOutput->base.free_in_buffer = sizeof pOutput->aPiece;
}

void SetUpOutput(JpegOutput& output, std::vector<std::uint8_t>& out)
{
    output.pOut = &out;
    output.base.init_destination = [](j_compress_ptr pInfo) { AppendPiece(pInfo, 0); };
    output.base.empty_output_buffer = [](j_compress_ptr pInfo) -> boolean {
        AppendPiece(pInfo, sizeof(JpegOutput::aPiece));
        return TRUE;
    };
    output.base.term_destination = [](j_compress_ptr pInfo) {
        AppendPiece(pInfo, sizeof(JpegOutput::aPiece) - pInfo->dest->free_in_buffer);
    };
}

void SetCompression(jpeg_compress_struct& info, const LBitmapBase& bitmap, int nPercent)
{
    info.image_width = static_cast<JDIMENSION>(bitmap.GetWidth());
    info.image_height = static_cast<JDIMENSION>(bitmap.GetHeight());
    info.input_components = 3;
    info.in_color_space = JCS_EXT_BGR;
    jpeg_set_defaults(&info);
    jpeg_set_quality(&info, nPercent, TRUE);
    if (nPercent >= 90)
        info.comp_info[0].h_samp_factor = info.comp_info[0].v_samp_factor = 1;
    const int nX = bitmap.GetXResolution(), nY = bitmap.GetYResolution();
    if (nX > 0 && nX < 65536 && nY > 0 && nY < 65536) {
        info.density_unit = 1;
        info.X_density = static_cast<UINT16>(nX);
        info.Y_density = static_cast<UINT16>(nY);
    }
}

/// Nothing here owns memory: an error jumps back to the top.
bool Compress(jpeg_compress_struct& info, JpegErrors& errors, JpegOutput& output, const LBitmapBase& bitmap, int nPercent)
{
    if (setjmp(errors.jump))
        return false;
    jpeg_create_compress(&info);
    info.dest = &output.base;
    SetCompression(info, bitmap, nPercent);
    jpeg_start_compress(&info, TRUE);
    for (int y = 0; y < bitmap.GetHeight(); y++) {
        JSAMPROW pRow = const_cast<JSAMPROW>(bitmap.Row(y));
        jpeg_write_scanlines(&info, &pRow, 1);
    }
    jpeg_finish_compress(&info);
    return true;
}

} // namespace

int WriteJpeg(const LBitmapBase& bitmap, int nQuality, std::vector<std::uint8_t>& out)
{
    if (bitmap.GetBitsPerPixel() != 24)
        return IMG_ERROR_BITS;
    JpegErrors errors;
    SetUpErrors(errors);
    const auto pOutput = std::make_unique<JpegOutput>();
    SetUpOutput(*pOutput, out);
    const std::unique_ptr<jpeg_compress_struct, void (*)(j_compress_ptr)> pInfo(new jpeg_compress_struct{}, [](j_compress_ptr p) {
        jpeg_destroy_compress(p);
        delete p;
    });
    pInfo->err = &errors.base;
    if (!Compress(*pInfo, errors, *pOutput, bitmap, QualityOfFactor(nQuality))) {
        LogWarning(std::string("JPEG: ") + errors.szText);
        return errors.base.msg_code == JERR_OUT_OF_MEMORY ? IMG_ERROR_MEMORY : IMG_ERROR_FILE_WRITE;
    }
    return IMG_SUCCESS;
}

} // namespace kestrune
