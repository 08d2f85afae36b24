// Every operation of the table against its plain form: applied, applied to a selection, and as a preview.
#include "PlainFilters.h"

#include "base/Arith.h"
#include "doc/PaintImage.h"
#include "filters/Curves.h"
#include "filters/FilterCommand.h"

#include <gtest/gtest.h>
#include <hwy/targets.h>

#include <cstring>
#include <random>

using namespace kestrune;
using plain::Picture;

namespace {

enum class Content { Noise, Smooth, Flat };

Picture MakePicture(int w, int h, Content content, unsigned nSeed)
{
    std::mt19937 random(nSeed);
    Picture picture(w, h);
    const int nFlat = static_cast<int>(random() % 256);
    for (int y = 0; y < h; ++y)
        for (int x = 0; x < w; ++x)
            for (int c = 0; c < 3; ++c) {
                const int nSmooth = 3 * x + 2 * y * (c + 1) + static_cast<int>(random() % 9);
                picture.At(x, y, c) = static_cast<std::uint8_t>(content == Content::Noise ? static_cast<int>(random() % 256)
                                                                    : content == Content::Flat ? nFlat
                                                                                               : nSmooth);
            }
    return picture;
}

LBitmapBase ToBitmap(const Picture& picture)
{
    LBitmapBase bitmap;
    bitmap.Create(picture.w, picture.h, 24);
    for (int y = 0; y < picture.h; ++y)
        std::memcpy(bitmap.WriteRow(y), &picture.bytes[static_cast<std::size_t>(y) * picture.w * 3],
                    static_cast<std::size_t>(picture.w) * 3);
    return bitmap;
}

Picture Cut(const LBitmapBase& bitmap, const CRect& rc)
{
    Picture picture(rc.Width(), rc.Height());
    for (int y = 0; y < picture.h; ++y)
        std::memcpy(&picture.bytes[static_cast<std::size_t>(y) * picture.w * 3], bitmap.Row(rc.top + y) + rc.left * 3,
                    static_cast<std::size_t>(picture.w) * 3);
    return picture;
}
Picture Whole(const LBitmapBase& bitmap) { return Cut(bitmap, {0, 0, bitmap.GetWidth(), bitmap.GetHeight()}); }

void SetPicture(CPaintImage& image, const Picture& picture)
{
    image.Create(picture.w, picture.h, FILL_WHITE, COLOR_RGB);
    image.m_Bitmap.CopyData(ToBitmap(picture));
    image.m_BaseBitmap.Copy(image.m_Bitmap);
}

/// A float of another content over a part of the picture, with a soft mask.
void SetSelection(CPaintImage& image, const CRect& rc, const Picture& picture, unsigned nSeed)
{
    std::mt19937 random(nSeed);
    image.m_FloatBitmap = ToBitmap(picture);
    image.m_pFloatMask = std::make_unique<std::uint8_t[]>(static_cast<std::size_t>(picture.w) * picture.h);
    image.m_nFloatX = rc.left;
    image.m_nFloatY = rc.top;
    image.m_nFloatW = picture.w;
    image.m_nFloatH = picture.h;
    image.m_rcFloat = Intersect(rc, {0, 0, image.m_nWidth, image.m_nHeight});
    std::memset(image.m_pMask.get(), 0, static_cast<std::size_t>(image.m_nWidth) * image.m_nHeight);
    for (int y = 0; y < picture.h; ++y)
        for (int x = 0; x < picture.w; ++x) {
            const auto m = static_cast<std::uint8_t>(random() % 4 == 0 ? 255 : random() % 256);
            image.m_pFloatMask[static_cast<std::size_t>(y) * picture.w + x] = m;
            if (image.m_rcFloat.Contains(rc.left + x, rc.top + y))
                image.m_pMask[static_cast<std::size_t>(rc.top + y) * image.m_nWidth + rc.left + x] = m;
        }
    image.m_bMaskBoundsValid = true;
    image.m_bMaskEmpty = false;
    image.m_nMaskX1 = image.m_rcFloat.left;
    image.m_nMaskY1 = image.m_rcFloat.top;
    image.m_nMaskX2 = image.m_rcFloat.right;
    image.m_nMaskY2 = image.m_rcFloat.bottom;
}

FilterValues Ints(std::initializer_list<int> an, COLORREF cr = 0)
{
    FilterValues values;
    std::ranges::copy(an, values.an.begin());
    values.crReference = cr;
    return values;
}
template <typename Extra>
FilterValues With(const Extra& extra)
{
    FilterValues values;
    values.extra = extra;
    return values;
}

FilterValues RandomMatrix(unsigned nSeed)
{
    std::mt19937 random(nSeed);
    MatrixValues m;
    for (auto& n : m.anMatrix)
        n = random() % 3 ? static_cast<int>(random() % 1999) - 999 : static_cast<int>(random() % 7) - 3;
    m.nScale = nSeed == 1 ? 9999 : static_cast<int>(random() % 900) + 1;
    m.nOffset = static_cast<int>(random() % 200) - 50;
    return With(m);
}

FilterValues RandomHue(unsigned nSeed)
{
    std::mt19937 random(nSeed);
    HueSaturationValues v;
    for (int i = 0; i < 7; ++i) {
        v.adHue[i] = static_cast<int>(random() % 361) - 180;
        v.adLightness[i] = static_cast<int>(random() % 201) - 100;
        v.adSaturation[i] = static_cast<int>(random() % 201) - 100;
    }
    return With(v);
}

FilterValues RandomBalance(unsigned nSeed, bool bLuminosity)
{
    std::mt19937 random(nSeed);
    ColorBalanceValues v;
    for (auto& range : v.anDelta)
        for (auto& n : range)
            n = static_cast<int>(random() % 201) - 100;
    v.bLuminosity = bLuminosity;
    return With(v);
}

FilterValues SomeLevels()
{
    LevelsValues v;
    v.channels[0] = {10, 1.4, 240, 5, 250};
    v.channels[1] = {40, 0.6, 200, 255, 0};
    v.channels[2] = {100, 1.0, 100, 20, 220};
    v.channels[3] = {0, 10.0, 255, 0, 128};
    return With(v);
}

FilterValues SomeCurves()
{
    CurvesValues v;
    for (int c = 0; c < 4; ++c)
        ResetCurve(v, c);
    TakeCurvePoints(v);
    v.points[0][4] = {70, 200};
    v.points[1][8] = {128, 10};
    v.points[2][16] = {255, 100};
    v.points[3][0] = {0, 90};
    for (int c = 0; c < 4; ++c)
        RebuildCurve(v, c);
    return With(v);
}

struct Case {
    int nCommand;
    std::vector<FilterValues> values;
};

const std::vector<Case>& Cases()
{
    static const std::vector<Case> s_cases = {
        {30002, {Ints({})}},
        {30003, {Ints({1}), Ints({5}), Ints({33}), Ints({250})}},
        {30001, {Ints({45, 10}), Ints({0, 0}), Ints({90, 100}), Ints({200, 255}), Ints({333, 7}), Ints({180, 31})}},
        {30039, {Ints({1}), Ints({10}), Ints({77}), Ints({100})}},
        {30040, {Ints({1, 5, 0}), Ints({0, 500, 0}), Ints({4, 100, 40}), Ints({12, 499, 255}), Ints({250, 300, 3})}},
        {30037, {Ints({1}), Ints({2}), Ints({3}), Ints({4}), Ints({5}), Ints({6}), Ints({7}), Ints({8}), Ints({9}), Ints({10})}},
        {30043, {Ints({1}), Ints({2}), Ints({3}), Ints({5}), Ints({10})}},
        {30044, {Ints({1}), Ints({4}), Ints({9}), Ints({10})}},
        {30045, {With(MatrixValues{}), RandomMatrix(1), RandomMatrix(2), RandomMatrix(3)}},
        {30019, {Ints({})}},
        {30029, {Ints({})}},
        {30021, {Ints({0}), Ints({128}), Ints({255})}},
        {30020, {Ints({1}), Ints({3}), Ints({255})}},
        {30034, {Ints({0}), Ints({100}), Ints({45}), Ints({300})}},
        {30027, {Ints({0, 0}), Ints({100, 100}), Ints({-100, 37}), Ints({22, -81})}},
        {30047, {Ints({0}), Ints({60}), Ints({127})}},
        {30104, {Ints({})}},
        {30018, {Ints({})}},
        {30028, {With(HueSaturationValues{}), RandomHue(1), RandomHue(2), RandomHue(3)}},
        {30025, {With(LevelsValues{}), SomeLevels()}},
        {30026, {SomeCurves()}},
        {30035, {RandomBalance(1, false), RandomBalance(2, true), RandomBalance(3, true), With(ColorBalanceValues{{}, true})}},
        {30004, {Ints({70}), Ints({0}), Ints({100})}},
        {30030, {Ints({0, 50, 50}, Rgb(200, 120, 17)), Ints({100, 33, 1}, Rgb(3, 255, 128))}},
        {30031, {Ints({16})}},
    };
    return s_cases;
}

/// One filter with one set of values on one picture.
class CCheck {
public:
    CCheck(const FilterRow& row, const FilterValues& values)
        : m_row(row)
        , m_values(values)
        , m_plain(plain::FindPlainFilter(row.nCommand))
    {
    }

