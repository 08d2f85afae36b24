#include "ui/TwoPointSlider.h"

#include <algorithm>

namespace kestrune {

C2PtSlider::C2PtSlider(QWidget* pParent)
    : CHandleSlider({Qt::black, Qt::white}, pParent)
{
    ResetHandles();
}

void C2PtSlider::SetRange(int nMin, int nMax)
{
    m_nMin = nMin;
    m_nMax = nMax;
    SetEnds(nMin, nMax);
}

void C2PtSlider::SetEnds(int nLow, int nHigh)
{
    m_aValues = {nLow, nHigh};
    update();
}

void C2PtSlider::MoveHandle(int iHandle, int nValue)
{
    if (iHandle == HANDLE_LOW)
        m_aValues[HANDLE_LOW] = std::clamp(nValue, m_nMin, GetHigh());
    else
        m_aValues[HANDLE_HIGH] = std::clamp(nValue, GetLow(), m_nMax);
}

void C2PtSlider::ResetHandles()
{
    SetEnds(m_nMin, m_nMax);
}

} // namespace kestrune
