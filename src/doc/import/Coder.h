#pragma once

#include "doc/files/ImportProtocol.h"
#include "doc/import/Sandbox.h"

#include <cstddef>
#include <cstdint>
#include <string>

namespace kestrune::import {

/// Prepares the decoders and sets their own limits. Before anything else.
void StartCoders(const char* pszProgram, const Bounds& bounds);

/// Reads the file of that format from standard input and writes the picture to standard output. False when the answer could
/// not be written.
bool Decode(const std::string& strFormat);

/// Reads a picture from standard input and writes the file of that format to standard output.
bool Encode(const std::string& strFormat, const Bounds& bounds);

/// All of those bytes, through standard input or output. False at the end of the input or on an error.
bool ReadAll(void* pTo, std::size_t nBytes);
bool WriteAll(const void* pFrom, std::size_t nBytes);

} // namespace kestrune::import
