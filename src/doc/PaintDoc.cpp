#include "doc/PaintDoc.h"

#include "base/Files.h"
#include "base/Messages.h"
#include "base/StringTable.h"
#include "doc/files/ImageFile.h"

#include <cerrno>
#include <new>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace kestrune {

namespace {

constexpr int ID_FILE_SAVE = 57603;
constexpr int ID_FILE_SAVE_AS = 57604;
constexpr int ID_COPY_TO_CLIPBOARD = 30151;
constexpr int c_nJpegIndex = 2; ///< of the save table: what an unknown extension is coded as

bool HasExtension(const std::filesystem::path& path)
{
    return path.filename().string().find('.') != std::string::npos;
}

/// True for a file that exists and may not be written to. The permission bits count even for the superuser, whom the system
/// would let through: who took them away meant it.
bool IsReadOnly(const std::filesystem::path& path)
{
    struct stat info;
    if (::stat(path.c_str(), &info) != 0)
        return false;
    return (info.st_mode & (S_IWUSR | S_IWGRP | S_IWOTH)) == 0 || ::access(path.c_str(), W_OK) != 0;
}

void SayStatus(int nStringId, const std::filesystem::path& path)
{
    Messages().StatusText(std::string(StringText(nStringId)) + path.string());
}

} // namespace

CPaintDoc::CPaintDoc(CDocumentHost& host)
    : m_host(host)
{
    const auto update = [this](CommandState& state) { state.bEnabled = m_pImage != nullptr; };
    OnCommandId(ID_FILE_SAVE, [this] { OnFileSave(); }, update);
    OnCommandId(ID_FILE_SAVE_AS, [this] { OnFileSaveAs(); }, update);
    OnCommandId(ID_COPY_TO_CLIPBOARD, [this] { OnCopyToClipboard(); }, update);
}

CPaintDoc::~CPaintDoc() = default;

bool CPaintDoc::OnNewDocument(const DocumentBirth& birth)
{
    m_pImage.reset();
    m_strPathName.clear();
    m_bModified = false;
    try {
        auto pImage = std::make_unique<CPaintImage>();
        if (birth.kind == DocumentBirth::FromDialog) {
            const std::optional<NewImageParams> params = m_host.AskNewImage();
            if (!params)
                return false;
            pImage->Create(params->nWidth, params->nHeight, params->nFillKind, params->nColorKind);
        } else if (birth.kind == DocumentBirth::FromHoldingBitmap) {
            if (birth.pHolding)
                pImage->CreateFromClipboardBitmap(*birth.pHolding, birth.nBitsPerPixel, birth.nColorMode);
        } else {
            pImage->Create(birth.size.cx, birth.size.cy, FILL_WHITE, COLOR_RGB);
        }
        if (pImage->m_nWidth <= 0 || pImage->m_nHeight <= 0)
            return false;
        m_pImage = std::move(pImage);
    } catch (const std::bad_alloc&) {
        SayMessage(IDS_OUT_OF_MEMORY);
        return false;
    }
    SetModifiedFlag(true);
    m_host.DocumentChanged(*this);
    return true;
}

bool CPaintDoc::OnOpenDocument(const std::filesystem::path& path)
{
    m_pImage.reset();
    m_bModified = false;
    auto pImage = std::make_unique<CPaintImage>();
    try {
        if (!pImage->Load(path))
            return false;
    } catch (const std::bad_alloc&) {
        SayMessage(LoadErrorText(IMG_ERROR_MEMORY));
        return false;
    }
    if (pImage->m_nWidth <= 0 || pImage->m_nHeight <= 0)
        return false;
    m_pImage = std::move(pImage);
    SetPathName(path);
    return true;
}

void CPaintDoc::SetPathName(const std::filesystem::path& path)
{
    m_strPathName = path;
    m_strTitle = path.filename().string();
    m_host.DocumentChanged(*this);
}

bool CPaintDoc::OnFileSave()
{
    if (!m_pImage)
        return false;
    SetModifiedFlag(true); // a picture that was not touched is written all the same
    KeptFile kept;
    const bool bAsk = m_strPathName.empty() || IsReadOnly(m_strPathName);
    if (!(bAsk ? DoSave(kept) : OnSaveDocument(m_strPathName, kept)))
        return false;
    return SaveImage(m_strPathName, SaveIndexOfPath(m_strPathName), kept);
}

