#pragma once

#include "doc/files/DecodedImage.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

/// What the tests of the file formats share: known pictures, other programs that write and read files, comparison.
namespace kestrune::codectest {

using FileBytes = std::vector<std::uint8_t>;

/// Known pictures of 24 bits, with odd sides so that every padding occurs.
LBitmapBase ColorfulPicture(int nWidth = 37,
                            int nHeight = 23); ///< smooth slopes, noise, flat runs; thousands of colours
LBitmapBase FewColorsPicture(int nColors, int nWidth = 37, int nHeight = 23); ///< exactly that many colours, not grey
LBitmapBase GreyPicture(int nWidth = 37, int nHeight = 23); ///< grey levels
LBitmapBase BlackWhitePicture(int nWidth = 37, int nHeight = 23);

/// An empty folder of the running test; removed and made anew at the first call in it.
std::filesystem::path TestFolder();

FileBytes FileContent(const std::filesystem::path& path);
void WriteContent(const std::filesystem::path& path, const FileBytes& bytes);
void WritePpm(const std::filesystem::path& path, const LBitmapBase& bitmap);
/// A PPM, PGM or PBM (raw) as 24 bits; unallocated when it cannot be read.
LBitmapBase ReadPnm(const std::filesystem::path& path);

/// Runs a shell command in the test's folder; true when it ends with 0. What it prints is part of the failure.
::testing::AssertionResult Runs(const std::string& strCommand);

/// The bytes of the file that `strCommand` makes, as "out" in the test's folder, of the picture in "in.ppm" there.
/// Kept as a seed of the fuzzer `strSeedFormat` as well, when that is not empty. Empty, and a failure of the test, when
/// the command fails.
FileBytes MadeBy(const std::string& strCommand, const LBitmapBase& picture, const std::string& strSeedFormat = "");

/// How another program sees our bytes: writes them to "ours" + `strExtension`, runs the command, which makes
/// "back.pnm", and reads that.
LBitmapBase SeenBy(const std::string& strCommand, const FileBytes& ours, const std::string& strExtension);

/// The command by which Pillow turns "in.ppm" into "out": picture mode (1, L, P, RGB...) and format, by its names.
std::string PillowMakes(const std::string& strMode, const std::string& strFormat);
/// The command by which Pillow turns a file into "back.pnm".
std::string PillowToPpm(const std::string& strFile);

/// Keeps a file as a start for the fuzzer of that format.
void KeepSeed(const std::string& strFormat, const FileBytes& bytes);

/// Same size, and every channel within the tolerance. Bitmaps of any depth are compared by the colours that they show.
::testing::AssertionResult SamePicture(const LBitmapBase& expected, const LBitmapBase& actual, int nTolerance = 0);

/// Reads, expects success, and returns the bitmap.
LBitmapBase ReadOk(ReaderFunction reader, const FileBytes& bytes);

/// Writes, expects success, and returns the bytes.
FileBytes WriteOk(WriterFunction writer, const LBitmapBase& bitmap);

} // namespace kestrune::codectest
