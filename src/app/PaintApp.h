#pragma once

#include "app/Preferences.h"
#include "app/RecentFiles.h"
#include "base/CommandTarget.h"
#include "base/Profile.h"
#include "doc/PaintDoc.h"

#include <QObject>
#include <QStringList>

#include <array>
#include <memory>
#include <vector>

class QAction;

namespace kestrune {

class CMainFrame;
class CChildFrame;
class CPaintView;

/// The application: settings, documents, the route that a command id takes.
class CPaintApp : public QObject, public CCommandTarget {
    Q_OBJECT
public:
    explicit CPaintApp(std::unique_ptr<CProfile> pProfile);
    ~CPaintApp() override;

    /// Start-up: settings, main frame, bars, placement. `bShow` false keeps the frame off the screen (scripts without a
    /// display); it is laid out as if it were shown.
    bool InitInstance(bool bShow);

    CProfile& Profile() { return *m_pProfile; }
    CPreferences& Preferences() { return m_preferences; }
    CRecentFiles& RecentFiles() { return m_recentFiles; }
    CMainFrame& MainFrame() { return *m_pMainFrame; }

    /// The folder that holds Brushes, Gradients and the other resource folders; empty when there is none.
    const std::filesystem::path& InstallFolder() const { return m_pathInstall; }
    void SetInstallFolder(const std::filesystem::path& path) { m_pathInstall = path; }

    /// Opens a document, or brings the open one of that path to the front. Null after a message.
    CPaintDoc* OpenDocumentFile(const std::filesystem::path& path);
    /// A new document with its frame and view. Null when cancelled or failed.
    CPaintDoc* NewDocument(const DocumentBirth& birth);
    /// Closes all documents, asking about each that was changed; false when the user stopped it.
    bool CloseAllDocuments();

    /// Routes a command id: view, document, child frame, main frame, application; the first that handles it runs.
    /// False when nobody handles it or it is disabled, and while a tool's drag goes on.
    bool ExecuteCommand(int nId);
    /// What menus, toolbars and scripts show of a command; disabled when nobody handles it.
    CommandState QueryCommand(int nId) const;

    /// Child frames in the order in which they were opened.
    std::vector<CChildFrame*> ChildFrames() const;
    CChildFrame* ActiveChild() const;
    CPaintView* ActiveView() const;

    QList<QAction*> RecentFileRows(QObject* pParent);
    void SaveRecentFiles() { m_recentFiles.Save(*m_pProfile); }

private:
    void RegisterCommands();
    void RegisterRecentFiles();
    void OnFileOpen();
    void OnPasteNew();
    void OnRecentFile(int nIndex);
    void OnDocumentChanged(CPaintDoc& doc);
    CPaintDoc* ShowDocument(std::unique_ptr<CPaintDoc> pDoc);
    /// The members of the route in their order, from the active view's end; null where there is none.
    std::array<CCommandTarget*, 5> Route() const;

    std::unique_ptr<CProfile> m_pProfile;
    CPreferences m_preferences;
    CRecentFiles m_recentFiles;
    std::filesystem::path m_pathInstall;
    std::unique_ptr<CMainFrame> m_pMainFrame;
    std::unique_ptr<CDocumentHost> m_pDocumentHost;
    std::unique_ptr<class CMessageSink> m_pMessageSink;
    int m_nNewDocuments = 0;
};

/// The one application object; null before it exists.
CPaintApp* GetApp();

} // namespace kestrune
