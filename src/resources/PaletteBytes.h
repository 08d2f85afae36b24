#pragma once

#include "base/Files.h"

#include <cstddef>
#include <filesystem>

namespace kestrune {

/// The beginning of a file, and why there is none.
struct FileHead {
    int nOpenError = 0; ///< the system's number when the file could not be opened (also: when it is no plain file)
    bool bReadError = false;
    Bytes bytes; ///< at most as many as asked for
};

/// Reads at most `nBytes` from the file's start. Never waits for a pipe or a device.
FileHead ReadFileHead(const std::filesystem::path& path, std::size_t nBytes);

} // namespace kestrune
