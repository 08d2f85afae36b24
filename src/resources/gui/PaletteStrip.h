#pragma once

#include "resources/PaletteFile.h"

#include <QWidget>

namespace kestrune {

/// The strip of the table editor: 256 pixels parted into bands of equal width, one for each colour in use. A press picks a
/// band; with the keyboard the arrows choose one and Enter or Space picks it.
class CPaletteStrip : public QWidget {
    Q_OBJECT
public:
    explicit CPaletteStrip(const PaletteTable& table, QWidget* pParent = nullptr);

    /// How many bands: 1 to 16. The selection stays among them.
    void SetCount(int nCount);
    int Count() const { return m_nCount; }
    void Select(int iBand);
    int Selected() const { return m_iSelected; }
    /// Client pixels.
    QRect BandRect(int iBand) const;

    QSize sizeHint() const override;

Q_SIGNALS:
    void SelectionChanged(int iBand);
    /// A band was pressed.
    void BandPicked(int iBand);

protected:
    void paintEvent(QPaintEvent* pEvent) override;
    void mousePressEvent(QMouseEvent* pEvent) override;
    void keyPressEvent(QKeyEvent* pEvent) override;
    void focusInEvent(QFocusEvent* pEvent) override;
    void focusOutEvent(QFocusEvent* pEvent) override;

private:
    const PaletteTable& m_table;
    int m_nCount = c_nPaletteEntries;
    int m_iSelected = 0;
};

} // namespace kestrune
