#include "doc/files/Gzip.h"

#include <algorithm>
#include <memory>

#include <libdeflate.h>

namespace kestrune {

bool IsGzip(std::span<const std::uint8_t> file)
{
    return file.size() > 18 && file[0] == 0x1F && file[1] == 0x8B;
}

std::optional<std::vector<std::uint8_t>> Gunzip(std::span<const std::uint8_t> file, std::size_t nMost)
{
    const std::unique_ptr<libdeflate_decompressor, decltype(&libdeflate_free_decompressor)> unpacker(
        libdeflate_alloc_decompressor(), &libdeflate_free_decompressor);
    if (!unpacker || !IsGzip(file))
        return std::nullopt;
    // The size at the end of the file is only what it claims: start small and grow.
    for (std::size_t nRoom = std::min<std::size_t>(nMost, 1u << 20);; nRoom = std::min(nMost, nRoom * 4)) {
        std::vector<std::uint8_t> out(nRoom);
        std::size_t nBytes = 0;
        const libdeflate_result result = libdeflate_gzip_decompress(unpacker.get(), file.data(), file.size(), out.data(), nRoom, &nBytes);
        if (result == LIBDEFLATE_SUCCESS) {
            out.resize(nBytes);
            return out;
        }
        if (result != LIBDEFLATE_INSUFFICIENT_SPACE || nRoom == nMost)
            return std::nullopt;
    }
}

} // namespace kestrune
