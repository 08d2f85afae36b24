// Decodes and encodes rare picture formats for the editor, in a process of its own and under limits, because the decoders
// of such formats are where faults sit. See doc/files/ImportProtocol.h for what it is told and what it answers.

#include "doc/import/Coder.h"

#include <Magick++.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <string_view>
#include <unistd.h>

namespace kestrune::import {

bool ReadAll(void* pTo, std::size_t nBytes)
{
    auto* p = static_cast<std::uint8_t*>(pTo);
    while (nBytes > 0) {
        const ssize_t n = ::read(STDIN_FILENO, p, nBytes);
        if (n < 0 && errno == EINTR)
            continue;
        if (n <= 0)
            return false;
        p += n;
        nBytes -= static_cast<std::size_t>(n);
    }
    return true;
}

bool WriteAll(const void* pFrom, std::size_t nBytes)
{
    const auto* p = static_cast<const std::uint8_t*>(pFrom);
    while (nBytes > 0) {
        const ssize_t n = ::write(STDOUT_FILENO, p, nBytes);
        if (n < 0 && errno == EINTR)
            continue;
        if (n <= 0)
            return false;
        p += n;
        nBytes -= static_cast<std::size_t>(n);
    }
    return true;
}

void StartCoders(const char* pszProgram, const Bounds& bounds)
{
    Magick::InitializeMagick(pszProgram);
    const auto limit = [](MagickLib::ResourceType type, std::uint64_t n) {
        MagickLib::SetMagickResourceLimit(type, static_cast<MagickLib::magick_int64_t>(n));
    };
    limit(MagickLib::PixelsResource, bounds.nMostPixels);
    limit(MagickLib::WidthResource, bounds.nMostSide);
    limit(MagickLib::HeightResource, bounds.nMostSide);
    limit(MagickLib::MemoryResource, bounds.nBytes);
    limit(MagickLib::MapResource, 0);
    limit(MagickLib::DiskResource, 0); // a picture that does not fit into memory is refused, not paged
    limit(MagickLib::ThreadsResource, 1);
}

} // namespace kestrune::import

int main(int argc, char** argv)
{
    using namespace kestrune::import;
    // The formats that the editor hands over; no other decoder is ever reached.
    constexpr std::array<std::string_view, 13> aRead = {"AVIF", "DCX", "EPS", "HEIC", "JXL", "MAC", "PCD",
                                                        "PCX", "PICT", "SGI", "TGA", "WMF", "WPG"};
    constexpr std::array<std::string_view, 1> aWritten = {"SGI"};
    if (argc != 7) {
        std::fprintf(stderr, "usage: kestrune-import decode|encode FORMAT MOST-PIXELS MOST-SIDE SECONDS BYTES\n");
        return 2;
    }
    const std::string_view verb = argv[1], format = argv[2];
    const Bounds bounds{std::strtoull(argv[3], nullptr, 10), std::strtoull(argv[4], nullptr, 10),
                        static_cast<unsigned>(std::strtoul(argv[5], nullptr, 10)), std::strtoull(argv[6], nullptr, 10)};
    const bool bDecode = verb == "decode" && std::ranges::find(aRead, format) != aRead.end();
    const bool bEncode = verb == "encode" && std::ranges::find(aWritten, format) != aWritten.end();
    if ((!bDecode && !bEncode) || bounds.nMostPixels == 0 || bounds.nMostSide == 0 || bounds.nSeconds == 0 || bounds.nBytes == 0) {
        std::fprintf(stderr, "kestrune-import: unknown verb, format or limit\n");
        return 2;
    }
    Enter(bounds);
    StartCoders(argv[0], bounds);
    const bool bAnswered = bDecode ? Decode(std::string(format)) : Encode(std::string(format), bounds);
    // Straight out: what the libraries would tidy up goes with the process, and a damaged heap is not walked again.
    std::_Exit(bAnswered ? 0 : 1);
}
