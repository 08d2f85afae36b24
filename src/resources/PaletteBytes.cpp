#include "resources/PaletteBytes.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace kestrune {

FileHead ReadFileHead(const std::filesystem::path& path, std::size_t nBytes)
{
    FileHead head;
    const int fd
        = path.native().find('\0') == std::string::npos ? ::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC) : -1;
    if (fd < 0) {
        head.nOpenError = errno ? errno : EINVAL;
        return head;
    }
    struct stat info;
    if (::fstat(fd, &info) != 0 || !S_ISREG(info.st_mode)) {
        head.nOpenError = EINVAL;
        ::close(fd);
        return head;
    }
    head.bytes.resize(nBytes);
    std::size_t nRead = 0;
    while (nRead < nBytes) {
        const ssize_t n = ::read(fd, head.bytes.data() + nRead, nBytes - nRead);
        if (n < 0 && errno == EINTR)
            continue;
        head.bReadError = n < 0;
        if (n <= 0)
            break;
        nRead += static_cast<std::size_t>(n);
    }
    ::close(fd);
    head.bytes.resize(nRead);
    return head;
}

} // namespace kestrune
