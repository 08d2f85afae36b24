#include "undo/gui/HistoryModel.h"

#include "base/StringTable.h"
#include "undo/UndoKinds.h"
#include "undo/UndoStack.h"

namespace kestrune {

namespace {

QString FromUtf8(std::string_view text)
{
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

} // namespace

CHistoryModel::Row CHistoryModel::RowOf(std::uint32_t nKind)
{
    const UndoKind kind = FindUndoKind(nKind);
    return {kind.nGroup, FromUtf8(kind.name)};
}

void CHistoryModel::ShowImage(const CPaintImage* pImage)
{
    beginResetModel();
    m_rows.clear();
    m_nCurrent = -1;
    if (pImage) {
        for (const HistoryRow& row : HistoryRows(*pImage))
            m_rows.push_back({row.nGroup, FromUtf8(row.name)});
        m_nCurrent = pImage->m_nHistoryIndex;
    }
    endResetModel();
}

void CHistoryModel::RemoveFrom(int nFirst, int nLast)
{
    if (nLast < nFirst)
        return;
    beginRemoveRows({}, nFirst, nLast);
    m_rows.erase(m_rows.begin() + nFirst, m_rows.begin() + nLast + 1);
    endRemoveRows();
}

void CHistoryModel::Sync(const CPaintImage& image, int nMode)
{
    const int nRows = rowCount();
    switch (nMode) {
    case HISTORY_ROW_ADDED:
        RemoveFrom(m_nCurrent + 1, nRows - 1);
        beginInsertRows({}, rowCount(), rowCount());
        m_rows.push_back(RowOf(image.m_UndoList.front()->nKind));
        endInsertRows();
        SetCurrent(rowCount() - 1);
        break;
    case HISTORY_ROW_TRIMMED:
        if (nRows > 0)
            RemoveFrom(0, 0);
        SetCurrent(m_nCurrent - 1);
        break;
    case HISTORY_ROW_UP:
        SetCurrent(m_nCurrent - 1);
        break;
    case HISTORY_ROW_DOWN:
        SetCurrent(m_nCurrent + 1);
        break;
    default:
        break;
    }
}

void CHistoryModel::SetCurrent(int nRow)
{
    m_nCurrent = nRow;
    if (!m_rows.empty())
        Q_EMIT dataChanged(index(0), index(rowCount() - 1));
}

int CHistoryModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

QVariant CHistoryModel::data(const QModelIndex& index, int nRole) const
{
    if (!index.isValid() || index.row() >= rowCount())
        return {};
    const Row& row = m_rows[static_cast<std::size_t>(index.row())];
    const bool bUndone = index.row() > m_nCurrent;
    switch (nRole) {
    case Qt::DisplayRole:
    case Qt::ToolTipRole:
        return row.strName;
    case Qt::AccessibleTextRole: // dimness is not to be seen by everyone
        return bUndone ? QString(row.strName + u", " + FromUtf8(StringText(IDS_HISTORY_UNDONE))) : row.strName;
    case ROLE_GROUP:
        return row.nGroup;
    case ROLE_UNDONE:
        return bUndone;
    default:
        return {};
    }
}

} // namespace kestrune
