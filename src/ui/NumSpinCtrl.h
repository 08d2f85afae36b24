#pragma once

#include <QPointer>
#include <QWidget>

namespace kestrune {

class CNumEdit;

/// The pair of small arrows beside a number box: each step adds the box's delta, bounded by its range.
///
/// Its own position runs over 0..1000 and is pushed back to the neutral 500 whenever it leaves (step, 1000 - step), so that it
/// can step without end. Holding a button repeats.
class CNumSpinCtrl : public QWidget {
    Q_OBJECT
public:
    explicit CNumSpinCtrl(CNumEdit* pBuddy, QWidget* pParent = nullptr);

    int GetPos() const { return m_nPos; }
    QSize sizeHint() const override;

private:
    void Step(int nSteps);

    QPointer<CNumEdit> m_pBuddy;
    int m_nPos = 500;
};

} // namespace kestrune
