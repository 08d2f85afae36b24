#pragma once

class QStackedWidget;

namespace kestrune {

class CColorBar;
class CColorPatches;
class CDlgBrushBox;
class CHistoryBox;
class CMainFrame;
class CPaintApp;
class CPaintImage;

/// What stands inside the main frame's boxes, and how it hears of the active picture.
class CFrameBoxes {
public:
    /// Builds the contents of the boxes and registers their commands with the frame, whose bars must stand.
    CFrameBoxes(CMainFrame& frame, CPaintApp& app);

    CHistoryBox& History() const { return *m_pHistory; }
    CColorBar& Colors() const { return *m_pColors; }
    CDlgBrushBox& Brushes() const { return *m_pBrushes; }
    /// What shares the box of the brushes: the brush box is its first page, the list of picture brushes its second.
    QStackedWidget& SidePages() const { return *m_pSidePages; }

    /// Another picture is active; null when there is none. The old one may be gone already.
    void ShowImage(CPaintImage* pImage);
    /// The box of the brushes shows the picture brushes in place of the brush list, or the brush list again.
    void ShowPictures(bool bPictures);
    /// Colours that a tool has picked are shown; called when the program is idle.
    void OnIdle();

private:
    void AddToolBoxPatches();
    void AddBrushBox();
    void RegisterCommands();

    CMainFrame& m_frame;
    CHistoryBox* m_pHistory;
    CColorBar* m_pColors;
    CDlgBrushBox* m_pBrushes;
    QStackedWidget* m_pSidePages;
    CColorPatches* m_pToolBoxPatches = nullptr; ///< the same two colours below the tools
};

} // namespace kestrune
