#pragma once

#include "base/Profile.h"
#include "doc/PaintDoc.h"

#include <QPointer>
#include <QWidget>

#include <functional>

namespace kestrune {

/// What a document asks the user, over the dialogs of this folder. The last values of the New Image dialog and the last
/// folder are kept in the profile.
class CDocumentDialogs : public CDocumentHost {
public:
    using Changed = std::function<void(CPaintDoc&)>;
    using Copy = std::function<bool(const LBitmapBase&)>;

    /// `pParent` is the main frame; `changed` shows titles and recent files anew; `copy` puts a picture on the clipboard.
    CDocumentDialogs(CProfile& profile, QWidget* pParent, Changed changed, Copy copy = {});

    std::optional<NewImageParams> AskNewImage() override;
    std::optional<std::filesystem::path> AskSaveName(const std::string& strSuggested, bool bSaveAs, int& nFilterIndex) override;
    bool CopyToClipboard(const LBitmapBase& bitmap) override;
    void DocumentChanged(CPaintDoc& doc) override;

private:
    CProfile& m_profile;
    QPointer<QWidget> m_pParent;
    Changed m_changed;
    Copy m_copy;
};

} // namespace kestrune
