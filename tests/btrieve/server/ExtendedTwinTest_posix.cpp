// Extended reads of a file on a server beside those of a file here that holds the same: whatever
// the condition, replies, statuses and where the cursor stands afterwards are alike. Two stations
// do the same with both files; each of the four is a process of its own.
#include <set>

#include "ServerSite.h"
#include "clients/Remote.h"
#include "kit/Choices.h"
#include "kit/Descriptor.h"
#include "kit/Folder.h"
#include "tests/support/Setting.h"

namespace btrieve::test {
namespace {

constexpr size_t kFixed = 44;   // bytes that every record has
constexpr uint32_t kTail = 30;  // at most, of those behind
constexpr int kRecords = 1200;
constexpr int kSteps = 250;
constexpr int kLock = BtrBiasMultipleNoWait;

struct Field {
  uint8_t type;
  uint16_t length, offset;
};
constexpr Field kFields[] = {
    {0, 6, 4},   {0, 3, 4},  {0, 1, 30},  {1, 4, 0},   {1, 2, 10},  {1, 3, 31},  {1, 8, 22},
    {1, 5, 22},  {1, 9, 22}, {2, 8, 22},  {3, 4, 18},  {4, 4, 18},  {5, 3, 31},  {7, 1, 30},
    {8, 3, 4},   {10, 6, 4}, {11, 6, 12}, {11, 4, 12}, {14, 1, 30}, {14, 4, 0},  {14, 3, 31},
    {14, 8, 22}, {15, 4, 0}, {19, 8, 22}, {20, 8, 22}, {25, 6, 12}, {26, 6, 12}, {255, 1, 30},
    {1, 4, 46},  {0, 6, 50}, {11, 6, 50}, {1, 2, 60},  {14, 8, 40},
};
// Of the keys, by number: their only segments.
constexpr Field kKeyFields[] = {{1, 4, 0}, {0, 6, 4}, {1, 2, 10}, {11, 6, 12}};
constexpr int kFoldingKey = 1;
constexpr uint8_t kBytes[] = {0x00, 0x01, 'A', 'a', 'B', 'b', 'Z', '[', 'z', 0x7F, 0x80, 0xFF};

// One station, or another: what it does to both files.
class Station {
 public:
  // The first difference there is between the answers stays.
  Status Call(int operation, const CallIn& in, std::string& difference) {
    served_.Begin(operation, 0, in);
    const CallOut here = here_.Call(operation, 0, in);
    const CallOut served = served_.Finish();
    const bool isAlike = served.status == here.status && served.length == here.length &&
                         served.data == here.data && served.key == here.key;
    if (!isAlike && difference.empty()) {
      difference =
          "operation " + std::to_string(operation) + ": " + Text(served) + ", here " + Text(here);
    }
    return served.status;
  }
  void Open(const std::string& served, const std::string& here) {
    ASSERT_EQ(served_.Call(kOpen, 0, {.key = PathKey(served)}).status, 0);
    ASSERT_EQ(here_.Call(kOpen, 0, {.key = PathKey(here)}).status, 0);
  }

 private:
  static std::string Text(const CallOut& out) {
    return std::to_string(out.status) + " " + ToHex(out.Returned());
  }
  OtherProcess served_;
  OtherProcess here_;
};

class ExtendedTwins : public ServerSite {
 protected:
  // Makes both files.
  void Make() {
    ThisProcess process;
    const Bytes block = CreateBlock({.recordLength = kFixed, .flags = 1},
                                    {{.flags = 0x102, .type = 1},
                                     {.position = 5, .length = 6, .flags = 0x503, .type = 0},
                                     {.position = 11, .length = 2, .flags = 0x143, .type = 1},
                                     {.position = 13, .length = 6, .flags = 0x103, .type = 11}},
                                    ReversingSequence());
    ASSERT_EQ(process.Call(kCreate, 0, {.data = block, .key = PathKey(here_)}).status, 0);
    ASSERT_EQ(process.Call(kOpen, 0, {.key = PathKey(here_)}).status, 0);
    process.Call(kBegin, 0, {});
    for (int id = 0; id < kRecords; ++id) {
      const CallIn in{.data = SomeRecord(), .keyNumber = -1};
      ASSERT_LE(process.Call(kInsert, 0, in).status, kDuplicateKey);
    }
    process.Call(kEnd, 0, {});
    process.Call(kReset, 0, {});
    std::filesystem::copy_file(here_, served_);
    Move(served_, "twin");
    self_.Open(served_, here_);
    other_.Open(served_, here_);
  }

