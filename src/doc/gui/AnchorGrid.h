#pragma once

#include <QButtonGroup>
#include <QWidget>

namespace kestrune {

/// Three by three buttons for the place of a picture on its canvas (`CanvasOffset`): the chosen one shows the picture, arrows lead from it
/// to where the canvas grows.
class CAnchorGrid : public QWidget {
    Q_OBJECT
public:
    explicit CAnchorGrid(QWidget* pParent = nullptr);

    int Anchor() const { return m_buttons.checkedId(); }
    /// The buttons, by their place.
    QButtonGroup* Buttons() { return &m_buttons; }

Q_SIGNALS:
    void AnchorChanged(int nAnchor);

private:
    void ShowArrows();

    QButtonGroup m_buttons;
};

} // namespace kestrune
