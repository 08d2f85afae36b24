#include "FuzzReader.h"
#include "doc/files/ClpFile.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t nBytes)
{
    return kestrune::FuzzReader(kestrune::ReadClp, pData, nBytes);
}
