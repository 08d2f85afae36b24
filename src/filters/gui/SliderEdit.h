#pragma once

#include <QObject>
#include <QString>

class QGridLayout;
class QWidget;

namespace kestrune {

class CNumEdit;
class CPopupSlider;

/// The ranges of one parameter, in whole numbers; with two decimals 150 shows as 1.50.
struct SliderRange {
    int nMin; ///< of the slider
    int nMax;
    int nEditMin; ///< of the edit, which decides about the value
    int nEditMax;
    int nDecimals = 0;
    int nDefault = 0; ///< where a double click on the slider goes
};

/// A slider and a number box that show one value: moving either updates the other. The edit's range decides: what the
/// slider reaches beyond it becomes the nearest value inside, and a value that the slider cannot reach leaves it at its
/// end. A number typed beyond the edit's range is the nearest value inside.
class CSliderEdit : public QObject {
    Q_OBJECT
public:
    CSliderEdit(const SliderRange& range, QObject* pParent);

    /// A row of label, slider, box and unit, the last row of the grid so far. The label's mnemonic leads to the box.
    void AddTo(QGridLayout& grid, const QString& strLabel, const QString& strUnit = {});

    int GetValue() const { return m_nValue; }
    /// Shows a value, limited to the edit's range; nobody is told.
    void SetValue(int nValue);
    CNumEdit* Edit() const { return m_pEdit; }
    CPopupSlider* Slider() const { return m_pSlider; }

Q_SIGNALS:
    /// By hand, through either control.
    void Changed(int nValue);

private:
    void OnSlider(int nPos);
    void OnEdited(float fValue);
    void ShowInEdit();

    SliderRange m_range;
    int m_nFactor; ///< steps per unit: 1, 10, 100
    int m_nValue = 0;
    CPopupSlider* m_pSlider;
    CNumEdit* m_pEdit;
};

/// A number box beside its spin arrows, as wide as every box of the filter dialogs.
QWidget* WithSpin(CNumEdit* pEdit);

} // namespace kestrune
