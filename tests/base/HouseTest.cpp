// Keeps the plan of the house: a folder includes only folders above it, and the core never sees the toolkit.

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <functional>
#include <map>
#include <regex>
#include <string>
#include <vector>

namespace fs = std::filesystem;

namespace {

const std::vector<std::string> c_aFloors = {"base",    "selection", "doc",     "undo", "resources", "paint",   "filters",
                                            "tools",   "acquire",   "ui",      "view", "browser",   "app",     "script"};
constexpr std::size_t c_iFirstShell = 9;

std::size_t FloorOf(const std::string& strFolder)
{
    const auto it = std::find(c_aFloors.begin(), c_aFloors.end(), strFolder);
    return static_cast<std::size_t>(it - c_aFloors.begin());
}

/// "doc/gui/X.cpp" is a window source of the shell that belongs to doc.
struct Room {
    std::size_t iFloor;
    bool bGui;
    bool IsShell() const { return bGui || iFloor >= c_iFirstShell; }
};

Room RoomOf(const fs::path& relative)
{
    const std::string strPath = relative.generic_string();
    return {FloorOf(strPath.substr(0, strPath.find('/'))), strPath.find("/gui/") != std::string::npos};
}

bool MayInclude(const Room& from, const Room& to)
{
    if (from.iFloor >= FloorOf("app"))
        return true; // the application and the scripts know all
    if (!from.IsShell())
        return !to.IsShell() && to.iFloor <= from.iFloor;
    if (!to.IsShell())
        return from.iFloor >= c_iFirstShell || to.iFloor <= from.iFloor;
    const std::size_t iUi = FloorOf("ui");
    if (from.bGui) // its own folder's windows and the window kit
        return to.bGui ? to.iFloor <= from.iFloor : to.iFloor == iUi;
    return to.bGui ? from.iFloor > iUi : to.iFloor <= from.iFloor;
}

struct Include {
    fs::path file;
    std::string strTarget;
};

std::vector<Include> AllIncludes()
{
    const fs::path root = fs::path(KESTRUNE_SOURCE_DIR) / "src";
    const std::regex pattern("^#include [\"<]([^\">]+)[\">]");
    std::vector<Include> found;
    for (const auto& entry : fs::recursive_directory_iterator(root)) {
        const std::string strExtension = entry.path().extension();
        if (strExtension != ".h" && strExtension != ".cpp")
            continue;
        std::ifstream stream(entry.path());
        for (std::string strLine; std::getline(stream, strLine);) {
            std::smatch match;
            if (std::regex_search(strLine, match, pattern))
                found.push_back({fs::relative(entry.path(), root), match[1]});
        }
    }
    return found;
}

} // namespace

TEST(House, NoFileIncludesUpwards)
{
    const auto includes = AllIncludes();
    ASSERT_GT(includes.size(), 50u);
    for (const Include& include : includes) {
        const std::size_t iTarget = FloorOf(include.strTarget.substr(0, include.strTarget.find('/')));
        if (iTarget == c_aFloors.size())
            continue; // a library's header
        const Room from = RoomOf(include.file);
        ASSERT_LT(from.iFloor, c_aFloors.size()) << include.file << " stands outside the plan";
        EXPECT_TRUE(MayInclude(from, RoomOf(include.strTarget))) << include.file << " includes " << include.strTarget;
    }
}

TEST(House, TheCoreKnowsNoToolkit)
{
    for (const Include& include : AllIncludes()) {
        if (RoomOf(include.file).IsShell())
            continue;
        EXPECT_FALSE(include.strTarget.starts_with("Q")) << include.file << " includes " << include.strTarget;
    }
}

TEST(House, ArrowsBetweenFilesMakeNoLoop)
{
    std::map<std::string, std::vector<std::string>> arrows;
    for (const Include& include : AllIncludes())
        arrows[include.file.generic_string()].push_back(include.strTarget);
    enum State { Unseen, Open, Done };
    std::map<std::string, State> states;
    std::string strLoop;
    const std::function<void(const std::string&)> visit = [&](const std::string& strFile) {
        if (states[strFile] == Open)
            strLoop = strFile;
        if (states[strFile] != Unseen)
            return;
        states[strFile] = Open;
        for (const std::string& strTarget : arrows[strFile])
            if (strTarget.find('/') != std::string::npos)
                visit(strTarget);
        states[strFile] = Done;
    };
    std::vector<std::string> files;
    for (const auto& [strFile, targets] : arrows)
        files.push_back(strFile);
    for (const std::string& strFile : files)
        visit(strFile);
    EXPECT_EQ(strLoop, "") << "is part of a loop of includes";
}

TEST(House, EveryFolderHasItsPageAtTheDoor)
{
    for (const auto& entry : fs::directory_iterator(fs::path(KESTRUNE_SOURCE_DIR) / "src")) {
        if (!entry.is_directory() || fs::is_empty(entry.path()))
            continue;
        EXPECT_TRUE(fs::exists(entry.path() / "README.md")) << entry.path().filename() << " has no README.md";
        EXPECT_LT(FloorOf(entry.path().filename()), c_aFloors.size()) << entry.path().filename() << " is not in the plan";
    }
}
