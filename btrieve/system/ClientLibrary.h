// What the record manager needs of the system to talk to a database server: the server's client
// library, found at run time, and waiting for a connection's socket with a time limit.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>

namespace btrieve {

// PostgreSQL's client library, which stays loaded once it was found; null where there is none.
// Windows looks for libpq.dll beside this library, in the folder server-client beside it, beside
// the program and in the system directory, natively the system for libpq.so.5. Never in the current
// directory.
void* LoadClientLibrary() noexcept;
using AnyFunction = void (*)();
AnyFunction FindInLibrary(void* library, const char* name) noexcept;

enum class SocketEvent : uint8_t { Readable, Writable };
// False when nothing has come of it in time, or the system fails. A socket on which the other side
// has hung up counts as ready: reading it tells.
[[nodiscard]] bool WaitForSocket(int64_t socket, SocketEvent event,
                                 std::chrono::milliseconds limit) noexcept;
// How much has come and not yet been read; 0 when the system fails.
[[nodiscard]] size_t BytesAtSocket(int64_t socket) noexcept;

}  // namespace btrieve
