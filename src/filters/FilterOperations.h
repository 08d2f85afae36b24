#pragma once

namespace kestrune {

struct FilterRun;

// The operations of the filter table, one source for each family. What each computes is told where it is defined.

// Neighbourhoods: BoxFilters.cpp, Gaussian.cpp, MotionBlur.cpp, Sharpen.cpp, Median.cpp, Extremes.cpp, Matrix.cpp
void RunBlur(const FilterRun& run);
void RunGaussian(const FilterRun& run);
void RunMotionBlur(const FilterRun& run);
void RunSharpen(const FilterRun& run);
void RunUnsharp(const FilterRun& run);
void RunMedian(const FilterRun& run);
void RunMaximum(const FilterRun& run);
void RunMinimum(const FilterRun& run);
void RunMatrix(const FilterRun& run);

// Tables and single pixels: TableFilters.cpp, PixelFilters.cpp, HistogramFilters.cpp, HueFilters.cpp
void RunInvert(const FilterRun& run);
void RunDesaturate(const FilterRun& run);
void RunThreshold(const FilterRun& run);
void RunPosterize(const FilterRun& run);
void RunGamma(const FilterRun& run);
void RunBrightnessContrast(const FilterRun& run);
void RunSolarize(const FilterRun& run);
void RunNormalize(const FilterRun& run);
void RunEqualize(const FilterRun& run);
void RunHueSaturation(const FilterRun& run);
void RunLevels(const FilterRun& run);
void RunCurves(const FilterRun& run);
void RunColorBalance(const FilterRun& run);
void RunOldPhoto(const FilterRun& run);
void RunColourize(const FilterRun& run);
/// Reduces nothing: the command exists and leaves its record.
void RunColourCount(const FilterRun& run);

} // namespace kestrune
