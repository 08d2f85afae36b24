#pragma once

#include <QDoubleSpinBox>

#include <optional>

namespace kestrune {

/// A number box of a dialog: takes simple sums (`100/2`), turns with the wheel only while it has the focus, aligned right,
/// and switches the input method off so that digits arrive in Hangul mode too.
class CNumberBox : public QDoubleSpinBox {
    Q_OBJECT
public:
    /// `nDecimals` 0 makes it a box of whole numbers.
    CNumberBox(double fMin, double fMax, int nDecimals = 0, QWidget* pParent = nullptr);

    QValidator::State validate(QString& strText, int& nPos) const override;
    double valueFromText(const QString& strText) const override;

protected:
    void wheelEvent(QWheelEvent* pEvent) override;
};

/// The value of a sum of numbers with + - * / and brackets; nothing when it is none or divides by zero.
std::optional<double> EvaluateSum(const QString& strText);

} // namespace kestrune
