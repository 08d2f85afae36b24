#pragma once

#include "doc/PaintImage.h"

#include <QAbstractListModel>

namespace kestrune {

/// The rows of a picture's history, oldest first. What it hands out are copies: the picture may go without notice.
class CHistoryModel : public QAbstractListModel {
    Q_OBJECT
public:
    enum Role {
        ROLE_GROUP = Qt::UserRole, ///< number of the icon
        ROLE_UNDONE                ///< a row that redo would bring back
    };

    using QAbstractListModel::QAbstractListModel;

    /// Shows another picture; null empties the list.
    void ShowImage(const CPaintImage* pImage);
    /// Takes over what `CImageSite::SyncHistoryBox` tells, changing only the rows concerned.
    void Sync(const CPaintImage& image, int nMode);
    /// The current row moved: rows past it are dim.
    void SetCurrent(int nRow);
    int Current() const { return m_nCurrent; }

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int nRole) const override;

private:
    struct Row {
        int nGroup;
        QString strName;
    };
    static Row RowOf(std::uint32_t nKind);
    void RemoveFrom(int nFirst, int nLast);

    std::vector<Row> m_rows;
    int m_nCurrent = -1;
};

} // namespace kestrune
