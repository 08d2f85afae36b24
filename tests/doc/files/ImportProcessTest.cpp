// The process that decodes rare formats, and programs in its place that misbehave.

#include "ForeignTools.h"

#include "doc/files/ImageFile.h"
#include "doc/files/ImportProcess.h"

#include <chrono>
#include <fstream>

namespace fs = std::filesystem;

namespace kestrune::tests {

namespace {

class ImportProcess : public testing::Test {
protected:
    void SetUp() override
    {
        WritePpm(MakeTestPicture(), m_folder / "in.ppm");
        ASSERT_TRUE(m_folder.Run("ppmtotga -rgb in.ppm > in.tga"));
        m_tga = ReadBytes(m_folder / "in.tga");
    }
    void TearDown() override
    {
        SetImportProgram({});
        Limits() = ReadLimits();
    }
    int LoadTga() { return DecodeImage(m_tga, "tga", m_bitmap); }
    /// Puts a script in the program's place.
    void Pretend(const std::string& strScript)
    {
        const fs::path path = m_folder / "fake";
        std::ofstream(path) << "#!/bin/bash\n" << strScript << "\n";
        fs::permissions(path, fs::perms::owner_all);
        SetImportProgram(path);
    }
    /// Bytes of a header as `printf` writes them: mark, result, width, height, bits, two resolutions, colours.
    static std::string Header(std::initializer_list<unsigned> numbers)
    {
        std::string str = "printf '\\x31\\x4d\\x49\\x4b";
        for (const unsigned n : numbers)
            for (int i = 0; i < 4; i++) {
                char szByte[8];
                std::snprintf(szByte, sizeof szByte, "\\x%02x", n >> (8 * i) & 255);
                str += szByte;
            }
        return str + "'";
    }

    CTestFolder m_folder;
    Bytes m_tga;
    LBitmapBase m_bitmap;
};

TEST_F(ImportProcess, AMisbehavingProgramIsAnOrdinaryError)
{
    ASSERT_EQ(LoadTga(), IMG_SUCCESS);
    const Rgb24 before = ColorsOf(m_bitmap);
    const std::string aScripts[] = {
        "exit 0",                                                      // says nothing
        "kill -SEGV $$",                                               // crashes
        "cat > /dev/null; exit 1",                                     // takes everything and fails
        "head -c 100000000 /dev/zero",                                 // floods with nonsense
        "yes >&2",                                                     // floods the error output and never answers
        Header({1, 4, 4, 24, 0, 0, 0}) + "; head -c 47 /dev/zero",     // one byte short
        Header({1, 0x7FFFFFFF, 0x7FFFFFFF, 24, 0, 0, 0}) + "; cat /dev/zero",
        Header({1, 4, 4, 7, 0, 0, 0}) + "; cat /dev/zero",             // a depth that does not exist
        Header({1, 4, 4, 8, 0, 0, 70000}) + "; cat /dev/zero",         // too many colours
        Header({12345, 4, 4, 24, 0, 0, 0}),                            // an error that is none
    };
    Limits().nHelperSeconds = 0; // only the grace period is waited for
    for (const std::string& strScript : aScripts) {
        Pretend(strScript);
        EXPECT_EQ(LoadTga(), IMG_ERROR_HELPER) << strScript;
    }
    SetImportProgram(m_folder / "missing");
    EXPECT_EQ(LoadTga(), IMG_ERROR_HELPER);
    std::ofstream(m_folder / "plain.txt") << "no program";
    SetImportProgram(m_folder / "plain.txt");
    EXPECT_EQ(LoadTga(), IMG_ERROR_HELPER);
    EXPECT_EQ(ColorsOf(m_bitmap).bytes, before.bytes) << "the picture in memory stays";
}

TEST_F(ImportProcess, AHangIsEndedWithAllThatItStarted)
{
    Limits().nHelperSeconds = 0;
    Pretend("(sleep 1000 & echo $! > " + (m_folder / "child").string() + "; sleep 1000)");
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(LoadTga(), IMG_ERROR_HELPER);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(10));
    // Whoever adopts the orphan may take a moment to bury it; a live one would sleep on.
    EXPECT_TRUE(m_folder.Run("for i in $(seq 50); do s=$(ps -o stat= -p $(cat child) || true);"
                             "case \"$s\" in ''|Z*) exit 0;; esac; sleep 0.1; done; exit 1"));
}

TEST_F(ImportProcess, IndicesBeyondThePaletteAreCutToTheDepth)
{
    Pretend("cat > /dev/null; " + Header({1, 4, 2, 4, 0, 0, 2}) + "; head -c 16 /dev/zero | tr '\\0' '\\377'");
    ASSERT_EQ(LoadTga(), IMG_SUCCESS);
    EXPECT_EQ(m_bitmap.GetBitsPerPixel(), 4);
    EXPECT_EQ(m_bitmap.Row(1)[3], 15);
}

TEST_F(ImportProcess, LimitsAreHandedOverAndKept)
{
    Limits().nMaxPixels = 1000;
    EXPECT_EQ(LoadTga(), IMG_ERROR_MEMORY);
    Limits() = ReadLimits();
#ifndef __SANITIZE_ADDRESS__ // under which the process takes no bound on its addresses
    Limits().nHelperBytes = 20u << 20; // too little to start in
    EXPECT_NE(LoadTga(), IMG_SUCCESS);
    Limits() = ReadLimits();
#endif
    EXPECT_EQ(LoadTga(), IMG_SUCCESS);
}

TEST_F(ImportProcess, NothingOfTheEditorLeaksIntoIt)
{
    ::setenv("KESTRUNE_SECRET", "1", 1);
    const fs::path log = m_folder / "log";
    std::ifstream open(m_folder / "in.tga"); // must not be open over there
    Pretend("{ env; ls -l /proc/$$/fd; pwd; ls -d \"$TMPDIR\"; } > " + log.string() + " 2>&1; exit 1");
    EXPECT_EQ(LoadTga(), IMG_ERROR_HELPER);
    const Bytes bytes = ReadBytes(log);
    const std::string strLog(bytes.begin(), bytes.end());
    EXPECT_EQ(strLog.find("KESTRUNE_SECRET"), strLog.npos);
    EXPECT_EQ(strLog.find("in.tga"), strLog.npos) << strLog;
    const std::size_t nTemp = strLog.find("\nTMPDIR=") + 8;
    const std::string strTemp = strLog.substr(nTemp, strLog.find('\n', nTemp) - nTemp);
    EXPECT_NE(strTemp.find("kestrune-"), strTemp.npos) << strLog;
    EXPECT_FALSE(fs::exists(strTemp)) << "its folder goes with it";
}

TEST_F(ImportProcess, OnlyKnownFormatsAreReached)
{
    LBitmapBase bitmap;
    for (const char* pszFormat : {"MVG", "MSL", "@/etc/passwd", "TEXT", "SVG", "URL", "CUT"})
        EXPECT_EQ(DecodeInHelper(pszFormat, m_tga, bitmap), IMG_ERROR_HELPER) << pszFormat;
}

} // namespace

} // namespace kestrune::tests
