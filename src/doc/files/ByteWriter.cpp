#include "doc/files/ByteWriter.h"

// Not inline: merged into a caller that has just made its vector, this compiler warns of overflows that cannot happen.

namespace kestrune {

void CByteWriter::Text(std::string_view text) { m_out.insert(m_out.end(), text.begin(), text.end()); }

void CByteWriter::Raw(std::span<const std::uint8_t> bytes) { m_out.insert(m_out.end(), bytes.begin(), bytes.end()); }

void CByteWriter::Zeros(std::size_t nBytes) { m_out.insert(m_out.end(), nBytes, 0); }

} // namespace kestrune
