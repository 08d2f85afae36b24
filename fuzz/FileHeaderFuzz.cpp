#include "FuzzReader.h"
#include "doc/files/FileHeader.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t nBytes)
{
    using namespace kestrune;
    if (nBytes == 0)
        return 0;
    FileHeader header;
    LBitmapBase bitmap;
    bitmap.Create(8, 8, 24);
    bitmap.Fill(nBytes > 1 ? Rgb(pData[nBytes - 1], pData[nBytes - 1], pData[nBytes - 1]) : 0);
    const auto format = static_cast<ImageFormat>(pData[0] % static_cast<int>(ImageFormat::Count));
    if (ReadFileHeader(format, {pData + 1, nBytes - 1}, header))
        MatchFileHeader(header, bitmap);
    return bitmap.GetWidth() == 8 ? 0 : 1;
}
