#pragma once

#include <QGridLayout>
#include <QLabel>
#include <QString>

namespace kestrune {

class CNumEdit;

/// The measures of every dialog, in device-independent pixels.
inline constexpr int c_nDialogMargin = 12;
inline constexpr int c_nGroupGap = 12;
inline constexpr int c_nRowGap = 6;
inline constexpr int c_nLabelGap = 8;

/// Rows of label, control and what stands after it (a unit), in the measures of every dialog. The controls of a dialog share one width.
class CDialogRows : public QGridLayout {
    Q_OBJECT
public:
    explicit CDialogRows(QWidget* pParent = nullptr);

    /// Adds a row. The label's mnemonic (`폭(&W):`) leads to the control, whose name for screen readers it becomes; `strTip` is
    /// the control's tip. `pAfter` stands behind the control.
    void AddRow(const QString& strLabel, QWidget* pControl, const QString& strTip, QWidget* pAfter = nullptr);
    /// A row with a number box and its spin arrows, and a unit behind them.
    void AddNumber(const QString& strLabel, CNumEdit* pEdit, const QString& strTip, const QString& strUnit = {});
    /// A row with a text of its own right of a label: a figure that the user cannot edit. Returns the text's label.
    QLabel* AddFigure(const QString& strLabel, const QString& strText = {});
    /// A control, or a text, across the whole width.
    void AddWide(QWidget* pControl);
    /// The space between two groups.
    void AddGap();

private:
    void AddLabel(int nRow, const QString& strLabel, QWidget* pControl, const QString& strTip);
};

/// The text of a label or button without its mnemonic, colon and dots: what a screen reader says.
QString PlainLabel(QString strLabel);

} // namespace kestrune