  Bytes SomeRecord() {
    Bytes record = Number(static_cast<int32_t>(choices_.Pick(100000)) - 50000);
    const size_t size = kFixed + (choices_.Chance(3) ? 0 : choices_.Pick(kTail));
    while (record.size() < size) record.push_back(choices_.Of(std::span<const uint8_t>(kBytes)));
    return record;
  }
  TermOf SomeTerm(bool isLast) {
    return TermOn(choices_.Of(std::span<const Field>(kFields)), isLast);
  }
  // One by which matches along a key may come to an end.
  TermOf TermOfKey(int key, bool isLast) {
    TermOf term = TermOn(kKeyFields[key], isLast);
    const int fold = key == kFoldingKey ? kWithFold : 0;
    term.comparison = 1 + static_cast<int>(choices_.Pick(6)) + fold;
    term.connector = isLast ? kLastTerm : kAndNext;
    term.operand.resize(term.length, 'a');
    return term;
  }
  TermOf TermOn(const Field& field, bool isLast) {
    TermOf term{field.type, field.length, field.offset, 1 + static_cast<int>(choices_.Pick(6))};
    term.connector = isLast ? kLastTerm : choices_.Chance(2) ? kAndNext : kOrNext;
    if (choices_.Chance(3)) term.comparison |= kWithFold;
    if (choices_.Chance(12)) term.comparison |= kWithSequence;
    if (choices_.Chance(10)) {
      term.comparison |= kWithField;
      term.operand = Number(static_cast<uint16_t>(choices_.Pick(kFixed + kTail)));
      return term;
    }
    Bytes record = SomeRecord();
    record.resize(kFixed + 2 * kTail, 'a');
    term.operand = {record.begin() + field.offset, record.begin() + field.offset + field.length};
    return term;
  }
  Descriptor SomeDescriptor() {
    constexpr uint16_t kRejects[] = {0, 1, 3, 10, 40, 200, 65535};
    constexpr uint16_t kWanted[] = {1, 2, 20, 300, 65535};
    Descriptor descriptor{.signature = choices_.Chance(3) ? "UC" : "EG"};
    descriptor.rejects = choices_.Of(std::span<const uint16_t>(kRejects));
    descriptor.wanted = choices_.Of(std::span<const uint16_t>(kWanted));
    const uint32_t terms = choices_.Pick(choices_.Chance(20) ? 30 : 5);
    for (uint32_t at = 0; at < terms; ++at) descriptor.terms.push_back(SomeTerm(at + 1 == terms));
    descriptor.fields = {{static_cast<uint16_t>(4 + choices_.Pick(100)), 0}};
    if (choices_.Chance(10)) descriptor.fields.push_back({4, 40});
    return descriptor;
  }

