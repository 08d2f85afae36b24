#include "doc/files/ImageFile.h"

#include "base/Log.h"
#include "doc/files/FileHeader.h"
#include "doc/files/HelperInput.h"
#include "doc/files/ImportProcess.h"
#include "doc/files/PixelRows.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <iterator>
#include <new>

namespace kestrune {

namespace {

/// Readers that the shell registered, by format.
std::array<std::atomic<ReaderFunction>, static_cast<std::size_t>(ImageFormat::Count)> g_aRegistered{};

char Lower(char c)
{
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool HasExtension(std::string_view list, std::string_view extension)
{
    while (!list.empty()) {
        const std::string_view word = list.substr(0, list.find(' '));
        if (std::ranges::equal(word, extension, {}, {}, Lower))
            return true;
        list.remove_prefix(std::min(word.size() + 1, list.size()));
    }
    return false;
}

template <typename Test>
const ImageFormatRow* FindRow(const Test& test)
{
    const auto it = std::ranges::find_if(ImageFormats(), test);
    return it == ImageFormats().end() ? nullptr : &*it;
}

int ReadWith(const ImageFormatRow& row, std::span<const std::uint8_t> file, LBitmapBase& bitmap)
{
    ReaderFunction reader = g_aRegistered[static_cast<std::size_t>(row.format)].load();
    if (!reader)
        reader = row.reader;
    LBitmapBase picture;
    int nResult = IMG_ERROR_FILE_FORMAT;
    if (reader)
        nResult = reader(file, picture);
    // Our own reader of a format may leave its rarer kinds to the process.
    if (row.ReadsInHelper() && (!reader || nResult == IMG_ERROR_BITS)) {
        Bytes scratch;
        nResult = DecodeInHelper(row.pszHelperName, HelperInput(row.format, file, scratch), picture);
        FileHeader header; // the process counts the colours that occur; depth and palette are those of the file
        if (nResult == IMG_SUCCESS && ReadFileHeader(row.format, file, header))
            MatchFileHeader(header, picture);
    }
    if (nResult != IMG_SUCCESS)
        return nResult;
    if (!IsSaneSize(picture.GetWidth(), picture.GetHeight(), Limits()))
        return IMG_ERROR_MEMORY;
    NormalizeBilevel(picture);
    bitmap.Copy(picture);
    return IMG_SUCCESS;
}

} // namespace

const ImageFormatRow* FindFormatByContent(std::span<const std::uint8_t> file)
{
    return FindRow([&](const ImageFormatRow& row) { return row.isContent && row.isContent(file); });
}

const ImageFormatRow* FindFormatByExtension(std::string_view extension)
{
    if (extension.empty())
        return nullptr;
    return FindRow([&](const ImageFormatRow& row) { return HasExtension(row.extensions, extension); });
}

const ImageFormatRow* FindFormatBySaveCode(int nCode)
{
    return nCode == 0 ? nullptr : FindRow([&](const ImageFormatRow& row) { return row.nSaveCode == nCode; });
}

const ImageFormatRow* FindFormatBySaveIndex(int nIndex)
{
    return nIndex == 0 ? nullptr : FindRow([&](const ImageFormatRow& row) { return row.nSaveIndex == nIndex; });
}

int SaveIndexOfPath(const std::filesystem::path& path)
{
    const std::string strExtension = ExtensionOf(path);
    const auto* pRow = FindRow([&](const ImageFormatRow& row) { return row.nSaveIndex != 0 && row.saveExtension == strExtension; });
    return pRow ? pRow->nSaveIndex : FindFormatBySaveCode(10)->nSaveIndex;
}

std::string ExtensionOf(const std::filesystem::path& path)
{
    const std::string strName = path.filename().string();
    const std::size_t nDot = strName.rfind('.');
    std::string strExtension = nDot == strName.npos ? std::string() : strName.substr(nDot + 1);
    std::ranges::transform(strExtension, strExtension.begin(), Lower);
    return strExtension;
}

void RegisterReader(ImageFormat format, ReaderFunction reader)
{
    g_aRegistered[static_cast<std::size_t>(format)] = reader;
}

int DecodeImage(std::span<const std::uint8_t> file, std::string_view extension, LBitmapBase& bitmap, const ImageFormatRow** pUsed)
{
    const ImageFormatRow* const pByContent = FindFormatByContent(file);
    const ImageFormatRow* const pByExtension = FindFormatByExtension(extension);
    const ImageFormatRow* pRow = pByContent ? pByContent : pByExtension;
    int nResult = IMG_ERROR_FILE_FORMAT;
    try {
        if (pRow)
            nResult = ReadWith(*pRow, file, bitmap);
        // A weak mark can mislead: the reader then says that this is no such file, and the name gets its turn.
        if (nResult == IMG_ERROR_FILE_FORMAT && pByExtension && pByExtension != pRow) {
            pRow = pByExtension;
            nResult = ReadWith(*pRow, file, bitmap);
        }
    } catch (const std::bad_alloc&) {
        nResult = IMG_ERROR_MEMORY;
    }
    if (pUsed)
        *pUsed = pRow;
    return nResult;
}

int EncodeImage(ImageFormat format, const LBitmapBase& bitmap, int nQuality, Bytes& out)
{
    const ImageFormatRow& row = ImageFormats()[static_cast<std::size_t>(format)];
    if (!row.writer || !bitmap.IsAllocated())
        return IMG_ERROR_BITS;
    if (nQuality == 0)
        nQuality = row.nSaveQuality;
    try {
        if (bitmap.GetBitsPerPixel() == 24)
            return row.writer(bitmap, nQuality, out);
        LBitmapBase full;
        full.Copy(bitmap);
        full.ColorRes(24, CRF_TRUECOLOR);
        return row.writer(full, nQuality, out);
    } catch (const std::bad_alloc&) {
        return IMG_ERROR_MEMORY;
    }
}

namespace {

/// Points between which the percentage runs straight, by factor.
struct QualityPoint {
    int nFactor, nPercent;
};
constexpr QualityPoint c_aQuality[] = {{2, 100}, {30, 92}, {255, 1}};

} // namespace

int QualityOfFactor(int nFactor)
{
    nFactor = std::clamp(nFactor, c_aQuality[0].nFactor, c_aQuality[2].nFactor);
    const QualityPoint& a = nFactor <= c_aQuality[1].nFactor ? c_aQuality[0] : c_aQuality[1];
    const QualityPoint& b = (&a)[1];
    return a.nPercent - ((nFactor - a.nFactor) * (a.nPercent - b.nPercent) + (b.nFactor - a.nFactor) / 2) / (b.nFactor - a.nFactor);
}

int FactorOfQuality(int nPercent)
{
    nPercent = std::clamp(nPercent, 1, 100);
    int nBest = c_aQuality[0].nFactor;
    // The largest factor that still gives at least this percentage, so that the way back returns the same figure.
    for (int nFactor = nBest; nFactor <= c_aQuality[2].nFactor && QualityOfFactor(nFactor) >= nPercent; nFactor++)
        nBest = nFactor;
    return nBest;
}

} // namespace kestrune
