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
        const std::uint8_t* const pBlue = tables[0].data();
        const std::uint8_t* const pGreen = tables[1].data();
        const std::uint8_t* const pRed = tables[2].data();
        for (const std::uint8_t* const pEnd = pIn + 3 * static_cast<std::size_t>(nPixels); pIn != pEnd; pIn += 3, pOut += 3) {
            pOut[0] = pBlue[pIn[0]];
            pOut[1] = pGreen[pIn[1]];
            pOut[2] = pRed[pIn[2]];
        }
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
