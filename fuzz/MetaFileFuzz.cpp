#include "doc/MetaFile.h"

#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t nBytes)
{
    kestrune::CPaintMetaFile metafile;
    metafile.ReadHeader({pData, nBytes});
    const bool bKey = metafile.m_Header.dwKey == kestrune::CPaintMetaFile::c_dwKey;
    if (!bKey && (metafile.m_nWidth != 0 || metafile.m_nHeight != 0 || metafile.m_nInch != 0))
        std::abort();
    return 0;
}
