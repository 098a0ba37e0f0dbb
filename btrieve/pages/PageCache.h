// The pages of data files that are kept in memory: one bound for all files of the process. A page
// that is wanted takes the place of the one that nobody has used for the longest time, whatever
// file that belongs to, so files that are read get what they need and idle ones give theirs up.
//
// Used by SQLite alone, by any thread.
#pragma once

#include <cstddef>

namespace btrieve {

// Puts the cache in the place of SQLite's own, once; to be called before SQLite starts, else false.
// The bound is what the environment variable W64BTRV_CACHE_MB says.
bool UseSharedPageCache() noexcept;

// Bytes for a setting in MB of 2^20 bytes; 64 MB for null and for what is no number from 4 to
// 65536.
size_t CacheSizeOf(const char* setting) noexcept;

// Bytes, with what is kept beside each page. Pages in use stay whatever the bound; but changed ones
// are put into the log when nine tenths of it are in use, and scans hold no more than half of it.
size_t PageCacheBound() noexcept;
size_t PageCacheSize() noexcept;

}  // namespace btrieve
