#include "doc/files/ImportProcess.h"

#include "base/Log.h"
#include "doc/files/ChildProcess.h"
#include "doc/files/ImportProtocol.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <string>
#include <utility>

namespace fs = std::filesystem;

namespace kestrune {

namespace {

/// The program ends itself when its time is up; if even that hangs, it is killed so much later.
constexpr int c_nGraceSeconds = 3;
/// A coded file is never this much larger than its rows.
constexpr std::uint64_t c_nCodedOverhead = 1u << 20;

fs::path& ProgramOverride()
{
    static fs::path s_path;
    return s_path;
}

std::vector<std::string> Arguments(const char* pszVerb, const char* pszFormat)
{
    const ReadLimits& limits = Limits();
    return {pszVerb, pszFormat, std::to_string(limits.nMaxPixels), std::to_string(limits.nMaxSide),
            std::to_string(limits.nHelperSeconds), std::to_string(limits.nHelperBytes)};
}

std::chrono::milliseconds Timeout()
{
    return std::chrono::seconds(Limits().nHelperSeconds + c_nGraceSeconds);
}

/// What the program may say besides success; anything else counts as its own failure.
int KnownError(std::int32_t nResult)
{
    constexpr int aKnown[] = {IMG_ERROR_MEMORY, IMG_ERROR_FILE_FORMAT, IMG_ERROR_FILE_READ, IMG_ERROR_FILE_WRITE, IMG_ERROR_BITS};
    return std::ranges::find(aKnown, nResult) != std::end(aKnown) ? nResult : IMG_ERROR_HELPER;
}

class CFileSource : public CByteSource {
public:
    explicit CFileSource(std::span<const std::uint8_t> file) : m_rest(file) {}
    std::span<const std::uint8_t> Next() override { return std::exchange(m_rest, {}); }

private:
    std::span<const std::uint8_t> m_rest;
};

/// Header, palette and rows of a picture as they come in; rows go straight to their places.
class CPictureSink : public CByteSink {
public:
    explicit CPictureSink(LBitmapBase& bitmap) : m_bitmap(bitmap) {}
    int Result() const { return m_nResult; }

    std::span<std::uint8_t> Room() override { return m_room; }
    void Filled(std::size_t nBytes) override
    {
        m_room = m_room.subspan(nBytes);
        if (!m_room.empty())
            return;
        if (m_nRow < 0 && m_palette.empty())
            OnHeader();
        else if (m_nRow < 0)
            OnPalette();
        else
            OnRow();
    }

private:
    void OnHeader()
    {
        const ImportPicture& h = m_header;
        if (h.dwMark != c_dwImportMark)
            return;
        if (h.nResult != IMG_SUCCESS) {
            m_nResult = KnownError(h.nResult);
            return;
        }
        const bool bDepth = h.nBits == 1 || h.nBits == 4 || h.nBits == 8 || h.nBits == 24;
        if (!bDepth || !IsSaneSize(h.nWidth, h.nHeight, Limits()) || h.nColors > (h.nBits == 24 ? 0u : 1u << h.nBits)
            || h.nXResolution > 100000 || h.nYResolution > 100000)
            return;
        m_palette.resize(h.nColors);
        if (m_palette.empty())
            OnPalette();
        else
            m_room = {reinterpret_cast<std::uint8_t*>(m_palette.data()), m_palette.size() * sizeof(RGBQUAD)};
    }
    void OnPalette()
    {
        for (RGBQUAD& color : m_palette)
            color.rgbReserved = 0;
        m_bitmap.Create(static_cast<int>(m_header.nWidth), static_cast<int>(m_header.nHeight), static_cast<int>(m_header.nBits),
                        ORDER_BGRORGRAY, m_palette);
        m_bitmap.SetResolution(static_cast<int>(m_header.nXResolution), static_cast<int>(m_header.nYResolution));
        m_nRow = 0;
        m_room = {m_bitmap.WriteRow(0), m_bitmap.GetRowBytes()};
    }
    void OnRow()
    {
        if (m_header.nBits < 8) {
            std::uint8_t* p = m_bitmap.WriteRow(m_nRow);
            for (std::size_t i = 0; i < m_bitmap.GetRowBytes(); i++)
                p[i] &= static_cast<std::uint8_t>((1 << m_header.nBits) - 1);
        }
        if (++m_nRow < m_bitmap.GetHeight())
            m_room = {m_bitmap.WriteRow(m_nRow), m_bitmap.GetRowBytes()};
        else
            m_nResult = IMG_SUCCESS;
    }

