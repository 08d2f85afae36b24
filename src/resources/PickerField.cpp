#include "resources/PickerField.h"

#include "resources/PickerConvert.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <string>

namespace kestrune {

namespace {

/// The value of a component at step `i` of `nSteps`, as a real number so that neighbouring pixels differ.
float AxisValue(PickerComponent component, int i, int nSteps)
{
    return static_cast<float>(c_aPickerMax[component]) * static_cast<float>(i) / static_cast<float>(nSteps - 1);
}

using Components = std::array<float, PICK_COUNT>;

COLORREF ToColor(const Components& a, bool bHsv)
{
    if (bHsv)
        return PickerHsvToColor(a[PICK_HUE], a[PICK_SATURATION], a[PICK_VALUE]);
    return Rgb(static_cast<int>(a[PICK_RED]), static_cast<int>(a[PICK_GREEN]), static_cast<int>(a[PICK_BLUE]));
}

void PutColor(std::uint8_t* pPixel, COLORREF cr)
{
    pPixel[0] = BlueOf(cr);
    pPixel[1] = GreenOf(cr);
    pPixel[2] = RedOf(cr);
}

Components ComponentsOf(const CPickerColor& color)
{
    Components a;
    for (int i = 0; i < PICK_COUNT; i++)
        a[i] = static_cast<float>(color.Get(static_cast<PickerComponent>(i)));
    return a;
}

} // namespace

void CPickerColor::Set(PickerComponent component, int nValue)
{
    m_aValues[component] = std::clamp(nValue, 0, c_aPickerMax[component]);
    if (component <= PICK_VALUE)
        FromHsv();
    else
        FromRgb();
}

void CPickerColor::SetColor(COLORREF cr)
{
    m_aValues[PICK_RED] = RedOf(cr);
    m_aValues[PICK_GREEN] = GreenOf(cr);
    m_aValues[PICK_BLUE] = BlueOf(cr);
    FromRgb();
}

void CPickerColor::FromHsv()
{
    const COLORREF cr = PickerHsvToColor(static_cast<float>(m_aValues[PICK_HUE]), static_cast<float>(m_aValues[PICK_SATURATION]),
                                         static_cast<float>(m_aValues[PICK_VALUE]));
    m_aValues[PICK_RED] = RedOf(cr);
    m_aValues[PICK_GREEN] = GreenOf(cr);
    m_aValues[PICK_BLUE] = BlueOf(cr);
}

void CPickerColor::FromRgb()
{
    const PickerHsv hsv = ColorToPickerHsv(GetColor());
    m_aValues[PICK_HUE] = hsv.nHue;
    m_aValues[PICK_SATURATION] = hsv.nSaturation;
    m_aValues[PICK_VALUE] = hsv.nValue;
}

void RenderPickerField(LBitmapBase& bitmap, PickerComponent onStrip, const CPickerColor& color)
{
    if (bitmap.GetWidth() != c_nPickerFieldWidth || bitmap.GetHeight() != c_nPickerFieldHeight)
        bitmap.Create(c_nPickerFieldWidth, c_nPickerFieldHeight, 24);
    const PickerAxes axes = c_aPickerAxes[onStrip];
    const bool bHsv = onStrip <= PICK_VALUE;
    Components a = ComponentsOf(color);
    for (int y = 0; y < c_nPickerFieldHeight; y++) {
        a[axes.y] = AxisValue(axes.y, c_nPickerFieldHeight - 1 - y, c_nPickerFieldHeight);
        std::uint8_t* pRow = bitmap.WriteRow(y);
        for (int x = 0; x < c_nPickerFieldWidth; x++) {
            a[axes.x] = AxisValue(axes.x, x, c_nPickerFieldWidth);
            PutColor(pRow + x * 3, ToColor(a, bHsv));
        }
    }
}

void RenderPickerStrip(LBitmapBase& bitmap, PickerComponent onStrip, const CPickerColor& color)
{
    if (bitmap.GetWidth() != c_nPickerStripWidth || bitmap.GetHeight() != c_nPickerFieldHeight)
        bitmap.Create(c_nPickerStripWidth, c_nPickerFieldHeight, 24);
    Components a = ComponentsOf(color);
    if (onStrip == PICK_HUE)
        a[PICK_SATURATION] = a[PICK_VALUE] = 100;
    for (int y = 0; y < c_nPickerFieldHeight; y++) {
        a[onStrip] = AxisValue(onStrip, c_nPickerFieldHeight - 1 - y, c_nPickerFieldHeight);
        const COLORREF cr = ToColor(a, onStrip <= PICK_VALUE);
        std::uint8_t* pRow = bitmap.WriteRow(y);
        for (int x = 0; x < c_nPickerStripWidth; x++)
            PutColor(pRow + x * 3, cr);
    }
}

std::string FormatHexColor(COLORREF cr)
{
    char szText[8];
    std::snprintf(szText, sizeof szText, "%02X%02X%02X", RedOf(cr), GreenOf(cr), BlueOf(cr));
    return szText;
}

bool ParseHexColor(const std::string& strText, COLORREF& cr)
{
    std::string strDigits = strText.starts_with('#') ? strText.substr(1) : strText;
    if (strDigits.find_first_not_of("0123456789abcdefABCDEF") != std::string::npos)
        return false;
    if (strDigits.size() == 3)
        strDigits = {strDigits[0], strDigits[0], strDigits[1], strDigits[1], strDigits[2], strDigits[2]};
    if (strDigits.size() != 6)
        return false;
    const unsigned long nValue = std::strtoul(strDigits.c_str(), nullptr, 16);
    cr = Rgb(static_cast<int>(nValue >> 16), static_cast<int>(nValue >> 8), static_cast<int>(nValue));
    return true;
}

} // namespace kestrune
