#pragma once

#include <QItemSelectionModel>
#include <QListView>

namespace kestrune {

class CHistoryModel;
class CPaintImage;

/// The list of what was done to the active picture, oldest first. Choosing a row, by mouse or keys, takes the picture to that
/// point in time; rows past the current one, which redo would bring back, are dim.
class CHistoryBox : public QListView {
    Q_OBJECT
public:
    explicit CHistoryBox(QWidget* pParent = nullptr);

    /// Rebuilds the list when another picture is active than the one shown; null empties it. To be called too when the shown
    /// picture goes, since rows act on it.
    void ShowImage(CPaintImage* pImage);
    CPaintImage* ShownImage() const { return m_pImage; }
    /// What `CImageSite::SyncHistoryBox` tells about a picture; others than the one shown are passed over.
    void Sync(const CPaintImage& image, int nMode);

    int CurrentRow() const;

    QSize sizeHint() const override { return {190, 118}; }
    QSize minimumSizeHint() const override { return {80, 44}; }

protected:
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
    QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex& index, const QEvent* pEvent) const override;
    void keyboardSearch(const QString&) override {} // letters are the tools'

private:
    void ShowCurrentRow();
    void JumpTo(int nRow);

    CHistoryModel* m_pModel;
    CPaintImage* m_pImage = nullptr;
    bool m_bShowing = false; ///< the current row follows the picture, not the other way round
};

} // namespace kestrune