    void Applied(const Picture& picture) const
    {
        CPaintImage image;
        SetPicture(image, picture);
        FilterDialogData data;
        PrepareFilterDialog(image, data);
        data.values = m_values;
        ApplyFilter(m_row, image, data);
        EXPECT_EQ(Whole(image.m_Bitmap), m_plain({picture, m_values, picture.h}));
        EXPECT_EQ(Whole(image.m_BaseBitmap), picture) << "the run alone commits nothing";
    }

    void AppliedToSelection(const Picture& picture) const
    {
        CPaintImage image;
        SetPicture(image, MakePicture(40, 30, Content::Noise, 5));
        SetSelection(image, {-3, 4, picture.w - 3, picture.h + 4}, picture, 7);
        const Picture before = Whole(image.m_Bitmap);
        FilterDialogData data;
        PrepareFilterDialog(image, data);
        data.values = m_values;
        ApplyFilter(m_row, image, data);
        EXPECT_EQ(Whole(image.m_FloatBitmap), m_plain({picture, m_values, picture.h}));
        EXPECT_EQ(Whole(image.m_Bitmap), before);
    }

    void Preview(const Picture& picture, const CRect& rc, bool bSelection) const
    {
        CPaintImage image;
        SetPicture(image, picture);
        if (bSelection) {
            const CRect rcFloat{picture.w / 3, picture.h / 4, picture.w, picture.h * 3 / 4 + 1};
            SetSelection(image, rcFloat, MakePicture(rcFloat.Width(), rcFloat.Height(), Content::Noise, 3), 11);
        }
        FilterDialogData data;
        PrepareFilterDialog(image, data);
        data.values = m_values;
        PreviewFilter(m_row, image, data, rc);
        const CRect rcIn = Intersect(rc, {0, 0, picture.w, picture.h});
        Picture expected = picture;
        if (!rcIn.IsEmpty()) {
            const Picture filtered = m_plain({Cut(data.bmpSource, rcIn), m_values, picture.h});
            for (int y = 0; y < filtered.h; ++y)
                for (int x = 0; x < filtered.w; ++x)
                    for (int c = 0; c < 3; ++c) {
                        std::uint8_t& o = expected.At(rcIn.left + x, rcIn.top + y, c);
                        const std::size_t nMask = static_cast<std::size_t>(rcIn.top + y) * picture.w + rcIn.left + x;
                        o = bSelection ? Lerp255(o, filtered.At(x, y, c), image.m_pMask[nMask]) : filtered.At(x, y, c);
                    }
        }
        EXPECT_EQ(Whole(data.bmpPreview), expected);
        EXPECT_EQ(Whole(image.m_Bitmap), picture);
    }

private:
    const FilterRow& m_row;
    const FilterValues& m_values;
    plain::PlainFilter m_plain;
};

template <typename Check>
void EachCase(const Check& check)
{
    for (const Case& c : Cases()) {
        const FilterRow* const pRow = FindFilter(c.nCommand);
        ASSERT_TRUE(pRow);
        if (!pRow->operation)
            continue;
        for (std::size_t i = 0; i < c.values.size(); ++i) {
            SCOPED_TRACE(testing::Message() << c.nCommand << " values " << i);
            check(CCheck(*pRow, c.values[i]), pRow->handler == FilterHandler::Dispatcher && c.nCommand != 30031);
            if (testing::Test::HasFailure())
                return;
        }
    }
}

} // namespace

