#pragma once

namespace kestrune {

class CPaintImage;

/// The selection's pixels are captured. After a step back to no selection the flag alone may say so: there is nothing to act on then.
bool HasFloat(const CPaintImage& image);

/// Takes the float off the picture, once: the hole that it leaves is in the base bitmap (none in move mode "copy").
void LiftFloat(CPaintImage& image);

/// The selection goes to where the float is: its mask is made anew, its bounds are known.
void SelectionFollowsFloat(CPaintImage& image);

} // namespace kestrune
