// Files of an older record manager through the calls: every read answers as the model of what was
// written does, every write as for a file that may not be written, and nothing ever changes.
#include <gtest/gtest.h>

#include "btrieve/legacy/Layout.h"
#include "btrieve/legacy/OldFile.h"
#include "kit/DamagedFile.h"
#include "kit/ModelRun.h"
#include "kit/OldFileMaker.h"
#include "tests/support/Setting.h"

namespace btrieve::test {
namespace {

namespace fs = std::filesystem;

FileSpec SpecOf(const std::vector<Seg>& segments, uint16_t recordLength = 16) {
  FileSpec spec;
  EXPECT_EQ(ParseCreateBlock(CreateBlock({.recordLength = recordLength}, segments), spec), 0);
  return spec;
}

std::string RunRandom(uint32_t seed, size_t mostRecords, int steps) {
  Choices choices(seed);
  const MakeUp makeUp = RandomOldMakeUp(choices);
  OldFileMaker maker(makeUp.spec, RandomOldShape(choices, makeUp.spec));
  FillAtRandom(maker, choices, makeUp.spec, mostRecords);
  const Folder folder;
  const std::string path = folder.Path("old.dat");
  const Bytes before = maker.Build();
  WriteBytes(path, before);
  std::string text = RunReadModel(choices, steps, makeUp, maker.Model(), path);
  if (ReadBytes(path) != before) return "the file was changed";
  if (std::distance(fs::directory_iterator(folder.Root()), {}) != 1) return "a file came beside it";
  return text;
}

TEST(OldFile, AnswersEveryReadLikeTheModel) {
  const uint32_t seed = qrn::test::Seed();
  for (uint32_t file = 0; file < qrn::test::Setting("QRN_OLD_FILES", 30); ++file) {
    ASSERT_EQ(RunRandom(seed + file, 50, 200), "") << "QRN_SEED=" << seed + file;
  }
  for (uint32_t fixed = 1; fixed <= 20; ++fixed) ASSERT_EQ(RunRandom(fixed, 300, 100), "") << fixed;
}

// Ten records of an id (key 0, unique), a group that two records share, one of them deleted since
// (key 1, duplicates), and a text. Pages of 512 bytes: index 1, data 2, index 3, ...
class OldPeople : public testing::Test {
 protected:
  static Bytes Record(int32_t id) { return Number(id) + Number(id / 2) + Padded("p", 8); }

  explicit OldPeople(const OldShape& shape = {.mostEntries = 2}) : maker_(spec_, shape) {
    for (int32_t id = 0; id < 12; ++id) addresses_.push_back(maker_.Insert(Record(id)));
    for (const int32_t id : {3, 9}) maker_.Remove(addresses_[static_cast<size_t>(id)]);
    bytes_ = maker_.Build();
    Write();
  }

  void Write() { WriteBytes(path_, bytes_); }
  Status Open(int mode = 0, const std::string& owner = "") {
    const Bytes name(owner.begin(), owner.end());
    return process_.Call(kOpen, 0, {.data = name, .key = PathKey(path_), .keyNumber = mode}).status;
  }
  CallOut Call(int operation, const CallIn& in) { return process_.Call(operation, 0, in); }
  uint32_t Position() { return NumberAt<uint32_t>(Call(kGetPosition, {.room = 4}).data, 0); }

