// Filters that look up every byte of a row on its own.
#include "base/Color.h"
#include "filters/ByteTables.h"
#include "filters/FilterOperations.h"
#include "filters/FilterTarget.h"

namespace kestrune {

namespace {

void RunTables(const FilterRun& run, const ChannelTables& tables)
{
    FilterEachRow(run, [&](const std::uint8_t* pIn, std::uint8_t* pOut, int nPixels) {
        LookUpRow(tables, pIn, pOut, nPixels);
    });
}

void RunTable(const FilterRun& run, const ByteTable& table) { RunTables(run, {table, table, table}); }

} // namespace

void RunInvert(const FilterRun& run) { RunTable(run, InvertTable()); }
void RunPosterize(const FilterRun& run) { RunTable(run, PosterizeTable(run.values.an[0])); }
void RunGamma(const FilterRun& run) { RunTable(run, GammaTable(run.values.an[0] / 100.0)); }
void RunSolarize(const FilterRun& run) { RunTable(run, SolarizeTable(run.values.an[0])); }
void RunBrightnessContrast(const FilterRun& run) { RunTable(run, BrightnessTable(run.values.an[0], run.values.an[1])); }

void RunColourize(const FilterRun& run)
{
    const COLORREF cr = run.values.crReference;
    RunTables(run, {ColourizeTable(run.values.an[2], BlueOf(cr)), ColourizeTable(run.values.an[1], GreenOf(cr)),
                    ColourizeTable(run.values.an[0], RedOf(cr))});
}

void RunLevels(const FilterRun& run)
{
    if (const auto* const pLevels = std::get_if<LevelsValues>(&run.values.extra))
        RunTables(run, LevelsTables(*pLevels));
}

void RunCurves(const FilterRun& run)
{
    if (const auto* const pCurves = std::get_if<CurvesValues>(&run.values.extra))
        RunTables(run, CurveTables(*pCurves));
}

void RunColourCount(const FilterRun&) { }

} // namespace kestrune
