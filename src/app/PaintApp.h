#pragma once

#include "base/CommandTarget.h"
#include "base/Profile.h"
#include "doc/PaintDoc.h"

#include <QObject>
#include <QStringList>

#include <memory>
#include <vector>

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

    /// Start-up: settings, main frame, bars, placement. `bShow` false leaves the frame hidden (scripts without a display).
    bool InitInstance(bool bShow);

    CProfile& Profile() { return *m_pProfile; }
    CMainFrame& MainFrame() { return *m_pMainFrame; }

    /// Opens a document, or brings the open one of that path to the front. Null after a message.
    CPaintDoc* OpenDocumentFile(const std::filesystem::path& path);
    /// A new document with its frame and view. Null when cancelled or failed.
    CPaintDoc* NewDocument(const DocumentBirth& birth);

    /// Routes a command id: view, document, child frame, main frame, application; the first that handles it runs.
    /// False when nobody handles it or it is disabled.
    bool ExecuteCommand(int nId);
    /// What menus, toolbars and scripts show of a command; disabled when nobody handles it.
    CommandState QueryCommand(int nId) const;

    /// Child frames in the order in which they were opened.
    std::vector<CChildFrame*> ChildFrames() const;
    CChildFrame* ActiveChild() const;
    CPaintView* ActiveView() const;

private:
    std::unique_ptr<CProfile> m_pProfile;
    CMainFrame* m_pMainFrame = nullptr;
};

/// The one application object; null before it exists.
CPaintApp* GetApp();

} // namespace kestrune
