#pragma once

#include "base/Color.h"
#include "resources/PaletteFile.h"
#include "ui/Dialog.h"

class QComboBox;
class QLabel;

namespace kestrune {

class CPaletteStrip;

/// The editor of the table of sixteen colours. It works on a copy: OK puts it into `g_aPaletteTable`, Cancel drops it.
/// Keys for scripts: `Count`, `Band` (from 0), `Color` (`R,G,B`, into that band), `Open` and `Save` (a path).
class CPaletteDialog : public CPaintDialog {
    Q_OBJECT
public:
    explicit CPaletteDialog(QWidget* pParent = nullptr);

    std::optional<QString> SetKey(const QString& strKey, const QString& strValue) override;

    CPaletteStrip& Strip() { return *m_pStrip; }
    const PaletteTable& Table() const { return m_table; }

    void accept() override;

private:
    QPushButton* AddFileButton(int nTextId, int nTipId, void (CPaletteDialog::*act)());
    void PickBand(int iBand);
    void SetBand(int iBand, COLORREF cr);
    void ShowBand();
    void OnOpen();
    void OnSave();
    bool OpenFile(const QString& strPath);

    PaletteTable m_table = g_aPaletteTable;
    QComboBox* m_pCount;
    CPaletteStrip* m_pStrip;
    QLabel* m_pBand;
};

} // namespace kestrune
