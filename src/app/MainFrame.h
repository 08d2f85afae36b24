#pragma once

#include "app/CommandUi.h"
#include "app/FrameBars.h"
#include "base/CommandTarget.h"
#include "doc/Bitmap.h"
#include "view/ViewHost.h"

#include <QElapsedTimer>
#include <QMainWindow>
#include <QTimer>

#include <filesystem>
#include <memory>
#include <vector>

class QLabel;

namespace kestrune {

class CAccelerators;
class CChildFrame;
class CFrameBoxes;
class CMdiWorkspace;
class COptionBar;
class CPaintApp;
class CSizableReBar;
class CToolOptionPages;
class CToolBox;

/// The ids of the status bar's panes.
enum StatusPane { PANE_MESSAGE = 0, PANE_MOUSE = 201, PANE_ZOOM = 202, PANE_DOCUMENT = 205 };

/// The main frame: menus, toolbars, boxes, status bar and the workspace of the child frames.
class CMainFrame : public QMainWindow, public CCommandTarget, public CViewHost {
    Q_OBJECT
public:
    explicit CMainFrame(CPaintApp& app);
    ~CMainFrame() override;

    CMdiWorkspace& Workspace() const { return *m_pWorkspace; }
    COptionBar& OptionBar() const { return *m_pOptionBar; }
    CToolOptionPages& OptionPages() const { return *m_pOptionPages; }
    CToolBox& ToolBox() const { return *m_pToolBox; }
    CSizableReBar& ReBar() const { return *m_pReBar; }
    CFrameBars& FrameBars() const { return *m_pBars; }
    CFrameBoxes& Boxes() const { return *m_pBoxes; }
    CCommandUi& CommandUi() const { return *m_pCommandUi; }
    /// Gives the keyboard to the active picture, from wherever it is.
    void FocusPicture();

    /// Child frames in the order in which they were opened.
    const std::vector<CChildFrame*>& ChildFrames() const { return m_children; }
    CChildFrame* ActiveChild() const { return m_pActive; }
    /// Takes the child frame in and shows it, in the size of its picture.
    void AddChild(CChildFrame* pChild);
    void ActivateChild(CChildFrame* pChild);
    /// The child frame closes: it leaves the route at once.
    void ChildDestroyed(CChildFrame* pChild);

    /// Boxes and toolbars as the profile has them, and the placement.
    void LoadState();
    /// The first part of the exit: settings, colours, bars, in this order.
    void SaveState();

    /// A quiet line in the message pane.
    void ShowStatusText(const QString& strText);
    QString PaneText(StatusPane pane) const;
    /// Shows titles, panes, menu and toolbar states anew at once, instead of when the program is idle.
    void UpdateCommandUi();
    void ShowViewMenu(QPoint ptScreen);

    // CViewHost
    void ShowMousePosition(int x, int y) override;
    void ZoomChanged(CPaintView& view) override;
    CSize AvailableSpace(const CPaintView& view) const override;
    bool FrameFollowsZoom() const override;
    void ResizeFrame(CPaintView& view, CSize size) override;
    void PlaceFrame(CPaintView& view, const QRect& rc) override;
    void ViewActivated(CPaintView& view, bool bActive) override;
    void FilesDropped(const QStringList& files) override;
    void BeforePress(CPaintView& view) override;
    void ShowToolBars(const ToolRow& tool, int nCommand) override;
    int FloatOpacity() const override;
    int MoveMode() const override;
    void SyncHistoryBox(CPaintView& view, int nMode) override;

    LBitmapBase m_HoldBitmap; ///< what paste and capture fill before a new picture takes it over
    int m_nHoldBitsPerPixel = 24;
    int m_nHoldColorMode = 4;
    std::filesystem::path m_szStartDir; ///< the current directory when the frame was made

    QMenu* createPopupMenu() override;

Q_SIGNALS:
    /// The window has been painted for the first time: what was put off for its sake may begin.
    void FirstPainted();

protected:
    void closeEvent(QCloseEvent* pEvent) override;
    /// F6 goes round the picture, the option bar, the toolbox and the boxes; Escape comes back to the picture.
    void keyPressEvent(QKeyEvent* pEvent) override;
    void resizeEvent(QResizeEvent* pEvent) override;
    void showEvent(QShowEvent* pEvent) override;
    bool event(QEvent* pEvent) override;
    void dragEnterEvent(QDragEnterEvent* pEvent) override;
    void dropEvent(QDropEvent* pEvent) override;

private:
    void CreateToolBars();
    void CreateStatusBar();
    void RegisterCommands();
    void StartTool();
    void RegisterToggle(int nId, QWidget* pBar);
    void ShowMenuOfState();
    void ChildActivated(CChildFrame* pChild);
    CChildFrame* FrameOf(const CPaintView& view) const;
    void OnIdle();
    void OnFirstPaint();
    QList<QAction*> WindowRows(QObject* pParent);
    std::string DocumentPaneText() const;

    CPaintApp& m_app;
    CMdiWorkspace* m_pWorkspace;
    COptionBar* m_pOptionBar = nullptr;
    QToolBar* m_pMainToolBar = nullptr;
    CToolOptionPages* m_pOptionPages = nullptr;
    CSizableReBar* m_pReBar = nullptr; ///< the main toolbar and the option bar
    CToolBox* m_pToolBox = nullptr;
    CCommandUi* m_pCommandUi = nullptr;
    CAccelerators* m_pAccelerators = nullptr;
    std::unique_ptr<CFrameBars> m_pBars;
    std::unique_ptr<CFrameBoxes> m_pBoxes;
    QLabel* m_pMousePane = nullptr;
    QLabel* m_pZoomPane = nullptr;
    QLabel* m_pDocumentPane = nullptr;
    std::vector<QMenu*> m_startMenus;
    std::vector<QMenu*> m_documentMenus;
    bool m_bDocumentMenuShown = false;
    std::vector<CChildFrame*> m_children;
    CChildFrame* m_pActive = nullptr;
    QTimer m_idleTimer;
    QElapsedTimer m_sinceIdle;
    bool m_bPainted = false;
    bool m_bStateSaved = false;
};

} // namespace kestrune
