#pragma once

#include <QFrame>
#include <QPixmap>
#include <QToolButton>

#include <filesystem>

class QLabel;

namespace kestrune {

class CTextureWnd;

/// What a box of textures chooses: the brush texture, or the background pattern.
enum class TextureKind { Brush, Pattern };

/// The box that chooses the brush texture or the background pattern: a grid of the folder's images that drops from a patch
/// in the option bar. It writes `g_brushTexture` or `g_paintPattern`.
class CTextureBox : public QFrame {
    Q_OBJECT
public:
    CTextureBox(TextureKind kind, std::filesystem::path pathFolder, QWidget* pParent);

    /// Loads a file and makes it the active one. False, with nothing changed, when it is no image.
    bool Choose(const std::filesystem::path& path);
    /// The same, with a message when it is no image.
    void ChooseOrSay(const std::filesystem::path& path);
    /// None is active.
    void Clear();
    /// The pattern's strength, 0..100.
    void SetPercent(int nPercent);

    bool IsActive() const;
    /// The active file's name without its ending; empty when none is active.
    QString Name() const;
    const std::filesystem::path& ActivePath() const { return m_pathActive; }
    /// The text of the button that calls `Clear`.
    QString NoneText() const;
    /// The active one, tiled from its corner, in logical pixels; a crossed field when none is active.
    QPixmap Preview(QSize size, qreal fScale) const;

    /// Drops below a widget. The folder is scanned the first time; when a brush texture folder has nothing, a message says so.
    void OpenBeside(const QWidget& patch);

    /// Fills a grid with the folder. A message tells when a brush texture folder has nothing.
    void ScanInto(CTextureWnd& grid);

Q_SIGNALS:
    void Changed();

private:
    TextureKind m_kind;
    std::filesystem::path m_pathFolder;
    std::filesystem::path m_pathActive;
    CTextureWnd* m_pGrid;
    QLabel* m_pEmpty;
    bool m_bScanned = false;
    bool m_bToldEmpty = false; ///< once is enough
};

/// The patch in an option bar that shows what is active, and drops the box.
class CTexturePatch : public QToolButton {
    Q_OBJECT
public:
    explicit CTexturePatch(CTextureBox& box, QWidget* pParent = nullptr);

protected:
    void changeEvent(QEvent* pEvent) override;

private:
    void ShowActive();

    CTextureBox& m_box;
};

} // namespace kestrune
