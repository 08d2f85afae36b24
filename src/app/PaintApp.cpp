#include "app/PaintApp.h"

#include "acquire/gui/Clipboard.h"
#include "app/AboutDialog.h"
#include "app/ChildFrame.h"
#include "app/CommandTable.h"
#include "app/MainFrame.h"
#include "base/Log.h"
#include "base/Messages.h"
#include "base/StringTable.h"
#include "doc/files/DecodedImage.h"
#include "doc/gui/DocumentDialogs.h"
#include "doc/gui/ExportDialog.h"
#include "doc/gui/OpenDialog.h"
#include "doc/gui/SvgReader.h"
#include "ui/MessageSink.h"
#include "ui/WaitCursor.h"
#include "undo/UndoKinds.h"
#include "undo/UndoStack.h"
#include "view/PaintView.h"
#include "view/Printing.h"

#include <QAction>
#include <QApplication>

#include <new>

namespace kestrune {

namespace {

CPaintApp* g_pApp = nullptr;

/// A path to compare and to keep: absolute, links followed as far as the file exists.
std::filesystem::path Canonical(const std::filesystem::path& path)
{
    std::error_code error;
    std::filesystem::path result = std::filesystem::weakly_canonical(std::filesystem::absolute(path, error), error);
    return error ? path : result;
}

/// Runs an act of the user; what it throws becomes a message, and the picture stays as it was before.
template <typename Act>
bool Guarded(Act act)
{
    try {
        act();
        return true;
    } catch (const std::bad_alloc&) {
        SayMessage(IDS_COMMAND_OUT_OF_MEMORY);
    } catch (const std::exception& error) {
        LogWarning(std::string("a command failed: ") + error.what());
        SayMessage(std::string(StringText(IDS_COMMAND_FAILED)) + "\n" + error.what());
    }
    return false;
}

} // namespace

CPaintApp* GetApp()
{
    return g_pApp;
}

CPaintApp::CPaintApp(std::unique_ptr<CProfile> pProfile)
    : m_pProfile(std::move(pProfile))
{
    g_pApp = this;
    RegisterCommands();
}

CPaintApp::~CPaintApp()
{
    m_pMainFrame.reset();
    if (&Messages() == m_pMessageSink.get())
        SetMessageSink(nullptr);
    if (g_pApp == this)
        g_pApp = nullptr;
}

bool CPaintApp::InitInstance(bool bShow)
{
    m_preferences.LoadAll(*m_pProfile);
    SetHistoryLimit(m_preferences.Int("General", "History"));
    m_recentFiles.Load(*m_pProfile);
    TakeLimits(*m_pProfile);
    RegisterSvgReader();

    m_pMainFrame = std::make_unique<CMainFrame>(*this);
    m_pDocumentHost = std::make_unique<CDocumentDialogs>(*m_pProfile, m_pMainFrame.get(),
                                                         [this](CPaintDoc& doc) { OnDocumentChanged(doc); }, PutOnClipboard);
    m_pMessageSink = std::make_unique<CWindowMessageSink>(
        m_pMainFrame.get(), [this](const QString& strText) { m_pMainFrame->ShowStatusText(strText); });
    SetMessageSink(m_pMessageSink.get());

    if (!bShow)
        m_pMainFrame->setAttribute(Qt::WA_DontShowOnScreen);
    m_pMainFrame->LoadState();
    m_pMainFrame->show();
    return true;
}

void CPaintApp::RegisterCommands()
{
    const auto hasDocument = [this](CommandState& state) { state.bEnabled = !ChildFrames().empty(); };
    OnCommandId(ID_FILE_NEW, [this] { NewDocument({}); });
    OnCommandId(ID_FILE_OPEN, [this] { OnFileOpen(); });
    OnCommandId(ID_FILE_EXPORT, [this] { RunExport(*m_pProfile, ActiveChild()->GetDocument(), m_pMainFrame.get()); },
                [this](CommandState& state) { state.bEnabled = ActiveChild() && ActiveChild()->GetDocument().m_pImage; });
    OnCommandId(ID_CLOSE_ALL, [this] { CloseAllDocuments(); }, hasDocument);
    OnCommandId(ID_FILE_PRINT_SETUP, [this] { RunPrinterSetup(m_pMainFrame.get()); });
    OnCommandId(ID_APP_ABOUT, [this] { CAboutDialog(m_pMainFrame.get()).DoModal(); });
    OnCommandId(ID_APP_EXIT, [this] { m_pMainFrame->close(); });
    const auto hasPicture = [](CommandState& state) { state.bEnabled = ClipboardHasPicture(); };
    OnCommandId(ID_PASTE_NEW, [this] { OnPasteNew(); }, hasPicture);
    OnCommandId(ID_PASTE_FROM_CLIPBOARD, [this] { OnPasteNew(); }, hasPicture);
    OnCommandId(ID_CLEAR_CLIPBOARD, [] { EmptyClipboard(); }, [](CommandState& state) { state.bEnabled = ClipboardHasContents(); });
    RegisterRecentFiles();
}

/// A new document from what another program, or this one, has copied. It goes through the frame's holding bitmap.
void CPaintApp::OnPasteNew()
{
    std::optional<ClipboardPicture> picture;
    {
        const CWaitCursor wait;
        picture = TakeFromClipboard();
    }
    if (!picture) {
        Messages().StatusText(std::string(StringText(IDS_PASTE_UNREADABLE)));
        return;
    }
    CMainFrame& frame = *m_pMainFrame;
    frame.m_HoldBitmap = std::move(picture->bitmap);
    frame.m_nHoldBitsPerPixel = picture->nBitsPerPixel;
    frame.m_nHoldColorMode = picture->nColorMode;
    DocumentBirth birth;
    birth.kind = DocumentBirth::FromHoldingBitmap;
    birth.pHolding = &frame.m_HoldBitmap;
    birth.nBitsPerPixel = frame.m_nHoldBitsPerPixel;
    birth.nColorMode = frame.m_nHoldColorMode;
    NewDocument(birth);
    frame.m_HoldBitmap.Free();
}

void CPaintApp::RegisterRecentFiles()
{
    for (int i = 0; i < CRecentFiles::c_nMax; i++)
        OnCommandId(ID_FILE_MRU_FILE1 + i, [this, i] { OnRecentFile(i); },
                    [this, i](CommandState& state) { state.bEnabled = i < m_recentFiles.Count(); });
}

std::array<CCommandTarget*, 5> CPaintApp::Route() const
{
    CChildFrame* pChild = ActiveChild();
    return {pChild ? &pChild->GetView() : nullptr, pChild ? &pChild->GetDocument() : nullptr, pChild, m_pMainFrame.get(),
            const_cast<CPaintApp*>(this)};
}

bool CPaintApp::ExecuteCommand(int nId)
{
    // A tool works on the picture: keys and other windows must not change it, nor the tool, before the button is up. What closes
    // the picture ends the drag first.
    const bool bCloses = nId == ID_APP_EXIT || nId == ID_CLOSE_ALL || nId == ID_FILE_CLOSE;
    if (const CPaintView* pView = ActiveView(); pView && pView->IsDragging() && !bCloses)
        return false;
    for (CCommandTarget* pTarget : Route()) {
        if (!pTarget || !pTarget->Handles(nId))
            continue;
        CommandState state;
        pTarget->UpdateCommand(nId, state);
        return state.bEnabled && Guarded([&] { pTarget->RunCommand(nId); });
    }
    return false;
}

CommandState CPaintApp::QueryCommand(int nId) const
{
    CommandState state;
    for (const CCommandTarget* pTarget : Route())
        if (pTarget && pTarget->UpdateCommand(nId, state))
            return state;
    state.bEnabled = false;
    return state;
}

std::vector<CChildFrame*> CPaintApp::ChildFrames() const
{
    return m_pMainFrame ? m_pMainFrame->ChildFrames() : std::vector<CChildFrame*>();
}

CChildFrame* CPaintApp::ActiveChild() const
{
    return m_pMainFrame ? m_pMainFrame->ActiveChild() : nullptr;
}

CPaintView* CPaintApp::ActiveView() const
{
    CChildFrame* pChild = ActiveChild();
    return pChild ? &pChild->GetView() : nullptr;
}

CPaintDoc* CPaintApp::ShowDocument(std::unique_ptr<CPaintDoc> pDoc)
{
    CPaintDoc* pResult = pDoc.get();
    m_pMainFrame->AddChild(new CChildFrame(std::move(pDoc), *m_pMainFrame));
    return pResult;
}

CPaintDoc* CPaintApp::OpenDocumentFile(const std::filesystem::path& path)
{
    const std::filesystem::path canonical = Canonical(path);
    for (CChildFrame* pChild : ChildFrames())
        if (pChild->GetDocument().GetPathName() == canonical) {
            m_pMainFrame->ActivateChild(pChild);
            return &pChild->GetDocument();
        }

    CPaintDoc* pResult = nullptr;
    QApplication::setOverrideCursor(Qt::WaitCursor);
    Guarded([&] {
        auto pDoc = std::make_unique<CPaintDoc>(*m_pDocumentHost);
        if (!pDoc->OnOpenDocument(canonical))
            return;
        pDoc->SetPathName(canonical);
        RecordFirstState(*pDoc->m_pImage, UNDO_LOADED);
        pResult = ShowDocument(std::move(pDoc));
    });
    QApplication::restoreOverrideCursor();
    if (pResult)
        m_recentFiles.Add(canonical);
    return pResult;
}

CPaintDoc* CPaintApp::NewDocument(const DocumentBirth& birth)
{
    CPaintDoc* pResult = nullptr;
    Guarded([&] {
        auto pDoc = std::make_unique<CPaintDoc>(*m_pDocumentHost);
        const bool bBorn = pDoc->OnNewDocument(birth);
        // The dialog has put its values into the store; the block in force, which the exit writes, follows.
        m_preferences.Load(*m_pProfile, "Image");
        if (!bBorn)
            return;
        if (pDoc->GetTitle().empty())
            pDoc->SetTitle(std::string(StringText(IDS_NEW_DOCUMENT)) + " " + std::to_string(++m_nNewDocuments));
        RecordFirstState(*pDoc->m_pImage, UNDO_NEW);
        pResult = ShowDocument(std::move(pDoc));
    });
    return pResult;
}

bool CPaintApp::CloseAllDocuments()
{
    for (CChildFrame* pChild : ChildFrames())
        if (!pChild->close())
            return false;
    return true;
}

void CPaintApp::OnFileOpen()
{
    CDlgImageFile dialog(*m_pProfile, m_pMainFrame.get());
    if (dialog.DoModal() != QDialog::Accepted)
        return;
    for (const std::filesystem::path& path : dialog.Paths())
        OpenDocumentFile(path);
}

void CPaintApp::OnRecentFile(int nIndex)
{
    if (nIndex >= m_recentFiles.Count())
        return;
    const std::filesystem::path path = m_recentFiles.At(nIndex);
    std::error_code error;
    const bool bGone = !std::filesystem::exists(path, error);
    if (!OpenDocumentFile(path) && bGone)
        m_recentFiles.Remove(path);
}

QList<QAction*> CPaintApp::RecentFileRows(QObject* pParent)
{
    QList<QAction*> rows;
    std::error_code error;
    const std::filesystem::path current = std::filesystem::current_path(error);
    for (int i = 0; i < m_recentFiles.Count(); i++) {
        auto* pRow = new QAction(m_recentFiles.MenuIcon(i), m_recentFiles.MenuText(i, current), pParent);
        pRow->setStatusTip(QString::fromStdString(m_recentFiles.At(i).string()));
        connect(pRow, &QAction::triggered, this, [this, i] { ExecuteCommand(ID_FILE_MRU_FILE1 + i); });
        rows << pRow;
    }
    return rows;
}

void CPaintApp::OnDocumentChanged(CPaintDoc& doc)
{
    if (!doc.GetPathName().empty())
        m_recentFiles.Add(doc.GetPathName());
    for (CChildFrame* pChild : ChildFrames())
        if (&pChild->GetDocument() == &doc)
            pChild->OnUpdateFrameTitle();
}

} // namespace kestrune
