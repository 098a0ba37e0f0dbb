#include "btrieve/server/ServerFile.h"

#include <algorithm>
#include <array>

#include "btrieve/server/ServerWalk.h"
#include "btrieve/storage/RowRules.h"

namespace btrieve::server {
namespace {

enum Column { kPosition, kVersion, kNumbers, kData, kEntry };

// What a stretch has behind a record's columns, of which the physical order has no entry.
enum StretchColumn { kNumber, kIsLast, kPositionBefore, kEntryBefore };

int ColumnOf(StretchColumn column, int slot) noexcept {
  return (slot == kPhysicalSlot ? kEntry : kEntry + 1) + column;
}

std::string RecordColumns(const std::string& by, bool isKey) {
  return "pos, ver, num, data" + (isKey ? ", " + by : std::string());
}

OrderTexts MakeTexts(const RangedFile& file, uint16_t key) {
  const bool isKey = key != kPositionsKey;
  const std::string table = TableName(file.schema, file.table);
  const std::string by = isKey ? KeyColumn(key) : "pos";
  const std::string from = " FROM " + table + " WHERE " + by;
  const std::string row = "SELECT " + RecordColumns(by, isKey) + from;
  const std::string order = " ORDER BY " + by;
  return {
      row + " >= $1" + order + " LIMIT $2",
      row + " < $1" + order + " DESC LIMIT $2",
      TotalText(file, key),
      RankText(file, key),
      EntryText(file, key),
  };
}

// Positions and entries are bounded by values of their own kind.
void AddBound(Arguments& arguments, int slot, ByteView bound) {
  slot == kPhysicalSlot ? arguments.Add(BoundPosition(bound)) : arguments.Add(bound);
}

int64_t OnlyNumber(const Rows& rows) {
  const int64_t number = rows.Number(0, 0);
  if (number < 0) ThrowDamaged();
  return number;
}

}  // namespace

ServerFile::ServerFile(const LinkFile& link)
    : place_(link),
      link_(ServerLink::To(link.server)),
      spec_(ReadServerSpec(*link_, link.schema, link.table)),
      channel_(ChannelOf(spec_.id)) {
  const std::string table = TableName(link.schema, link.table);
  object_ = ObjectOf(*link_, table);
  fetch_ = "SELECT pos, ver, num, data FROM " + table + " WHERE pos = $1";
  MakeOrders();
  link_->Listen(channel_);
  notices_ = link_->NoticesOf(channel_);
}

void ServerFile::MakeOrders() {
  texts_ = {MakeTexts(Ranged(), kPositionsKey)};
  entrySizes_.clear();
  for (size_t slot = 0; slot < spec_.file.keys.size(); ++slot) {
    texts_.push_back(MakeTexts(Ranged(), spec_.keyIds[slot]));
    const KeySpec& key = spec_.file.keys[slot];
    entrySizes_.push_back(Index(spec_.file, key, spec_.keyIds[slot]).EntrySize());
  }
  totals_.assign(texts_.size(), std::nullopt);
}

// It may have been set since.
OwnerRecord ServerFile::Owner() {
  return ReadServerSpec(*link_, place_.schema, place_.table).owner;
}

// An empty file that replaces one has another number.
bool ServerFile::IsInPlace() {
  const ServerSpec now = ReadServerSpec(*link_, place_.schema, place_.table);
  return now.id == spec_.id && now.nextKeyId == spec_.nextKeyId && now.keyIds == spec_.keyIds &&
         StoreSpec(now.file) == StoreSpec(spec_.file);
}

void ServerFile::Refresh() {
  const uint64_t notices = link_->NoticesOf(channel_);
  if (notices != notices_) ForgetRead();
  notices_ = notices;
}

void ServerFile::ForgetRead() noexcept {
  ++changes_;
  isHere_ = false;
  std::ranges::fill(totals_, std::nullopt);
}

// A commit to the file may be on its way to be told of, so only who keeps others off can tell.
bool ServerFile::IsCurrent() noexcept { return false; }

Head ServerFile::Counts() {
  if (writes_ && later_) return counted_;
  return ReadServerHead(*link_, place_.schema, spec_.id, spec_.file.keys.size());
}

uint64_t ServerFile::Total(int slot) const {
  auto& known = totals_[PlaceOf(slot)];
  const auto now = std::chrono::steady_clock::now();
  if (!known || known->read + kOldestAnswer < now) {
    known = {static_cast<uint64_t>(OnlyNumber(AskPlace(TextsOf(slot).total, {}))), now};
  }
  return known->entries;
}

// Within a transaction ranges are read when they are as the records are.
Rows ServerFile::AskPlace(const std::string& text, const Arguments& arguments) const {
  if (!later_) return link_->Ask(text, arguments);
  const std::vector<Question> questions = {FoldQuestion(Ranged()), {text, arguments}};
  return std::move(link_->AskAll(questions).back());
}

uint64_t ServerFile::RankOf(int slot, ByteView bound) {
  Arguments arguments;
  slot == kPhysicalSlot ? arguments.Add(BoundPosition(bound)) : arguments.Add(bound);
  return static_cast<uint64_t>(OnlyNumber(AskPlace(TextsOf(slot).rank, arguments)));
}

Entry ServerFile::EntryAt(int slot, uint64_t rank) {
  const Rows rows = AskPlace(TextsOf(slot).entry, Arguments().Add(static_cast<int64_t>(rank)));
  if (rows.Count() == 0) {  // others have deleted records since they were counted
    Entry behind;
    behind.Fill(0xFF, (slot == kPhysicalSlot ? kPositionEntrySize : EntrySizeOf(slot)) + 1);
    return behind;
  }
  if (slot == kPhysicalSlot) return PositionEntry(CheckedPosition(rows.Number(0, 0)));
  const ByteView entry = rows.Bytes(0, 0);
  CheckEntry(entry, EntrySizeOf(slot));
  return Entry(entry);
}

bool ServerFile::Fetch(uint32_t position, Hit& hit) {
  const bool isHere = isHere_ && fetchedPosition_ == position;
  if (!isHere) fetched_ = link_->Ask(fetch_, Arguments().Add(int64_t{position}));
  if (fetched_.Count() == 0) return false;
  TakeRow(fetched_, 0, kPhysicalSlot, hit);
  if (hit.position != position) ThrowDamaged();
  return true;
}

Rows ServerFile::ReadBatch(int slot, bool forward, ByteView bound, int64_t rows) {
  const OrderTexts& texts = TextsOf(slot);
  Arguments arguments;
  AddBound(arguments, slot, bound);
  return link_->Ask(forward ? texts.forward : texts.backward, arguments.Add(rows));
}

std::string ServerFile::OrderColumn(int slot) const {
  return slot == kPhysicalSlot ? "pos" : KeyColumn(spec_.keyIds[static_cast<size_t>(slot)]);
}

Entry ServerFile::FarthestBound(int slot, bool forward) const {
  Entry bound;
  if (forward) bound.Fill(0xFF, slot == kPhysicalSlot ? kPositionEntrySize : EntrySizeOf(slot) + 1);
  return bound;
}

ServerFile::Stretch ServerFile::ReadStretch(int slot, bool forward, ByteView bound,
                                            const std::optional<Entry>& end,
                                            const StretchLimits& limits, const ScanFilter& filter) {
  const std::string by = OrderColumn(slot);
  const Entry farthest = end ? *end : FarthestBound(slot, forward);
  Arguments arguments;
  AddBound(arguments, slot, bound);
  AddBound(arguments, slot, farthest.View());
  arguments.Add(limits.examined).Add(limits.sent).Add(limits.sentBytes);
  arguments.Add(limits.rejects).Add(limits.period);
  filter.AddTo(arguments);
  std::vector<Question> questions;
  questions.push_back(
      {ScanStatement(RecordColumns(by, slot != kPhysicalSlot),
                     TableName(place_.schema, place_.table), by, forward, filter.Text()),
       arguments, Question::Kept::AmongMany});
  if (end) {
    const OrderTexts& texts = TextsOf(slot);
    Arguments behind;
    AddBound(behind, slot, farthest.View());
    questions.push_back({forward ? texts.forward : texts.backward, behind.Add(int64_t{1})});
  }
  std::vector<Rows> answers = link_->AskAll(questions);
  return {std::move(answers.front()), end ? std::move(answers.back()) : Rows()};
}

int64_t ServerFile::NumberInStretch(const Rows& rows, int row, int slot) const {
  return rows.Number(row, ColumnOf(kNumber, slot));
}

bool ServerFile::IsLastOfStretch(const Rows& rows, int row, int slot) const {
  return rows.Truth(row, ColumnOf(kIsLast, slot));
}

Hit ServerFile::BeforeInStretch(const Rows& rows, int row, int slot) const {
  Hit hit;
  hit.position = CheckedPosition(rows.Number(row, ColumnOf(kPositionBefore, slot)));
  if (slot == kPhysicalSlot) return hit;
  hit.entry = rows.Bytes(row, ColumnOf(kEntryBefore, slot));
  CheckEntry(hit.entry, EntrySizeOf(slot));
  return hit;
}

size_t ServerFile::EntrySizeOf(int slot) const noexcept {
  return entrySizes_[static_cast<size_t>(slot)];
}

void ServerFile::TakeRow(const Rows& rows, int row, int slot, Hit& hit) const {
  hit.position = CheckedPosition(rows.Number(row, kPosition));
  hit.version = static_cast<uint64_t>(rows.Number(row, kVersion));
  hit.numbers = rows.Bytes(row, kNumbers);
  hit.data = rows.Bytes(row, kData);
  CheckRecord(spec_.file, hit.data, hit.numbers);
  hit.entry = {};
  if (slot == kPhysicalSlot) return;
  hit.entry = rows.Bytes(row, kEntry);
  CheckEntry(hit.entry, EntrySizeOf(slot));
}

std::unique_ptr<ForeignWalk> ServerFile::Walk(int slot, bool forward, ByteView bound) {
  return std::make_unique<ServerWalk>(*this, slot, forward, bound);
}

bool IsLink(const LockSpace& space) {
  std::array<uint8_t, kLinkStart> start{};
  return space.ReadAt(0, start) == start.size() && IsLinkFile(start);
}

std::unique_ptr<ForeignFile> OpenLinked(ByteView link) {
  LinkFault fault;
  const std::optional<LinkFile> read = ReadLinkFile(link, fault);
  if (!read) throw Failure{kNotABtrieveFile};
  const std::shared_ptr<ServerLink> server = ServerLink::To(read->server);
  const auto open = [&] { return std::make_unique<ServerFile>(*read); };
  return server->IsInTransaction() ? server->Aside(open) : open();
}

}  // namespace btrieve::server
