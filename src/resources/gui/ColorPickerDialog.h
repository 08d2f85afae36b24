#pragma once

#include "resources/PickerField.h"
#include "ui/Dialog.h"

#include <array>
#include <optional>

class QButtonGroup;
class QGridLayout;
class QLineEdit;

namespace kestrune {

class CNumEdit;
class CPickerCanvas;
class CPopupSlider;

/// The colour picker: six views on a square field and a strip, six sliders with their boxes, hexadecimal entry, the colour
/// before and now side by side, and a pipette that takes a colour from anywhere on the screen.
/// Keys for scripts: `Hue` `Saturation` `Value` `Red` `Green` `Blue` `Hex`.
class CColorPickerDialog : public CPaintDialog {
    Q_OBJECT
public:
    explicit CColorPickerDialog(COLORREF crOld, QWidget* pParent = nullptr);

    COLORREF GetColor() const { return m_color.GetColor(); }

    /// Runs the picker; nothing when it was cancelled.
    static std::optional<COLORREF> Pick(COLORREF crOld, QWidget* pParent);

protected:
    void mouseMoveEvent(QMouseEvent* pEvent) override;
    void mousePressEvent(QMouseEvent* pEvent) override;
    void keyPressEvent(QKeyEvent* pEvent) override;

private:
    QWidget* BuildCanvas();
    QWidget* BuildComponents();
    void AddHexRows(QGridLayout& grid);
    void OnEdited(PickerComponent component, int nValue);
    void OnHexEdited(const QString& strText);
    void SetColor(COLORREF cr);
    void ShowColor(QWidget* pExcept);
    void BeginPipette();
    void EndPipette(bool bKeep);

    CPickerColor m_color;
    COLORREF m_crOld;
    COLORREF m_crBeforePipette = 0;
    PickerComponent m_onStrip = PICK_HUE;
    bool m_bShowing = false; ///< guards against the boxes' writes echoing back as edits
    bool m_bPipette = false;
    CPickerCanvas* m_pField;
    CPickerCanvas* m_pStrip;
    QButtonGroup* m_pViews;
    std::array<CNumEdit*, PICK_COUNT> m_aEdits{};
    std::array<CPopupSlider*, PICK_COUNT> m_aSliders{};
    QLineEdit* m_pHex;
    QWidget* m_pPatches;
};

} // namespace kestrune
