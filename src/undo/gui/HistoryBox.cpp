#include "undo/gui/HistoryBox.h"

#include "base/Messages.h"
#include "base/StringTable.h"
#include "ui/Dialog.h"
#include "ui/Icons.h"
#include "undo/UndoStack.h"
#include "undo/gui/HistoryModel.h"

#include <QPainter>
#include <QStyledItemDelegate>

#include <algorithm>
#include <array>
#include <new>

namespace kestrune {

namespace {

constexpr QSize c_icon(23, 22);
constexpr int c_nIcons = 24;
constexpr int c_nTextLeft = 5; // behind the icon
constexpr int c_nTextTop = 3;

/// Icon at the left, text behind it. The row of the present state stands on the selection's colour.
class CHistoryDelegate : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex&) const override
    {
        return {c_icon.width() + c_nTextLeft + 40, std::max(c_icon.height(), option.fontMetrics.height() + 2 * c_nTextTop)};
    }

    void paint(QPainter* pPainter, const QStyleOptionViewItem& option, const QModelIndex& index) const override
    {
        const bool bSelected = option.state & QStyle::State_Selected;
        const bool bFocused = option.state & QStyle::State_HasFocus;
        const bool bUndone = index.data(CHistoryModel::ROLE_UNDONE).toBool();
        const bool bDim = bUndone || !(option.state & QStyle::State_Enabled);
        const QRect rc = option.rect;

        if (bSelected)
            pPainter->fillRect(rc, option.palette.highlight());
        else if (bFocused)
            pPainter->fillRect(rc, option.palette.button());
        const int nGroup = index.data(CHistoryModel::ROLE_GROUP).toInt();
        const QRect rcIcon(rc.left(), rc.top() + (rc.height() - c_icon.height()) / 2, c_icon.width(), c_icon.height());
        if (nGroup >= 0 && nGroup < c_nIcons)
            IconOf(nGroup).paint(pPainter, rcIcon, Qt::AlignCenter, bSelected ? QIcon::Selected : bDim ? QIcon::Disabled : QIcon::Normal);

        const auto role = bSelected ? QPalette::HighlightedText : QPalette::Text;
        pPainter->setFont(option.font);
        pPainter->setPen(option.palette.color(bDim && !bSelected ? QPalette::Disabled : QPalette::Active, role));
        const QRect rcText = rc.adjusted(c_icon.width() + c_nTextLeft, 0, -2, 0);
        const QString strText = index.data(Qt::DisplayRole).toString();
        pPainter->drawText(rcText, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                           option.fontMetrics.elidedText(strText, Qt::ElideRight, rcText.width()));
    }

private:
    static const QIcon& IconOf(int nGroup)
    {
        static std::array<QIcon, c_nIcons> aIcons;
        QIcon& icon = aIcons[static_cast<std::size_t>(nGroup)];
        if (icon.isNull())
            icon = LoadIcon(QStringLiteral("history/%1").arg(nGroup, 2, 10, QLatin1Char('0')));
        return icon;
    }
};

} // namespace

CHistoryBox::CHistoryBox(QWidget* pParent)
    : QListView(pParent)
    , m_pModel(new CHistoryModel(this))
{
    setModel(m_pModel);
    setItemDelegate(new CHistoryDelegate(this));
    setFrameShape(QFrame::NoFrame);
    setUniformItemSizes(true);
    setEditTriggers(NoEditTriggers);
    setSelectionMode(SingleSelection);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollMode(ScrollPerPixel);
    setAttribute(Qt::WA_InputMethodEnabled, false);
    setAccessibleName(TextOf(IDS_HISTORY_NAME));
}

void CHistoryBox::ShowImage(CPaintImage* pImage)
{
    // A picture may stand where another one has just been freed: the rows tell them apart.
    const int nRows = pImage ? static_cast<int>(pImage->m_UndoList.size() + pImage->m_RedoList.size()) : 0;
    if (pImage == m_pImage && nRows == m_pModel->rowCount() && CurrentRow() == (pImage ? pImage->m_nHistoryIndex : -1))
        return;
    m_pImage = pImage;
    m_bShowing = true;
    m_pModel->ShowImage(pImage);
    m_bShowing = false;
    ShowCurrentRow();
}

void CHistoryBox::Sync(const CPaintImage& image, int nMode)
{
    if (&image != m_pImage)
        return;
    m_bShowing = true;
    m_pModel->Sync(image, nMode);
    m_bShowing = false;
    ShowCurrentRow();
}

int CHistoryBox::CurrentRow() const
{
    return m_pModel->Current();
}

void CHistoryBox::ShowCurrentRow()
{
    m_bShowing = true;
    const QModelIndex index = m_pModel->index(CurrentRow());
    setCurrentIndex(index);
    if (index.isValid())
        scrollTo(index);
    m_bShowing = false;
}

void CHistoryBox::JumpTo(int nRow)
{
    try {
        JumpToHistory(*m_pImage, nRow);
    } catch (const std::bad_alloc&) { // the steps before it stand
        SayMessage(IDS_COMMAND_OUT_OF_MEMORY);
    }
    m_pModel->SetCurrent(m_pImage->m_nHistoryIndex);
}

void CHistoryBox::currentChanged(const QModelIndex& current, const QModelIndex& previous)
{
    QListView::currentChanged(current, previous);
    if (!m_bShowing && m_pImage && current.isValid())
        JumpTo(current.row());
}

/// One row is always selected: a Ctrl click or a press below the last row must not clear it.
QItemSelectionModel::SelectionFlags CHistoryBox::selectionCommand(const QModelIndex& index, const QEvent*) const
{
    return index.isValid() ? QItemSelectionModel::ClearAndSelect : QItemSelectionModel::NoUpdate;
}

} // namespace kestrune
