#include "doc/files/HelperInput.h"

#include "doc/MetaFile.h"
#include "doc/files/ByteReader.h"

#include <initializer_list>

namespace kestrune {

namespace {

std::span<const std::uint8_t> EpsProgram(std::span<const std::uint8_t> file)
{
    CByteReader in(file);
    if (in.U32LE() != 0xC6D3D0C5)
        return file;
    const std::uint32_t nOffset = in.U32LE(), nBytes = in.U32LE();
    in.Seek(nOffset);
    return in.TakeUpTo(nBytes);
}

void AppendRecord(Bytes& out, unsigned nFunction, std::initializer_list<int> parameters)
{
    const auto word = [&](unsigned n) {
        out.push_back(static_cast<std::uint8_t>(n));
        out.push_back(static_cast<std::uint8_t>(n >> 8));
    };
    word(static_cast<unsigned>(3 + parameters.size()));
    word(0);
    word(nFunction);
    for (const int n : parameters)
        word(static_cast<unsigned>(n));
}

constexpr std::size_t c_nFrameBytes = 22, c_nHeaderBytes = 18, c_nSizeAt = c_nFrameBytes + 6;

/// Puts two white points at the corners of the frame in front of everything that is drawn. Nothing shows of them.
std::span<const std::uint8_t> MetafileWithFrame(std::span<const std::uint8_t> file, Bytes& scratch)
{
    CPaintMetaFile frame;
    frame.ReadHeader(file);
    const auto& h = frame.m_Header;
    if (!frame.IsUsable() || frame.m_nWidth < 0 || frame.m_nHeight < 0 || file.size() < c_nFrameBytes + c_nHeaderBytes)
        return file;
    constexpr unsigned c_nSetWindowOrigin = 0x020B, c_nSetWindowExtent = 0x020C, c_nSetPixel = 0x041F;
    const auto split = file.begin() + c_nFrameBytes + c_nHeaderBytes;
    scratch.assign(file.begin(), split);
    AppendRecord(scratch, c_nSetWindowOrigin, {h.nTop, h.nLeft});
    AppendRecord(scratch, c_nSetWindowExtent, {frame.m_nHeight, frame.m_nWidth});
    AppendRecord(scratch, c_nSetPixel, {0xFFFF, 0x00FF, h.nTop, h.nLeft});
    AppendRecord(scratch, c_nSetPixel, {0xFFFF, 0x00FF, h.nBottom - 1, h.nRight - 1});
    const auto nAdded = static_cast<std::uint32_t>((scratch.size() - c_nFrameBytes - c_nHeaderBytes) / 2);
    CByteReader in(file);
    in.Seek(c_nSizeAt);
    const std::uint32_t nWords = in.U32LE() + nAdded;
    for (std::size_t i = 0; i < 4; i++)
        scratch[c_nSizeAt + i] = static_cast<std::uint8_t>(nWords >> (8 * i));
    scratch.insert(scratch.end(), split, file.end());
    return scratch;
}

} // namespace

std::span<const std::uint8_t> HelperInput(ImageFormat format, std::span<const std::uint8_t> file, Bytes& scratch)
{
    if (format == ImageFormat::Eps)
        return EpsProgram(file);
    if (format == ImageFormat::Wmf)
        return MetafileWithFrame(file, scratch);
    return file;
}

} // namespace kestrune
