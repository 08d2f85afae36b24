#include "doc/MetaFile.h"

#include "doc/files/ByteReader.h"

#include <algorithm>

namespace kestrune {

void CPaintMetaFile::ReadHeader(std::span<const std::uint8_t> file)
{
    constexpr std::size_t c_nInFile = 22; // in memory it is 24 bytes with its alignment, and all of them are cleared
    static_assert(sizeof(Header) == 24);
    m_Header = Header();
    m_nWidth = m_nHeight = m_nInch = 0;
    CByteReader in(file);
    if (file.size() < c_nInFile || in.U32LE() != c_dwKey)
        return;
    m_Header.dwKey = c_dwKey;
    m_Header.wHandle = in.U16LE();
    m_Header.nLeft = in.I16LE();
    m_Header.nTop = in.I16LE();
    m_Header.nRight = in.I16LE();
    m_Header.nBottom = in.I16LE();
    m_Header.nInch = in.U16LE();
    const auto reserved = in.Take(sizeof m_Header.aReserved);
    std::copy(reserved.begin(), reserved.end(), m_Header.aReserved);
    m_nWidth = m_Header.nRight - m_Header.nLeft;
    m_nHeight = m_Header.nBottom - m_Header.nTop;
    m_nInch = m_Header.nInch;
}

} // namespace kestrune
