#include "base/Files.h"
#include "base/Log.h"
#include "doc/Bitmap.h"
#include "doc/files/CutFile.h"
#include "doc/files/ImageFile.h"

namespace kestrune {

namespace {

constexpr std::uint64_t c_nMostPaletteBytes = 64 * 1024;

/// A CUT file has its colours in a file of the same name beside it. Without one the picture stays grey.
void TakePaletteBeside(const std::filesystem::path& path, const Bytes& file, LBitmapBase& bitmap)
{
    for (const char* pszExtension : {".pal", ".PAL", ".Pal"}) {
        std::filesystem::path palette = path;
        const auto bytes = ReadWholeFile(palette.replace_extension(pszExtension), c_nMostPaletteBytes);
        LBitmapBase picture;
        if (bytes && ReadCutWithPalette(file, *bytes, picture) == IMG_SUCCESS) {
            bitmap.Copy(picture);
            return;
        }
    }
}

} // namespace

int LBitmapBase::Load()
{
    if (m_pathFile.empty())
        return IMG_ERROR_FILE_OPEN;
    try {
        std::string strError;
        const auto bytes = ReadWholeFile(m_pathFile, Limits().nMaxFileBytes, &strError);
        if (!bytes) {
            LogWarning(m_pathFile.string() + ": " + strError);
            return IMG_ERROR_FILE_OPEN;
        }
        const ImageFormatRow* pRow = nullptr;
        const int nResult = DecodeImage(*bytes, ExtensionOf(m_pathFile), *this, &pRow);
        if (nResult == IMG_SUCCESS && pRow->format == ImageFormat::Cut)
            TakePaletteBeside(m_pathFile, *bytes, *this);
        if (nResult != IMG_SUCCESS)
            LogWarning(m_pathFile.string() + ": " + std::to_string(nResult));
        return nResult;
    } catch (const std::bad_alloc&) {
        return IMG_ERROR_MEMORY;
    }
}

int LBitmapBase::Save(const std::filesystem::path& path, int nFormatCode, int nBits, int nQuality) const
{
    const ImageFormatRow* const pRow = FindFormatBySaveCode(nFormatCode);
    if (!pRow || nBits != pRow->nSaveBits)
        return IMG_ERROR_BITS;
    Bytes bytes;
    if (const int nResult = EncodeImage(pRow->format, *this, nQuality, bytes); nResult != IMG_SUCCESS)
        return nResult;
    WriteStage stage{};
    if (const auto error = WriteFileDurably(path, bytes, &stage)) {
        LogWarning(path.string() + ": " + *error);
        return stage == WriteStage::Create ? IMG_ERROR_FILE_CREATE : IMG_ERROR_FILE_WRITE;
    }
    return IMG_SUCCESS;
}

} // namespace kestrune
