#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <span>
#include <string>
#include <sys/types.h>
#include <vector>

namespace kestrune {

/// Where the bytes for a child come from, piece by piece.
class CByteSource {
public:
    virtual ~CByteSource() = default;
    /// The next bytes to send; empty when all are sent. Stays valid until the next call.
    virtual std::span<const std::uint8_t> Next() = 0;
};

/// Where the bytes of a child go.
class CByteSink {
public:
    virtual ~CByteSink() = default;
    /// Room for the next bytes; empty once everything has come (or what came makes no sense).
    virtual std::span<std::uint8_t> Room() = 0;
    /// So many bytes of the room have been filled.
    virtual void Filled(std::size_t nBytes) = 0;
};

/// A program run under watch: its own process group, a private folder for temporary files, nothing open but the three
/// pipes, an environment of its own. The group is killed and the folder removed when the object goes.
class CChildProcess {
public:
    /// Starts it. `IsRunning` is false when that failed.
    CChildProcess(const std::filesystem::path& program, const std::vector<std::string>& arguments);
    ~CChildProcess();
    CChildProcess(const CChildProcess&) = delete;
    CChildProcess& operator=(const CChildProcess&) = delete;

    bool IsRunning() const { return m_pid > 0; }

    /// Sends all of the source and fills the sink until it has no more room. False when the child ended early, or
    /// the time ran out.
    bool Exchange(CByteSource& source, CByteSink& sink, std::chrono::milliseconds timeout);

    /// The first bytes of what it wrote to its error output.
    const std::string& ErrorText() const { return m_strErrors; }

private:
    bool Spawn(const std::filesystem::path& program, const std::vector<std::string>& arguments, const int aChildEnds[3]);
    bool Send(CByteSource& source, std::span<const std::uint8_t>& pending);
    void CollectErrors();
    void CloseEnd(int& fd);

    pid_t m_pid = -1;
    int m_fdIn = -1;  ///< to the child; a socket, so that a child that is gone raises no signal here
    int m_fdOut = -1; ///< from the child
    int m_fdErr = -1;
    std::filesystem::path m_folder;
    std::string m_strErrors;
};

} // namespace kestrune
