// One connection of this process to a server. All files that the process has open there share it,
// so that a transaction over several of them is one of the server's.
//
// Nothing here waits longer than it says: connecting at most kConnectLimit, an answer kAnswerLimit
// unless somebody has more patience. A connection that breaks, or on which an answer does not come
// in time or is longer than kLongestAnswer, is closed, and stays so: what was under way on it is
// undone by the server.
//
// Throws Failure: 20 without the client library, where the server cannot be reached, is away or
// does not answer; 171 it does not let this user in; 172 no such database; 12 no such table; 94 no
// right to it; 18 its disk is full; 85 a lock is not to be had in time; 78 deadlock; 5 a value of a
// unique key is taken; 100 no memory; 2 for anything else.
#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "btrieve/server/LinkFile.h"
#include "btrieve/server/Rows.h"

namespace btrieve::server {

inline constexpr std::chrono::milliseconds kConnectLimit{5000};
inline constexpr std::chrono::milliseconds kAnswerLimit{10000};
// Bytes; a batch of the longest records has a fourth of them.
inline constexpr size_t kLongestAnswer = size_t{16} << 20;

// What goes with a statement, $1 first. Bytes are not copied: they must stay until it is sent.
class Arguments {
 public:
  Arguments& Add(ByteView bytes);
  Arguments& Add(int64_t number);
  Arguments& AddNull();

 private:
  friend class ServerLink;
  struct Value {
    const char* bytes;  // null: `number` holds them
    int size;
    bool isNull;
    uint64_t number;  // high byte first
  };
  std::vector<Value> values_;
};

class ServerLink {
 public:
  // The connection there is, or a new one.
  static std::shared_ptr<ServerLink> To(const ServerAddress& address);

  ~ServerLink();
  ServerLink(const ServerLink&) = delete;
  ServerLink& operator=(const ServerLink&) = delete;

  bool IsAlive() const noexcept { return connection_ != nullptr; }

  // One statement with its answer: one round trip, the first time two, for statements are prepared
  // by their text.
  Rows Ask(const std::string& sql, const Arguments& arguments = {});
  // Statements without arguments or answers, separated by semicolons: one round trip.
  void Run(const std::string& sql);

  // How long an answer may take from here on, as for work on whole files: the server's own limit on
  // a statement is a setting of it.
  void SetAnswerLimit(std::chrono::milliseconds limit) noexcept { answerLimit_ = limit; }
  // The server's own words for the last refusal that any connection of this process has met, for
  // people to read; in the server's language, empty where there were none.
  static const std::string& LastRefusal() noexcept;

  // Notifications of a channel are counted from here on.
  void Listen(const std::string& channel);
  // How many have come. Takes in what stands at the socket, without waiting.
  uint64_t NoticesOf(const std::string& channel);
  // Round trips so far.
  uint64_t RoundTrips() const noexcept { return roundTrips_; }

 private:
  friend class CopyIn;
  using Clock = std::chrono::steady_clock;

  ServerLink(const Client& client, const ServerAddress& address);

  void Connect(const ServerAddress& address);
  [[noreturn]] void RefuseConnection();
  const std::string& Prepared(const std::string& sql);
  // After one of the library's functions has taken something to send.
  Rows Answer(int sent);
  // `toCopy`: the answer is that the server takes the rows of a copy now.
  Rows TakeAnswer(Clock::time_point end, bool toCopy = false);
  Clock::time_point AnswerEnd() const noexcept { return Clock::now() + answerLimit_; }
  void Flush(Clock::time_point end);
  void AwaitAnswer(Clock::time_point end);
  void TakeIn();
  void TakeNotices();
  [[noreturn]] void Break();
  void Close() noexcept;

  const Client& client_;
  PgConnection* connection_ = nullptr;
  std::unordered_map<std::string, std::string> prepared_;  // names by text
  std::unordered_map<std::string, uint64_t> notices_;      // by channel
  uint64_t roundTrips_ = 0;
  std::chrono::milliseconds answerLimit_ = kAnswerLimit;
  size_t takenIn_ = 0;  // bytes of the answer under way
};

// Begins a transaction of the server's, which is undone at the end of the scope unless committed.
class ServerTransaction {
 public:
  explicit ServerTransaction(std::shared_ptr<ServerLink> link);
  ~ServerTransaction();
  ServerTransaction(const ServerTransaction&) = delete;
  ServerTransaction& operator=(const ServerTransaction&) = delete;

  void Commit();

 private:
  std::shared_ptr<ServerLink> link_;  // null once committed
};

}  // namespace btrieve::server
