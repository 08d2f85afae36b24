#pragma once

#include "resources/BrushGenerator.h"
#include "ui/Dialog.h"

#include <QTimer>

#include <array>

class QLabel;

namespace kestrune {

class CPopupSlider;

/// Makes a brush from radius, hardness, angle and roundness. It always begins with the smallest brush, also when it is opened on
/// one that exists: what a brush was made from is not taken over.
/// Keys for scripts: `Radius` (pixels, real), `Hardness`, `Angle`, `Roundness`.
class CDlgBrushOptions : public CPaintDialog {
    Q_OBJECT
public:
    explicit CDlgBrushOptions(QWidget* pParent = nullptr);

    std::optional<QString> SetKey(const QString& strKey, const QString& strValue) override;

    /// The brush of the sliders as they stand.
    BrushEntry Brush() const { return GenerateBrush(Shape()); }

private:
    enum Slider { RADIUS, HARDNESS, ANGLE, ROUNDNESS, SLIDERS };

    BrushShape Shape() const;
    void ShowValue(Slider slider, bool bDragging);
    void ShowPreview();

    std::array<CPopupSlider*, SLIDERS> m_aSliders;
    std::array<QLabel*, SLIDERS> m_aValues;
    QLabel* m_pPreview;
    QTimer m_timerPreview;
};

} // namespace kestrune
