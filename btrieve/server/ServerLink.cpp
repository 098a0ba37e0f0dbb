#include "btrieve/server/ServerLink.h"

#include <algorithm>
#include <map>
#include <thread>

#include "btrieve/server/ServerStatus.h"
#include "btrieve/system/ClientLibrary.h"
#include "btrieve/system/StationName.h"

namespace btrieve::server {
namespace {

// Where the system finds out by itself that the other side has gone, with the limits above in mind.
constexpr std::pair<const char*, const char*> kOwnWords[] = {
    {"connect_timeout", "5"},       // seconds, for each address that a host's name has
    {"tcp_user_timeout", "10000"},  // milliseconds
    {"keepalives_idle", "5"},       // seconds
    {"keepalives_interval", "2"},   // seconds
    {"keepalives_count", "3"},      //
    {"gssencmode", "disable"},      // TLS alone is asked for and told of
    {"client_encoding", "SQL_ASCII"},
};

// Orders are read along indexes from the first row on, however small the server takes a table to
// be; the same plan serves every call. What has been acknowledged is on its disk.
constexpr char kSettings[] =
    "SET enable_seqscan = off; SET enable_sort = off; SET enable_bitmapscan = off; SET jit = off; "
    "SET plan_cache_mode = force_generic_plan; SET client_min_messages = error; "
    "SET search_path = ''; SET synchronous_commit = on; SET statement_timeout = 9000; "
    "SET idle_in_transaction_session_timeout = 0; SET idle_session_timeout = 0; "
    "SET default_transaction_isolation = 'read committed'; SET standard_conforming_strings = on; "
    "SET tcp_keepalives_idle = 10; SET tcp_keepalives_interval = 5; SET tcp_keepalives_count = 3; "
    "SET tcp_user_timeout = 20000";

// It changes when the server has crashed and recovered.
constexpr char kEpoch[] = "SELECT coalesce(stats_reset::text, '') FROM pg_stat_bgwriter";

// Bytes that the library takes from the socket at least, where they are there.
constexpr size_t kLeastTaken = 8192;

// While sending, what the server sends is taken in now and then.
constexpr std::chrono::milliseconds kReadBetween{20};

void Ignore(void*, const char*) {}

// The words of a connection, in the form the library takes, ended by a null.
class ConnectionWords {
 public:
  explicit ConnectionWords(const ServerAddress& address) {
    for (const auto& [word, value] : address.words) Add(word.c_str(), value.c_str());
    for (const auto& [word, value] : kOwnWords) Add(word, value);
    Add("application_name", station_.c_str());
    const bool hasMode = std::ranges::any_of(
        address.words, [](const auto& each) { return each.first == "sslmode"; });
    if (address.tlsRequired && !hasMode) Add("sslmode", "require");
    words_.push_back(nullptr);
    values_.push_back(nullptr);
  }
  const char* const* Words() const noexcept { return words_.data(); }
  const char* const* Values() const noexcept { return values_.data(); }

