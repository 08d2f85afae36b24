#include "ui/MultiSlider.h"

#include <algorithm>
#include <cmath>

namespace kestrune {

CMultiSlider::CMultiSlider(QWidget* pParent)
    : CHandleSlider({Qt::black, Qt::gray, Qt::white}, pParent)
{
    SetEnds(0, 255);
}

int CMultiSlider::MiddleOf(int nLow, int nHigh, double fGamma)
{
    const double fHalf = (nHigh - nLow) / 2.0;
    const int nMiddle = static_cast<int>(fHalf * std::log10(1.0 / fGamma) + nLow + fHalf + 0.5);
    return std::clamp(nMiddle, nLow, nHigh); // a gamma beyond 10 or 0.1 would carry it past an end
}

void CMultiSlider::SetEnds(int nLow, int nHigh)
{
    m_aValues = {nLow, MiddleOf(nLow, nHigh, m_fGamma), nHigh};
    update();
}

void CMultiSlider::SetGamma(double fGamma)
{
    m_fGamma = fGamma;
    SetEnds(GetLow(), GetHigh());
}

void CMultiSlider::MoveHandle(int iHandle, int nValue)
{
    if (iHandle == HANDLE_LOW)
        SetEnds(std::clamp(nValue, 0, GetHigh()), GetHigh());
    else if (iHandle == HANDLE_HIGH)
        SetEnds(GetLow(), std::clamp(nValue, GetLow(), 255));
    else
        m_aValues[HANDLE_MIDDLE] = std::clamp(nValue, GetLow(), GetHigh());
}

void CMultiSlider::ResetHandles()
{
    m_fGamma = 1.0;
    SetEnds(0, 255);
}

} // namespace kestrune
