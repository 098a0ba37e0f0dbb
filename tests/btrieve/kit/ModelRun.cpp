#include "ModelRun.h"

#include <deque>

#include "ModelCursor.h"
#include "ModelMakeUp.h"

namespace btrieve::test {
namespace {

constexpr int kCursors = 3;
constexpr int kReader = 20;  // a block that walks the whole file
constexpr size_t kMostRecords = 50;
constexpr size_t kLogLines = 40;

class ModelRun {
 public:
  explicit ModelRun(Choices& choices)
      : choices_(choices),
        makeUp_(RandomMakeUp(choices)),
        file_(makeUp_.spec),
        saved_(makeUp_.spec),
        path_(folder_.Path("model.dat")) {}
  ModelRun(Choices& choices, const MakeUp& makeUp, const ModelFile& file, const std::string& path)
      : choices_(choices), makeUp_(makeUp), file_(file), saved_(file), path_(path) {}

  // Makes the file first.
  std::string Run(int steps);
  std::string RunOn(int steps, bool writes);
  void Close();
  const std::string& Path() const { return path_; }

 private:
  struct Action {
    uint32_t weight;
    void (ModelRun::*run)(int cursor);
  };
  static const Action kActions[];
  static constexpr size_t kWriting = 4;  // the first of them

  void Step(bool writes);
  void Open();
  void Reopen();
  void Check(const char* what, int cursor, int operation, const CallIn& in,
             const Expected& expected, const CallOut& out);
  void Fail(const std::string& difference) {
    if (failure_.empty()) failure_ = difference;
  }

  void Read(int cursor);
  void ReadKey(int cursor);
  void StepBy(int cursor);
  void Direct(int cursor);
  void Position(int cursor);
  void Insert(int cursor);
  void InsertMany(int cursor);
  void Update(int cursor);
  void Delete(int cursor);
  void Extended(int cursor);
  void Percent(int cursor);
  void FindPercent(int cursor);
  void Transaction(int cursor);
  void Compare(int cursor);

  ModelCursor& Cursor(int cursor) { return cursors_[static_cast<size_t>(cursor)]; }
  CallOut Call(int operation, int block, const CallIn& in) {
    return process_.Call(operation, block, in);
  }
  int SomeKey();
  Bytes SomeRecord();
  Bytes SomeValue(int key);
  uint32_t SomePosition();
  size_t SomeRoom();
  TermOf SomeTerm(bool last);
  Descriptor SomeDescriptor();
  void TakePosition(int cursor, const CallIn& in);
  void WalkKey(size_t key, bool forward);