 private:
  void Add(const char* word, const char* value) {
    words_.push_back(word);
    values_.push_back(value);
  }
  const std::string station_ = StationName();
  std::vector<const char*> words_;
  std::vector<const char*> values_;
};

// The connections there are, by address. Never destroyed: a process may end while others of its
// threads are inside.
std::map<std::string, std::weak_ptr<ServerLink>>& Links() {
  static auto* links = new std::map<std::string, std::weak_ptr<ServerLink>>;
  return *links;
}

// Never destroyed, as the connections.
std::string& Refusal() {
  static auto* words = new std::string;
  return *words;
}

std::string TextOrNone(const char* text) { return text ? text : ""; }

std::chrono::milliseconds LeftUntil(std::chrono::steady_clock::time_point end) {
  return std::chrono::ceil<std::chrono::milliseconds>(end - std::chrono::steady_clock::now());
}

}  // namespace

Arguments& Arguments::Add(ByteView bytes) {
  // An empty view may have no address, which the library would take for null.
  const char* at = bytes.empty() ? "" : reinterpret_cast<const char*>(bytes.data());
  values_.push_back({at, static_cast<int>(bytes.size()), false, 0});
  return *this;
}

Arguments& Arguments::Add(int64_t number) {
  values_.push_back(
      {nullptr, sizeof number, false, __builtin_bswap64(static_cast<uint64_t>(number))});
  return *this;
}

Arguments& Arguments::AddNull() {
  values_.push_back({nullptr, 0, true, 0});
  return *this;
}

std::shared_ptr<ServerLink> ServerLink::To(const ServerAddress& address) {
  const std::string text = (address.tlsRequired ? "tls " : "") + address.Text();
  std::erase_if(Links(), [](const auto& link) { return link.second.expired(); });
  if (const auto found = Links().find(text); found != Links().end()) {
    if (auto link = found->second.lock(); link && link->IsAlive()) return link;
  }
  const Client* client = FindClient();
  if (!client) throw Failure{kNotActive};
  std::shared_ptr<ServerLink> link(new ServerLink(*client, address));
  Links()[text] = link;
  return link;
}

ServerLink::ServerLink(const Client& client, const ServerAddress& address)
    : client_(client), address_(address) {
  try {
    Connect(address);
    Run(kSettings + std::string("; SET lock_timeout = ") + std::to_string(kLockLimit.count()));
    epoch_ = TextOf(Ask(kEpoch).Bytes(0, 0));
  } catch (...) {
    Close();
    throw;
  }
}

ServerLink::~ServerLink() { Close(); }

void ServerLink::Close() noexcept {
  const std::lock_guard lock(use_);
  if (connection_) client_.PQfinish(std::exchange(connection_, nullptr));
}

void ServerLink::Break() {
  Close();
  throw Failure{kNotActive};
}

void ServerLink::RefuseConnection() {
  Refusal() = TextOrNone(client_.PQerrorMessage(connection_));
  const bool lacksPassword = client_.PQconnectionNeedsPassword(connection_) != 0;
  const Status status = lacksPassword ? kLoginFailed : StatusOfRefusal(Refusal());
  Close();
  throw Failure{status};
}

void ServerLink::Connect(const ServerAddress& address) {
  const auto end = Clock::now() + kConnectLimit;
  const ConnectionWords words(address);
  connection_ = client_.PQconnectStartParams(words.Words(), words.Values(), 0);
  if (!connection_) throw Failure{kNoCacheBuffer};
  client_.PQsetNoticeProcessor(connection_, Ignore, nullptr);
  client_.PQsetErrorVerbosity(connection_, kAllWords);
  int state = kPollWriting;
  while (state != kPollOk) {
    if (state == kPollFailed || client_.PQsocket(connection_) < 0) RefuseConnection();
    const auto event = state == kPollReading ? SocketEvent::Readable : SocketEvent::Writable;
    if (!WaitForSocket(client_.PQsocket(connection_), event, LeftUntil(end))) Break();
    state = client_.PQconnectPoll(connection_);
  }
  client_.PQsetErrorVerbosity(connection_, kUsualWords);
  if (client_.PQsetnonblocking(connection_, 1) != 0) Break();
}

Rows ServerLink::Ask(const std::string& text, const Arguments& arguments) {
  const Question question{text, arguments};
  return std::move(AskAll({&question, 1}).front());
}

// What is left half way, for want of memory too, leaves nothing that could go on.
class ServerLink::Exchange {
 public:
  explicit Exchange(ServerLink& link) noexcept : link_(&link) {}
  ~Exchange() {
    if (link_) link_->Close();
  }
  Exchange(const Exchange&) = delete;
  Exchange& operator=(const Exchange&) = delete;
  void Finish() noexcept { link_ = nullptr; }

