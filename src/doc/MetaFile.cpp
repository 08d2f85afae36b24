#include "doc/MetaFile.h"

#include "doc/files/ByteReader.h"

namespace kestrune {

void CPaintMetaFile::ReadHeader(std::span<const std::uint8_t> file)
{
    *this = CPaintMetaFile();
    CByteReader in(file);
    Header header;
    header.dwKey = in.U32LE();
    header.wHandle = in.U16LE();
    header.nLeft = in.I16LE();
    header.nTop = in.I16LE();
    header.nRight = in.I16LE();
    header.nBottom = in.I16LE();
    header.nInch = in.U16LE();
    for (std::uint8_t& b : header.aReserved)
        b = in.U8();
    if (!in.Ok() || header.dwKey != c_dwKey)
        return;
    m_Header = header;
    m_nWidth = header.nRight - header.nLeft;
    m_nHeight = header.nBottom - header.nTop;
    m_nInch = header.nInch;
}

} // namespace kestrune
