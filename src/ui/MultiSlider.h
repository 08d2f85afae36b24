#pragma once

#include "ui/HandleSlider.h"

namespace kestrune {

/// The level slider: three handles low, middle and high over 0..255.
/// Low and high push the middle handle along, which stands where the gamma puts it; the middle handle moves between them, and
/// the owner reads its position.
class CMultiSlider : public CHandleSlider {
public:
    enum Handle { HANDLE_LOW, HANDLE_MIDDLE, HANDLE_HIGH };

    explicit CMultiSlider(QWidget* pParent = nullptr);

    int GetLow() const { return GetHandle(HANDLE_LOW); }
    int GetMiddle() const { return GetHandle(HANDLE_MIDDLE); }
    int GetHigh() const { return GetHandle(HANDLE_HIGH); }
    /// Sets the ends; the middle handle follows by the gamma.
    void SetEnds(int nLow, int nHigh);
    /// Sets the gamma (over 0) by which the middle handle follows, and moves it there.
    void SetGamma(double fGamma);

    /// Where the gamma puts the middle handle between two ends: h * log10(1 / gamma) + low + h + 0.5 with h half their distance.
    static int MiddleOf(int nLow, int nHigh, double fGamma);

protected:
    void MoveHandle(int iHandle, int nValue) override;
    void ResetHandles() override;

private:
    double m_fGamma = 1.0;
};

} // namespace kestrune
