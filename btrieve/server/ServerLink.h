// One connection of this process to a server. All files that the process has open there share it,
// so that a transaction over several of them is one of the server's.
//
// Nothing here waits longer than it says: connecting at most kConnectLimit, an answer kAnswerLimit
// unless somebody has more patience. A connection that breaks, or on which an answer does not come
// in time or is longer than kLongestAnswer, is closed, and stays so: what was under way on it is
// undone by the server.
//
// Throws Failure: 20 without the client library, where the server cannot be reached, is away or
// does not answer; 171 it does not let this user in; 172 no such database; 12 no such table; 59 the
// name is taken; 94 no right to it; 18 its disk is full; 85 a lock is not to be had in time; 78
// deadlock; 5 a value of a unique key is taken; 100 no memory; 2 for anything else.
#pragma once

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "btrieve/server/LinkFile.h"
#include "btrieve/server/Rows.h"
#include "btrieve/server/ServerWork.h"

namespace btrieve::server {

inline constexpr std::chrono::milliseconds kConnectLimit{5000};
inline constexpr std::chrono::milliseconds kAnswerLimit{10000};
// Bytes; a batch of the longest records has a fourth of them.
inline constexpr size_t kLongestAnswer = size_t{16} << 20;
inline constexpr std::chrono::milliseconds kLongAnswerLimit{600000};
inline constexpr size_t kMostOfMany = 200;
// Less than any way to a server; looking is the most that a read costs which needs not ask.
inline constexpr std::chrono::microseconds kBetweenLooks{50};
// How long the server waits for a file's row.
inline constexpr std::chrono::milliseconds kLockLimit{3000};

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

// One statement, with one text for all its arguments' values: it is prepared by that, and kept so.
struct Question {
  enum class Kept : uint8_t { Always, AmongMany };

  std::string text;
  Arguments arguments;
  // AmongMany: its text is one of any number, of which kMostOfMany are kept.
  Kept kept = Kept::Always;
};

class ServerLink {
 public:
  // The connection there is, or a new one.
  static std::shared_ptr<ServerLink> To(const ServerAddress& address);

  ~ServerLink();
  ServerLink(const ServerLink&) = delete;
  ServerLink& operator=(const ServerLink&) = delete;

  bool IsAlive() const noexcept { return connection_ != nullptr; }

  // One statement with its answer.
  Rows Ask(const std::string& text, const Arguments& arguments = {});
  // Several, in one round trip. The first that is refused counts, and those behind it are not
  // carried out.
  std::vector<Rows> AskAll(std::span<const Question> questions);
  // Statements without arguments or answers, separated by semicolons: one round trip.
  void Run(const std::string& sql);

  // How long an answer may take from here on, as for work on whole files: the server's own limit on
  // a statement is a setting of it.
  void SetAnswerLimit(std::chrono::milliseconds limit) noexcept { answerLimit_ = limit; }
  // The server's own words for the last refusal that any connection of this process has met, for
  // people to read; in the server's language, empty where there were none.
  static const std::string& LastRefusal() noexcept;
  static void ForgetRefusal() noexcept;

  // Notifications of a channel are counted from here on; within a transaction, which would undo
  // that with the rest, from its end on.
  void Listen(const std::string& channel);
  // How many have come. Takes in what stands at the socket, without waiting; what has come within
  // kBetweenLooks of the last look may be left to the next one.
  uint64_t NoticesOf(const std::string& channel);
  // Round trips so far.
  uint64_t RoundTrips() const noexcept { return roundTrips_; }

  ServerWork& Work() noexcept { return work_; }
  // One of the server's is open.
  bool IsInTransaction() const noexcept;
  // It takes nothing any more.
  bool HasFailed() const noexcept;
  // The transaction of the work is undone, or can only be: something within it was refused. Its
  // commit would be answered as if it were one.
  bool CannotCommit() const noexcept { return work_.IsBroken() || (work_.IsOpen() && HasFailed()); }
  // Another connection, for what is to be committed by itself while a transaction is open here.
  std::shared_ptr<ServerLink> Beside();
  // Takes in what the server has sent without being asked, as it must be from time to time: what
  // nobody takes in for long makes the system end the connection.
  void TakeInNews() noexcept;
  // Whether the server has committed one of its transactions, when the answer to that was lost: it
  // is asked on another connection, also one that is just starting again. False where it has not,
  // has crashed meanwhile, so that nobody can tell, or cannot be asked.
  bool HasCommitted(int64_t transaction) const noexcept;
  // For what takes the server long, within a transaction of it: answers are waited for that much
  // longer until the end of the scope.
  class LongAnswers {
   public:
    explicit LongAnswers(ServerLink& link) : link_(link), before_(link.answerLimit_) {
      link.Run("SET LOCAL statement_timeout = 0");
      link.answerLimit_ = std::max(before_, kLongAnswerLimit);
    }
    ~LongAnswers() { link_.answerLimit_ = before_; }
    LongAnswers(const LongAnswers&) = delete;
    LongAnswers& operator=(const LongAnswers&) = delete;

   private:
    ServerLink& link_;
    std::chrono::milliseconds before_;
  };

  // Within a transaction of the server's: what is refused in the action leaves it as it was.
  template <class Action>
  auto Aside(Action action) {
    Run("SAVEPOINT btrieve_aside");
    try {
      auto result = action();
      Run("RELEASE SAVEPOINT btrieve_aside");
      return result;
    } catch (...) {
      if (IsAlive()) {
        Run("ROLLBACK TO SAVEPOINT btrieve_aside; RELEASE SAVEPOINT btrieve_aside");
      }
      throw;
    }
  }

  // For who cannot leave it as it is: the server undoes what was under way and lets go of all.
  void Abandon() noexcept { Close(); }

 private:
  friend class CopyIn;
  using Clock = std::chrono::steady_clock;

  // What a connection still has to answer: a statement's preparation, or the statement. Without a
  // name it is gone with the next such.
  struct Awaited {
    const Question* prepares = nullptr;
    std::string name;
  };

  class Exchange;

  ServerLink(const Client& client, const ServerAddress& address);

  void ListenAtLast();
  void Connect(const ServerAddress& address);
  [[noreturn]] void RefuseConnection();
  // Whether it was committed; none while it is under way. Throws where the server cannot be asked.
  std::optional<bool> FindOutcome(int64_t transaction) const;
  void SendQuestion(const Question& question, std::vector<Awaited>& awaited);
  void SendPrepared(const std::string& name, const Arguments& arguments);
  std::vector<Rows> TakeAnswers(const std::vector<Awaited>& awaited, Clock::time_point end,
                                Status& refused);
  // The results of one of the things that have been sent, up to the end that the library marks.
  Rows TakeResults(Clock::time_point end, Status& refused, bool toCopy = false);
  void Conclude(Status refused);
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
  ServerAddress address_;
  std::string epoch_;  // of the server
  ServerWork work_;
  std::recursive_mutex use_;  // of who asks; the thread behind the calls keeps off it
  std::shared_ptr<ServerLink> beside_;
  std::unordered_map<std::string, std::string> prepared_;  // names by text
  uint64_t names_ = 0;
  size_t keptOfMany_ = 0;
  std::unordered_map<std::string, uint64_t> notices_;  // by channel
  std::vector<std::string> toBeHeard_;  // channels that a transaction was in the way of
  uint64_t roundTrips_ = 0;
  std::chrono::milliseconds answerLimit_ = kAnswerLimit;
  size_t takenIn_ = 0;  // bytes of the answer under way
  Clock::time_point looked_;
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
