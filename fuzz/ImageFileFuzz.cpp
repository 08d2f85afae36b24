#include "FuzzReader.h"
#include "doc/files/ImageFile.h"
#include "doc/files/ImportProcess.h"

namespace {

/// The last byte chooses the extension; what the content tells goes before it.
int ReadAny(std::span<const std::uint8_t> file, kestrune::LBitmapBase& bitmap)
{
    const auto formats = kestrune::ImageFormats();
    const auto& extensions = formats[file.empty() ? 0 : file.back() % formats.size()].extensions;
    return kestrune::DecodeImage(file, extensions.substr(0, extensions.find(' ')), bitmap);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t nBytes)
{
    // The rare formats' process stays out: starting one for each input would leave no time for the readers here.
    kestrune::SetImportProgram("/nonexistent");
    return kestrune::FuzzReader(ReadAny, pData, nBytes);
}
