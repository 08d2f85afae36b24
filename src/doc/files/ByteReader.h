#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>

namespace kestrune {

/// A cursor over the bytes of an untrusted file. It never reads past the end: a read that would gives 0 and makes `Ok`
/// false for good, so that a reader may take a whole header and ask once.
class CByteReader {
public:
    CByteReader() = default;
    explicit CByteReader(std::span<const std::uint8_t> bytes)
        : m_bytes(bytes)
    {
    }

    bool Ok() const { return m_bOk; }
    std::size_t Pos() const { return m_nPos; }
    std::size_t Size() const { return m_bytes.size(); }
    std::size_t Remaining() const { return m_bytes.size() - m_nPos; }

    /// Moves to a position counted from the start; past the end is a failed read.
    void Seek(std::uint64_t nPos)
    {
        if (nPos <= m_bytes.size())
            m_nPos = static_cast<std::size_t>(nPos);
        else
            Fail();
    }
    void Skip(std::uint64_t nBytes)
    {
        if (nBytes <= Remaining())
            m_nPos += static_cast<std::size_t>(nBytes);
        else
            Fail();
    }

    std::uint8_t U8() { return static_cast<std::uint8_t>(Little(1)); }
    std::uint16_t U16LE() { return static_cast<std::uint16_t>(Little(2)); }
    std::uint32_t U32LE() { return static_cast<std::uint32_t>(Little(4)); }
    std::int16_t I16LE() { return static_cast<std::int16_t>(U16LE()); }
    std::int32_t I32LE() { return static_cast<std::int32_t>(U32LE()); }
    std::uint16_t U16BE() { return static_cast<std::uint16_t>(Big(2)); }
    std::uint32_t U32BE() { return static_cast<std::uint32_t>(Big(4)); }
    std::uint64_t U64BE() { return Big(8); }
    std::int16_t I16BE() { return static_cast<std::int16_t>(U16BE()); }

    /// 16 or 32 bits in an order that is known at run time only.
    std::uint16_t U16(bool bBig) { return bBig ? U16BE() : U16LE(); }
    std::uint32_t U32(bool bBig) { return bBig ? U32BE() : U32LE(); }

    /// The next bytes, in place; an empty span and a failed read when the file holds fewer.
    std::span<const std::uint8_t> Take(std::uint64_t nBytes)
    {
        if (nBytes > Remaining()) {
            Fail();
            return {};
        }
        const auto part = m_bytes.subspan(m_nPos, static_cast<std::size_t>(nBytes));
        m_nPos += part.size();
        return part;
    }
    /// The next bytes, as many as there are of those asked for; never fails.
    std::span<const std::uint8_t> TakeUpTo(std::uint64_t nBytes)
    {
        return Take(std::min<std::uint64_t>(nBytes, Remaining()));
    }
    /// Everything from the cursor on; the cursor stays.
    std::span<const std::uint8_t> Rest() const { return m_bytes.subspan(m_nPos); }
    /// True when the bytes at the cursor are these; the cursor stays.
    bool StartsWith(std::span<const std::uint8_t> mark) const
    {
        return Remaining() >= mark.size() && std::equal(mark.begin(), mark.end(), m_bytes.begin() + m_nPos);
    }

private:
    void Fail()
    {
        m_bOk = false;
        m_nPos = m_bytes.size();
    }
    bool Has(std::size_t nBytes)
    {
        if (nBytes <= Remaining())
            return true;
        Fail();
        return false;
    }
    std::uint64_t Little(std::size_t nBytes)
    {
        std::uint64_t v = 0;
        if (Has(nBytes))
            for (std::size_t i = 0; i < nBytes; i++)
                v |= std::uint64_t{m_bytes[m_nPos++]} << (8 * i);
        return v;
    }
    std::uint64_t Big(std::size_t nBytes)
    {
        std::uint64_t v = 0;
        if (Has(nBytes))
            for (std::size_t i = 0; i < nBytes; i++)
                v = v << 8 | m_bytes[m_nPos++];
        return v;
    }

    std::span<const std::uint8_t> m_bytes;
    std::size_t m_nPos = 0;
    bool m_bOk = true;
};

} // namespace kestrune
