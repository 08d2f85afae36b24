#include "script/ScriptFrame.h"

#include "app/ChildFrame.h"
#include "app/CommandTable.h"
#include "app/FrameBars.h"
#include "app/FrameBoxes.h"
#include "app/MainFrame.h"
#include "app/OptionBar.h"
#include "resources/gui/BrushBox.h"
#include "resources/gui/TextureBox.h"
#include "tools/ToolOptions.h"
#include "tools/gui/ToolOptionPages.h"
#include "ui/NumEdit.h"
#include "undo/gui/HistoryBox.h"
#include "undo/gui/HistoryModel.h"
#include "view/PaintView.h"

#include <QApplication>
#include <QFile>
#include <QMouseEvent>
#include <QStatusBar>

namespace kestrune {

bool ActivateChild(CPaintApp& app, int nIndex)
{
    const std::vector<CChildFrame*> children = app.ChildFrames();
    if (nIndex < 0 || nIndex >= static_cast<int>(children.size()))
        return false;
    CChildFrame* pChild = children[static_cast<std::size_t>(nIndex)];
    app.MainFrame().ActivateChild(pChild);
    return app.ActiveChild() == pChild;
}

bool CloseActiveChild(CPaintApp& app)
{
    CChildFrame* pChild = app.ActiveChild();
    return pChild && pChild->close();
}

QString ActiveTitle(CPaintApp& app)
{
    app.MainFrame().UpdateCommandUi(); // titles otherwise follow when the program is idle
    return app.ActiveChild()->windowTitle();
}

QObject* FindOptionControl(CPaintApp& app, const QString& strSection, const QString& strKey)
{
    const ToolOptionRow* pRow = FindToolOption(strSection.toStdString(), strKey.toStdString());
    return pRow ? app.MainFrame().OptionPages().Control(pRow->option) : nullptr;
}

namespace {

bool Choose(CTextureBox& box, const QString& strPath)
{
    if (strPath != u"none")
        return box.Choose(QFile::encodeName(strPath).toStdString());
    box.Clear();
    return true;
}

} // namespace

bool ChooseTexture(CPaintApp& app, const QString& strPath)
{
    return Choose(app.MainFrame().OptionPages().TextureBox(), strPath);
}

bool ChoosePattern(CPaintApp& app, const QString& strPath)
{
    return Choose(app.MainFrame().OptionPages().PatternBox(), strPath);
}

QObject* PatternPercentControl(CPaintApp& app)
{
    return &app.MainFrame().OptionPages().PatternPercent();
}

void TypeZoom(CPaintApp& app, float fZoom)
{
    app.MainFrame().OptionBar().TypeZoom(fZoom);
}

QImage GrabFrame(CPaintApp& app)
{
    app.MainFrame().UpdateCommandUi();
    return app.MainFrame().grab().toImage();
}

QImage GrabBox(CPaintApp& app, int nBarId)
{
    CMainFrame& frame = app.MainFrame();
    frame.UpdateCommandUi();
    QWidget* pBox = frame.FrameBars().Bar(nBarId);
    if (nBarId == ID_VIEW_OPTION_BAR)
        pBox = &frame.OptionBar();
    else if (nBarId == ID_VIEW_STATUS_BAR)
        pBox = frame.statusBar();
    return pBox ? pBox->grab().toImage() : QImage();
}

bool ClickHistoryRow(CPaintApp& app, int nRow)
{
    CHistoryBox& box = app.MainFrame().Boxes().History();
    const QModelIndex index = box.model()->index(nRow, 0);
    const CPaintView* pView = app.ActiveView();
    if (!index.isValid() || (pView && pView->IsDragging())) // the mouse is busy elsewhere
        return false;
    box.scrollTo(index);
    const QPointF pt = QRectF(box.visualRect(index)).center(), ptScreen = box.viewport()->mapToGlobal(pt);
    for (const QEvent::Type type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
        const bool bDown = type == QEvent::MouseButtonPress;
        QMouseEvent event(type, pt, ptScreen, Qt::LeftButton, bDown ? Qt::LeftButton : Qt::NoButton, Qt::NoModifier);
        QApplication::sendEvent(box.viewport(), &event);
    }
    return box.CurrentRow() == nRow;
}

QStringList HistoryTexts(CPaintApp& app)
{
    const CHistoryBox& box = app.MainFrame().Boxes().History();
    QStringList rows;
    for (int i = 0; i < box.model()->rowCount(); i++) {
        const QModelIndex index = box.model()->index(i, 0);
        const bool bUndone = index.data(CHistoryModel::ROLE_UNDONE).toBool();
        rows << (i == box.CurrentRow() ? u"* " : bUndone ? u"- " : u"  ") + index.data().toString();
    }
    return rows;
}

void LoadBoxes(CPaintApp& app)
{
    app.MainFrame().Boxes().Brushes().EnsureLoaded();
}

bool IsFrameOpen(CPaintApp& app)
{
    return app.MainFrame().isVisible();
}

void DropDocuments(CPaintApp& app)
{
    for (CChildFrame* pChild : app.ChildFrames())
        pChild->CloseNow();
}

} // namespace kestrune