  Choices& choices_;
  MakeUp makeUp_;
  ModelFile file_;
  ModelFile saved_;  // as it was when the transaction began
  bool inTransaction_ = false;
  std::vector<ModelCursor> cursors_;
  Folder folder_;
  std::string path_;
  ThisProcess process_;
  std::deque<std::string> log_;
  std::string failure_;
};

const ModelRun::Action ModelRun::kActions[] = {
    {20, &ModelRun::Insert},     {3, &ModelRun::InsertMany}, {12, &ModelRun::Update},
    {8, &ModelRun::Delete},      {40, &ModelRun::Read},      {15, &ModelRun::ReadKey},
    {12, &ModelRun::StepBy},     {8, &ModelRun::Direct},     {6, &ModelRun::Position},
    {14, &ModelRun::Extended},   {6, &ModelRun::Percent},    {6, &ModelRun::FindPercent},
    {5, &ModelRun::Transaction}, {2, &ModelRun::Compare},
};

std::string ModelRun::Run(int steps) {
  const CallIn create{.data = makeUp_.createBlock, .key = PathKey(path_)};
  const Status created = Call(kCreate, 0, create).status;
  if (created != 0) return "Create: " + std::to_string(created) + " " + makeUp_.text;
  return RunOn(steps, true);
}

std::string ModelRun::RunOn(int steps, bool writes) {
  Open();
  for (int i = 1; i <= steps && failure_.empty(); ++i) {
    Step(writes);
    if (i % 100 == 0) Reopen();
  }
  if (failure_.empty()) Reopen();
  if (failure_.empty()) return "";
  std::string report = makeUp_.text + "\n";
  for (const std::string& line : log_) report += line + "\n";
  return report + failure_;
}

void ModelRun::Open() {
  cursors_.assign(kCursors, ModelCursor(file_));
  for (int block : {0, 1, 2, kReader}) {
    const CallOut out = Call(kOpen, block, {.key = PathKey(path_)});
    if (out.status != 0) Fail("Open: " + std::to_string(out.status));
  }
}

void ModelRun::Reopen() {
  if (inTransaction_) Transaction(0);
  Compare(0);
  Close();
  log_.push_back("reopened");
  Open();
  Compare(0);
}

void ModelRun::Close() {
  for (int block : {0, 1, 2, kReader}) {
    const CallOut out = Call(kClose, block, {});
    if (out.status != 0) Fail("Close: " + std::to_string(out.status));
  }
}

void ModelRun::Step(bool writes) {
  const Action* action = kActions + (writes ? 0 : kWriting);
  uint32_t all = 0;
  for (const Action* each = action; each != std::end(kActions); ++each) all += each->weight;
  uint32_t pick = choices_.Pick(all);
  while (pick >= action->weight) pick -= (action++)->weight;
  (this->*action->run)(static_cast<int>(choices_.Pick(kCursors)));
}

void ModelRun::Check(const char* what, int cursor, int operation, const CallIn& in,
                     const Expected& expected, const CallOut& out) {
  log_.push_back(std::string(what) + " cursor " + std::to_string(cursor) + " op " +
                 std::to_string(operation) + " key " + std::to_string(in.keyNumber) + " data " +
                 ToHex(in.data) + " value " + ToHex(in.key) + " -> " + std::to_string(out.status));
  if (log_.size() > kLogLines) log_.pop_front();
  if (out.status != expected.status) {
    return Fail("status " + std::to_string(out.status) + ", expected " +
                std::to_string(expected.status));
  }
  if (expected.data) {
    if (out.Returned() != *expected.data) {
      Fail("data " + ToHex(out.Returned()) + ", expected " + ToHex(*expected.data));
    }
  } else if (out.dataTouched) {
    Fail("data buffer changed to " + ToHex(out.data));
  }
  if (out.status == kDataBufferLength) return;
  Bytes key = in.key;
  key.resize(out.key.size(), kUnused);
  if (expected.key) std::copy(expected.key->begin(), expected.key->end(), key.begin());
  if (out.key != key) Fail("key " + ToHex(out.key) + ", expected " + ToHex(key));
}

int ModelRun::SomeKey() {
  return static_cast<int>(choices_.Pick(static_cast<uint32_t>(makeUp_.spec.keys.size())));
}

uint32_t ModelRun::SomePosition() {
  if (file_.usedPositions.empty() || choices_.Chance(8)) return choices_.Pick(100);
  auto place = file_.usedPositions.begin();
  std::advance(place, choices_.Pick(static_cast<uint32_t>(file_.usedPositions.size())));
  return *place;
}

Bytes ModelRun::SomeRecord() {
  if (!file_.records.empty() && choices_.Chance(3)) {
    auto record = file_.records.begin();
    std::advance(record, choices_.Pick(static_cast<uint32_t>(file_.records.size())));
    Bytes copy = record->second.data;
    copy[choices_.Pick(kModelRecord)] = RandomByte(choices_);
    return copy;
  }
  return RandomRecord(choices_, makeUp_.spec);
}

Bytes ModelRun::SomeValue(int key) {
  return ModelFile::RawValue(makeUp_.spec.keys[static_cast<size_t>(key)], SomeRecord());
}

size_t ModelRun::SomeRoom() { return choices_.Chance(12) ? choices_.Pick(80) : 200; }

void ModelRun::Read(int cursor) {
  static constexpr int kReads[] = {
      kGetEqual,       kGetNext,     kGetNext,    kGetNext,           kGetPrevious,
      kGetPrevious,    kGetPrevious, kGetGreater, kGetGreaterOrEqual, kGetLess,
      kGetLessOrEqual, kGetFirst,    kGetLast};
  const int operation = choices_.Of(std::span<const int>(kReads));
  CallIn in{.room = SomeRoom(), .keyNumber = SomeKey()};
  in.key = SomeValue(in.keyNumber);
  if (choices_.Chance(20)) in.keyNumber = static_cast<int>(makeUp_.spec.keys.size());
  Check("read", cursor, operation, in, Cursor(cursor).Read(operation, in),
        Call(operation, cursor, in));
}

void ModelRun::ReadKey(int cursor) {
  const int operation = kGetKey + kGetEqual + static_cast<int>(choices_.Pick(9));
  CallIn in{.room = SomeRoom(), .keyNumber = SomeKey()};
  in.key = SomeValue(in.keyNumber);
  Check("read key", cursor, operation, in, Cursor(cursor).ReadKey(operation, in),
        Call(operation, cursor, in));
}

void ModelRun::StepBy(int cursor) {
  static constexpr int kWays[] = {kStepFirst, kStepLast,     kStepNext,
                                  kStepNext,  kStepPrevious, kStepPrevious};
  const int operation = choices_.Of(std::span<const int>(kWays));
  const CallIn in{.room = SomeRoom()};
  Check("step", cursor, operation, in, Cursor(cursor).Step(operation, in),
        Call(operation, cursor, in));
}

void ModelRun::Direct(int cursor) {
  const CallIn in{.data = Number(SomePosition()),
                  .room = 200,
                  .keyNumber = choices_.Chance(3) ? -1 : SomeKey()};
  Check("direct", cursor, kGetDirect, in, Cursor(cursor).Direct(in), Call(kGetDirect, cursor, in));
}

void ModelRun::Position(int cursor) {
  if (!Cursor(cursor).SeesItsRecord()) return;
  const CallIn in{.room = 10};
  Check("position", cursor, kGetPosition, in, Cursor(cursor).Position(in),
        Call(kGetPosition, cursor, in));
}

void ModelRun::TakePosition(int cursor, const CallIn& in) {
  const CallOut out = Call(kGetPosition, cursor, {.room = 4});
  const auto position = NumberAt<uint32_t>(out.data, 0);
  if (out.status != 0) return Fail("no position after an insert");
  if (position == 0 || position >= 0x80000000u) Fail("position " + std::to_string(position));
  if (file_.usedPositions.count(position)) Fail("position used again");
  Cursor(cursor).Inserted(position, in);
}

void ModelRun::Insert(int cursor) {
  if (file_.records.size() >= kMostRecords) return Delete(cursor);
  const CallIn in{.data = SomeRecord(), .keyNumber = choices_.Chance(3) ? -1 : SomeKey()};
  const Expected expected = Cursor(cursor).Insert(in);
  const CallOut out = Call(kInsert, cursor, in);
  Check("insert", cursor, kInsert, in, expected, out);
  if (out.status == 0 && failure_.empty()) TakePosition(cursor, in);
}

// The model inserts one after the other, the record manager all of them by one call.
void ModelRun::InsertMany(int cursor) {
  if (file_.records.size() >= kMostRecords || makeUp_.spec.keys[0].IsAutoIncrement()) return;
  const int key = choices_.Chance(3) ? -1 : SomeKey();
  std::vector<Bytes> records;
  for (uint32_t count = 1 + choices_.Pick(4); count > 0; --count) records.push_back(SomeRecord());
  Bytes data = Number(static_cast<uint16_t>(records.size()));
  for (const Bytes& record : records) {
    data = std::move(data) + Number(static_cast<uint16_t>(record.size())) + record;
  }
  const CallOut out = Call(kInsertExtended, cursor, {.data = data, .keyNumber = key});
  log_.push_back("insert many " + ToHex(data) + " -> " + std::to_string(out.status));
  const auto inserted = NumberAt<uint16_t>(out.data, 0);
  if (out.status != 0 && out.status != kDuplicateKey) return Fail("status of insert many");
  if (out.length != 2u + 4u * inserted) return Fail("length of insert many");
  for (size_t i = 0; i < records.size(); ++i) {
    const CallIn in{.data = records[i], .keyNumber = key};
    const Status status = Cursor(cursor).Insert(in).status;
    if (i == inserted) return status == out.status ? void() : Fail("insert many stopped early");
    if (status != 0) return Fail("insert many took a record it should not");
    const auto position = NumberAt<uint32_t>(out.data, 2 + 4 * i);
    if (file_.usedPositions.count(position)) return Fail("position used again");
    Cursor(cursor).Inserted(position, in);
  }
  if (out.status != 0) Fail("insert many took all, with a status");
}

void ModelRun::Update(int cursor) {
  CallIn in{.data = SomeRecord(), .keyNumber = -1};
  if (Cursor(cursor).PlaceIsCurrent() && !choices_.Chance(3)) in.keyNumber = SomeKey();
  if (choices_.Chance(20)) in.data.resize(choices_.Pick(kModelRecord));
  if (makeUp_.spec.keys[0].IsAutoIncrement() && in.data.size() > 4) in.data[1] |= 1;
  Check("update", cursor, kUpdate, in, Cursor(cursor).Update(in), Call(kUpdate, cursor, in));
}

void ModelRun::Delete(int cursor) {
  Check("delete", cursor, kDelete, {}, Cursor(cursor).Delete(), Call(kDelete, cursor, {}));
}

TermOf ModelRun::SomeTerm(bool last) {
  const auto& key = makeUp_.spec.keys[static_cast<size_t>(SomeKey())];
  const KeySegment& segment =
      key.segments[choices_.Chance(2) ? 0
                                      : choices_.Pick(static_cast<uint32_t>(key.segments.size()))];
  TermOf term;
  term.type = static_cast<uint8_t>(segment.Type());
  term.length = segment.length;
  term.offset = segment.offset;
  if (choices_.Chance(8)) term.offset = static_cast<uint16_t>(choices_.Pick(40));
  term.comparison = 1 + static_cast<int>(choices_.Pick(6));
  term.connector = last ? kLastTerm : choices_.Chance(2) ? kAndNext : kOrNext;
  const bool text = FindKeyType(term.type)->isString;
  if (text && (segment.FoldsCase() || choices_.Chance(6))) term.comparison |= kWithFold;
  const bool known = !makeUp_.spec.sequences.empty();
  if (text && known && (segment.Has(kSequence) || choices_.Chance(6))) {
    term.comparison |= kWithSequence;
  }
  if (choices_.Chance(6)) {
    term.comparison |= kWithField;
    term.operand = Number(static_cast<uint16_t>(choices_.Pick(40)));
  } else {
    const Bytes record = SomeRecord();
    term.operand = {record.begin() + segment.offset,
                    record.begin() + segment.offset + segment.length};
  }
  return term;
}

Descriptor ModelRun::SomeDescriptor() {
  Descriptor descriptor;
  descriptor.signature = choices_.Chance(2) ? "UC" : "EG";
  descriptor.rejects = static_cast<uint16_t>(choices_.Chance(2) ? 0 : 1 + choices_.Pick(5));
  const uint32_t terms = choices_.Pick(4);
  for (uint32_t i = 0; i < terms; ++i) descriptor.terms.push_back(SomeTerm(i + 1 == terms));
  descriptor.wanted = static_cast<uint16_t>(1 + choices_.Pick(10));
  descriptor.fields.clear();
  for (uint32_t fields = 1 + choices_.Pick(3); fields > 0; --fields) {
    const auto length = static_cast<uint16_t>(choices_.Pick(12));
    descriptor.fields.push_back(
        {length, static_cast<uint16_t>(choices_.Pick(choices_.Chance(4) ? 60 : 20))});
  }
  return descriptor;
}

void ModelRun::Extended(int cursor) {
  const int operation = kGetNextExtended + static_cast<int>(choices_.Pick(4));
  const bool onKey = operation <= kGetPreviousExtended;
  if (onKey && Cursor(cursor).HasDistinctPlace()) return;
  const Descriptor descriptor = SomeDescriptor();
  const CallIn in{.data = DescriptorBytes(descriptor),
                  .room = choices_.Chance(3) ? choices_.Pick(200) : 1000,
                  .keyNumber = onKey ? SomeKey() : 0};
  const Expected expected = Cursor(cursor).Extended(operation, descriptor, in);
  const CallOut out = Call(operation, cursor, in);
  Check("extended", cursor, operation, in, expected, out);
  if (out.status == kDataBufferLength && out.Returned() != expected.data) Fail("reply");
}

void ModelRun::Percent(int cursor) {
  const CallIn in{.data = Number(static_cast<uint16_t>(choices_.Pick(10100))),
                  .room = 200,
                  .keyNumber = choices_.Chance(3) ? -1 : SomeKey()};
  Check("percent", cursor, kGetByPercentage, in, Cursor(cursor).Percent(in),
        Call(kGetByPercentage, cursor, in));
}

void ModelRun::FindPercent(int cursor) {
  CallIn in{.data = Number(SomePosition()), .keyNumber = choices_.Chance(3) ? -1 : SomeKey()};
  if (in.keyNumber >= 0) in.key = SomeValue(in.keyNumber);
  Expected expected = Cursor(cursor).FindPercent(in);
  const CallOut out = Call(kFindPercentage, cursor, in);
  Check("find percent", cursor, kFindPercentage, in, expected, out);
}

// Begins one, or ends the one that runs; after an Abort cursors that hold something of it are
// opened anew, for where they stand is their own affair.
void ModelRun::Transaction(int) {
  if (!inTransaction_) {
    const int begin = choices_.Chance(2) ? kBegin : kConcurrent + kBegin;
    if (Call(begin, 0, {}).status != 0) Fail("Begin");
    log_.push_back("begin " + std::to_string(begin));
    saved_ = file_;
    inTransaction_ = true;
    return;
  }
  inTransaction_ = false;
  const bool abort = choices_.Chance(2);
  log_.push_back(abort ? "abort" : "end");
  if (Call(abort ? kAbort : kEnd, 0, {}).status != 0) Fail("End or Abort");
  if (!abort) return;
  file_.Restore(saved_);
  for (int cursor = 0; cursor < kCursors; ++cursor) {
    if (Cursor(cursor).IsAtHome()) continue;
    Call(kClose, cursor, {});
    Call(kOpen, cursor, {.key = PathKey(path_)});
    Cursor(cursor) = ModelCursor(file_);
    log_.push_back("reopened cursor " + std::to_string(cursor));
  }
}

void ModelRun::WalkKey(size_t key, bool forward) {
  ModelCursor model(file_);
  int operation = forward ? kGetFirst : kGetLast;
  for (bool more = true; more && failure_.empty();) {
    const CallIn in{.room = 200, .keyNumber = static_cast<int>(key)};
    const Expected expected = model.Read(operation, in);
    const CallOut out = Call(operation, kReader, in);
    if (out.status != expected.status || (expected.data && out.Returned() != *expected.data)) {
      Fail("walk along key " + std::to_string(key) + ": " + std::to_string(out.status) + " " +
           ToHex(out.Returned()) + ", expected " + std::to_string(expected.status) + " " +
           (expected.data ? ToHex(*expected.data) : ""));
    }
    more = out.status == 0;
    operation = forward ? kGetNext : kGetPrevious;
  }
}

void ModelRun::Compare(int) {
  const CallOut stat = Call(kStat, kReader, {.room = 1000});
  if (NumberAt<uint32_t>(stat.data, 6) != file_.records.size()) Fail("number of records");
  size_t at = 16;
  for (size_t key = 0; key < file_.indexes.size(); ++key) {
    if (NumberAt<uint32_t>(stat.data, at + 6) != file_.DistinctValues(key)) {
      Fail("unique values of key " + std::to_string(key) + ": " +
           std::to_string(NumberAt<uint32_t>(stat.data, at + 6)));
    }
    at += 16 * makeUp_.spec.keys[key].segments.size();
    WalkKey(key, true);
    WalkKey(key, false);
  }
}

}  // namespace

std::string RunModel(Choices& choices, int steps) { return ModelRun(choices).Run(steps); }

std::string RunModelThenRead(Choices& choices, int writes, int reads,
                             const std::function<void(const std::string& path)>& between) {
  ModelRun run(choices);
  const std::string fault = run.Run(writes);
  if (!fault.empty()) return fault;
  run.Close();
  between(run.Path());
  return run.RunOn(reads, false);
}

std::string RunReadModel(Choices& choices, int steps, const MakeUp& makeUp, const ModelFile& file,
                         const std::string& path) {
  return ModelRun(choices, makeUp, file, path).RunOn(steps, false);
}

}  // namespace btrieve::test
