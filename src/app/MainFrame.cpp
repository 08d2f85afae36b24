#include "app/MainFrame.h"

#include "app/Accelerators.h"
#include "app/ChildFrame.h"
#include "app/FrameBoxes.h"
#include "app/FramePlacement.h"
#include "app/MdiWorkspace.h"
#include "app/OptionBar.h"
#include "app/PaintApp.h"
#include "app/PaneFocus.h"
#include "app/Preferences.h"
#include "app/SpaceKey.h"
#include "app/ToolBox.h"
#include "base/Messages.h"
#include "base/StringTable.h"
#include "resources/gui/BrushBox.h"
#include "tools/ToolOptions.h"
#include "tools/ToolRegistry.h"
#include "tools/ToolTable.h"
#include "tools/gui/ToolOptionPages.h"
#include "ui/Icons.h"
#include "ui/SizableReBar.h"
#include "undo/gui/HistoryBox.h"
#include "view/PaintView.h"

#include <QAbstractEventDispatcher>
#include <QApplication>
#include <QCloseEvent>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QMenuBar>
#include <QMimeData>
#include <QScreen>
#include <QStatusBar>

#include <algorithm>

namespace kestrune {

namespace {

constexpr QSize c_firstSize(1280, 800);
/// What a window manager may put above the window.
constexpr int c_nCaption = 32;
constexpr int c_nMainToolBarHeight = 34;
constexpr int c_nIconSize = 20;
constexpr char c_szReBarSection[] = "ReBar";
/// States are shown anew at most this often (milliseconds), however busy the event loop is.
constexpr qint64 c_nIdlePause = 40;

QLabel* AddPane(QStatusBar& bar, const char* pszName, int nWidthInDigits)
{
    auto* pPane = new QLabel(&bar);
    pPane->setObjectName(QString::fromLatin1(pszName));
    pPane->setMinimumWidth(pPane->fontMetrics().horizontalAdvance(u'0') * nWidthInDigits);
    pPane->setContentsMargins(6, 0, 6, 0);
    bar.addPermanentWidget(pPane);
    return pPane;
}

QStringList LocalFiles(const QMimeData& data)
{
    QStringList files;
    for (const QUrl& url : data.urls())
        if (url.isLocalFile())
            files << url.toLocalFile();
    return files;
}

} // namespace

CMainFrame::CMainFrame(CPaintApp& app)
    : m_app(app)
    , m_pWorkspace(new CMdiWorkspace(this))
{
    LoadColors(m_app.Profile());
    LoadToolOptions(m_app.Profile());
    std::error_code error;
    m_szStartDir = std::filesystem::current_path(error);

    setObjectName(QStringLiteral("MainFrame"));
    setWindowTitle(ToQString(StringText(IDS_PRODUCT_NAME)));
    setAttribute(Qt::WA_InputMethodEnabled, false);
    setAcceptDrops(true);
    setUnifiedTitleAndToolBarOnMac(false);
    const QScreen* pScreen = QGuiApplication::primaryScreen();
    resize(pScreen ? c_firstSize.boundedTo(pScreen->availableSize() - QSize(0, c_nCaption)) : c_firstSize);

    m_pCommandUi = new CCommandUi({[this](int nId) { return m_app.ExecuteCommand(nId); },
                                   [this](int nId) { return m_app.QueryCommand(nId); },
                                   [this](QObject* pParent) { return m_app.RecentFileRows(pParent); },
                                   [this](QObject* pParent) { return WindowRows(pParent); }},
                                  this);
    CreateToolBars();
    CreateStatusBar();
    setCentralWidget(m_pWorkspace);
    m_pBars = std::make_unique<CFrameBars>(*this);
    m_pBoxes = std::make_unique<CFrameBoxes>(*this, m_app);
    RegisterCommands();
    m_startMenus = m_pCommandUi->MakeMenus(StartMenu(), this);
    for (QMenu* pMenu : m_startMenus)
        menuBar()->addMenu(pMenu);
    m_pAccelerators = new CAccelerators(this, [this](int nId) { return m_app.ExecuteCommand(nId); });
    new CSpaceKey(this, [this]() -> QAbstractScrollArea* { return m_app.ActiveView(); });

    connect(m_pWorkspace, &QMdiArea::subWindowActivated, this, [this](QMdiSubWindow* pWindow) {
        // No window is also told when the program loses the focus: then the active picture stays.
        if (auto* pChild = qobject_cast<CChildFrame*>(pWindow))
            ChildActivated(pChild);
    });
    connect(m_pOptionBar, &COptionBar::ZoomChosen, this, [this](float fZoom) {
        CPaintView* pView = m_app.ActiveView();
        if (!pView)
            return;
        if (fZoom > 0)
            pView->SetZoom(fZoom);
        m_pOptionBar->ShowZoom(pView->GetZoom());
        pView->setFocus();
    });
    m_idleTimer.setSingleShot(true);
    connect(&m_idleTimer, &QTimer::timeout, this, &CMainFrame::UpdateCommandUi);
    if (QAbstractEventDispatcher* pDispatcher = QAbstractEventDispatcher::instance())
        connect(pDispatcher, &QAbstractEventDispatcher::aboutToBlock, this, &CMainFrame::OnIdle);
}

CMainFrame::~CMainFrame()
{
    disconnect(m_pWorkspace, nullptr, this, nullptr);
    // While the frame is still one: a child takes its leave from it. Closed ones that wait for the event loop do so too.
    for (CChildFrame* pChild : findChildren<CChildFrame*>())
        delete pChild;
}

void CMainFrame::CreateToolBars()
{
    m_pReBar = new CSizableReBar(*this);
    m_pMainToolBar = new QToolBar(QStringLiteral("&Main Toolbar"), this);
    m_pMainToolBar->setObjectName(QStringLiteral("Bar%1").arg(ID_VIEW_TOOLBAR));
    m_pMainToolBar->setIconSize({c_nIconSize, c_nIconSize});
    m_pMainToolBar->setFixedHeight(c_nMainToolBarHeight);
    m_pMainToolBar->setMovable(false);
    m_pMainToolBar->setToolButtonStyle(Qt::ToolButtonIconOnly);
    m_pCommandUi->FillToolBar(*m_pMainToolBar, MainToolBarCommands());
    m_pReBar->AddBand(m_pMainToolBar, ID_VIEW_TOOLBAR, PlainText(FindCommand(ID_VIEW_TOOLBAR)->text));
    m_pOptionBar = new COptionBar(this);
    m_pOptionPages = new CToolOptionPages(m_app.InstallFolder(), m_pOptionBar);
    connect(m_pOptionPages, &CToolOptionPages::Done, this, &CMainFrame::FocusPicture);
    const ToolRow& tool = *FindToolRow(g_nCurrentTool);
    m_pOptionBar->ShowPage(m_pOptionPages->PageOf(tool, tool.nCommand));
    m_pReBar->AddBand(m_pOptionBar, ID_VIEW_OPTION_BAR, PlainText(FindCommand(ID_VIEW_OPTION_BAR)->text));

    m_pToolBox = new CToolBox([this](int nId) { return m_app.QueryCommand(nId); }, this);
    m_pToolBox->setWindowTitle(PlainText(FindCommand(ID_VIEW_TOOLBOX)->text));
    addToolBar(Qt::LeftToolBarArea, m_pToolBox);
    m_pCommandUi->LoadToolBarIcons();
    m_pToolBox->LoadIcons();
    connect(m_pToolBox, &CToolBox::CommandChosen, this, [this](int nId) { m_app.ExecuteCommand(nId); });
}

void CMainFrame::CreateStatusBar()
{
    QStatusBar* pBar = statusBar();
    pBar->setSizeGripEnabled(true);
    m_pMousePane = AddPane(*pBar, "Pane201", 18);
    m_pZoomPane = AddPane(*pBar, "Pane202", 8);
    m_pDocumentPane = AddPane(*pBar, "Pane205", 30);
    pBar->setFixedHeight(std::max(24, pBar->fontMetrics().height() + 8));
}

void CMainFrame::RegisterToggle(int nId, QWidget* pBar)
{
    OnCommandId(nId, [pBar] {
        pBar->setVisible(pBar->isHidden());
        if (!pBar->isHidden())
            pBar->raise();
    }, [pBar](CommandState& state) { state.bChecked = !pBar->isHidden(); });
}

void CMainFrame::RegisterCommands()
{
    // The id is routed, and taken, and does nothing: what pastes are the commands with a place to paste to.
    OnCommandId(ID_EDIT_PASTE, [] {});
    RegisterToggle(ID_VIEW_TOOLBOX, m_pToolBox);
    RegisterToggle(ID_VIEW_TOOLBAR, m_pMainToolBar);
    RegisterToggle(ID_VIEW_OPTION_BAR, m_pOptionBar);
    RegisterToggle(ID_VIEW_STATUS_BAR, statusBar());
    for (const BarRow& row : BarRows())
        RegisterToggle(row.nToggleCommand, m_pBars->Bar(row.nId));
    OnCommandId(ID_RESET_BOXES, [this] {
        m_pBars->Reset();
        m_pReBar->Reset();
        statusBar()->show();
    });

    const auto hasChild = [this](CommandState& state) { state.bEnabled = !m_children.empty(); };
    OnCommandId(ID_WINDOW_CASCADE, [this] { m_pWorkspace->Cascade(); }, hasChild);
    OnCommandId(ID_WINDOW_TILE_HORZ, [this] { m_pWorkspace->Tile(true); }, hasChild);
    OnCommandId(ID_WINDOW_TILE_VERT, [this] { m_pWorkspace->Tile(false); }, hasChild);
    OnCommandId(ID_WINDOW_ARRANGE, [this] { m_pWorkspace->ArrangeIcons(); }, [this](CommandState& state) {
        state.bEnabled = std::any_of(m_children.begin(), m_children.end(), [](const auto* p) { return p->isMinimized(); });
    });
    OnCommandId(PANE_DOCUMENT, [] {}, [this](CommandState& state) {
        state.bEnabled = m_pActive != nullptr;
        state.strText = DocumentPaneText();
    });
}

void CMainFrame::AddChild(CChildFrame* pChild)
{
    const bool bMaximize = m_pActive && m_pActive->isMaximized();
    m_children.push_back(pChild);
    m_pWorkspace->addSubWindow(pChild);
    m_pWorkspace->viewport()->update(); // the hint of an empty window goes
    // Each a caption further than the one before, so that no picture hides another whole.
    const int nStep = 24, nPlace = static_cast<int>(m_children.size() - 1) % 8;
    pChild->move(nStep * nPlace, nStep * nPlace);
    pChild->show();
    pChild->GetView().OnInitialUpdate();
    if (bMaximize)
        pChild->showMaximized();
    ActivateChild(pChild);
}

void CMainFrame::ActivateChild(CChildFrame* pChild)
{
    if (pChild->isMinimized())
        pChild->showNormal();
    m_pWorkspace->setActiveSubWindow(pChild);
    ChildActivated(pChild); // the workspace tells it only while the window is active
    pChild->GetView().setFocus();
}

void CMainFrame::ChildActivated(CChildFrame* pChild)
{
    if (m_pActive == pChild)
        return;
    if (m_pActive)
        m_pActive->GetView().OnActivateView(false);
    m_pActive = pChild;
    if (m_pActive)
        m_pActive->GetView().OnActivateView(true);
    m_pBoxes->ShowImage(m_pActive ? m_pActive->GetDocument().m_pImage.get() : nullptr);
    ShowMenuOfState();
    UpdateCommandUi();
}

void CMainFrame::ChildDestroyed(CChildFrame* pChild)
{
    const auto it = std::find(m_children.begin(), m_children.end(), pChild);
    if (it == m_children.end())
        return;
    m_children.erase(it);
    if (m_pActive == pChild) {
        auto* pNext = qobject_cast<CChildFrame*>(m_pWorkspace->currentSubWindow());
        if (pNext == pChild || std::find(m_children.begin(), m_children.end(), pNext) == m_children.end())
            pNext = m_children.empty() ? nullptr : m_children.back();
        ChildActivated(pNext);
    }
    m_pWorkspace->viewport()->update();
}

void CMainFrame::ShowMenuOfState()
{
    const bool bDocument = !m_children.empty();
    if (bDocument == m_bDocumentMenuShown)
        return;
    m_bDocumentMenuShown = bDocument;
    if (bDocument && m_documentMenus.empty())
        m_documentMenus = m_pCommandUi->MakeMenus(DocumentMenu(), this);
    // The corner widgets, the buttons of a maximised picture, are not touched by this.
    for (QAction* pAction : menuBar()->actions())
        menuBar()->removeAction(pAction);
    for (QMenu* pMenu : bDocument ? m_documentMenus : m_startMenus)
        menuBar()->addMenu(pMenu);
}

CChildFrame* CMainFrame::FrameOf(const CPaintView& view) const
{
    for (CChildFrame* pChild : m_children)
        if (&pChild->GetView() == &view)
            return pChild;
    return nullptr;
}

QList<QAction*> CMainFrame::WindowRows(QObject* pParent)
{
    QList<QAction*> rows;
    for (std::size_t i = 0; i < m_children.size(); i++) {
        CChildFrame* pChild = m_children[i];
        QString strTitle = pChild->windowTitle();
        strTitle.replace(u'&', QStringLiteral("&&"));
        auto* pRow = new QAction((i < 9 ? u'&' + QString::number(i + 1) + u' ' : QString()) + strTitle, pParent);
        pRow->setCheckable(true);
        pRow->setChecked(pChild == m_pActive);
        connect(pRow, &QAction::triggered, pChild, [this, pChild] { ActivateChild(pChild); });
        rows << pRow;
    }
    return rows;
}

void CMainFrame::ShowViewMenu(QPoint ptScreen)
{
    const std::unique_ptr<QMenu> pMenu(m_pCommandUi->MakeContextMenu(ViewContextMenu(), this));
    pMenu->exec(ptScreen);
}

QMenu* CMainFrame::createPopupMenu()
{
    // The toolkit's own menu would show the bars' titles; the view menu's rows say the same in the user's words.
    std::vector<MenuItem> items;
    for (const int nId : {int(ID_VIEW_TOOLBAR), int(ID_VIEW_OPTION_BAR), int(ID_VIEW_STATUS_BAR), int(ID_VIEW_TOOLBOX)})
        items.push_back({MenuItemKind::Command, nId});
    items.push_back({MenuItemKind::Separator});
    for (const BarRow& row : BarRows())
        items.push_back({MenuItemKind::Command, row.nToggleCommand});
    items.push_back({MenuItemKind::Separator});
    items.push_back({MenuItemKind::Command, ID_RESET_BOXES});
    return m_pCommandUi->MakeContextMenu(items, this);
}

void CMainFrame::LoadState()
{
    m_pBars->LoadState(m_app.Profile());
    m_pReBar->LoadState(m_app.Profile(), c_szReBarSection);
    m_pToolBox->LoadState(m_app.Profile());
    StartTool();
    RestorePlacement(*this, m_app.Profile());
    m_pBars->Verify();
}

/// The program starts with the tool that the toolbox's first button stands for, so that a button shows the tool at hand.
void CMainFrame::StartTool()
{
    const int nCommand = m_pToolBox->CommandAt(0);
    const auto tools = ToolTable();
    const auto it = std::find_if(tools.begin(), tools.end(), [=](const ToolRow& row) { return row.nCommand == nCommand; });
    if (it == tools.end())
        return;
    SwitchTool(it->nId, it->nStoredCommand);
    m_pOptionBar->ShowPage(m_pOptionPages->PageOf(*it, nCommand));
}

void CMainFrame::SaveState()
{
    CProfile& profile = m_app.Profile();
    SavePlacement(*this, profile);
    m_app.Preferences().SaveAll(profile);
    SaveColors(profile);
    SaveToolOptions(profile);
    m_pBars->SaveState(profile);
    m_pReBar->SaveState(profile, c_szReBarSection);
    m_pToolBox->SaveState(profile);
    m_app.SaveRecentFiles();
    m_bStateSaved = true;
    if (!profile.Flush())
        Messages().Message(std::string(StringText(IDS_SETTINGS_NOT_SAVED)), MessageButtons::Ok, MessageAnswer::Ok);
}

void CMainFrame::ShowStatusText(const QString& strText)
{
    statusBar()->showMessage(strText);
}

QString CMainFrame::PaneText(StatusPane pane) const
{
    switch (pane) {
    case PANE_MOUSE: return m_pMousePane->text();
    case PANE_ZOOM: return m_pZoomPane->text();
    case PANE_DOCUMENT: return m_pDocumentPane->text();
    default: return statusBar()->currentMessage();
    }
}

std::string CMainFrame::DocumentPaneText() const
{
    const CPaintImage* pImage = m_pActive ? m_pActive->GetDocument().m_pImage.get() : nullptr;
    if (!pImage)
        return {};
    const std::string_view depth = DepthText(pImage->m_nColorMode, pImage->m_nBitsPerPixel).substr(3); // without " @ "
    const double fMegabytes = 3.0 * pImage->m_nWidth * pImage->m_nHeight / (1 << 20);
    return QString::asprintf("%d x %d  ", pImage->m_nWidth, pImage->m_nHeight).toStdString() + std::string(depth)
        + QString::asprintf("  %.1f MB", fMegabytes).toStdString();
}

void CMainFrame::OnIdle()
{
    // A busy loop (a stroke, an animation) blocks many times a second: the buttons can wait for its pauses.
    if (!m_sinceIdle.isValid() || m_sinceIdle.elapsed() >= c_nIdlePause)
        UpdateCommandUi();
    else if (!m_idleTimer.isActive())
        m_idleTimer.start(static_cast<int>(c_nIdlePause));
}

void CMainFrame::UpdateCommandUi()
{
    m_sinceIdle.start();
    m_idleTimer.stop();
    m_pCommandUi->UpdateToolBars();
    m_pToolBox->UpdateStates(m_pActive != nullptr); // without a picture a press does nothing and the marks stay as they are
    for (CChildFrame* pChild : m_children)
        pChild->OnUpdateFrameTitle();
    m_pOptionBar->EnableZoom(m_pActive != nullptr);
    m_pBoxes->OnIdle();
    if (m_pActive && m_pZoomPane->text().isEmpty())
        ZoomChanged(m_pActive->GetView());
    const QString strDocument = QString::fromStdString(m_app.QueryCommand(PANE_DOCUMENT).strText);
    if (m_pDocumentPane->text() != strDocument)
        m_pDocumentPane->setText(strDocument);
}

void CMainFrame::ShowMousePosition(int x, int y)
{
    m_pMousePane->setText(QString::asprintf("X = %d  Y = %d", x, y));
}

void CMainFrame::ZoomChanged(CPaintView& view)
{
    if (CChildFrame* pChild = FrameOf(view))
        pChild->OnUpdateFrameTitle();
    if (m_app.ActiveView() != &view)
        return;
    m_pZoomPane->setText(ZoomText(view.GetZoom()));
    m_pOptionBar->ShowZoom(view.GetZoom());
}

CSize CMainFrame::AvailableSpace(const CPaintView&) const
{
    // The boxes dock beside the workspace, so what they leave free is the workspace itself.
    const QSize size = m_pWorkspace->viewport()->size();
    return {size.width(), size.height()};
}

bool CMainFrame::FrameFollowsZoom() const
{
    return m_pOptionBar->FrameFollowsZoom();
}

void CMainFrame::ResizeFrame(CPaintView& view, CSize size)
{
    if (CChildFrame* pChild = FrameOf(view))
        pChild->SetClientSize({size.cx, size.cy});
}

void CMainFrame::PlaceFrame(CPaintView& view, const QRect& rc)
{
    CChildFrame* pChild = FrameOf(view);
    if (!pChild || pChild->isMaximized())
        return;
    if (pChild->isMinimized())
        pChild->showNormal();
    pChild->setGeometry(rc);
}

void CMainFrame::ViewActivated(CPaintView& view, bool bActive)
{
    if (!bActive || m_app.ActiveView() != &view) {
        m_pMousePane->clear();
        if (m_children.empty())
            m_pZoomPane->clear();
        return;
    }
    ZoomChanged(view);
}

void CMainFrame::BeforePress(CPaintView& view)
{
    while (QWidget* pPopup = QApplication::activePopupWidget())
        if (!pPopup->close())
            break;
    m_pBoxes->ShowImage(view.GetImage());
    m_pBoxes->Brushes().SettleBrush(); // the stroke that begins paints with what the box shows
}

void CMainFrame::ShowToolBars(const ToolRow& tool, int nCommand)
{
    m_pOptionBar->ShowPage(m_pOptionPages->PageOf(tool, nCommand));
    m_pToolBox->ShowTool(nCommand);
    CSizingControlBar* pSideBox = m_pBars->Bar(BAR_BRUSH_LIB);
    switch (tool.sideBox) {
    case SideBox::Hide:
        pSideBox->hide();
        break;
    case SideBox::Brushes:
    case SideBox::Pictures:
        if (pSideBox->isHidden()) {
            pSideBox->show();
            pSideBox->raise();
        }
        m_pBoxes->ShowPictures(tool.sideBox == SideBox::Pictures);
        break;
    case SideBox::Keep:
        break;
    }
}

int CMainFrame::FloatOpacity() const
{
    return GetToolOption(ToolOption::FloaterOpacity);
}

int CMainFrame::MoveMode() const
{
    return GetToolOption(ToolOption::FloaterCopy);
}

void CMainFrame::SyncHistoryBox(CPaintView& view, int nMode)
{
    if (const CPaintImage* pImage = view.GetImage())
        m_pBoxes->History().Sync(*pImage, nMode);
}

void CMainFrame::FilesDropped(const QStringList& files)
{
    for (const QString& strFile : files)
        m_app.OpenDocumentFile(strFile.toStdString());
}

void CMainFrame::dragEnterEvent(QDragEnterEvent* pEvent)
{
    if (!LocalFiles(*pEvent->mimeData()).isEmpty())
        pEvent->acceptProposedAction();
}

void CMainFrame::dropEvent(QDropEvent* pEvent)
{
    const QStringList files = LocalFiles(*pEvent->mimeData());
    pEvent->acceptProposedAction();
    // The program that drags waits for the end of this event: the files are opened after it.
    QMetaObject::invokeMethod(this, [this, files] { FilesDropped(files); }, Qt::QueuedConnection);
}

void CMainFrame::closeEvent(QCloseEvent* pEvent)
{
    for (CChildFrame* pChild : m_children)
        if (!pChild->SaveModified()) {
            pEvent->ignore();
            return;
        }
    if (!m_bStateSaved)
        SaveState();
    for (CChildFrame* pChild : std::vector<CChildFrame*>(m_children))
        pChild->CloseNow();
    for (CSizingControlBar* pBar : m_pBars->Bars())
        if (pBar->isFloating())
            pBar->hide();
    pEvent->accept();
}

void CMainFrame::FocusPicture()
{
    CPaintView* pView = m_app.ActiveView();
    if (!pView)
        return;
    pView->activateWindow(); // the keyboard may be with a floating box
    pView->setFocus();
}

void CMainFrame::keyPressEvent(QKeyEvent* pEvent)
{
    CPaintView* pView = m_app.ActiveView();
    if (pEvent->key() == Qt::Key_F6) {
        std::vector<QWidget*> panes;
        if (pView)
            panes.push_back(pView);
        panes.insert(panes.end(), {m_pOptionBar, m_pToolBox});
        panes.insert(panes.end(), m_pBars->Bars().begin(), m_pBars->Bars().end());
        FocusNextPane(panes, !(pEvent->modifiers() & Qt::ShiftModifier));
    } else if (pEvent->key() == Qt::Key_Escape && pView && !pView->hasFocus()) {
        FocusPicture();
    } else {
        QMainWindow::keyPressEvent(pEvent);
    }
}

void CMainFrame::resizeEvent(QResizeEvent* pEvent)
{
    QMainWindow::resizeEvent(pEvent);
    const int nBars = menuBar()->sizeHint().height() + c_nMainToolBarHeight + m_pOptionBar->height() + statusBar()->height();
    m_pToolBox->FitHeight(pEvent->size().height() - nBars);
}

void CMainFrame::showEvent(QShowEvent* pEvent)
{
    QMainWindow::showEvent(pEvent);
    m_bStateSaved = false;
}

bool CMainFrame::event(QEvent* pEvent)
{
    const bool bResult = QMainWindow::event(pEvent);
    if (pEvent->type() == QEvent::Paint && !m_bPainted) {
        m_bPainted = true;
        QMetaObject::invokeMethod(this, &CMainFrame::OnFirstPaint, Qt::QueuedConnection);
    }
    return bResult;
}

void CMainFrame::OnFirstPaint()
{
    m_pBars->ShowFloating();
    m_pBars->Verify();
    Q_EMIT FirstPainted();
}

} // namespace kestrune
