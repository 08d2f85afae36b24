#include "doc/files/CmykConverter.h"

#include "base/Arith.h"

#include <lcms2.h>

namespace kestrune {

CCmykConverter::CCmykConverter(std::span<const std::uint8_t> profile, bool bInverted)
    : m_bInverted(bInverted)
{
    if (profile.empty())
        return;
    const cmsHPROFILE hInk = cmsOpenProfileFromMem(profile.data(), static_cast<cmsUInt32Number>(profile.size()));
    if (!hInk)
        return;
    if (cmsGetColorSpace(hInk) == cmsSigCmykData) {
        const cmsHPROFILE hScreen = cmsCreate_sRGBProfile();
        m_hTransform = cmsCreateTransform(hInk, bInverted ? TYPE_CMYK_8_REV : TYPE_CMYK_8, hScreen, TYPE_BGR_8,
                                          INTENT_RELATIVE_COLORIMETRIC, cmsFLAGS_BLACKPOINTCOMPENSATION);
        cmsCloseProfile(hScreen);
    }
    cmsCloseProfile(hInk);
}

CCmykConverter::~CCmykConverter()
{
    if (m_hTransform)
        cmsDeleteTransform(m_hTransform);
}

void CCmykConverter::Convert(const std::uint8_t* pCmyk, std::uint8_t* pBgr, std::size_t nPixels) const
{
    if (m_hTransform) {
        cmsDoTransform(m_hTransform, pCmyk, pBgr, static_cast<cmsUInt32Number>(nPixels));
        return;
    }
    const std::uint8_t flip = m_bInverted ? 0 : 255;
    for (std::size_t i = 0; i < nPixels; i++, pCmyk += 4, pBgr += 3) {
        const int nPaper = pCmyk[3] ^ flip; // what the black ink leaves of the light
        pBgr[0] = static_cast<std::uint8_t>(Mul255(pCmyk[2] ^ flip, nPaper));
        pBgr[1] = static_cast<std::uint8_t>(Mul255(pCmyk[1] ^ flip, nPaper));
        pBgr[2] = static_cast<std::uint8_t>(Mul255(pCmyk[0] ^ flip, nPaper));
    }
}

} // namespace kestrune