 private:
  ServerLink* link_;
};

std::vector<Rows> ServerLink::AskAll(std::span<const Question> questions) {
  const std::lock_guard lock(use_);
  if (!connection_) throw Failure{kNotActive};
  const auto end = AnswerEnd();
  Exchange exchange(*this);
  if (!client_.PQenterPipelineMode(connection_)) Break();
  std::vector<Awaited> awaited;
  for (const Question& question : questions) SendQuestion(question, awaited);
  if (!client_.PQpipelineSync(connection_)) Break();
  ++roundTrips_;
  takenIn_ = 0;
  Flush(end);
  Status refused = kOk;
  std::vector<Rows> answers = TakeAnswers(awaited, end, refused);
  exchange.Finish();
  Conclude(refused);
  return answers;
}

void ServerLink::SendQuestion(const Question& question, std::vector<Awaited>& awaited) {
  const auto found = prepared_.find(question.text);
  if (found != prepared_.end()) {
    awaited.emplace_back();
    return SendPrepared(found->second, question.arguments);
  }
  const bool isKept = question.kept == Question::Kept::Always || keptOfMany_ < kMostOfMany;
  const std::string name = isKept ? "s" + std::to_string(names_++) : std::string();
  const char* text = question.text.c_str();
  if (!client_.PQsendPrepare(connection_, name.c_str(), text, 0, nullptr)) Break();
  awaited.push_back({&question, name});
  awaited.emplace_back();
  SendPrepared(name, question.arguments);
}

void ServerLink::SendPrepared(const std::string& name, const Arguments& arguments) {
  const size_t count = arguments.values_.size();
  std::vector<const char*> values(count);
  std::vector<int> sizes(count);
  const std::vector<int> formats(count, kBinaryFormat);
  for (size_t at = 0; at < count; ++at) {
    const Arguments::Value& value = arguments.values_[at];
    const auto* number = reinterpret_cast<const char*>(&value.number);
    values[at] = value.isNull ? nullptr : value.bytes ? value.bytes : number;
    sizes[at] = value.size;
  }
  const int sent =
      client_.PQsendQueryPrepared(connection_, name.c_str(), static_cast<int>(count), values.data(),
                                  sizes.data(), formats.data(), kBinaryFormat);
  if (!sent) Break();
}

std::vector<Rows> ServerLink::TakeAnswers(const std::vector<Awaited>& awaited,
                                          Clock::time_point end, Status& refused) {
  std::vector<Rows> answers;
  for (const Awaited& each : awaited) {
    Rows rows = TakeResults(end, refused);
    if (!each.prepares) {
      answers.push_back(std::move(rows));
    } else if (refused == kOk && !each.name.empty()) {
      prepared_.emplace(each.prepares->text, each.name);
      if (each.prepares->kept == Question::Kept::AmongMany) ++keptOfMany_;
    }
  }
  AwaitAnswer(end);
  const Rows mark(client_, client_.PQgetResult(connection_));
  if (mark.State() != kPipelineSync || !client_.PQexitPipelineMode(connection_)) Break();
  return answers;
}

void ServerLink::Run(const std::string& sql) {
  const std::lock_guard lock(use_);
  if (!connection_) throw Failure{kNotActive};
  Answer(client_.PQsendQuery(connection_, sql.c_str()));
}

const std::string& ServerLink::LastRefusal() noexcept { return Refusal(); }
void ServerLink::ForgetRefusal() noexcept { Refusal().clear(); }

Rows ServerLink::Answer(int sent) {
  if (!sent) Break();
  const auto end = AnswerEnd();
  ++roundTrips_;
  takenIn_ = 0;
  Flush(end);
  return TakeAnswer(end);
}

Rows ServerLink::TakeAnswer(Clock::time_point end, bool toCopy) {
  Status refused = kOk;
  Rows rows = TakeResults(end, refused, toCopy);
  if (rows.State() != kCopyingIn) Conclude(refused);
  return rows;
}

// After everything that was asked for has been answered.
void ServerLink::Conclude(Status refused) {
  TakeNotices();
  if (refused == kNotActive || client_.PQstatus(connection_) != kConnectionOk) Break();
  if (refused != kOk) throw Failure{refused};
}

// Of several results the last one; the first refusal there is stays.
Rows ServerLink::TakeResults(Clock::time_point end, Status& refused, bool toCopy) {
  Rows rows;
  takenIn_ = 0;
  while (true) {
    AwaitAnswer(end);
    PgResult* result = client_.PQgetResult(connection_);
    if (!result) return rows;
    rows = Rows(client_, result);
    const int state = rows.State();
    if (toCopy && state == kCopyingIn) return rows;
    if (state == kCommandOk || state == kTuplesOk || refused != kOk) continue;
    const char* code = client_.PQresultErrorField(result, kFieldSqlState);
    // What comes in place of a refusal, a copy for one, was not asked for.
    if (state != kFatalError || !code) Break();
    refused = StatusOfState(code);
    Refusal() = TextOrNone(client_.PQresultErrorField(result, kFieldMessage));
  }
}

void ServerLink::Flush(Clock::time_point end) {
  while (true) {
    const int left = client_.PQflush(connection_);
    if (left == 0) return;
    if (left < 0) Break();
    const int64_t socket = client_.PQsocket(connection_);
    if (!WaitForSocket(socket, SocketEvent::Writable, std::min(LeftUntil(end), kReadBetween))) {
      if (Clock::now() >= end) Break();
    }
    // The server may itself be waiting to be read from.
    TakeIn();
  }
}

// The library keeps what has come until it is whole, however long it calls itself.
void ServerLink::TakeIn() {
  const int64_t socket = client_.PQsocket(connection_);
  const size_t there = BytesAtSocket(socket);
  if (client_.PQconsumeInput(connection_) == 0) Break();
  const size_t left = BytesAtSocket(socket);
  takenIn_ += std::max(there - std::min(there, left), std::min(there, kLeastTaken));
  if (takenIn_ > kLongestAnswer) Break();
}

void ServerLink::AwaitAnswer(Clock::time_point end) {
  while (client_.PQisBusy(connection_) != 0) {
    if (!WaitForSocket(client_.PQsocket(connection_), SocketEvent::Readable, LeftUntil(end))) {
      Break();
    }
    if (Clock::now() >= end) Break();
    TakeIn();
  }
}

void ServerLink::Listen(const std::string& channel) {
  notices_.try_emplace(channel, 0);
  if (IsInTransaction()) {
    toBeHeard_.push_back(channel);
  } else {
    Run("LISTEN " + channel);
  }
}

// What has happened meanwhile is told by a notice of one's own.
void ServerLink::ListenAtLast() {
  for (const std::string& channel : std::exchange(toBeHeard_, {})) {
    Run("LISTEN " + channel);
    ++notices_[channel];
  }
}

bool ServerLink::IsInTransaction() const noexcept {
  return client_.PQtransactionStatus(connection_) != kOutsideTransactions;
}

uint64_t ServerLink::NoticesOf(const std::string& channel) {
  const std::lock_guard lock(use_);
  if (!connection_) throw Failure{kNotActive};
  if (!toBeHeard_.empty() && !IsInTransaction()) ListenAtLast();
  if (const auto now = Clock::now(); now >= looked_ + kBetweenLooks) {
    looked_ = now;
    if (client_.PQconsumeInput(connection_) == 0) Break();
    TakeNotices();
  }
  return notices_[channel];
}

// Who is waiting for an answer would never see what another thread has read.
void ServerLink::TakeInNews() noexcept {
  const std::unique_lock lock(use_, std::try_to_lock);
  if (!lock) return;
  constexpr int kMostReads = 64;
  for (int read = 0; connection_ && read < kMostReads; ++read) {
    if (client_.PQconsumeInput(connection_) == 0) return Close();
    TakeNotices();
    if (BytesAtSocket(client_.PQsocket(connection_)) == 0) break;
  }
  if (beside_) beside_->TakeInNews();
}

void ServerLink::TakeNotices() {
  const int own = client_.PQbackendPID(connection_);
  while (PgNotification* notice = client_.PQnotifies(connection_)) {
    const auto found = notices_.find(notice->channel);
    if (found != notices_.end() && notice->backend != own) ++found->second;
    client_.PQfreemem(notice);
  }
}

std::shared_ptr<ServerLink> ServerLink::Beside() {
  const std::lock_guard lock(use_);
  if (!beside_ || !beside_->IsAlive()) beside_.reset(new ServerLink(client_, address_));
  return beside_;
}

bool ServerLink::HasFailed() const noexcept {
  return connection_ && client_.PQtransactionStatus(connection_) == kInFailedTransaction;
}

std::optional<bool> ServerLink::FindOutcome(int64_t transaction) const {
  ServerLink other(client_, address_);
  if (other.epoch_ != epoch_) return false;
  const Rows rows = other.Ask("SELECT txid_status($1::bigint)", Arguments().Add(transaction));
  if (rows.IsNull(0, 0)) return false;
  const std::string status = TextOf(rows.Bytes(0, 0));
  if (status == "in progress") return std::nullopt;
  return status == "committed";
}

// A server that has crashed may have given the number of a transaction that it has lost to another
// one. A server that starts again refuses at once, for a while; one that is silent has had its
// time.
bool ServerLink::HasCommitted(int64_t transaction) const noexcept {
  constexpr std::chrono::milliseconds kBetweenAttempts{50};
  constexpr std::chrono::seconds kAtOnce{2};
  const auto end = Clock::now() + kAnswerLimit;
  for (auto begin = Clock::now(); begin < end; begin = Clock::now()) {
    try {
      if (const std::optional<bool> committed = FindOutcome(transaction)) return *committed;
    } catch (const Failure& failure) {
      if (failure.status != kNotActive || Clock::now() > begin + kAtOnce) return false;
    } catch (...) {  // nobody can tell
      return false;
    }
    std::this_thread::sleep_for(kBetweenAttempts);
  }
  return false;
}

ServerTransaction::ServerTransaction(std::shared_ptr<ServerLink> link) : link_(std::move(link)) {
  link_->Run("BEGIN");
}

// A connection that broke has undone it.
ServerTransaction::~ServerTransaction() {
  if (!link_ || !link_->IsAlive()) return;
  try {
    link_->Run("ROLLBACK");
  } catch (const Failure&) {
  }
}

void ServerTransaction::Commit() {
  if (link_->HasFailed()) throw Failure{kTransactionNotWritten};
  link_->Run("COMMIT");
  link_.reset();
}

}  // namespace btrieve::server
