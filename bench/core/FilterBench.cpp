// Applied filters on a picture of 3840 x 2160, all cores; previews in the pane of a large and of a small picture.
#include "Harness.h"

#include "doc/PaintImage.h"
#include "filters/Curves.h"
#include "filters/FilterCommand.h"

#ifdef BENCH_HAS_OPENCV
#include <opencv2/imgproc.hpp>
#include <tbb/info.h>
#endif

#include <cstdlib>
#include <cstring>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

namespace kestrune::bench {

namespace {

constexpr int c_nWidth = 3840, c_nHeight = 2160;

/// Fills the bitmap from a binary PPM of its size, which the script that compares with GIMP names; false without one.
bool ReadPicture(LBitmapBase& bitmap)
{
    const char* const pszPath = std::getenv("KESTRUNE_BENCH_PICTURE");
    std::ifstream file(pszPath ? pszPath : "", std::ios::binary);
    std::string strMagic;
    int nWidth = 0, nHeight = 0, nMost = 0;
    file >> strMagic >> nWidth >> nHeight >> nMost;
    if (!file || strMagic != "P6" || nWidth != bitmap.GetWidth() || nHeight != bitmap.GetHeight() || nMost != 255)
        return false;
    file.get();
    for (int y = 0; y < nHeight; ++y) {
        std::uint8_t* const pRow = bitmap.WriteRow(y);
        file.read(reinterpret_cast<char*>(pRow), static_cast<std::streamsize>(nWidth) * 3);
        for (int x = 0; x < nWidth; ++x)
            std::swap(pRow[3 * x], pRow[3 * x + 2]);
    }
    return static_cast<bool>(file);
}

/// Slopes with some noise on them, as photographs have.
void FillPicture(LBitmapBase& bitmap)
{
    if (ReadPicture(bitmap))
        return;
    std::uint32_t n = 1;
    for (int y = 0; y < bitmap.GetHeight(); ++y) {
        std::uint8_t* const pRow = bitmap.WriteRow(y);
        for (int i = 0; i < bitmap.GetWidth() * 3; ++i) {
            n = n * 1664525u + 1013904223u;
            pRow[i] = static_cast<std::uint8_t>(static_cast<std::uint32_t>(i / (7 + i % 3) + y / 5) + (n >> 28));
        }
    }
}

/// A picture, and what a dialog would hold of it.
class CFilterPicture {
public:
    CFilterPicture(int nWidth, int nHeight)
    {
        m_image.Create(nWidth, nHeight, FILL_WHITE, COLOR_RGB);
        FillPicture(m_image.m_Bitmap);
        m_image.m_BaseBitmap.Copy(m_image.m_Bitmap);
        PrepareFilterDialog(m_image, m_data);
    }

