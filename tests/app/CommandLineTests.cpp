#include "app/CommandLine.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace kestrune {
namespace {

namespace fs = std::filesystem;

TEST(CommandLine, FilesAndSwitches)
{
    const auto info = ParseCommandLine({"a.jpg", "-t", "--settings", "dir", "--seed", "7", "--", "-odd name.png"});
    EXPECT_EQ(info.strError, "");
    EXPECT_EQ(info.files, (std::vector<fs::path>{"a.jpg", "-odd name.png"}));
    EXPECT_TRUE(info.bTest);
    EXPECT_EQ(info.pathSettings, "dir");
    EXPECT_EQ(info.nSeed, 7u);
    EXPECT_FALSE(ParseCommandLine({}).bTest);
    EXPECT_FALSE(ParseCommandLine({"/t"}).bTest); // a file of that name, on this system
}

TEST(CommandLine, UsageErrors)
{
    for (const std::vector<std::string>& words : std::vector<std::vector<std::string>>{
             {"--settings"}, {"--seed", "x"}, {"--seed", "-1"}, {"--seed"}, {"--nonsense"}, {"-q"}})
        EXPECT_NE(ParseCommandLine(words).strError, "") << words[0];
}

TEST(CommandLine, InstallFolderBesideTheProgramOrShared)
{
    QTemporaryDir folder;
    const fs::path root = folder.path().toStdString();
    fs::create_directories(root / "bin");
    EXPECT_EQ(FindInstallFolder({}, root / "bin" / "kestrune"), "");
    fs::create_directories(root / "share" / "kestrune");
    EXPECT_EQ(FindInstallFolder({}, root / "bin" / "kestrune"), root / "share" / "kestrune");
    fs::create_directories(root / "install");
    EXPECT_EQ(FindInstallFolder({}, root / "bin" / "kestrune"), root / "install");
    fs::create_directories(root / "bin" / "install");
    EXPECT_EQ(FindInstallFolder({}, root / "bin" / "kestrune"), root / "bin" / "install");
    EXPECT_EQ(FindInstallFolder("given", root / "bin" / "kestrune"), "given");
}

} // namespace
} // namespace kestrune
