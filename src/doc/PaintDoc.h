#pragma once

#include "base/CommandTarget.h"
#include "doc/PaintImage.h"

#include <filesystem>
#include <memory>
#include <optional>
#include <string>

namespace kestrune {

/// What the New Image dialog gives.
struct NewImageParams {
    int nWidth = 100;
    int nHeight = 100;
    int nFillKind = FILL_BACKGROUND;
    int nColorKind = COLOR_BITMAP;
};

/// A document that is about to be born without the New Image dialog.
struct DocumentBirth {
    enum Kind { FromDialog, FromHoldingBitmap, FromSize } kind = FromDialog;
    const LBitmapBase* pHolding = nullptr; ///< FromHoldingBitmap
    int nBitsPerPixel = 24;
    int nColorMode = MODE_RGB;
    CSize size; ///< FromSize
};

/// What a document asks the user. The shell implements it with dialogs, tests with fixed answers.
class CDocumentHost {
public:
    virtual ~CDocumentHost() = default;
    /// The New Image dialog; nothing when cancelled.
    virtual std::optional<NewImageParams> AskNewImage() = 0;
    /// The name to save under: `bSaveAs` tells which of the two dialogs. `nFilterIndex` comes back 2..10, the save table's row + 2.
    virtual std::optional<std::filesystem::path> AskSaveName(const std::string& strSuggested, bool bSaveAs, int& nFilterIndex) = 0;
    /// Puts a picture of 24 bits on the clipboard; false when that failed.
    virtual bool CopyToClipboard(const LBitmapBase&) { return false; }
    /// Titles of the documents or the list of recent files have to be shown anew.
    virtual void DocumentChanged(class CPaintDoc&) {}
};

/// A thin shell around `CPaintImage`: creates it, chooses file formats by extension, keeps path and modified flag.
class CPaintDoc : public CCommandTarget {
public:
    explicit CPaintDoc(CDocumentHost& host);
    ~CPaintDoc() override;

    /// Makes the picture; false, without one, when cancelled, without a size or (after a message) without memory.
    /// The new document is modified: it stands in no file yet.
    bool OnNewDocument(const DocumentBirth& birth);
    /// Loads the file; false after a message.
    bool OnOpenDocument(const std::filesystem::path& path);
    /// Save (57603): makes or empties the file and clears the modified flag, then runs the writer; the old bytes are kept in the
    /// recovery folder until it is through. A name is asked when there is none or the file is read-only. True when the picture
    /// stands in the file. Each failure has been said.
    bool OnFileSave();
    /// Copy to clipboard (30151): the whole picture, whatever is selected. Says when it failed.
    void OnCopyToClipboard();
    /// Save As (57604): writes a file and leaves path and modified flag as they are.
    bool OnFileSaveAs();

    void SetModifiedFlag(bool bModified) { m_bModified = bModified; }
    bool IsModified() const { return m_bModified; }
    const std::filesystem::path& GetPathName() const { return m_strPathName; }
    void SetPathName(const std::filesystem::path& path);
    const std::string& GetTitle() const { return m_strTitle; }
    void SetTitle(const std::string& strTitle) { m_strTitle = strTitle; }

    std::unique_ptr<CPaintImage> m_pImage; ///< null until a picture exists

private:
    /// A file that was emptied, and the copy of what it held.
    struct KeptFile {
        std::filesystem::path file;
        std::filesystem::path copy; ///< empty when the file held nothing
    };
    bool DoSave(KeptFile& kept);
    bool OnSaveDocument(const std::filesystem::path& path, KeptFile& kept);
    bool SaveImage(std::filesystem::path path, int nFormatIndex, const KeptFile& kept);
    std::string SuggestedName() const;
    static bool EmptyTarget(const std::filesystem::path& path);

    CDocumentHost& m_host;
    std::filesystem::path m_strPathName;
    std::string m_strTitle;
    bool m_bModified = false;
};

} // namespace kestrune
