#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace kestrune {

/// Brings rows of CMYK to blue, green, red: through the file's own colour profile where it has a usable one, with black
/// point compensation so that the darkest ink becomes black; by the plain product of ink coverages otherwise.
class CCmykConverter {
public:
    /// `bInverted`: 255 means no ink (as many JPEG files have it), else 255 means full ink.
    CCmykConverter(std::span<const std::uint8_t> profile, bool bInverted);
    ~CCmykConverter();
    CCmykConverter(const CCmykConverter&) = delete;
    CCmykConverter& operator=(const CCmykConverter&) = delete;

    void Convert(const std::uint8_t* pCmyk, std::uint8_t* pBgr, std::size_t nPixels) const;

private:
    void* m_hTransform = nullptr;
    bool m_bInverted;
};

} // namespace kestrune