void CPaintDoc::OnCopyToClipboard()
{
    if (m_pImage && !m_host.CopyToClipboard(m_pImage->m_Bitmap))
        SayMessage(IDS_COPY_FAILED);
}

bool CPaintDoc::OnFileSaveAs()
{
    if (!m_pImage)
        return false;
    int nFilterIndex = SaveIndexOfPath(m_strPathName);
    const std::optional<std::filesystem::path> path = m_host.AskSaveName(SuggestedName(), true, nFilterIndex);
    if (!path)
        return false;
    // Path and modified flag stay as they are: what is written is a copy.
    return SaveImage(*path, HasExtension(*path) ? SaveIndexOfPath(*path) : nFilterIndex, {});
}

/// The path, or for a document that has none its title up to the first character that a name should not have.
std::string CPaintDoc::SuggestedName() const
{
    return m_strPathName.empty() ? m_strTitle.substr(0, m_strTitle.find_first_of(" #%;/\\")) : m_strPathName.string();
}

/// Asks the name of a document that has none or may not be written under its own, and gives it that name.
bool CPaintDoc::DoSave(KeptFile& kept)
{
    int nFilterIndex = SaveIndexOfPath(m_strPathName);
    std::optional<std::filesystem::path> path = m_host.AskSaveName(SuggestedName(), false, nFilterIndex);
    if (!path || path->empty())
        return false;
    if (!HasExtension(*path)) { // completed here, so that the file that is made and the file that is written are one
        const ImageFormatRow* pRow = FindFormatBySaveIndex(nFilterIndex);
        *path += '.';
        *path += pRow ? pRow->saveExtension : "jpg";
    }
    if (!OnSaveDocument(*path, kept))
        return false;
    SetPathName(*path);
    return true;
}

/// The document itself has nothing to write: this makes the file, or empties it, and clears the modified flag. The writer
/// runs after. What the file held is kept aside until the writer is through.
bool CPaintDoc::OnSaveDocument(const std::filesystem::path& path, KeptFile& kept)
{
    std::string strError;
    const auto copy = KeepAside(path, &strError);
    if (!copy) { // emptying it now could lose what it holds
        SayMessage(std::string(StringText(IDS_SAVE_FAILED)) + "\n" + strError);
        return false;
    }
    if (!EmptyTarget(path)) {
        DropAside(*copy);
        SayMessage(IDS_SAVE_FAILED);
        return false;
    }
    kept = {path, *copy};
    SetModifiedFlag(false);
    m_host.DocumentChanged(*this);
    return true;
}

bool CPaintDoc::EmptyTarget(const std::filesystem::path& path)
{
    const int fd = ::open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC | O_NONBLOCK, 0666);
    return fd >= 0 && ::close(fd) == 0;
}

/// Writes the picture in the coding of a row of the save table; a name without an extension gets the row's.
bool CPaintDoc::SaveImage(std::filesystem::path path, int nFormatIndex, const KeptFile& kept)
{
    const ImageFormatRow* pRow = FindFormatBySaveIndex(nFormatIndex);
    if (!pRow)
        pRow = FindFormatBySaveIndex(c_nJpegIndex);
    const bool bCompleted = !HasExtension(path);
    if (bCompleted) {
        path += '.';
        path += pRow->saveExtension;
    }
    int nResult = IMG_ERROR_MEMORY;
    try {
        nResult = m_pImage->m_Bitmap.Save(path, pRow->nSaveCode, pRow->nSaveBits, pRow->nSaveQuality);
    } catch (const std::bad_alloc&) {
    }
    if (nResult != IMG_SUCCESS) {
        // No box interrupts; the status bar tells that nothing was written, and where the old file's bytes are.
        std::string strText = std::string(StringText(IDS_SAVE_ERROR)) + std::to_string(nResult);
        if (!kept.copy.empty())
            strText += "  " + std::string(StringText(IDS_OLD_FILE_KEPT)) + kept.copy.string();
        Messages().StatusText(strText);
        return false;
    }
    if (kept.file == path)
        DropAside(kept.copy);
    const ImageFormatRow* pNamed = FindFormatByExtension(ExtensionOf(path));
    if (pRow->nSaveIndex == c_nJpegIndex && (!pNamed || pNamed->format != pRow->format))
        SayStatus(IDS_SAVED_AS_JPEG, path);
    else if (bCompleted && !kept.copy.empty()) // the emptied file is another one, and its bytes stay where they are kept
        SayStatus(IDS_OLD_FILE_KEPT, kept.copy);
    return true;
}

} // namespace kestrune
