// What the record manager needs of the system's files besides SQLite's own reading and writing.
// Paths are bytes as callers pass them (system code page on Windows), absolute once prepared.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "btrieve/system/Status.h"

namespace btrieve {

inline constexpr size_t kMaxPathLength = 254;  // bytes, without the NUL

// Which file a path leads to, whatever its spelling.
struct FileIdentity {
  uint64_t volume = 0;
  uint64_t file = 0;
  bool operator==(const FileIdentity&) const = default;
};

// The path in a caller's key buffer, absolute; 11 when it is none (null, empty, too long, a URI).
[[nodiscard]] Status PathFromCaller(const void* key, std::string& path);

// 0, or 12 no such file, 11 a directory, 35 an invalid drive or directory or an empty path, 94
// denied.
[[nodiscard]] Status Identify(const std::string& path, FileIdentity& identity);

// Bytes of the directory part with its last separator. A separator's byte may also be the second
// half of a character, so only this may look for one.
size_t DirectoryLength(const std::string& path);
std::string DirectoryOf(const std::string& path);
bool DirectoryExists(const std::string& path);
bool FileExists(const std::string& path);
uint64_t SizeOfFile(const std::string& path);  // 0 without one

// `path` as SQLite takes names: UTF-8 on Windows, the bytes themselves elsewhere.
std::string SqliteName(const std::string& path);

// `path` as seen from the directory of `base` when it stands there, else absolute; and back. What
// comes back may have been written by anybody into a file that was received: empty for a name that
// is neither in that directory nor an absolute path on a drive of this machine.
std::string RelativeTo(const std::string& base, const std::string& path);
std::string ResolvedFrom(const std::string& base, const std::string& path);

// On another machine: its files cannot be shared by way of this one's memory and locks. Tests say
// what is remote by a function of their own; null takes it back.
bool IsRemote(const std::string& path);
void ReplaceIsRemote(bool (*replacement)(const std::string& path)) noexcept;

// Puts `from` in `to`'s place, whole or not at all; the change is on stable storage on return.
// Where the system does not do that to an open file, `to` must be closed before.
#ifdef _WIN32
inline constexpr bool kReplacesOpenFiles = false;
#else
inline constexpr bool kReplacesOpenFiles = true;
#endif
[[nodiscard]] bool PutInPlace(const std::string& from, const std::string& to);
// The same where nothing may stand: 59 if something does, 25 when the system refuses. The name may
// be on its way to stable storage still.
[[nodiscard]] Status PutAsNew(const std::string& from, const std::string& to);
void RemoveFile(const std::string& path) noexcept;
// A short file where none is, on stable storage on return, but for its name; false when the system
// refuses.
[[nodiscard]] bool WriteNewFile(const std::string& path, std::string_view bytes) noexcept;

// Returns when what was written to the file is on stable storage, with `entryToo` also its name in
// the directory. A file that is not there is no failure: its last user has taken care of it.
[[nodiscard]] bool SyncFile(const std::string& path, bool entryToo) noexcept;
// The same for the name alone, of a file or a folder.
[[nodiscard]] bool SyncFolderOf(const std::string& path) noexcept;

// For tests: called before each sync, on the thread that syncs; false makes it fail.
using SyncHook = bool (*)(const std::string& path);
void SetSyncHook(SyncHook hook) noexcept;
// The system's part of SyncFile and SyncFolderOf.
[[nodiscard]] bool SyncBySystem(const std::string& path, bool entryToo) noexcept;
[[nodiscard]] bool SyncFolderBySystem(const std::string& path) noexcept;

}  // namespace btrieve
