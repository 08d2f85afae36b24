#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include <tiffio.h>

namespace kestrune {

/// A TIFF file in memory, open for the library: read from bytes that stay where they are, or written to a growing array.
/// The library's complaints go to the log.
class CTiffMemory {
public:
    /// `nMostBytes` bounds a single piece of memory that the library may ask for.
    CTiffMemory(std::span<const std::uint8_t> file, std::uint64_t nMostBytes);
    explicit CTiffMemory(std::vector<std::uint8_t>& out);
    ~CTiffMemory() { Close(); }
    CTiffMemory(const CTiffMemory&) = delete;
    CTiffMemory& operator=(const CTiffMemory&) = delete;

    /// Null when the file is no TIFF file.
    TIFF* Get() const { return m_pTiff; }
    /// Writes what is pending. False when something could not be written.
    bool Close();

private:
    void Open(const char* pszMode, std::uint64_t nMostBytes);
    static tmsize_t OnRead(thandle_t hSelf, void* pTo, tmsize_t nBytes);
    static tmsize_t OnWrite(thandle_t hSelf, void* pFrom, tmsize_t nBytes);
    static toff_t OnSeek(thandle_t hSelf, toff_t nTo, int nWhence);
    static toff_t OnSize(thandle_t hSelf);
    static int OnMap(thandle_t hSelf, void** ppBase, toff_t* pnBytes);

    std::span<const std::uint8_t> m_file;
    std::vector<std::uint8_t>* m_pOut = nullptr;
    std::uint64_t m_nPos = 0;
    TIFF* m_pTiff = nullptr;
    bool m_bFailed = false;
};

} // namespace kestrune
