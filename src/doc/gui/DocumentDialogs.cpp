#include "doc/gui/DocumentDialogs.h"

#include "doc/gui/NewImageDialog.h"
#include "doc/gui/SaveDialog.h"
#include "ui/WaitCursor.h"

namespace kestrune {

CDocumentDialogs::CDocumentDialogs(CProfile& profile, QWidget* pParent, Changed changed, Copy copy)
    : m_profile(profile)
    , m_pParent(pParent)
    , m_changed(std::move(changed))
    , m_copy(std::move(copy))
{
}

std::optional<NewImageParams> CDocumentDialogs::AskNewImage()
{
    const NewImageParams last{m_profile.GetInt("Image", "Width", 100), m_profile.GetInt("Image", "Height", 100),
                              m_profile.GetInt("Image", "Kind", FILL_BACKGROUND),
                              m_profile.GetInt("Image", "Color", COLOR_BITMAP)};
    CNewImageDialog dialog(last, static_cast<LengthUnit>(m_profile.GetInt("General", "Unit", UNIT_PIXEL)), m_pParent);
    if (dialog.DoModal() != QDialog::Accepted)
        return std::nullopt;
    const NewImageParams params = dialog.Params();
    m_profile.WriteInt("Image", "Width", params.nWidth);
    m_profile.WriteInt("Image", "Height", params.nHeight);
    m_profile.WriteInt("Image", "Kind", params.nFillKind);
    m_profile.WriteInt("Image", "Color", params.nColorKind);
    return params;
}

std::optional<std::filesystem::path> CDocumentDialogs::AskSaveName(const std::string& strSuggested, bool bSaveAs, int& nFilterIndex)
{
    CSaveDialog dialog(m_profile, bSaveAs, m_pParent);
    dialog.Suggest(strSuggested, nFilterIndex);
    if (dialog.DoModal() != QDialog::Accepted)
        return std::nullopt;
    nFilterIndex = dialog.FilterIndex();
    return dialog.Path();
}

bool CDocumentDialogs::CopyToClipboard(const LBitmapBase& bitmap)
{
    const CWaitCursor wait;
    return m_copy && m_copy(bitmap);
}

void CDocumentDialogs::DocumentChanged(CPaintDoc& doc)
{
    if (m_changed)
        m_changed(doc);
}

} // namespace kestrune
