#include "FuzzReader.h"
#include "doc/files/WpgFile.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t nBytes)
{
    return kestrune::FuzzReader(kestrune::ReadWpg, pData, nBytes);
}
