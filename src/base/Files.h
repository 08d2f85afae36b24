#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace kestrune {

using Bytes = std::vector<std::uint8_t>;

/// The whole file, or nothing when it cannot be read, is no plain file (a pipe would hang) or is larger than `nLimit`
/// bytes. The reason goes to `pError` if given.
std::optional<Bytes> ReadWholeFile(const std::filesystem::path& path, std::uint64_t nLimit, std::string* pError = nullptr);

/// How far a failed write got.
enum class WriteStage { Create, Write };

/// The one function that puts bytes on disk: written beside the target, flushed to the device, checked, then renamed over it,
/// with the permissions that the target had. An error text on failure, and then the target is untouched and nothing is left beside it.
/// A link is followed to the file it names. A target that nobody may write to is refused, even to the superuser.
/// What is no plain file (a device) is written to in place. `pStage` tells a failure to create from a failure to write.
std::optional<std::string> WriteFileDurably(const std::filesystem::path& path, std::span<const std::uint8_t> bytes,
                                            WriteStage* pStage = nullptr);

/// Where old bytes are kept while a file is rewritten: "kestrune/recovery" in the user's state folder
/// ($XDG_STATE_HOME, else ~/.local/state), unless another was set.
std::filesystem::path RecoveryFolder();
/// Sets the recovery folder; an empty path returns to the user's own.
void SetRecoveryFolder(const std::filesystem::path& folder);

/// Keeps a copy of the file's bytes in the recovery folder, flushed to the device, before the file is emptied.
/// The path of the copy; an empty path when there is nothing to keep (no such file, or an empty one);
/// nothing, with the reason in `pError`, when the copy cannot be made.
std::optional<std::filesystem::path> KeepAside(const std::filesystem::path& path, std::string* pError = nullptr);
/// Removes such a copy once the new bytes stand. An empty path does nothing.
void DropAside(const std::filesystem::path& kept);

} // namespace kestrune