    LBitmapBase& m_bitmap;
    ImportPicture m_header{};
    std::vector<RGBQUAD> m_palette;
    int m_nRow = -1;
    int m_nResult = IMG_ERROR_HELPER;
    std::span<std::uint8_t> m_room{reinterpret_cast<std::uint8_t*>(&m_header), sizeof m_header};
};

/// A picture on its way to the program: the header, then the rows where they lie.
class CPictureSource : public CByteSource {
public:
    explicit CPictureSource(const LBitmapBase& bitmap)
        : m_bitmap(bitmap)
        , m_header{c_dwImportMark, IMG_SUCCESS, static_cast<std::uint32_t>(bitmap.GetWidth()),
                   static_cast<std::uint32_t>(bitmap.GetHeight()), 24, static_cast<std::uint32_t>(bitmap.GetXResolution()),
                   static_cast<std::uint32_t>(bitmap.GetYResolution()), 0}
    {
    }
    std::span<const std::uint8_t> Next() override
    {
        const int y = m_nNext++;
        if (y < 0)
            return {reinterpret_cast<const std::uint8_t*>(&m_header), sizeof m_header};
        if (y >= m_bitmap.GetHeight())
            return {};
        return {m_bitmap.Row(y), m_bitmap.GetRowBytes()};
    }

private:
    const LBitmapBase& m_bitmap;
    ImportPicture m_header;
    int m_nNext = -1;
};

class CFileSink : public CByteSink {
public:
    explicit CFileSink(std::uint64_t nMost) : m_nMost(nMost) {}
    int Result() const { return m_nResult; }
    const std::vector<std::uint8_t>& Bytes() const { return m_bytes; }

    std::span<std::uint8_t> Room() override { return m_room; }
    void Filled(std::size_t nBytes) override
    {
        m_room = m_room.subspan(nBytes);
        if (!m_room.empty())
            return;
        if (!m_bytes.empty()) {
            m_nResult = IMG_SUCCESS;
        } else if (m_header.dwMark == c_dwImportMark && m_header.nResult != IMG_SUCCESS) {
            m_nResult = KnownError(m_header.nResult);
        } else if (m_header.dwMark == c_dwImportMark && m_header.nBytes > 0 && m_header.nBytes <= m_nMost) {
            m_bytes.resize(static_cast<std::size_t>(m_header.nBytes));
            m_room = m_bytes;
        }
    }

private:
    std::uint64_t m_nMost;
    ImportFile m_header{};
    std::vector<std::uint8_t> m_bytes;
    int m_nResult = IMG_ERROR_HELPER;
    std::span<std::uint8_t> m_room{reinterpret_cast<std::uint8_t*>(&m_header), sizeof m_header};
};

/// Runs the program to its answer and logs what it had to say.
template <typename Sink>
int Converse(const std::vector<std::string>& arguments, CByteSource& source, Sink& sink)
{
    CChildProcess child(ImportProgram(), arguments);
    if (!child.IsRunning())
        return IMG_ERROR_HELPER;
    const bool bComplete = child.Exchange(source, sink, Timeout());
    const int nResult = bComplete ? sink.Result() : IMG_ERROR_HELPER;
    if (nResult != IMG_SUCCESS)
        LogWarning("kestrune-import " + arguments[0] + " " + arguments[1] + ": " + std::to_string(nResult) + " " + child.ErrorText());
    return nResult;
}

} // namespace

fs::path ImportProgram()
{
    if (!ProgramOverride().empty())
        return ProgramOverride();
    std::error_code error;
    const fs::path folder = fs::read_symlink("/proc/self/exe", error).parent_path();
    for (const char* pszPlace : {"kestrune-import", "../lib/kestrune/kestrune-import", "../libexec/kestrune-import"})
        if (fs::exists(folder / pszPlace, error))
            return folder / pszPlace;
    return folder / "kestrune-import";
}

void SetImportProgram(const fs::path& path)
{
    ProgramOverride() = path;
}

int DecodeInHelper(const char* pszFormat, std::span<const std::uint8_t> file, LBitmapBase& bitmap)
{
    CFileSource source(file);
    LBitmapBase picture;
    CPictureSink sink(picture);
    const int nResult = Converse(Arguments("decode", pszFormat), source, sink);
    if (nResult == IMG_SUCCESS)
        bitmap.Copy(picture);
    return nResult;
}

int EncodeInHelper(const char* pszFormat, const LBitmapBase& bitmap, std::vector<std::uint8_t>& out)
{
    if (bitmap.GetBitsPerPixel() != 24)
        return IMG_ERROR_BITS;
    CPictureSource source(bitmap);
    CFileSink sink(2 * bitmap.GetRowBytes() * static_cast<std::uint64_t>(bitmap.GetHeight()) + c_nCodedOverhead);
    const int nResult = Converse(Arguments("encode", pszFormat), source, sink);
    if (nResult == IMG_SUCCESS)
        out.insert(out.end(), sink.Bytes().begin(), sink.Bytes().end());
    return nResult;
}

int WriteSgi(const LBitmapBase& bitmap, int, std::vector<std::uint8_t>& out)
{
    return EncodeInHelper("SGI", bitmap, out);
}

} // namespace kestrune
