#pragma once

#include "ui/HandleSlider.h"

namespace kestrune {

/// A slider with two handles, low and high, that cannot pass each other.
class C2PtSlider : public CHandleSlider {
public:
    enum Handle { HANDLE_LOW, HANDLE_HIGH };

    explicit C2PtSlider(QWidget* pParent = nullptr);

    /// The range of both handles, which go to its ends.
    void SetRange(int nMin, int nMax);
    int GetLow() const { return GetHandle(HANDLE_LOW); }
    int GetHigh() const { return GetHandle(HANDLE_HIGH); }
    void SetEnds(int nLow, int nHigh);

protected:
    void MoveHandle(int iHandle, int nValue) override;
    void ResetHandles() override;
};

} // namespace kestrune
