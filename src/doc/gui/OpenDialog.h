#pragma once

#include "doc/gui/FileDialog.h"
#include "doc/gui/ImagePreview.h"

#include <QLabel>
#include <QTimer>

namespace kestrune {

/// The Open dialog: the file browser with a live preview of the selected file and a button that tells about it.
class CDlgImageFile : public CFileDialogFrame {
    Q_OBJECT
public:
    explicit CDlgImageFile(CProfile& profile, QWidget* pParent = nullptr);

    /// What the preview has found in the selected file; nothing while it is being read or when it could not be.
    const std::optional<PreviewResult>& Preview() const { return m_result; }

private:
    QWidget* BuildPane();
    void SelectionChanged(const QString& strPath);
    void LoadSelected();
    void ShowResult(const PreviewResult& result);
    void ShowInformation();
    void ShowText(int nTextId);

    CPreviewLoader m_loader;
    QTimer m_timerSettle;
    QString m_strSelected;
    std::optional<PreviewResult> m_result;
    QLabel* m_pPicture;
    QLabel* m_pCaption;
    QPushButton* m_pInformation;
};

} // namespace kestrune
