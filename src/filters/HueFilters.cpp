// Filters that look at hue, lightness and saturation, and Colour Balance, which may keep the lightness.
#include "filters/ByteTables.h"
#include "filters/FilterOperations.h"
#include "filters/FilterTarget.h"
#include "filters/HueKernel.h"

namespace kestrune {

void RunHueSaturation(const FilterRun& run)
{
    const auto* const pValues = std::get_if<HueSaturationValues>(&run.values.extra);
    if (!pValues)
        return;
    const HueTables tables = MakeHueTables(*pValues);
    FilterEachRow(run, [&](const std::uint8_t* pIn, std::uint8_t* pOut, int nPixels) {
        HueRow(tables, pIn, pOut, static_cast<std::size_t>(nPixels));
    });
}

void RunColorBalance(const FilterRun& run)
{
    const auto* const pValues = std::get_if<ColorBalanceValues>(&run.values.extra);
    if (!pValues)
        return;
    ChannelTables tables; // blue first, the deltas red first
    for (int c = 0; c < 3; ++c)
        tables[2 - c] = BalanceTable(pValues->anDelta[0][c], pValues->anDelta[1][c], pValues->anDelta[2][c]);
    FilterEachRow(run, [&](const std::uint8_t* pIn, std::uint8_t* pOut, int nPixels) {
        LookUpRow(tables, pIn, pOut, nPixels);
        if (pValues->bLuminosity)
            KeepLightnessRow(pIn, pOut, static_cast<std::size_t>(nPixels));
    });
}

} // namespace kestrune
