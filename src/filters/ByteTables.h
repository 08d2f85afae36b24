#pragma once

#include "filters/Curves.h"

#include <array>
#include <cstdint>

// The tables of the filters that look up every byte. Integer conversions truncate toward zero.

namespace kestrune {

using ByteTable = std::array<std::uint8_t, 256>;

/// 255 - i, computed in doubles: some entries come out one below, the first of them 43.
ByteTable InvertTable();
/// `nLevel` steps; less than 2 counts as 2.
ByteTable PosterizeTable(int nLevel);
/// (i / 255) to the power of `dGamma` itself: raising it darkens. 0 makes everything white.
ByteTable GammaTable(double dGamma);
/// Both in percent; 0 changes nothing.
ByteTable BrightnessTable(int nBrightness, int nContrast);
/// Inverts what is above `nThreshold` percent.
ByteTable SolarizeTable(int nThreshold);
/// Stretches [nMin, nMax] to 0..255. Entries outside are the byte itself, and so is the one of an empty range.
ByteTable NormalizeTable(int nMin, int nMax);
/// Mixes a reference byte in by a weight of 0..100 percent.
ByteTable ColourizeTable(int nWeight, int nReference);

/// Weights of a tone range by byte: shadows (a falling curve), midtones (a bell), highlights (a rising curve).
double ShadowWeight(int i);
double HighlightWeight(int i);
double BellWeight(int i);
/// One channel of Colour Balance: three deltas, each applied to what the one before left.
ByteTable BalanceTable(int nShadows, int nMidtones, int nHighlights);
/// One channel of the old photo: a delta spread by tone.
ByteTable OldPhotoTable(double fDelta);

/// Every byte of a row through its channel's table.
void LookUpRow(const ChannelTables& tables, const std::uint8_t* pIn, std::uint8_t* pOut, int nPixels);

} // namespace kestrune
