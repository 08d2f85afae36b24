// Filters whose result depends on the three bytes of a pixel together.
#include "filters/ByteTables.h"
#include "filters/FilterOperations.h"
#include "filters/FilterTarget.h"

#include <algorithm>

namespace kestrune {

namespace {

using std::uint8_t;

int Brightest(const uint8_t* p) { return std::max(std::max(p[0], p[1]), p[2]); }
int Darkest(const uint8_t* p) { return std::min(std::min(p[0], p[1]), p[2]); }

/// Calls `pixel(in, out)` for each pixel of the run.
template <typename Pixel>
void EachPixel(const FilterRun& run, const Pixel& pixel)
{
    FilterEachRow(run, [&](const uint8_t* pIn, uint8_t* pOut, int nPixels) {
        for (int x = 0; x < nPixels; ++x)
            pixel(pIn + 3 * x, pOut + 3 * x);
    });
}

} // namespace

void RunDesaturate(const FilterRun& run)
{
    EachPixel(run, [](const uint8_t* pIn, uint8_t* pOut) {
        pOut[0] = pOut[1] = pOut[2] = static_cast<uint8_t>((Brightest(pIn) + Darkest(pIn)) / 2);
    });
}

/// Black and white by the brightest channel.
void RunThreshold(const FilterRun& run)
{
    const int nAmount = run.values.an[0];
    EachPixel(run, [=](const uint8_t* pIn, uint8_t* pOut) {
        pOut[0] = pOut[1] = pOut[2] = Brightest(pIn) < nAmount ? 0 : 255;
    });
}

/// A darkened, flattened grey, warmed by tone: red rises and blue falls most in the shadows.
void RunOldPhoto(const FilterRun& run)
{
    const double fAmount = run.values.an[0];
    const ByteTable red = OldPhotoTable(fAmount);
    const ByteTable blue = OldPhotoTable(-fAmount);
    ChannelTables tables; // by grey: what the three bytes become
    for (int nGrey = 0; nGrey < 256; ++nGrey) {
        const int t = std::clamp((((nGrey * 90) / 100 - 128) * 70) / 100 + 128, 0, 255);
        tables[0][nGrey] = blue[t];
        tables[1][nGrey] = static_cast<uint8_t>(t);
        tables[2][nGrey] = red[t];
    }
    EachPixel(run, [&](const uint8_t* pIn, uint8_t* pOut) {
        const int nGrey = (Brightest(pIn) + Darkest(pIn)) / 2;
        for (int c = 0; c < 3; ++c)
            pOut[c] = tables[c][nGrey];
    });
}

} // namespace kestrune