  void Do(Station& station, int operation, const CallIn& in) {
    met_.insert(station.Call(operation, in, difference_));
  }
  // The same read several times, as programs go through a file, and what follows from where it
  // stands then.
  void ReadExtended(int lock) {
    const int operation = kGetNextExtended + static_cast<int>(choices_.Pick(4));
    const int key = static_cast<int>(choices_.Pick(4));
    Descriptor descriptor = SomeDescriptor();
    if (lock != 0) descriptor.wanted = std::min<uint16_t>(descriptor.wanted, 20);
    if (!descriptor.terms.empty() && choices_.Chance(3)) {
      descriptor.terms[0] = TermOfKey(key, descriptor.terms.size() == 1);
    }
    const CallIn in{.data = DescriptorBytes(descriptor),
                    .room = choices_.Chance(4) ? 600 : size_t{40000},
                    .keyNumber = key};
    const int first = choices_.Chance(2) ? kGetFirst : kGetGreaterOrEqual;
    if (operation <= kGetPreviousExtended && !choices_.Chance(3)) {
      Do(self_, operation == kGetNextExtended ? first : kGetLast,
         {.room = 200, .key = SomeRecord(), .keyNumber = in.keyNumber});
    }
    for (uint32_t calls = 1 + choices_.Pick(4); calls > 0; --calls) Do(self_, operation + lock, in);
    if (lock != 0) Do(self_, kUnlock, {.keyNumber = -2});
  }
  void ReadSingly() {
    constexpr int kReads[] = {kGetNext,  kGetPrevious, kStepNext,  kStepPrevious,
                              kGetFirst, kGetLast,     kStepFirst, kGetGreaterOrEqual};
    const CallIn in{
        .room = 200, .key = SomeRecord(), .keyNumber = static_cast<int>(choices_.Pick(4))};
    Do(self_, choices_.Of(std::span<const int>(kReads)), in);
  }
  void Write(Station& station) {
    const CallIn place{.room = 200, .keyNumber = 0};
    Do(station, choices_.Chance(2) ? kStepFirst : kGetLast, place);
    const int operation = choices_.Chance(2) ? kInsert : choices_.Chance(2) ? kUpdate : kDelete;
    Do(station, operation, {.data = SomeRecord(), .keyNumber = -1});
  }
  // What has been committed elsewhere is told with the answer to any question.
  void WriteElsewhere() {
    if (inTransaction_) return;
    Write(other_);
    Do(self_, kStat, {.room = 4000});
  }
  void ReadBesideALock() {
    if (inTransaction_) return;
    const int end = choices_.Chance(2) ? kGetFirst : kGetLast;
    Do(other_, end + kLock, {.room = 200, .keyNumber = static_cast<int>(choices_.Pick(4))});
    Do(self_, kStepFirst, {.room = 200});
    ReadExtended(kLock);
    Do(other_, kUnlock, {.keyNumber = -2});
  }
  void BeginOrEnd() {
    const int begin = choices_.Chance(2) ? kBegin : kConcurrent + kBegin;
    Do(self_, !inTransaction_ ? begin : choices_.Chance(2) ? kEnd : kAbort, {});
    inTransaction_ = !inTransaction_;
  }
  void Step() {
    const uint32_t choice = choices_.Pick(20);
    if (choice < 10) {
      ReadExtended(choices_.Chance(6) ? kLock : 0);
    } else if (choice < 14) {
      ReadSingly();
    } else if (choice < 16) {
      Write(self_);
    } else if (choice < 17) {
      WriteElsewhere();
    } else if (choice < 18) {
      ReadBesideALock();
    } else {
      BeginOrEnd();
    }
    Do(self_, kGetPosition, {.room = 4});
  }

  Folder folder_;
  std::string here_ = folder_.Path("here.dat");
  std::string served_ = folder_.Path("served.dat");
  const uint32_t seed_ = qrn::test::Seed();
  Choices choices_{seed_};
  Station self_;
  Station other_;
  bool inTransaction_ = false;
  std::string difference_;
  std::set<Status> met_;
};

TEST_F(ExtendedTwins, AnswerAlike) {
  Make();
  for (int step = 0; step < kSteps && difference_.empty(); ++step) {
    Step();
    if (!difference_.empty()) difference_ += " at step " + std::to_string(step);
  }
  EXPECT_EQ(difference_, "") << "QRN_SEED=" << seed_;
  EXPECT_TRUE(met_.contains(kRejectCount) && met_.contains(kDataBufferLength));
}

}  // namespace
}  // namespace btrieve::test
