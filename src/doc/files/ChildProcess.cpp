#include "doc/files/ChildProcess.h"

#include "base/Log.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace kestrune {

namespace {

constexpr std::size_t c_nMostErrorText = 500;
constexpr int c_nPipeBytes = 1 << 20;

std::string MakePrivateFolder()
{
    std::error_code error;
    const fs::path temp = fs::temp_directory_path(error);
    std::string strPattern = ((error ? fs::path("/tmp") : temp) / "kestrune-XXXXXX").string();
    return ::mkdtemp(strPattern.data()) ? strPattern : std::string();
}

std::vector<char*> Pointers(std::vector<std::string>& texts)
{
    std::vector<char*> pointers;
    for (std::string& str : texts)
        pointers.push_back(str.data());
    pointers.push_back(nullptr);
    return pointers;
}

/// Signals and process group of the child as a fresh program expects them.
void SetAttributes(posix_spawnattr_t& attributes)
{
    sigset_t none, all;
    ::sigemptyset(&none);
    ::sigfillset(&all);
    ::posix_spawnattr_setsigmask(&attributes, &none);
    ::posix_spawnattr_setsigdefault(&attributes, &all);
    ::posix_spawnattr_setpgroup(&attributes, 0);
    ::posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETPGROUP);
}

} // namespace

CChildProcess::CChildProcess(const fs::path& program, const std::vector<std::string>& arguments)
{
    m_folder = MakePrivateFolder();
    int aIn[2] = {-1, -1}, aOut[2] = {-1, -1}, aErr[2] = {-1, -1};
    const bool bPipes = !m_folder.empty() && ::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, aIn) == 0
        && ::pipe2(aOut, O_CLOEXEC) == 0 && ::pipe2(aErr, O_CLOEXEC) == 0;
    m_fdIn = aIn[0];
    m_fdOut = aOut[0];
    m_fdErr = aErr[0];
    if (bPipes) {
        ::shutdown(aIn[0], SHUT_RD);
        ::fcntl(m_fdOut, F_SETPIPE_SZ, c_nPipeBytes);
        for (const int fd : {m_fdIn, m_fdOut, m_fdErr})
            ::fcntl(fd, F_SETFL, O_NONBLOCK);
        const int aChildEnds[3] = {aIn[1], aOut[1], aErr[1]};
        if (!Spawn(program, arguments, aChildEnds))
            m_pid = -1;
    }
    for (int fd : {aIn[1], aOut[1], aErr[1]})
        CloseEnd(fd);
}

bool CChildProcess::Spawn(const fs::path& program, const std::vector<std::string>& arguments, const int aChildEnds[3])
{
    std::vector<std::string> words = arguments;
    words.insert(words.begin(), program.string());
    // Nothing of the user's environment steers a decoder: no configuration, no other programs in the path.
    std::vector<std::string> environment = {"PATH=/usr/bin:/bin", "LC_ALL=C.UTF-8", "OMP_NUM_THREADS=1"};
    for (const char* pszName : {"TMPDIR=", "MAGICK_TMPDIR=", "HOME=", "TEMP="})
        environment.push_back(pszName + m_folder.string());
    posix_spawn_file_actions_t actions;
    posix_spawnattr_t attributes;
    ::posix_spawn_file_actions_init(&actions);
    ::posix_spawnattr_init(&attributes);
    for (int i = 0; i < 3; i++)
        ::posix_spawn_file_actions_adddup2(&actions, aChildEnds[i], i);
    ::posix_spawn_file_actions_addclosefrom_np(&actions, 3);
    SetAttributes(attributes);
    const int nError = ::posix_spawn(&m_pid, program.c_str(), &actions, &attributes, Pointers(words).data(),
                                     Pointers(environment).data());
    ::posix_spawnattr_destroy(&attributes);
    ::posix_spawn_file_actions_destroy(&actions);
    if (nError != 0)
        LogWarning(program.string() + ": " + std::strerror(nError));
    return nError == 0;
}

CChildProcess::~CChildProcess()
{
    if (m_pid > 0) {
        ::kill(-m_pid, SIGKILL); // with whatever it has started itself
        ::kill(m_pid, SIGKILL);
        while (::waitpid(m_pid, nullptr, 0) < 0 && errno == EINTR) {
        }
    }
    CloseEnd(m_fdIn);
    CloseEnd(m_fdOut);
    CloseEnd(m_fdErr);
    std::error_code error;
    if (!m_folder.empty())
        fs::remove_all(m_folder, error);
}

void CChildProcess::CloseEnd(int& fd)
{
    if (fd >= 0)
        ::close(fd);
    fd = -1;
}

bool CChildProcess::Send(CByteSource& source, std::span<const std::uint8_t>& pending)
{
    for (;;) {
        if (pending.empty())
            pending = source.Next();
        if (pending.empty()) {
            CloseEnd(m_fdIn); // the end of the file, for a reader that waits for it
            return true;
        }
        const ssize_t n = ::send(m_fdIn, pending.data(), std::min<std::size_t>(pending.size(), c_nPipeBytes), MSG_NOSIGNAL);
        if (n < 0 && errno == EINTR)
            continue;
        if (n < 0 && errno == EAGAIN)
            return true;
        if (n < 0)
            return false;
        pending = pending.subspan(static_cast<std::size_t>(n));
    }
}

void CChildProcess::CollectErrors()
{
    std::array<char, 1024> aText{};
    const ssize_t n = ::read(m_fdErr, aText.data(), aText.size());
    std::replace(aText.begin(), aText.end(), '\n', ' '); // one line in the log
    if (n > 0)
        m_strErrors.append(aText.data(), std::min(static_cast<std::size_t>(n), c_nMostErrorText - m_strErrors.size()));
    else if (n == 0)
        CloseEnd(m_fdErr);
}

bool CChildProcess::Exchange(CByteSource& source, CByteSink& sink, std::chrono::milliseconds timeout)
{
    const auto end = std::chrono::steady_clock::now() + timeout;
    std::span<const std::uint8_t> pending;
    for (std::span<std::uint8_t> room = sink.Room(); !room.empty(); room = sink.Room()) {
        const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(end - std::chrono::steady_clock::now());
        pollfd aFds[3] = {{m_fdOut, POLLIN, 0}, {m_fdIn, POLLOUT, 0}, {m_fdErr, POLLIN, 0}}; // a closed one (-1) is passed over
        const int nReady = left.count() > 0 ? ::poll(aFds, 3, static_cast<int>(left.count())) : 0;
        if (nReady < 0 && errno == EINTR)
            continue;
        if (nReady <= 0)
            return false;
        if (aFds[2].revents)
            CollectErrors();
        // A child may answer before it has read everything, and then close its end: what it says still counts.
        if (aFds[1].revents && !Send(source, pending))
            CloseEnd(m_fdIn);
        if (!aFds[0].revents)
            continue;
        const ssize_t n = ::read(m_fdOut, room.data(), room.size());
        if (n > 0)
            sink.Filled(static_cast<std::size_t>(n));
        else if (n == 0 || (errno != EAGAIN && errno != EINTR))
            return false;
    }
    return true;
}

} // namespace kestrune
