#include "base/Files.h"

#include "base/StringTable.h"

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace kestrune {

namespace {

/// A file descriptor that closes itself.
class CDescriptor {
public:
    explicit CDescriptor(int fd) : m_fd(fd) {}
    ~CDescriptor() { Close(); }
    CDescriptor(const CDescriptor&) = delete;
    CDescriptor& operator=(const CDescriptor&) = delete;
    int Get() const { return m_fd; }
    bool IsOpen() const { return m_fd >= 0; }
    /// The close itself may report what the device refused.
    bool Close()
    {
        const int fd = m_fd;
        m_fd = -1;
        return fd < 0 || ::close(fd) == 0;
    }

private:
    int m_fd;
};

struct ErrnoText {
    int nErrno;
    int nStringId;
};
// The reasons that a user meets and can do something about; any other is said in the system's words.
constexpr ErrnoText c_aErrnoTexts[] = {
    {ENOENT, IDS_REASON_MISSING}, {EACCES, IDS_REASON_DENIED},    {EPERM, IDS_REASON_DENIED}, {EROFS, IDS_REASON_READONLY},
    {ENOSPC, IDS_REASON_FULL},    {EDQUOT, IDS_REASON_FULL},      {EFBIG, IDS_REASON_TOOBIG}, {EISDIR, IDS_REASON_FOLDER},
    {EIO, IDS_REASON_DEVICE},     {ENAMETOOLONG, IDS_REASON_NAME}, {ENOTDIR, IDS_REASON_MISSING},
};

std::string ReasonText(int nErrno)
{
    for (const ErrnoText& row : c_aErrnoTexts)
        if (row.nErrno == nErrno)
            return std::string(StringText(row.nStringId));
    return std::strerror(nErrno);
}

std::string FileErrorText(int nStringId, int nErrno)
{
    return std::string(StringText(nStringId)) + " " + ReasonText(nErrno);
}

int OpenRetrying(const fs::path& path, int nFlags, mode_t mode = 0)
{
    int fd;
    do
        fd = ::open(path.c_str(), nFlags | O_CLOEXEC | O_NOCTTY, mode);
    while (fd < 0 && errno == EINTR);
    return fd;
}

/// 0, or the errno of the first failure.
int WriteAll(int fd, std::span<const std::uint8_t> bytes)
{
    while (!bytes.empty()) {
        const ssize_t n = ::write(fd, bytes.data(), std::min<std::size_t>(bytes.size(), 1u << 30));
        if (n < 0 && errno == EINTR)
            continue;
        if (n <= 0)
            return n < 0 ? errno : EIO;
        bytes = bytes.subspan(static_cast<std::size_t>(n));
    }
    return 0;
}

/// 0, or an errno. What cannot be flushed by its nature (a device, a file system without the call) counts as flushed.
int Flush(int fd)
{
    int n;
    do
        n = ::fsync(fd);
    while (n < 0 && errno == EINTR);
    return n == 0 || errno == EINVAL || errno == ENOTSUP ? 0 : errno;
}

void FlushFolder(const fs::path& folder)
{
    // The bytes stand already; a folder that cannot be opened for reading only leaves the rename to the system's own time.
    CDescriptor fd(OpenRetrying(folder, O_RDONLY | O_DIRECTORY));
    if (fd.IsOpen())
        Flush(fd.Get());
}

fs::path FolderOf(const fs::path& path)
{
    return path.has_parent_path() ? path.parent_path() : fs::path(".");
}

/// The file that a chain of links names in the end, which need not exist; the path itself when it is no link.
fs::path FollowLinks(fs::path path)
{
    for (int i = 0; i < 40; i++) {
        std::error_code error;
        if (!fs::is_symlink(path, error))
            return path;
        const fs::path target = fs::read_symlink(path, error);
        if (error)
            return path;
        path = target.is_absolute() ? target : FolderOf(path) / target;
    }
    return path;
}

/// A new file under a name of its own in that folder; -1 and errno on failure.
int CreateBeside(const fs::path& folder, mode_t mode, fs::path& created)
{
    static std::atomic<unsigned> s_nSerial{0};
    for (int i = 0; i < 100; i++) {
        created = folder / (".kestrune-" + std::to_string(::getpid()) + "-" + std::to_string(s_nSerial++) + ".tmp");
        const int fd = OpenRetrying(created, O_WRONLY | O_CREAT | O_EXCL, mode);
        if (fd >= 0 || errno != EEXIST)
            return fd;
    }
    return -1;
}

std::optional<std::string> WriteInPlace(const fs::path& path, std::span<const std::uint8_t> bytes, WriteStage& stage)
{
    CDescriptor fd(OpenRetrying(path, O_WRONLY | O_NONBLOCK));
    if (!fd.IsOpen())
        return FileErrorText(IDS_CANNOT_CREATE, errno);
    stage = WriteStage::Write;
    int nError = WriteAll(fd.Get(), bytes);
    if (nError == 0)
        nError = Flush(fd.Get());
    if (nError == 0 && !fd.Close())
        nError = errno;
    if (nError != 0)
        return FileErrorText(IDS_CANNOT_WRITE, nError);
    return std::nullopt;
}

/// Copies what the new file takes over from the one it replaces; owner and group as far as the system allows.
void TakeOverRights(int fd, const struct stat& old)
{
    if (::fchown(fd, old.st_uid, old.st_gid) != 0 && ::fchown(fd, static_cast<uid_t>(-1), old.st_gid) != 0) {
        // Not ours to give away: the file then belongs to who wrote it.
    }
    if (::fchmod(fd, old.st_mode & 07777) != 0) {
        // A file system without rights has none to take over.
    }
}

} // namespace

std::optional<Bytes> ReadWholeFile(const fs::path& path, std::uint64_t nLimit, std::string* pError)
{
    const auto fail = [&](int nErrno) {
        if (pError)
            *pError = FileErrorText(IDS_CANNOT_READ, nErrno);
        return std::nullopt;
    };
    if (path.native().find('\0') != std::string::npos)
        return fail(ENOENT);
    CDescriptor fd(OpenRetrying(path, O_RDONLY | O_NONBLOCK));
    struct stat info;
    if (!fd.IsOpen() || ::fstat(fd.Get(), &info) != 0)
        return fail(errno);
    if (!S_ISREG(info.st_mode))
        return fail(S_ISDIR(info.st_mode) ? EISDIR : EINVAL);
    if (static_cast<std::uint64_t>(info.st_size) > nLimit)
        return fail(EFBIG);
    Bytes bytes(static_cast<std::size_t>(info.st_size));
    std::size_t nRead = 0;
    // The size is a hint: a file may grow or shrink meanwhile, and some of the system's own say 0.
    for (;;) {
        if (nRead == bytes.size()) {
            std::uint8_t probe[4096];
            const ssize_t n = ::read(fd.Get(), probe, sizeof probe);
            if (n < 0 && errno == EINTR)
                continue;
            if (n < 0)
                return fail(errno);
            if (n == 0)
                return bytes;
            bytes.insert(bytes.end(), probe, probe + n);
            nRead = bytes.size();
            if (nRead > nLimit)
                return fail(EFBIG);
            continue;
        }
        const ssize_t n = ::read(fd.Get(), bytes.data() + nRead, std::min<std::size_t>(bytes.size() - nRead, 1u << 30));
        if (n < 0 && errno == EINTR)
            continue;
        if (n < 0)
            return fail(errno);
        if (n == 0) {
            bytes.resize(nRead);
            return bytes;
        }
        nRead += static_cast<std::size_t>(n);
    }
}

std::optional<std::string> WriteFileDurably(const fs::path& path, std::span<const std::uint8_t> bytes, WriteStage* pStage)
{
    WriteStage stageUnused;
    WriteStage& stage = pStage ? *pStage : stageUnused;
    stage = WriteStage::Create;
    if (path.empty() || path.native().find('\0') != std::string::npos)
        return FileErrorText(IDS_CANNOT_CREATE, ENOENT);
    const fs::path target = FollowLinks(path);
    struct stat old;
    const bool bExists = ::stat(target.c_str(), &old) == 0;
    if (!bExists && errno == ELOOP)
        return FileErrorText(IDS_CANNOT_CREATE, ELOOP);
    if (bExists && S_ISDIR(old.st_mode))
        return FileErrorText(IDS_CANNOT_CREATE, EISDIR);
    if (bExists && !S_ISREG(old.st_mode))
        return WriteInPlace(target, bytes, stage);
    if (bExists && ((old.st_mode & 0222) == 0 || ::access(target.c_str(), W_OK) != 0))
        return FileErrorText(IDS_CANNOT_CREATE, EROFS);

    fs::path beside;
    CDescriptor fd(CreateBeside(FolderOf(target), 0666, beside));
    if (!fd.IsOpen())
        return FileErrorText(IDS_CANNOT_CREATE, errno);
    stage = WriteStage::Write;
    if (bExists)
        TakeOverRights(fd.Get(), old);
    int nError = WriteAll(fd.Get(), bytes);
    if (nError == 0)
        nError = Flush(fd.Get());
    if (nError == 0 && !fd.Close())
        nError = errno;
    if (nError == 0 && ::rename(beside.c_str(), target.c_str()) != 0)
        nError = errno;
    if (nError != 0) {
        ::unlink(beside.c_str());
        return FileErrorText(IDS_CANNOT_WRITE, nError);
    }
    FlushFolder(FolderOf(target));
    return std::nullopt;
}

namespace {

fs::path& RecoveryOverride()
{
    static fs::path s_path;
    return s_path;
}

/// The name of a copy: the file's own name with the time before its extension, so that it opens as what it is.
fs::path AsideName(const fs::path& path, int nTry)
{
    char szTime[32];
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    ::localtime_r(&now, &local);
    std::strftime(szTime, sizeof szTime, "-%Y%m%d-%H%M%S", &local);
    std::string strStem = path.stem().string();
    if (std::size_t n = 150; strStem.size() > n) { // the whole name must stay under the system's 255 bytes
        while (n > 0 && (static_cast<unsigned char>(strStem[n]) & 0xC0) == 0x80)
            n--; // not in the middle of a character
        strStem.resize(n);
    }
    std::string strName = strStem + szTime;
    if (nTry > 0)
        strName.append("-").append(std::to_string(nTry));
    return strName.append(path.extension().string(), 0, 40);
}

} // namespace

fs::path RecoveryFolder()
{
    if (!RecoveryOverride().empty())
        return RecoveryOverride();
    if (const char* pszState = std::getenv("XDG_STATE_HOME"); pszState && *pszState == '/')
        return fs::path(pszState) / "kestrune/recovery";
    const char* pszHome = std::getenv("HOME");
    return fs::path(pszHome && *pszHome ? pszHome : "/tmp") / ".local/state/kestrune/recovery";
}

void SetRecoveryFolder(const fs::path& folder)
{
    RecoveryOverride() = folder;
}

std::optional<fs::path> KeepAside(const fs::path& path, std::string* pError)
{
    const auto fail = [&](int nErrno) {
        if (pError)
            *pError = FileErrorText(IDS_CANNOT_KEEP, nErrno);
        return std::nullopt;
    };
    struct stat info;
    if (::stat(path.c_str(), &info) != 0)
        return errno == ENOENT || errno == ENOTDIR ? std::optional(fs::path()) : fail(errno);
    if (!S_ISREG(info.st_mode) || info.st_size == 0)
        return fs::path();
    const fs::path folder = RecoveryFolder();
    std::error_code error;
    fs::create_directories(folder, error);
    if (error)
        return fail(error.value());
    ::chmod(folder.c_str(), 0700); // what was private in its own folder stays private here
    const auto bytes = ReadWholeFile(path, static_cast<std::uint64_t>(-1), pError);
    if (!bytes)
        return std::nullopt;
    for (int i = 0; i < 1000; i++) {
        const fs::path kept = folder / AsideName(path, i);
        CDescriptor fd(OpenRetrying(kept, O_WRONLY | O_CREAT | O_EXCL, 0600));
        if (!fd.IsOpen() && errno == EEXIST)
            continue;
        if (!fd.IsOpen())
            return fail(errno);
        int nError = WriteAll(fd.Get(), *bytes);
        if (nError == 0)
            nError = Flush(fd.Get());
        if (nError == 0 && !fd.Close())
            nError = errno;
        if (nError != 0) {
            ::unlink(kept.c_str());
            return fail(nError);
        }
        FlushFolder(folder);
        return kept;
    }
    return fail(EEXIST);
}

void DropAside(const fs::path& kept)
{
    if (!kept.empty())
        ::unlink(kept.c_str());
}

} // namespace kestrune
