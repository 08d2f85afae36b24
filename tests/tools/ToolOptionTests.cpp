#include "base/Profile.h"
#include "tools/ToolOptions.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <vector>

using namespace kestrune;
using testing::ElementsAre;

namespace {

class ToolOptionTest : public testing::Test {
protected:
    ~ToolOptionTest() override
    {
        SetToolOptionListener({});
        LoadToolOptions(CMemoryProfile());
    }
};

} // namespace

TEST_F(ToolOptionTest, ProfileKeepsWhatIsToBeKeptAndNothingElse)
{
    for (const ToolOptionRow& row : ToolOptionTable())
        SetToolOption(row.option, row.nDefault == row.nMax ? row.nMin : row.nMax);
    CMemoryProfile profile;
    SaveToolOptions(profile);
    EXPECT_EQ(profile.GetInt("Paint Brush", "P Mode", -1), 15);
    EXPECT_EQ(profile.GetInt("Floater", "Tolerance", -1), 255); // channels differ by up to that much
    EXPECT_EQ(profile.GetInt("Gradient", "G Mode", -1), 5);
    EXPECT_FALSE(profile.FindInt("Floater", "AntiAlias"));
    EXPECT_FALSE(profile.FindInt("Gradient", "Source"));

    LoadToolOptions(CMemoryProfile());
    for (const ToolOptionRow& row : ToolOptionTable())
        EXPECT_EQ(GetToolOption(row.option), row.nDefault) << row.strSection << " " << row.strKey;
    LoadToolOptions(profile);
    for (const ToolOptionRow& row : ToolOptionTable())
        EXPECT_EQ(GetToolOption(row.option), !row.bKept || row.nDefault != row.nMax ? row.bKept ? row.nMax : row.nDefault : row.nMin)
            << row.strSection << " " << row.strKey;
}

TEST_F(ToolOptionTest, NothingLeavesItsRange)
{
    CMemoryProfile profile; // as a hand might have written it
    profile.WriteInt("Pencil", "Space", 0); // a stroke divides by it
    profile.WriteInt("Stamp", "Mode", 16);
    profile.WriteInt("Floater", "Mode", -5);
    profile.WriteString("Eraser", "Opacity", "much");
    LoadToolOptions(profile);
    EXPECT_EQ(GetToolOption(ToolOption::PencilSpace), 1);
    EXPECT_EQ(GetToolOption(ToolOption::StampMode), 15);
    EXPECT_EQ(GetToolOption(ToolOption::FloaterMode), 1);
    EXPECT_EQ(GetToolOption(ToolOption::EraserOpacity), 0);
}

TEST_F(ToolOptionTest, ListenerHearsOfChangesAlone)
{
    std::vector<ToolOption> heard;
    SetToolOptionListener([&](ToolOption option) { heard.push_back(option); });
    SetToolOption(ToolOption::FloaterMode, 2);
    SetToolOption(ToolOption::FloaterMode, 2);
    SetToolOption(ToolOption::FloaterMode, 1);
    SetToolOption(ToolOption::BrushOpacity, 500); // is 100 already
    EXPECT_THAT(heard, ElementsAre(ToolOption::FloaterMode, ToolOption::FloaterMode));
}
