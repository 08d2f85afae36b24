#pragma once

#include "base/Profile.h"
#include "resources/BrushEntry.h"
#include "resources/ResponseCurve.h"

#include <QTimer>
#include <QWidget>

#include <filesystem>
#include <optional>
#include <vector>

class QComboBox;
class QLabel;
class QToolButton;

namespace kestrune {

class CBrushPreview;
class CBrushWnd;
class CNumEdit;
class CResponseStrip;

/// What the brush box does by number; menus, scripts and its own buttons all go this way.
enum BrushCommand {
    ID_BRUSH_NEW = 24351,
    ID_BRUSH_DELETE = 24352,
    ID_BRUSH_OPEN = 24353,
    ID_BRUSH_SAVE = 24354,
    ID_BRUSH_FILE = 24355,      ///< another row of the list of files was chosen
    ID_BRUSH_SOFT_EDGE = 24359, ///< the soft edge's number was changed
    ID_BRUSH_LIST_MODE = 24367,
};

/// The brush box: the files of brushes, the list of the one that is open, and what is done to the chosen brush before it paints
/// (soft edge, response). It fills `g_activeBrush`.
class CDlgBrushBox : public QWidget {
    Q_OBJECT
public:
    explicit CDlgBrushBox(std::filesystem::path pathInstall, QWidget* pParent = nullptr);
    ~CDlgBrushBox() override;

    /// Looks for brush files, loads the first and applies its fourth brush; after the first call nothing. Apart from the
    /// construction, so that the window need not wait for it. Without a file a message, and the box stays empty.
    void EnsureLoaded();
    /// The brush as all controls have it now, without waiting for the timer that gathers a slider's steps.
    void SettleBrush();

    // The commands of its numbers.
    void OnNew();
    void OnDelete();
    void OnOpen();
    void OnSave();
    void OnFileChosen();
    void OnSoftEdgeChanged();
    void OnListMode();
    bool IsListMode() const { return m_bListMode; }

    /// What a click on a brush does outside the list mode: selects and prepares it. False when there is no such brush.
    bool ApplyBrush(int iBrush);
    /// Runs the dialog of the response curve.
    void EditCurve();
    /// Whether the tool at hand has a spacing that the brush's own can be put into.
    void EnableSpacing(bool bEnabled);

    CBrushWnd& List() { return *m_pList; }
    CNumEdit& SoftEdge() { return *m_pSoftEdge; }
    const ResponseTable& Response() const { return m_curve.Table(); }

    QSize sizeHint() const override;

Q_SIGNALS:
    /// `g_activeBrush` is another.
    void BrushChanged();
    /// The user wants the brush's own spacing in the option bar.
    void SpacingRequested(int nPercent);
    /// The user is done with a number: the keyboard goes back to the picture.
    void Done();

protected:
    bool eventFilter(QObject* pObject, QEvent* pEvent) override;

private:
    QWidget* BuildDetails();
    QWidget* BuildFileRow();
    QWidget* BuildButtons();
    QToolButton* AddButton(QWidget* pRow, const char* pszIcon, int nTextId, void (CDlgBrushBox::*act)());
    void ScanFolder();
    void ListFiles();
    /// Names the file that the list holds, which may lie in another folder than those of the rows.
    void ShowFile(const std::filesystem::path& path);
    void LoadFile(const std::filesystem::path& path, int iSelect);
    void OnBrushClicked(int iBrush);
    void PrepareActive();

    std::filesystem::path m_pathInstall;
    CMemoryProfile m_files; ///< the folder in which brushes were last opened or saved
    std::vector<std::filesystem::path> m_paths; ///< of the rows of the list of files
    int m_nSoftEdge = 0;
    CResponseCurve m_curve;
    std::optional<BrushEntry> m_chosen; ///< the brush that paints, also when the list has moved on
    bool m_bListMode = false;
    bool m_bBrushFilesFound = true;
    bool m_bLoaded = false;
    QTimer m_timerRestart;
    QComboBox* m_pFiles;
    QToolButton* m_pListMode;
    QWidget* m_pDetails;
    CBrushPreview* m_pPreview;
    QLabel* m_pSoftEdgeLabel;
    CNumEdit* m_pSoftEdge;
    CResponseStrip* m_pStrip;
    QLabel* m_pSpacing;
    QToolButton* m_pUseSpacing;
    CBrushWnd* m_pList;
};

} // namespace kestrune
