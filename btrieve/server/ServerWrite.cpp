// Changing the records of a file on a server.
#include "btrieve/server/BlockStatement.h"
#include "btrieve/server/RowStatement.h"
#include "btrieve/server/ServerFile.h"
#include "btrieve/server/ServerLocks.h"

namespace btrieve::server {
namespace {

constexpr char kBegin[] = "BEGIN";
constexpr char kCommit[] = "COMMIT";

constexpr int kNumberColumn = 0;  // of what begins a write: the server's transaction, then the head
constexpr int kHeadColumn = 1;

// A transaction of the server's that nothing is to come of.
void Undo(ServerLink& link) noexcept {
  if (!link.IsAlive()) return;
  try {
    link.Ask("ROLLBACK");
  } catch (...) {  // the server undoes it when the connection goes
    link.Abandon();
  }
}

// An exclusive transaction of another process has the row locked for long, so who is not to wait
// for it asks for the lock of the whole file first.
Question HeadQuestion(const std::string& files, size_t keys, int64_t id, const int32_t* object) {
  Question head{"SELECT txid_current(), " + HeadColumns(keys) + " FROM " + files + " WHERE id = $1",
                Arguments().Add(id)};
  if (object) {
    head.text += " AND pg_try_advisory_xact_lock_shared($2::bigint::int, $3::bigint::int)";
    head.arguments.Add(int64_t{*object}).Add(int64_t{kServerWhole});
  }
  head.text += " FOR UPDATE";
  return head;
}

Question RecordLock(int32_t object, int64_t position) {
  return {"SELECT pg_try_advisory_xact_lock($1::bigint::int, $2::bigint::int)",
          Arguments().Add(int64_t{object}).Add(position)};
}

}  // namespace

std::unique_ptr<LockBytes> ServerFile::MakeLocks() {
  return std::make_unique<ServerLocks>(link_, object_);
}

Status ServerFile::BeginWrite(Head& head, LoneWrite* lone) {
  ServerWork& work = link_->Work();
  if (link_->CannotCommit()) throw Failure{kTransactionNotWritten};
  const bool begins = !work.IsOpen();
  std::vector<Question> questions;
  if (begins) questions.push_back({kBegin, {}});
  if (begins && !lone) questions.push_back(LaterQuestion());
  const size_t headAt = questions.size();
  questions.push_back(HeadQuestion(FilesTable(place_.schema), spec_.file.keys.size(), spec_.id,
                                   lone ? &object_ : nullptr));
  const bool wantsBlocks = lone && lone->wantsBlocks;
  if (wantsBlocks) questions.push_back(RecordLock(object_, kServerHolders));
  const bool hasRecord = lone && lone->position != 0;
  if (hasRecord) {
    questions.push_back({fetch_, Arguments().Add(int64_t{lone->position})});
    questions.push_back(RecordLock(object_, lone->position));
  }
  ForgetRead();
  try {
    std::vector<Rows> answers = link_->AskAll(questions);
    if (answers[headAt].Count() == 0) {
      if (!lone) throw Failure{kFileNotFound};
      Undo(*link_);
      return kFileInUse;
    }
    Begun(answers[headAt], head);
    later_ = !lone;
    if (wantsBlocks) lone->takesBlocks = answers[headAt + 1].Truth(0, 0);
    if (!hasRecord) return kOk;
    fetched_ = std::move(answers[headAt + 1]);
    fetchedPosition_ = lone->position;
    isHere_ = true;
    lone->recordIsFree = answers[headAt + 2].Truth(0, 0);
    return kOk;
  } catch (...) {
    if (writes_) Leave();
    Undo(*link_);
    if (work.IsOpen()) work.Break();
    throw;
  }
}

void ServerFile::Begun(const Rows& heads, Head& head) {
  stored_ = TakeHead(heads, kHeadColumn, spec_.file.keys.size());
  head = counted_ = stored_;
  link_->Work().Join(heads.Number(0, kNumberColumn));
  writes_ = true;
  respecified_ = false;
}

void ServerFile::Leave() noexcept {
  writes_ = false;
  later_ = false;
  link_->Work().Leave();
}

std::vector<Rows> ServerFile::AskToEnd(const std::vector<Question>& questions, bool commits) {
  std::vector<Rows> answers;
  try {
    answers = link_->AskAll(questions);
  } catch (const Failure&) {
    const bool isLost = commits && !link_->IsAlive();
    if (!isLost || !link_->HasCommitted(link_->Work().Number())) throw;
  }
  if (commits) Leave();
  return answers;
}

Status ServerFile::Carry(const RowChange& change, const Head& head, const CarryTerms& terms) {
  if (!writes_ || link_->CannotCommit()) throw Failure{kTransactionNotWritten};
  RowStatement statement(spec_, TableName(place_.schema, place_.table), FilesTable(place_.schema));
  std::vector<Question> questions;
  questions.push_back(statement.Make(change, later_ ? nullptr : &head, terms, object_));
  ForgetRead();
  const bool commits = terms.commits && !later_ && link_->Work().IsLast();
  if (commits) questions.push_back({kCommit, {}});
  const std::vector<Rows> answers = AskToEnd(questions, commits);
  if (answers.empty()) return kOk;
  const Status status = RowStatement::StatusOf(answers.front(), change, !later_);
  if (status == kOk) Keep(head, answers.front(), RowStatement::kCountsColumn);
  return status;
}

uint32_t ServerFile::PutPositionsAside(uint32_t count) {
  const std::string files = FilesTable(place_.schema);
  const std::string text = "UPDATE " + files +
                           " AS f SET next = LEAST(o.next + $2::bigint, $3::bigint) FROM (SELECT "
                           "id, next FROM " +
                           files +
                           " WHERE id = $1 FOR UPDATE) AS o WHERE f.id = o.id "
                           "RETURNING o.next";
  const std::shared_ptr<ServerLink> link = link_->Work().IsOpen() ? link_->Beside() : link_;
  const Rows rows = link->Ask(
      text, Arguments().Add(spec_.id).Add(int64_t{count}).Add(int64_t{kHighestPosition} + 1));
  if (rows.Count() != 1) throw Failure{kFileNotFound};
  const int64_t first = rows.Number(0, 0);
  if (first < 1 || first > int64_t{kHighestPosition} + 1) ThrowDamaged();
  return static_cast<uint32_t>(first);
}

// The file's row would be an old version more with every write of a long transaction, which each
// following one steps over.
void ServerFile::Keep(const Head& head, const Rows& answer, int counts) {
  Head& now = later_ ? counted_ : stored_;
  std::vector<uint32_t> distinct = std::move(now.distinct);
  now = head;
  now.distinct = std::move(distinct);
  if (later_) AddToCounts(now, answer, counts);
}

Status ServerFile::CarryBlock(std::span<const RowChange> changes, const Head& head, bool commits) {
  if (!writes_ || link_->CannotCommit()) throw Failure{kTransactionNotWritten};
  BlockStatement statement(spec_, TableName(place_.schema, place_.table),
                           FilesTable(place_.schema));
  commits = commits && !later_ && link_->Work().IsLast();
  const std::vector<Question> questions = {
      {"SAVEPOINT btrieve_block", {}},
      statement.Make(changes, later_ ? nullptr : &head),
      {commits ? kCommit : "RELEASE SAVEPOINT btrieve_block", {}}};
  ForgetRead();
  try {
    const std::vector<Rows> answers = AskToEnd(questions, commits);
    if (answers.empty()) return kOk;
    if (answers[1].Number(0, 0) != static_cast<int64_t>(changes.size())) ThrowDamaged();
    Keep(head, answers[1], BlockStatement::kCountsColumn);
    return kOk;
  } catch (const Failure& failure) {
    if (failure.status != kDuplicateKey || !link_->IsAlive()) throw;
    link_->Run("ROLLBACK TO SAVEPOINT btrieve_block; RELEASE SAVEPOINT btrieve_block");
    return kDuplicateKey;
  }
}

bool ServerFile::HasChanged(const Head& head) const noexcept {
  return head.nextPosition != stored_.nextPosition || head.records != stored_.records ||
         head.version != stored_.version || head.updateNumber != stored_.updateNumber;
}

Question ServerFile::HeadUpdate(const Head& head) const {
  Question update{"UPDATE " + FilesTable(place_.schema) +
                      " SET next = $2, records = $3, version = $4, updates = $5",
                  Arguments()
                      .Add(spec_.id)
                      .Add(int64_t{head.nextPosition})
                      .Add(int64_t{head.records})
                      .Add(static_cast<int64_t>(head.version))
                      .Add(int64_t{head.updateNumber})};
  if (later_ && counted_.distinct != stored_.distinct) {
    std::string numbers;
    for (size_t slot = 0; slot < counted_.distinct.size(); ++slot) {
      numbers += (slot == 0 ? "$" : ", $") + std::to_string(slot + 6);
      update.arguments.Add(int64_t{counted_.distinct[slot]});
    }
    update.text += ", counts = ARRAY[" + numbers + "]::bigint[]";
  }
  update.text += " WHERE id = $1";
  return update;
}

void ServerFile::CommitWrite(const Head& head) {
  if (!writes_) return;
  ServerWork& work = link_->Work();
  if (link_->CannotCommit()) throw Failure{kTransactionNotWritten};
  std::vector<Question> questions;
  if (HasChanged(head)) questions.push_back(HeadUpdate(head));
  if (later_) questions.push_back(FoldQuestion(Ranged()));
  const bool commits = work.IsLast();
  if (commits) questions.push_back({kCommit, {}});
  if (!questions.empty()) AskToEnd(questions, commits);
  ForgetRead();
  if (!commits) Leave();
}

void ServerFile::RollbackWrite() noexcept {
  if (!writes_) return;
  if (!link_->Work().IsBroken()) Undo(*link_);
  link_->Work().Break();
  ForgetRead();
  TakeBackKeys();
  Leave();
}

// Without memory for it the file is lost until it is opened anew.
void ServerFile::TakeBackKeys() noexcept {
  if (!respecified_) return;
  try {
    Follow(std::move(specBefore_));
  } catch (...) {
    link_->Abandon();
  }
}

uint32_t ServerFile::FindFreePosition() {
  const std::string table = TableName(place_.schema, place_.table);
  const Rows rows =
      link_->Ask("SELECT min(free) FROM (SELECT 1::bigint AS free UNION ALL SELECT pos + 1 FROM " +
                     table + ") AS each WHERE free <= $1 AND NOT EXISTS (SELECT 1 FROM " + table +
                     " WHERE pos = free)",
                 Arguments().Add(int64_t{kHighestPosition}));
  return rows.IsNull(0, 0) ? 0 : CheckedPosition(rows.Number(0, 0));
}

void ServerFile::WriteOwner(const OwnerRecord& owner) {
  WriteServerOwner(*link_, place_.schema, spec_.id, owner);
}

}  // namespace btrieve::server
