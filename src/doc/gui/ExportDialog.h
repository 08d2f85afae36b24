#pragma once

#include "doc/PaintDoc.h"
#include "doc/gui/ExportFormats.h"
#include "doc/gui/FileDialog.h"

#include <QCheckBox>
#include <QComboBox>

namespace kestrune {

class CNumEdit;
class CPopupSlider;

/// The dialog of the Export command: a file name, a format and its options. All are remembered.
/// Keys: `Path`, `Format` (row, or extension; without it the path's extension decides), `Quality` (1..100), `Lossless`, `Palette`,
/// `Compression` (0 none, 1 LZW, 2 ZIP), `Dither`. An option that the format does not heed is disabled.
class CExportDialog : public CFileDialogFrame {
    Q_OBJECT
public:
    CExportDialog(CProfile& profile, QWidget* pParent = nullptr);
    ~CExportDialog() override;

    /// The name to start with: the document's, with the extension of the last format.
    void Suggest(const std::string& strTitle);

    /// The file, its extension added when the name has none.
    std::filesystem::path Target() const;
    const ExportFormat& Format() const;
    ExportOptions Options() const;

    std::optional<QString> SetKey(const QString& strKey, const QString& strValue) override;
    void accept() override;

protected:
    QString CompleteName(const QString& strPath) const override;

private:
    QWidget* BuildPane();
    void LoadOptions();
    void SaveOptions();
    int FormatRow() const;
    void FormatChosen();
    void EnableOptions();

    CProfile& m_settings;
    bool m_bFormatTyped = false; ///< a script named the format: it counts, whatever the extension says
    CNumEdit* m_pQuality;
    CPopupSlider* m_pQualitySlider;
    QCheckBox* m_pLossless;
    QCheckBox* m_pPalette;
    QComboBox* m_pCompression;
    QCheckBox* m_pDither;
};

/// The Export command: asks, encodes what the picture shows, and writes it. The document's path and modified flag stay. False when
/// cancelled, or failed after a message.
bool RunExport(CProfile& profile, const CPaintDoc& doc, QWidget* pParent);

} // namespace kestrune
