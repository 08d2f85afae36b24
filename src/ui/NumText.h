#pragma once

#include <optional>
#include <string>

namespace kestrune {

/// Units of a number box; a box without one has NUMUNIT_NONE.
enum NumUnit { NUMUNIT_NONE = -1, NUMUNIT_CM = 0, NUMUNIT_MM, NUMUNIT_INCH, NUMUNIT_PIXEL, NUMUNIT_POINT, NUMUNIT_PERCENT, NUMUNIT_DEGREE };

/// "cm", "mm", "in", "px", "pt", "%" or the degree sign; empty for NUMUNIT_NONE.
const char* UnitText(int nUnit);

/// Verification codes of a number's text.
enum NumCode { NUM_OK = 0, NUM_OUT_OF_RANGE = 1, NUM_NOT_A_NUMBER = 2, NUM_UNDER_WAY = 3 };

/// Cuts the unit off the end of the text, with or without one space before it. Other units are left alone.
std::string CutUnit(const std::string& strText, int nUnit);

/// Reads one number. NUM_UNDER_WAY for a single sign, NUM_NOT_A_NUMBER when there is none or something follows it;
/// `fValue` is set to what could be read in any case (0 otherwise).
int ReadNumber(const std::string& strText, float& fValue);

/// Works out a sum such as "100/2" or "3*(4+1.5)": + - * / and brackets over numbers. Nothing when the text is no such sum,
/// when it divides by 0 or nests deeper than anyone types.
std::optional<float> EvaluateSum(const std::string& strText);

/// The number with so many digits after the point, a space and the unit.
std::string FormatNumber(float fValue, int nDecimals, int nUnit);

} // namespace kestrune