  FileSpec spec_ =
      SpecOf({{.flags = 0x102, .type = 1}, {.position = 5, .flags = 0x103, .type = 1}});
  OldFileMaker maker_;
  std::vector<uint32_t> addresses_;
  Bytes bytes_;
  Folder folder_;
  std::string path_ = folder_.Path("people.dat");
  ThisProcess process_;
};

class OldPeopleWithOwner : public OldPeople {
 protected:
  OldPeopleWithOwner() : OldPeople({.isOwned = true}) {}
};

TEST_F(OldPeople, GiveSlotAddressesAsPositions) {
  ASSERT_EQ(Open(), 0);
  ASSERT_EQ(Call(kGetEqual, {.room = 16, .key = Number(int32_t{7})}).status, 0);
  EXPECT_EQ(Position(), addresses_[7]);
  ASSERT_EQ(Call(kStepFirst, {.room = 16}).status, 0);
  EXPECT_EQ(Position(), 2u * 512 + 6);
  for (const uint32_t free : {addresses_[3], addresses_[7] + 1, 6u, 0u, 512u * 90 + 6}) {
    EXPECT_EQ(Call(kGetDirect, {.data = Number(free), .room = 16, .keyNumber = -1}).status,
              kInvalidAddress)
        << free;
  }
}

TEST_F(OldPeople, TellTheirMakeUp) {
  ASSERT_EQ(Open(), 0);
  const CallOut stat = Call(kStat, {.room = 200, .keyNumber = -1});
  ASSERT_EQ(stat.status, 0);
  EXPECT_EQ(ToHex(stat.Returned()),
            "1000000202400a0000000000"  // record, page, keys, version, records
            "00000000"                  // flags, pointers
            "0100040002010a00000001000000"
            "0000"
            "0500040003010600000001000000"
            "0100");
}

struct ModeCase {
  int mode;
  Status status;
};

TEST_F(OldPeople, AreReadInEveryModeButTheExclusiveOne) {
  constexpr ModeCase kModes[] = {{0, kOk},
                                 {-1, kOk},
                                 {-2, kOk},
                                 {-3, kOk},
                                 {-34, kOk},
                                 {-64, kOk},
                                 {-4, kPermissionError},
                                 {-36, kPermissionError}};
  for (const ModeCase& row : kModes) {
    ASSERT_EQ(Open(row.mode), row.status) << row.mode;
    EXPECT_EQ(Call(kClose, {}).status, row.status == kOk ? kOk : kNotOpen);
  }
  ASSERT_EQ(Open(), 0);
  EXPECT_EQ(process_.Call(kOpen, 1, {.key = PathKey(path_), .keyNumber = -4}).status,
            kIncompatibleMode);
}

// As any file that may not be written; with the checks that come before.
TEST_F(OldPeople, RefuseEveryWrite) {
  ASSERT_EQ(Open(), 0);
  EXPECT_EQ(Call(kDelete, {}).status, kInvalidPositioning);
  ASSERT_EQ(Call(kGetFirst + 100, {.room = 16}).status, 0) << "with a lock";
  EXPECT_EQ(Call(kInsert, {.data = Record(50)}).status, kAccessDenied);
  EXPECT_EQ(Call(kInsert, {.data = {1}}).status, kDataBufferLength);
  EXPECT_EQ(Call(kUpdate, {.data = Record(0)}).status, kAccessDenied);
  EXPECT_EQ(Call(kDelete, {}).status, kAccessDenied);
  EXPECT_EQ(Call(kInsertExtended, {.data = Hex("0100 1000") + Record(50)}).status, kAccessDenied);
  EXPECT_EQ(Call(kClearOwner, {}).status, kAccessDenied);
  EXPECT_EQ(Call(kSetOwner, {.data = Padded("me", 9, '\0'), .key = Padded("me", 9, '\0')}).status,
            kAccessDenied);
  EXPECT_EQ(Call(kDropIndex, {.keyNumber = 1}).status, kAccessDenied);
  EXPECT_EQ(Call(kCreateIndex, {.data = SegmentBytes({.position = 9})}).status, kAccessDenied);
  EXPECT_EQ(process_.Call(kCreate, 1, {.data = PairBlock(), .key = PathKey(path_)}).status,
            kCreateError);
  EXPECT_EQ(ReadBytes(path_), bytes_);
}

TEST_F(OldPeopleWithOwner, OpenToNobody) {
  for (const char* name : {"", "owner", "        "})
    EXPECT_EQ(Open(0, name), kOwnerInvalid) << name;
  EXPECT_EQ(Open(-2), kOwnerInvalid);
}

// One number of the file changed.
struct EditCase {
  const char* what;
  size_t at;
  int bytes;
  uint32_t value;
  Status status;
};

using namespace legacy;
constexpr size_t kKey0 = inhead::kDescriptors;
constexpr size_t kKey1 = kKey0 + indescriptor::kSize;
constexpr size_t kData = 2 * 512;  // the only data page: slots of 24 bytes
constexpr size_t kSlot0 = kData + 6;
constexpr size_t kChain0 = kSlot0 + 16;  // of key 1
constexpr size_t kDeleted = kSlot0 + 9 * 24;
constexpr size_t kRoot0 = 1 * 512;  // of key 0: the page before the data

constexpr EditCase kEdits[] = {
    {"nothing", inhead::kUsage, 2, 0, kOk},
    {"a text", kSlot0 + 12, 4, 0x41414141, kOk},
    {"page number 0", inhead::kPageNumber, 4, 1, kNotABtrieveFile},
    {"an owned one", inhead::kVersion, 2, 0xFC00, kOwnerInvalid},
    {"page size 0", inhead::kPageSize, 2, 0, kNotABtrieveFile},
    {"page size 513", inhead::kPageSize, 2, 513, kNotABtrieveFile},
    {"page size 4608", inhead::kPageSize, 2, 4608, kNotABtrieveFile},
    {"one page more", inhead::kPages, 4, 99, kIoError},
    {"a key more", inhead::kKeys, 2, 3, kIoError},
    {"a longer record", inhead::kRecordLength, 2, 17, kIoError},
    {"variable records", inhead::kSlotLength, 2, 28, kNotABtrieveFile},
    {"one record less", inhead::kRecords, 4, 9, kIoError},
    {"another last data page", inhead::kLastDataPage, 4, 1, kIoError},
    {"a slot used in part", inhead::kNeverUsed, 2, 506 - 12 * 24 - 1, kIoError},
    {"no deleted record", inhead::kFirstDeleted, 4, kNone, kIoError},
    {"a circle of deleted records", kDeleted, 4, kDeleted, kIoError},
    {"a data page of another number", kData, 4, 3, kIoError},
    {"a value less", kKey1 + indescriptor::kValues, 4, 5, kIoError},
    {"a segment that goes on", kKey1 + indescriptor::kFlags, 2, 0x113, kIoError},
    {"another key length", kKey0 + indescriptor::kKeyLength, 2, 5, kIoError},
    {"another entry length", kKey0 + indescriptor::kEntryLength, 2, 16, kIoError},
    {"more entries a page", kKey0 + indescriptor::kMostEntries, 2, 42, kIoError},
    {"a chain beyond the slot", kKey1 + indescriptor::kPointers, 2, 17, kIoError},
    {"another key field", kKey0 + indescriptor::kOffset, 2, 4, kIoError},
    {"another segment length", kKey0 + indescriptor::kLength, 2, 3, kIoError},
    {"a descending key", kKey0 + indescriptor::kFlags, 2, 0x142, kIoError},
    {"a collating sequence", kKey0 + indescriptor::kFlags, 2, 0x122, kNotABtrieveFile},
    {"repeating duplicates", kKey1 + indescriptor::kFlags, 2, 0x183, kNotABtrieveFile},
    {"a type of other lengths", kKey0 + indescriptor::kType, 1, 19, kNotABtrieveFile},
    {"an entry less", kRoot0 + inpage::kEntries, 2, 0, kIoError},
    {"a circle of pages", kRoot0 + inpage::kRightMost, 4, 1, kIoError},
    {"another value in an entry", kRoot0 + inpage::kIndexHead + 4, 4, 1234, kIoError},
    {"a wrong way back", kChain0 + 24, 4, kNone, kIoError},
};

TEST_F(OldPeople, AreNotOpenedWhereOneNumberDisagrees) {
  const Bytes good = bytes_;
  for (const EditCase& row : kEdits) {
    bytes_ = good;
    if (row.bytes == 1) bytes_[row.at] = static_cast<uint8_t>(row.value);
    if (row.bytes == 2) StoreValue(&bytes_[row.at], static_cast<uint16_t>(row.value));
    if (row.bytes == 4) StoreHighLow(&bytes_[row.at], row.value);
    Write();
    EXPECT_EQ(Open(), row.status) << row.what;
    process_.Call(kReset, 0, {});
  }
}

TEST_F(OldPeople, AreNotOpenedWhenCutOff) {
  const Bytes good = bytes_;
  for (size_t size = 0; size < good.size(); size += size < 600 ? 1 : 97) {
    bytes_.assign(good.begin(), good.begin() + static_cast<ptrdiff_t>(size));
    Write();
    EXPECT_EQ(Open(), size < 10 ? kNotABtrieveFile : kIoError) << size;
  }
  bytes_ = good + Bytes(512);
  Write();
  EXPECT_EQ(Open(), kIoError);
}

struct SalvageCase {
  const char* what;
  size_t at;
  uint32_t value;
  uint32_t records;
  const char* fault;  // the first one told
};

constexpr SalvageCase kSalvages[] = {
    {"a count", inhead::kRecords, 3, 10, "the data pages have 10 records, page 0 says 3"},
    {"a circle of deleted records", kDeleted, kDeleted, 10,
     "the list of deleted records leads to 1246 twice"},
    {"no list of deleted records", inhead::kFirstDeleted, kNone, 12,
     "the data pages have 12 records, page 0 says 10"},
    {"a data page of another number", kData, 9, 0, "page 2 bears another number"},
    {"a key", kRoot0, 9, 10, "page 1 bears another number"},
    {"fewer pages than there are", inhead::kPages, 3, 10,
     "page 0 says that there are 3 pages of 512 bytes, the file has 6656 bytes"},
};

TEST_F(OldPeople, AreReadInPartWhereDamageIsListed) {
  for (const SalvageCase& row : kSalvages) {
    Bytes damaged = bytes_;
    StoreHighLow(&damaged[row.at], row.value);
    std::vector<std::string> faults;
    const OldFile file(damaged, &faults);
    EXPECT_EQ(file.Total(kPhysicalSlot), row.records) << row.what;
    ASSERT_FALSE(faults.empty()) << row.what;
    EXPECT_EQ(faults[0], row.fault);
  }
}

// Counters at their edges, and files that have hardly anything.
TEST(OldFileEdges, AreRead) {
  const FileSpec spec = SpecOf({{.flags = 0x103, .type = 14}}, 242);  // two slots of 250 in a page
  for (const size_t records : {0, 1, 2, 3, 4, 5, 40}) {
    for (const bool removed : {false, true}) {
      SCOPED_TRACE(std::to_string(records) + (removed ? " and all removed" : ""));
      OldFileMaker maker(spec, {});
      std::vector<uint32_t> addresses;
      for (size_t i = 0; i < records; ++i) {
        addresses.push_back(
            maker.Insert(Padded(std::string(4, static_cast<char>('a' + i % 3)), 242)));
      }
      for (const uint32_t address : addresses) {
        if (removed) maker.Remove(address);
      }
      const Folder folder;
      WriteBytes(folder.Path("edge.dat"), maker.Build());
      Choices choices(static_cast<uint32_t>(records));
      const MakeUp makeUp{{}, spec, "edge"};
      EXPECT_EQ(RunReadModel(choices, 0, makeUp, maker.Model(), folder.Path("edge.dat")), "");
    }
  }
}

}  // namespace
}  // namespace btrieve::test
