#pragma once

#include <QListWidget>

#include <filesystem>

namespace kestrune {

/// A grid of thumbnails, 34 by 34 each, of the textures of a folder. A click or Enter chooses one.
class CTextureWnd : public QListWidget {
    Q_OBJECT
public:
    explicit CTextureWnd(QWidget* pParent = nullptr);

    /// Fills the grid anew. A file that is no image keeps its cell, empty.
    void Scan(const std::filesystem::path& folder);
    /// Marks the cell of that file; none for a file that is not in the grid.
    void ShowChosen(const std::filesystem::path& path);

    QSize sizeHint() const override;

Q_SIGNALS:
    void Chosen(const std::filesystem::path& path);
};

} // namespace kestrune
