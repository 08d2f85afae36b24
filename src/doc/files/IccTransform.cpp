#include "doc/files/IccTransform.h"

#include "base/Arith.h"

#include <lcms2.h>

namespace kestrune {

namespace {

struct CloseProfile {
    void operator()(void* hProfile) const { cmsCloseProfile(hProfile); }
};
using ProfileHandle = std::unique_ptr<void, CloseProfile>;

/// A transform to the screen's standard profile; it stays valid when the profiles are closed. Null on failure.
cmsHTRANSFORM MakeTransform(cmsHPROFILE hSource, cmsUInt32Number nSourceFormat)
{
    const ProfileHandle screen(cmsCreate_sRGBProfile());
    if (!hSource || !screen)
        return nullptr;
    return cmsCreateTransform(hSource, nSourceFormat, screen.get(), TYPE_BGR_8, INTENT_RELATIVE_COLORIMETRIC,
                              cmsFLAGS_BLACKPOINTCOMPENSATION);
}

} // namespace

CIccTransform::~CIccTransform()
{
    if (m_hTransform)
        cmsDeleteTransform(m_hTransform);
}

std::unique_ptr<CIccTransform> CIccTransform::FromInks(std::span<const std::uint8_t> profile)
{
    const ProfileHandle inks(cmsOpenProfileFromMem(profile.data(), static_cast<cmsUInt32Number>(profile.size())));
    if (!inks || cmsGetColorSpace(inks.get()) != cmsSigCmykData)
        return nullptr;
    std::unique_ptr<CIccTransform> transform(new CIccTransform);
    transform->m_hTransform = MakeTransform(inks.get(), TYPE_CMYK_8_REV);
    return transform->m_hTransform ? std::move(transform) : nullptr;
}

std::unique_ptr<CIccTransform> CIccTransform::FromLab()
{
    const ProfileHandle lab(cmsCreateLab4Profile(nullptr));
    std::unique_ptr<CIccTransform> transform(new CIccTransform);
    transform->m_hTransform = MakeTransform(lab.get(), TYPE_Lab_8);
    return transform->m_hTransform ? std::move(transform) : nullptr;
}

void CIccTransform::Row(const std::uint8_t* pSource, std::uint8_t* pBgr, int nPixels) const
{
    cmsDoTransform(m_hTransform, pSource, pBgr, static_cast<cmsUInt32Number>(nPixels));
}

void InksToBgr(const std::uint8_t* pInks, std::uint8_t* pBgr, int nPixels)
{
    for (int i = 0; i < nPixels; i++, pInks += 4, pBgr += 3)
        for (int c = 0; c < 3; c++)
            pBgr[c] = static_cast<std::uint8_t>(Mul255(pInks[2 - c], pInks[3]));
}

} // namespace kestrune