TEST(FilterExact, AppliedRunsMatchThePlainForm)
{
    constexpr CSize c_aSizes[] = {{1, 1}, {1, 7}, {9, 1}, {2, 2}, {3, 3}, {4, 6}, {11, 5}, {67, 41}, {90, 20}};
    EachCase([&](const CCheck& check, bool) {
        for (const CSize& size : c_aSizes)
            for (Content content : {Content::Noise, Content::Smooth, Content::Flat}) {
                SCOPED_TRACE(testing::Message() << size.cx << " x " << size.cy);
                check.Applied(MakePicture(size.cx, size.cy, content, 1));
            }
    });
}

TEST(FilterExact, SelectionsAreFilteredAsTheirOwnPicture)
{
    EachCase([&](const CCheck& check, bool) {
        for (const CSize& size : {CSize{25, 17}, CSize{1, 1}, CSize{50, 40}})
            check.AppliedToSelection(MakePicture(size.cx, size.cy, Content::Smooth, 2));
    });
}

TEST(FilterExact, PreviewsFilterTheirRectangleAlone)
{
    const Picture picture = MakePicture(61, 47, Content::Smooth, 4);
    EachCase([&](const CCheck& check, bool bDialog) {
        if (!bDialog)
            return;
        for (const CRect& rc : {CRect{0, 0, 61, 47}, CRect{13, 9, 50, 33}, CRect{-5, -4, 20, 70}, CRect{60, 46, 90, 60},
                                CRect{70, 10, 90, 20}}) {
            check.Preview(picture, rc, false);
            check.Preview(picture, rc, true);
        }
    });
}

TEST(FilterExact, EveryKindOfProcessorGivesTheSameBytes)
{
    const Picture picture = MakePicture(83, 29, Content::Noise, 6);
    for (std::int64_t nTarget : hwy::SupportedAndGeneratedTargets()) {
        SCOPED_TRACE(hwy::TargetName(nTarget));
        hwy::SetSupportedTargetsForTest(nTarget);
        EachCase([&](const CCheck& check, bool) { check.Applied(picture); });
        hwy::SetSupportedTargetsForTest(0);
    }
}
