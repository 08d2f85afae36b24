#pragma once

#include "base/Color.h"

namespace kestrune {

/// A colour in the picker's units: degrees 0..360, percent 0..100.
struct PickerHsv {
    int nHue = 0;
    int nSaturation = 0;
    int nValue = 0;
};

/// The colour of hue (degrees), saturation and value (percent), in single precision with every channel truncated.
/// A hue of 360 is 0; without saturation all channels are the value's level.
COLORREF PickerHsvToColor(float fHue, float fSaturation, float fValue);

/// The nearest whole degrees and percents; a grey has hue 0 and saturation 0.
PickerHsv ColorToPickerHsv(COLORREF cr);

} // namespace kestrune
