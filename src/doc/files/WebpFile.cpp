#include "doc/files/WebpFile.h"

#include "base/Arith.h"
#include "doc/files/ImageFile.h"
#include "doc/files/Orientation.h"

#include <algorithm>
#include <cstring>
#include <memory>

#include <webp/decode.h>
#include <webp/demux.h>
#include <webp/encode.h>

namespace kestrune {

namespace {

/// The first picture of the file and where it stands on the canvas; the iterator owns what it points to.
class CFirstFrame {
public:
    explicit CFirstFrame(const WebPDemuxer* pDemuxer)
        : m_bFound(WebPDemuxGetFrame(pDemuxer, 1, &m_iterator) != 0)
    {
    }
    ~CFirstFrame()
    {
        if (m_bFound)
            WebPDemuxReleaseIterator(&m_iterator);
    }
    CFirstFrame(const CFirstFrame&) = delete;
    CFirstFrame& operator=(const CFirstFrame&) = delete;
    const WebPIterator* Get() const { return m_bFound ? &m_iterator : nullptr; }

private:
    WebPIterator m_iterator{};
    bool m_bFound;
};

int OrientationOf(const WebPDemuxer* pDemuxer)
{
    WebPChunkIterator chunk{};
    int nOrientation = 1;
    if (WebPDemuxGetChunk(pDemuxer, "EXIF", 1, &chunk))
        nOrientation = ReadExif({chunk.chunk.bytes, chunk.chunk.size}).nOrientation;
    WebPDemuxReleaseChunkIterator(&chunk);
    return nOrientation;
}

/// Decodes the frame into the bitmap at its place; what it does not cover stays white.
int DecodeFrame(const WebPIterator& frame, LBitmapBase& bitmap)
{
    WebPDecoderConfig config;
    if (!WebPInitDecoderConfig(&config))
        return IMG_ERROR_MEMORY;
    config.options.use_threads = 1;
    config.output.colorspace = frame.has_alpha ? MODE_BGRA : MODE_BGR;
    const VP8StatusCode status = WebPDecode(frame.fragment.bytes, frame.fragment.size, &config);
    const std::unique_ptr<WebPDecBuffer, decltype(&WebPFreeDecBuffer)> own(&config.output, &WebPFreeDecBuffer);
    if (status != VP8_STATUS_OK)
        return status == VP8_STATUS_OUT_OF_MEMORY ? IMG_ERROR_MEMORY : IMG_ERROR_FILE_READ;
    const int nWidth = std::min(config.output.width, bitmap.GetWidth() - frame.x_offset);
    const int nHeight = std::min(config.output.height, bitmap.GetHeight() - frame.y_offset);
    for (int y = 0; y < nHeight; y++) {
        const std::uint8_t* p = config.output.u.RGBA.rgba + static_cast<std::ptrdiff_t>(y) * config.output.u.RGBA.stride;
        std::uint8_t* pTo = bitmap.WriteRow(frame.y_offset + y) + static_cast<std::ptrdiff_t>(frame.x_offset) * 3;
        if (!frame.has_alpha) {
            std::memcpy(pTo, p, static_cast<std::size_t>(nWidth) * 3);
            continue;
        }
        for (int x = 0; x < nWidth; x++, p += 4, pTo += 3)
            for (int c = 0; c < 3; c++)
                pTo[c] = Lerp255(255, p[c], p[3]);
    }
    return IMG_SUCCESS;
}

} // namespace

int ReadWebP(std::span<const std::uint8_t> file, LBitmapBase& bitmap)
{
    const WebPData data{file.data(), file.size()};
    const std::unique_ptr<WebPDemuxer, decltype(&WebPDemuxDelete)> demuxer(WebPDemux(&data), &WebPDemuxDelete);
    if (!demuxer)
        return IMG_ERROR_FILE_READ; // also a file that is cut short
    const std::uint32_t nWidth = WebPDemuxGetI(demuxer.get(), WEBP_FF_CANVAS_WIDTH);
    const std::uint32_t nHeight = WebPDemuxGetI(demuxer.get(), WEBP_FF_CANVAS_HEIGHT);
    if (!IsSaneSize(nWidth, nHeight, Limits()))
        return IMG_ERROR_MEMORY;
    const CFirstFrame frame(demuxer.get());
    if (!frame.Get())
        return IMG_ERROR_FILE_READ;
    LBitmapBase picture;
    picture.Create(static_cast<int>(nWidth), static_cast<int>(nHeight), 24);
    if (frame.Get()->width < picture.GetWidth() || frame.Get()->height < picture.GetHeight())
        picture.Fill(Rgb(255, 255, 255));
    if (const int nResult = DecodeFrame(*frame.Get(), picture); nResult != IMG_SUCCESS)
        return nResult;
    ApplyOrientation(picture, OrientationOf(demuxer.get()));
    bitmap.Copy(picture);
    return IMG_SUCCESS;
}

namespace {

int OnWebPWrite(const std::uint8_t* pBytes, std::size_t nBytes, const WebPPicture* pPicture)
{
    auto* pOut = static_cast<std::vector<std::uint8_t>*>(pPicture->custom_ptr);
    try {
        pOut->insert(pOut->end(), pBytes, pBytes + nBytes);
    } catch (const std::bad_alloc&) {
        return 0;
    }
    return 1;
}

bool ImportRows(const LBitmapBase& bitmap, WebPPicture& picture)
{
    picture.use_argb = 1;
    if (!WebPPictureAlloc(&picture))
        return false;
    for (int y = 0; y < bitmap.GetHeight(); y++) {
        const std::uint8_t* p = bitmap.Row(y);
        std::uint32_t* pTo = picture.argb + static_cast<std::ptrdiff_t>(y) * picture.argb_stride;
        for (int x = 0; x < bitmap.GetWidth(); x++, p += 3)
            pTo[x] = 0xFF000000u | static_cast<std::uint32_t>(p[2]) << 16 | static_cast<std::uint32_t>(p[1]) << 8 | p[0];
    }
    return true;
}

} // namespace

int WriteWebP(const LBitmapBase& bitmap, int nQuality, std::vector<std::uint8_t>& out)
{
    if (bitmap.GetBitsPerPixel() != 24 || bitmap.GetWidth() > WEBP_MAX_DIMENSION || bitmap.GetHeight() > WEBP_MAX_DIMENSION)
        return IMG_ERROR_BITS;
    WebPConfig config;
    WebPPicture picture;
    if (!WebPConfigPreset(&config, WEBP_PRESET_DEFAULT, static_cast<float>(QualityOfFactor(nQuality))) || !WebPPictureInit(&picture))
        return IMG_ERROR_MEMORY;
    config.thread_level = 1;
    if (QualityOfFactor(nQuality) == 100) {
        config.lossless = 1;
        config.quality = 50; // here it says how long to search, not how much to lose
    } else {
        config.use_sharp_yuv = 1; // edges between strong colours stay sharp although colour is kept at half size
    }
    const std::unique_ptr<WebPPicture, decltype(&WebPPictureFree)> own(&picture, &WebPPictureFree);
    picture.width = bitmap.GetWidth();
    picture.height = bitmap.GetHeight();
    picture.writer = OnWebPWrite;
    picture.custom_ptr = &out;
    if (!ImportRows(bitmap, picture))
        return IMG_ERROR_MEMORY;
    if (!WebPEncode(&config, &picture))
        return picture.error_code == VP8_ENC_ERROR_OUT_OF_MEMORY ? IMG_ERROR_MEMORY : IMG_ERROR_FILE_WRITE;
    return IMG_SUCCESS;
}

} // namespace kestrune
