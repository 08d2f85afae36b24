#pragma once

#include "ui/NumText.h"
#include "ui/WheelSteps.h"

#include <QLineEdit>

#include <limits>
#include <optional>

namespace kestrune {

/// An edit box for one number with an optional unit behind it.
///
/// The text is checked at every keystroke; what it holds is read with `GetValue`, and the caller decides what to do with a
/// bad one. Enter or leaving the box writes the value back with its unit, and works out a simple sum such as "100/2".
/// The wheel (while the box has the focus) and the arrow keys step by the delta within the range.
class CNumEdit : public QLineEdit {
    Q_OBJECT
public:
    explicit CNumEdit(QWidget* pParent = nullptr);

    void SetUnit(int nUnit);
    int GetUnit() const { return m_nUnit; }
    /// Digits after the point of the output format, 0..3.
    void SetDecimalPlaces(int nDecimals);
    void SetRange(float fMin, float fMax);
    float GetMin() const { return m_fMinValue; }
    float GetMax() const { return m_fMaxValue; }
    /// With clamping a number beyond the range counts as the nearest one inside and is no bad input; the text is put right when
    /// the box is left.
    void SetClamping(bool bClamping) { m_bClamping = bClamping; }
    /// The step of wheel, arrow keys and spin control.
    void SetDelta(float fDelta) { m_fDelta = fDelta; }
    float GetDelta() const { return m_fDelta; }
    /// Where a double click on the box's slider goes; the value at its opening when none is set.
    void SetDefault(float fDefault) { m_fDefault = fDefault; }
    std::optional<float> GetDefault() const { return m_fDefault; }
    /// Whether bad input shows a message.
    void SetVerbose(bool bVerbose) { m_bVerbose = bVerbose; }

    /// The number that the text holds, in the box's unit; 0 for a text without one.
    float GetValue() const;
    /// Writes the value with its unit; it is not checked.
    void SetValue(float fValue);
    /// Checks the text: a `NumCode`. Shows a message for codes 1 and 2 when verbose.
    int Verify() const;
    /// The same with a message whether verbose or not, also while a sign alone stands there.
    int VerifyAloud() const;
    /// Adds so many deltas, kept within the range.
    void StepBy(int nSteps);
    /// For the destructor of a window that hears its boxes: closing takes the focus from a box, which would tell the window so
    /// when its own part is gone already.
    static void StopTelling(QWidget& listener);

Q_SIGNALS:
    /// The value changed: typed, stepped or worked out; not by `SetValue`.
    void ValueEdited(float fValue);

protected:
    void keyPressEvent(QKeyEvent* pEvent) override;
    void wheelEvent(QWheelEvent* pEvent) override;
    void focusInEvent(QFocusEvent* pEvent) override;

private:
    void OnKeystroke();
    void Commit();
    int Check(float& fValue) const;
    float Limited(float fValue) const;
    static void Say(int nCode);

    int m_nUnit = NUMUNIT_NONE;
    std::string m_strFormat = "%.0f";
    int m_nDecimals = 0; ///< decimals used for display: the most seen so far
    bool m_bVerbose = false;
    bool m_bClamping = false;
    float m_fDelta = 1.0f;
    float m_fMinValue = std::numeric_limits<float>::lowest();
    float m_fMaxValue = std::numeric_limits<float>::max();
    std::optional<float> m_fDefault;
    CWheelSteps m_wheel;
};

} // namespace kestrune
