#pragma once

#include <QTabWidget>

#include <filesystem>

namespace kestrune {

class CTextureBox;
class CTextureWnd;

/// Brush textures and background patterns side by side in a box that stays open. It chooses through the two boxes of the
/// option bar, so that both always show the same.
class CTexturePanel : public QTabWidget {
    Q_OBJECT
public:
    CTexturePanel(CTextureBox& textures, CTextureBox& patterns, QWidget* pParent = nullptr);

protected:
    void showEvent(QShowEvent* pEvent) override;

private:
    struct Page {
        CTextureBox* pBox;
        CTextureWnd* pGrid;
        bool bScanned = false;
    };
    void Add(Page& page, const QString& strTitle);
    void ScanCurrent();

    Page m_pages[2];
};

} // namespace kestrune
