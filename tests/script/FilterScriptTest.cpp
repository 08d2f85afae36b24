// Filters through the real program: dialogs filled in by keys, history, settings, refusals.

#include "ScriptHarness.h"

namespace {

QString History(const QStringList& out) { return out.join(u'|'); }

} // namespace

TEST_F(CScriptTest, FiltersRunWithTheKeysOfTheirDialogs)
{
    const QStringList out = Output("new 200 160 white rgb\n"
                                   "command 30030 Red=20 Green=0 Blue=100 Color=10,20,30\nprint pixel 5 5\n"
                                   "command 30034 Gamma=0.5\nprint pixel 5 5\n"
                                   "command 30027 Brightness=-50 Contrast=0\nprint pixel 5 5\n"
                                   "command 30019\nprint pixel 5 5\n"
                                   "command 30021 Amount=200\nprint pixel 5 5\n"
                                   "undo\nprint pixel 5 5\n");
    // Red: (255 * 80 + 10 * 20) / 100; the picture is one colour, so a pixel tells all.
    EXPECT_EQ(out,
              (QStringList{"206 255 30", "229 255 87", "114 127 43", "141 128 211", "255 255 255", "141 128 211"}));
}

TEST_F(CScriptTest, RepeatedGroupsOfKeysApplyInOrder)
{
    const QStringList out
        = Output("new 20 20 white rgb\n"
                 "command 30025 OutWhite=200 Channel=1 OutWhite=100 Channel=0 OutWhite=150\nprint pixel 1 1\n"
                 "new 20 20 white rgb\n"
                 "command 30026 Channel=1 Points=255:64 Channel=3 Points=0:9,255:128\nprint pixel 1 1\n"
                 "new 20 20 white rgb\ncommand 30026\nprint pixel 1 1\n"
                 "new 20 20 white rgb\n"
                 "command 30028 Range=2 Saturation=-50 Range=0 Lightness=-100\nprint pixel 1 1\n"
                 "new 20 20 white rgb\n"
                 "command 30035 Range=2 Red=-100 Range=0 Blue=-100\nprint pixel 1 1\n");
    // The mode "red" of Levels works on the blue bytes.
    ASSERT_EQ(out.size(), 5) << out;
    EXPECT_EQ(out[0], "150 150 58");
    EXPECT_EQ(out[1], "64 255 128");
    EXPECT_EQ(out[2], out[1]) << "the curve is there again at the next opening";
    EXPECT_EQ(out[3], "128 128 128");
    EXPECT_NE(out[4], "255 255 255");
}

TEST_F(CScriptTest, FiltersLeaveTheirNameInTheHistory)
{
    const QStringList out = Output("new 20 20 white rgb\n"
                                   "command 30029\ncommand 30018\ncommand 30019\ncommand 30104\n"
                                   "command 30021\ncommand 30020 Level=9\ncommand 30020 Level=17 cancel\n"
                                   "command 30036\ncommand 30041\ncommand 30077\ncommand 30118\n"
                                   "print setting Posterize Level\nprint setting Threshold Amount\nprint setting "
                                   "Solarize Threshold\nprint history\n");
    EXPECT_EQ(
        History(out),
        "9|128|missing|  << 새로운 이미지 >>|  [필터] 색조 제거|  [필터] 평균화|  [필터] 색 반전|  [필터] 정규분포화|"
        "  [필터] 쓰레쉬 홀드|* [필터] 포스터 효과");
}

TEST_F(CScriptTest, FiltersRefuseWhatTheirControlsRefuse)
{
    EXPECT_TRUE(Reason("new 9 9 white rgb\ncommand 30021 Amount=much\n", 2).startsWith("Amount: "));
    EXPECT_TRUE(Reason("new 9 9 white rgb\ncommand 30021 Level=3\n", 2).startsWith("Level: "));
    EXPECT_TRUE(Reason("new 9 9 white rgb\ncommand 30045 Matrix=1,2\n", 2).startsWith("Matrix: "));
    Reason("command 30021 Amount=3\n", 1); // no picture, so the command is disabled
    const QStringList out = Output("new 3 1 white rgb\ncommand 30045 Scale=2 Offset=-10\nprint pixel 2 0\nprint "
                                   "command 30045\nprint command 30120\n");
    ASSERT_EQ(out.size(), 3);
    EXPECT_EQ(out[0], "117 117 117");
    EXPECT_EQ(out[1], "enabled unchecked");
}
