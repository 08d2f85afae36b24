#pragma once

#include "base/Files.h"
#include "doc/Bitmap.h"

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace kestrune::tests {

/// A picture as another program wrote it: red, green, blue, a byte each.
struct Rgb24 {
    int nWidth = 0, nHeight = 0;
    std::vector<std::uint8_t> bytes;
};

/// A folder that is removed with its contents at the end.
class CTestFolder {
public:
    CTestFolder();
    ~CTestFolder();
    CTestFolder(const CTestFolder&) = delete;
    CTestFolder& operator=(const CTestFolder&) = delete;
    const std::filesystem::path& Path() const { return m_path; }
    std::filesystem::path operator/(const std::string& strName) const { return m_path / strName; }

    /// Runs a line of shell in the folder; its output goes to the test's failure message.
    testing::AssertionResult Run(const std::string& strCommand) const;

private:
    std::filesystem::path m_path;
};

/// The test picture: a soft sweep of colours, some sharp shapes and a little noise; odd sides, so that padding shows.
Rgb24 MakeTestPicture(int nWidth = 93, int nHeight = 61);

/// Reads P4, P5 and P6 files of at most 8 bits a sample. An empty picture on failure.
Rgb24 ReadPnm(const std::filesystem::path& path);
void WritePpm(const Rgb24& picture, const std::filesystem::path& path);

/// The bitmap's colours, through its palette where it has one.
Rgb24 ColorsOf(const LBitmapBase& bitmap);
/// A 24-bit bitmap of the picture.
LBitmapBase BitmapOf(const Rgb24& picture);

/// The mean difference of a channel, 0 to 255; 1000 when the sizes differ.
double MeanDifference(const Rgb24& a, const Rgb24& b);

Bytes ReadBytes(const std::filesystem::path& path);

} // namespace kestrune::tests
