#pragma once

#include "base/Color.h"

#include <QWidget>

#include <filesystem>

namespace kestrune {

class CColorPatches;
class CColorWnd;

/// The colour box: the patches of foreground and background beside the swatch grid.
///
/// A swatch goes to the active patch; a right press puts the active patch's colour into the grid, where it stays until the
/// program ends.
class CColorBar : public QWidget {
    Q_OBJECT
public:
    /// `pathSwatches` is the file of the swatches, read when the box is first shown.
    explicit CColorBar(std::filesystem::path pathSwatches, QWidget* pParent = nullptr);

    /// Runs the picker for one of the two colours. False when it was cancelled.
    bool PickColor(bool bBackground);
    void Swap();
    void Defaults();
    /// Shows the two colours as they are now; to be called when something else may have changed them.
    void ShowColors();

    CColorPatches& Patches() { return *m_pPatches; }
    CColorWnd& Swatches() { return *m_pSwatches; }

    QSize sizeHint() const override { return {190, 118}; }

Q_SIGNALS:
    /// Foreground or background were changed here.
    void ColorsChanged();

protected:
    void showEvent(QShowEvent* pEvent) override;

private:
    void LoadSwatchFile();
    void OnSwatchChosen(COLORREF cr);
    void SetColor(bool bBackground, COLORREF cr);
    void OnChanged();

    std::filesystem::path m_pathSwatches;
    bool m_bLoaded = false;
    CColorPatches* m_pPatches;
    CColorWnd* m_pSwatches;
};

} // namespace kestrune
