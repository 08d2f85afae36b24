#include "doc/PaintImage.h"

#include "base/Messages.h"
#include "base/StringTable.h"
#include "doc/Palettes.h"
#include "doc/files/ImageFile.h"

#include <algorithm>
#include <cmath>
#include <fstream>

namespace kestrune {

namespace {

CImageSite g_noSite;

constexpr std::size_t c_nMostPathChars = 499; ///< longer paths open nothing, as they always did
constexpr double c_fMetafileDpi = 96;         ///< pixels an inch of a metafile that states its size in inches

/// Characters of a UTF-8 text, so that a Korean path may be as long as an English one.
std::size_t CountChars(const std::string& str)
{
    return std::count_if(str.begin(), str.end(), [](char c) { return (static_cast<unsigned char>(c) & 0xC0) != 0x80; });
}

} // namespace

std::string LoadErrorText(int nError)
{
    return std::string(StringText(IDS_LOAD_ERROR)) + std::to_string(nError);
}

CPaintImage::CPaintImage()
    : m_pSite(&g_noSite)
{
}

CPaintImage::~CPaintImage()
{
    if (m_pfnFreeHistory)
        m_pfnFreeHistory(*this);
    if (m_pPalette && g_pPalette == m_pPalette.get())
        g_pPalette = nullptr;
}

void CPaintImage::SetSite(CImageSite* pSite)
{
    m_pSite = pSite ? pSite : &g_noSite;
}

bool CPaintImage::Load(const std::filesystem::path& path)
{
    const std::filesystem::path name = CountChars(path.string()) <= c_nMostPathChars ? path : std::filesystem::path();
    const bool bMetafile = ExtensionOf(path) == "wmf";
    CSize sizeMetafile;
    if (bMetafile && !ReadMetafileSize(name, sizeMetafile)) {
        SayMessage(IDS_BAD_FORMAT);
        return false;
    }
    m_Bitmap.SetFileName(name);
    m_nLoadError = bMetafile && !IsSaneSize(sizeMetafile.cx, sizeMetafile.cy, Limits()) ? int{IMG_ERROR_MEMORY} : m_Bitmap.Load();
    if (m_nLoadError != IMG_SUCCESS) {
        SayMessage(LoadErrorText(m_nLoadError));
        return false;
    }
    m_strPathName = path;
    m_nHistoryIndex = 0;
    ClassifyLoaded();
    if (bMetafile)
        m_Bitmap.Size(sizeMetafile.cx, sizeMetafile.cy, SIZE_BICUBIC);
    FinishCreation();
    return true;
}

/// The size in pixels of a placeable metafile. False without a usable header. The header may give a corner above or left
/// of the other: the size is the distance.
bool CPaintImage::ReadMetafileSize(const std::filesystem::path& path, CSize& size)
{
    std::uint8_t header[22] = {};
    std::error_code error;
    std::size_t nRead = 0;
    if (std::filesystem::is_regular_file(path, error)) {
        std::ifstream file(path, std::ios::binary);
        file.read(reinterpret_cast<char*>(header), sizeof header);
        nRead = static_cast<std::size_t>(file.gcount());
    }
    m_Metafile.ReadHeader({header, nRead});
    if (!m_Metafile.IsUsable())
        return false;
    const auto Pixels = [this](int nUnits) {
        return std::max(1, static_cast<int>(static_cast<double>(std::abs(nUnits)) / m_Metafile.m_nInch * c_fMetafileDpi));
    };
    size = {Pixels(m_Metafile.m_nWidth), Pixels(m_Metafile.m_nHeight)};
    return true;
}

void CPaintImage::Create(int nWidth, int nHeight, int nFillKind, int nColorKind)
{
    constexpr struct {
        int nBits;
        int nMode;
    } c_aKinds[] = {{1, MODE_BITMAP}, {8, MODE_GRAY}, {24, MODE_RGB}};
    const auto& kind = c_aKinds[std::clamp(nColorKind, 0, 2)];
    m_nBitsPerPixel = kind.nBits;
    m_nColorMode = kind.nMode;
    m_bPaletteMode = false;
    g_nColors = ColorsOfDepth(m_nBitsPerPixel);
    // At working depth at once: the contents are undefined until the fill, so there is nothing to convert.
    m_Bitmap.Create(nWidth, nHeight, 24, ORDER_BGRORGRAY);
    MakePalette(m_Bitmap);
    COLORREF cr = nFillKind == FILL_WHITE ? Rgb(255, 255, 255) : nFillKind == FILL_BLACK ? Rgb(0, 0, 0) : g_crBackground;
    if (m_pPalette && nFillKind == FILL_BACKGROUND)
        cr = SnapToPalette(cr, *m_pPalette);
    m_Bitmap.Fill(cr);
    m_nHistoryIndex = 0;
    FinishCreation();
}

void CPaintImage::CreateFromClipboardBitmap(const LBitmapBase& holding, int nBitsPerPixel, int nColorMode)
{
    m_nBitsPerPixel = nBitsPerPixel;
    m_nColorMode = nColorMode;
    m_bPaletteMode = nColorMode == MODE_16COLORS || nColorMode == MODE_256COLORS;
    g_nColors = ColorsOfDepth(m_nBitsPerPixel);
    m_Bitmap.Copy(holding);
    m_Bitmap.SetFileName({});
    if (m_bPaletteMode && holding.Palette().empty()) { // the picture came at working depth: its palette is the one that fits it
        LBitmapBase reduced = holding;
        reduced.ColorRes(nBitsPerPixel <= 4 ? 4 : 8, CRF_OPTIMIZEDPALETTE | CRF_NODITHER);
        MakePalette(reduced);
    } else {
        MakePalette(holding);
    }
    m_nHistoryIndex = 0;
    FinishCreation();
}

/// Depth and palette of the file decide what the picture is to the user.
void CPaintImage::ClassifyLoaded()
{
    m_nBitsPerPixel = m_Bitmap.GetBitsPerPixel();
    g_nColors = ColorsOfDepth(m_nBitsPerPixel);
    const bool bGrey = m_Bitmap.IsGrayScale();
    m_bPaletteMode = false;
    if (bGrey && m_nBitsPerPixel == 1)
        m_nColorMode = MODE_BITMAP;
    else if (bGrey && m_nBitsPerPixel == 8)
        m_nColorMode = MODE_GRAY;
    else if (m_nBitsPerPixel > 8)
        m_nColorMode = MODE_RGB;
    else {
        m_nColorMode = m_nBitsPerPixel < 5 ? MODE_16COLORS : MODE_256COLORS;
        m_bPaletteMode = true;
        m_dwColorResFlags = CRF_OPTIMIZEDPALETTE | CRF_ERRORDIFFUSION;
    }
    MakePalette(m_Bitmap);
}

/// What every way of getting a picture ends with: working depth, base bitmap, size, an empty mask, no selection.
void CPaintImage::FinishCreation()
{
    m_Bitmap.ColorRes(24, CRF_TRUECOLOR);
    m_Bitmap.ChangeViewPerspective(0);
    m_BaseBitmap.Copy(m_Bitmap);
    m_nWidth = m_Bitmap.GetWidth();
    m_nHeight = m_Bitmap.GetHeight();
    AllocateMask();
    ReleaseFloat();
    m_bFloatReady = m_bFloating = m_bSelection = false;
}

void CPaintImage::MakePalette(const LBitmapBase& source)
{
    const bool bWasGlobal = m_pPalette && g_pPalette == m_pPalette.get();
    std::unique_ptr<std::vector<RGBQUAD>> pPalette;
    if (m_nColorMode == MODE_BITMAP || m_nColorMode == MODE_GRAY)
        pPalette = std::make_unique<std::vector<RGBQUAD>>(GreyRamp(m_nColorMode == MODE_BITMAP ? 2 : 256));
    else if (m_bPaletteMode)
        pPalette = std::make_unique<std::vector<RGBQUAD>>(source.Palette().begin(), source.Palette().end());
    m_pPalette = std::move(pPalette);
    // The picture that is being made or converted is the one that the colours follow.
    if (m_pPalette || bWasGlobal)
        g_pPalette = m_pPalette.get();
}

void CPaintImage::Activate() const
{
    g_nColors = ColorsOfDepth(m_nBitsPerPixel);
    g_pPalette = g_nColors <= 256 ? m_pPalette.get() : nullptr;
}

void CPaintImage::Deactivate()
{
    g_nColors = c_nColorsUnlimited;
    g_pPalette = nullptr;
}

} // namespace kestrune