    /// Back to the unfiltered picture, its rows shared as they are when a command begins.
    void Restore() { m_image.m_Bitmap.Copy(m_image.m_BaseBitmap); }
    void Apply(const FilterRow& row, const FilterValues& values)
    {
        m_data.values = values;
        if (row.handler == FilterHandler::Dispatcher)
            ApplyFilter(row, m_image, m_data);
        else
            row.operation({m_image, nullptr, nullptr, 0, 0, c_nWidth, c_nHeight, values, true});
    }
    void Preview(const FilterRow& row, const FilterValues& values)
    {
        m_data.values = values;
        const int x = m_image.m_nWidth / 2 - 75, y = m_image.m_nHeight / 2 - 75;
        PreviewFilter(row, m_image, m_data, {x, y, x + 150, y + 150});
    }
    CPaintImage& Image() { return m_image; }

private:
    CPaintImage m_image;
    FilterDialogData m_data;
};

FilterValues Ints(std::initializer_list<int> an)
{
    FilterValues values;
    std::copy(an.begin(), an.end(), values.an.begin());
    return values;
}
template <typename Extra>
FilterValues With(const Extra& extra)
{
    FilterValues values;
    values.extra = extra;
    return values;
}

struct Work {
    int nCommand;
    std::string strName;
    FilterValues values;
    double fAtMost; ///< in P
};

std::vector<Work> Works()
{
    HueSaturationValues hue;
    hue.adHue = {30, -20, 0, 10, 0, 0, 5};
    hue.adSaturation[0] = 25;
    ColorBalanceValues balance;
    balance.anDelta = {{{20, -30, 5}, {10, 0, -40}, {0, 60, 0}}};
    ColorBalanceValues light = balance;
    light.bLuminosity = true;
    MatrixValues matrix;
    for (int i = 0; i < 25; ++i)
        matrix.anMatrix[i] = i - 8;
    matrix.nScale = 100;
    LevelsValues levels;
    levels.channels[0].fGamma = 1.5;
    std::vector<Work> works = {
        {30019, "invert", Ints({}), 6},
        {30029, "desaturate", Ints({}), 6},
        {30021, "threshold", Ints({128}), 6},
        {30020, "posterize", Ints({5}), 6},
        {30034, "gamma", Ints({140}), 6},
        {30027, "brightness and contrast", Ints({20, 30}), 6},
        {30047, "solarize", Ints({40}), 6},
        {30025, "levels", With(levels), 6},
        {30026, "curves", With(ProgramCurves()), 6},
        {30035, "colour balance", With(balance), 6},
        {30004, "old photo", Ints({70}), 6},
        {30030, "colourize", Ints({10, 50, 50}), 6},
        {30104, "normalize", Ints({}), 9},
        {30018, "equalize", Ints({}), 9},
        {30028, "hue and saturation", With(hue), 60},
        {30035, "colour balance, lightness kept", With(light), 60},
        {30002, "blur 3 x 3", Ints({}), 8},
        {30039, "sharpen", Ints({40}), 8},
        {30045, "matrix 5 x 5", With(matrix), 40},
        {30001, "motion blur 100", Ints({30, 100}), 600},
        {30040, "unsharp mask 5", Ints({5, 200, 4}), 138},
    };
    for (const int n : {1, 5, 50, 250})
        works.push_back({30003, "gaussian " + std::to_string(n), Ints({n}), 130});
    for (const int n : {1, 3, 10}) {
        works.push_back({30043, "maximum " + std::to_string(n), Ints({n}), 8});
        works.push_back({30044, "minimum " + std::to_string(n), Ints({n}), 8});
    }
    return works;
}

struct Copy {
    std::vector<std::uint8_t> from = std::vector<std::uint8_t>(static_cast<std::size_t>(c_nWidth) * c_nHeight * 3, 1);
    std::vector<std::uint8_t> to = std::vector<std::uint8_t>(from.size(), 2);
    void operator()() { std::memcpy(to.data(), from.data(), from.size()); }
};

const Group g_applied("filter", [] {
    const auto pPicture = std::make_shared<CFilterPicture>(c_nWidth, c_nHeight);
    const auto pCopy = std::make_shared<Copy>();
    for (const Work& work : Works()) {
        const FilterRow* const pRow = FindFilter(work.nCommand);
        Register({"filter: " + work.strName + " / P", work.fAtMost, [=] { pPicture->Apply(*pRow, work.values); },
                  [=] { (*pCopy)(); }, [=] { pPicture->Restore(); }});
    }
    const FilterRow* const pGaussian = FindFilter(30003);
    Register({"filter: gaussian 250 / gaussian 1", 1.1, [=] { pPicture->Apply(*pGaussian, Ints({250})); },
              [=] { pPicture->Apply(*pGaussian, Ints({1})); }, [=] { pPicture->Restore(); }});
});

const Group g_preview("preview", [] {
    // A preview's time must not know the picture's size; the 16 ms of a slider without lag are read off the column.
    const auto pLarge = std::make_shared<CFilterPicture>(4000, 3000);
    const auto pSmall = std::make_shared<CFilterPicture>(1000, 1000);
    std::vector<Work> works = Works();
    works.push_back({30037, "median 10", Ints({10}), 0});
    works.push_back({30001, "motion blur 255", Ints({30, 255}), 0});
    for (const Work& work : works) {
        const FilterRow* const pRow = FindFilter(work.nCommand);
        if (pRow->handler == FilterHandler::Dispatcher) // some take 4 microseconds, of which a cold line is a large part: hence 2
            Register({"preview: " + work.strName + ", 12 MP / 1 MP", 2, [=] { pLarge->Preview(*pRow, work.values); },
                      [=] { pSmall->Preview(*pRow, work.values); }});
    }
});

#ifdef BENCH_HAS_OPENCV
const Group g_median("median", [] {
    const auto pPicture = std::make_shared<CFilterPicture>(c_nWidth, c_nHeight);
    const auto pFrom = std::make_shared<cv::Mat>(c_nHeight, c_nWidth, CV_8UC3);
    const auto pTo = std::make_shared<cv::Mat>();
    for (int y = 0; y < c_nHeight; ++y)
        std::memcpy(pFrom->ptr(y), pPicture->Image().m_Bitmap.Row(y), static_cast<std::size_t>(c_nWidth) * 3);
    cv::setNumThreads(tbb::info::default_concurrency());
    const FilterRow* const pRow = FindFilter(30037);
    for (const int n : {3, 5, 6, 7, 8, 9, 10}) {
        const int nPeer = n | 1; // the peer knows no even windows: it gets the next odd one, 11 instead of 10
        Register({"median " + std::to_string(n) + " / OpenCV medianBlur " + std::to_string(nPeer), n <= 5 ? 1.5 : 1.0,
                  [=] { pPicture->Apply(*pRow, Ints({n})); }, [=] { cv::medianBlur(*pFrom, *pTo, nPeer); },
                  [=] { pPicture->Restore(); }});
    }
});
#endif

} // namespace

} // namespace kestrune::bench
