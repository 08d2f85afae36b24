#pragma once

#include <cstdint>
#include <memory>
#include <span>

namespace kestrune {

/// Turns rows of ink or laboratory colours into blue, green, red for the screen's standard profile.
class CIccTransform {
public:
    ~CIccTransform();
    CIccTransform(const CIccTransform&) = delete;
    CIccTransform& operator=(const CIccTransform&) = delete;

    /// From four inks as the embedded profile describes them, stored so that 255 is no ink. Null when the profile is
    /// damaged or is not one of four inks.
    static std::unique_ptr<CIccTransform> FromInks(std::span<const std::uint8_t> profile);
    /// From 8-bit L*a*b*: lightness 0..255, both colour axes around 128.
    static std::unique_ptr<CIccTransform> FromLab();

    /// Converts one row; the source has 4 bytes (inks) or 3 bytes (L*a*b*) a pixel.
    void Row(const std::uint8_t* pSource, std::uint8_t* pBgr, int nPixels) const;

private:
    CIccTransform() = default;
    void* m_hTransform = nullptr;
};

/// The plain rule where no profile is given: each channel is what its ink and black let through. 255 is no ink.
void InksToBgr(const std::uint8_t* pInks, std::uint8_t* pBgr, int nPixels);

} // namespace kestrune
