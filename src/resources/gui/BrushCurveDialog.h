#pragma once

#include "resources/BrushPrepare.h"
#include "ui/Dialog.h"

#include <QTimer>

class QLabel;

namespace kestrune {

class CBrushZoomView;
class CCurveField;

/// Bends the response curve over a preview of the brush that it changes. It works on a copy of the curve.
/// Keys for scripts: `Point` (`X,Y`, 0..255 each, as a press there; once for each), `Reset` (1).
class CDlgBrushCurve : public CPaintDialog {
    Q_OBJECT
public:
    CDlgBrushCurve(SoftMask mask, const CResponseCurve& curve, QWidget* pParent = nullptr);

    const CResponseCurve& Curve() const;
    CCurveField& Field() { return *m_pField; }
    CBrushZoomView& Preview() { return *m_pPreview; }

    std::optional<QString> SetKey(const QString& strKey, const QString& strValue) override;

private:
    QLayout* BuildZoomRow();
    void ShowPreview();

    CBrushZoomView* m_pPreview;
    CCurveField* m_pField;
    QLabel* m_pZoom;
    QTimer m_timerPreview;
};

} // namespace kestrune
