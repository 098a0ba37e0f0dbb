// One bound for the pages of all files of the process.
#include <gtest/gtest.h>

#include <fstream>

#include "btrieve/pages/PageCache.h"
#include "clients/TestFile.h"
#include "kit/Descriptor.h"

namespace btrieve::test {
namespace {

constexpr uint16_t kLength = 4000;
constexpr uint32_t kInTable = 300;
constexpr int kTables = 100;

// Tables of 1.3 MB each, all of them open.
class ManyTables : qrn::test::Pinned {
 public:
  ManyTables() : blocks_(kTables, Bytes(128)) {}
  ~ManyTables() { BTRCALL(kReset, nullptr, nullptr, nullptr, nullptr, 0, 0); }

  void Fill(int table) {
    Bytes path = PathKey(folder_.Path(std::to_string(table) + ".dat"));
    Bytes block = CreateBlock({.recordLength = kLength}, {{.flags = 0x102, .type = 1}});
    ASSERT_EQ(Call(kCreate, table, block, path, 0), kOk);
    ASSERT_EQ(Call(kOpen, table, block, path, 0), kOk);
    for (uint32_t first = 0; first < kInTable; first += kTogether) {
      Bytes many = Number(static_cast<uint16_t>(kTogether));
      for (uint32_t at = 0; at < kTogether; ++at) {
        // The entries come in another order than the records.
        const uint32_t id = (first + at) * 37 % kInTable;
        many = many + Number(kLength) + Number(id) + Bytes(kLength - sizeof id);
      }
      ASSERT_EQ(Call(kInsertExtended, table, many, path, -1), kOk);
    }
  }
  // By single reads, then by extended ones, which hold pages from one call to the next.
  void Scan(int table) {
    Bytes key(255);
    Bytes record(kLength);
    uint32_t count = 0;
    Status status = Call(kGetFirst, table, record, key, 0);
    for (; status == kOk; status = Call(kGetNext, table, record, key, 0)) ++count;
    EXPECT_EQ(status, kEndOfFile);
    EXPECT_EQ(count, kInTable);
    ASSERT_EQ(Call(kGetFirst, table, record, key, 0), kOk);
    Bytes search = DescriptorBytes({.wanted = kInTable - 1});
    search.resize(65000);
    EXPECT_EQ(Call(kGetNextExtended, table, search, key, 0), kOk);
    EXPECT_EQ(NumberAt<uint16_t>(search, 0), kInTable - 1);
  }
  size_t Largest() const { return largest_; }

 private:
  static constexpr uint32_t kTogether = 15;

  Status Call(int operation, int table, Bytes& data, Bytes& key, int keyNumber) {
    auto length = static_cast<uint32_t>(data.size());
    const Status status = BTRCALL(
        static_cast<uint16_t>(operation), blocks_[static_cast<size_t>(table)].data(), data.data(),
        &length, key.data(), static_cast<uint8_t>(key.size()), static_cast<int8_t>(keyNumber));
    largest_ = std::max(largest_, PageCacheSize());
    return status;
  }

  Folder folder_;
  std::vector<Bytes> blocks_;
  size_t largest_ = 0;
};

TEST(PageCache, ManyOpenTablesShareOneBound) {
  ManyTables tables;
  for (int table = 0; table < kTables; ++table) tables.Fill(table);
  for (int round = 0; round < 2; ++round) {
    for (int table = 0; table < kTables; ++table) tables.Scan(table);
  }
  static_assert(uint64_t{kTables} * kInTable * kLength > 100u << 20, "or the bound is never met");
  EXPECT_LE(tables.Largest(), PageCacheBound());
  EXPECT_GT(tables.Largest(), PageCacheBound() / 10 * 9) << "what is there is used";
}

// Bytes that this process has read from files so far, from the system's own memory too.
uint64_t BytesRead() {
  std::ifstream counters("/proc/self/io");
  std::string name;
  uint64_t bytes = 0;
  counters >> name >> bytes;
  EXPECT_EQ(name, "rchar:");
  return bytes;
}

TEST(PageCache, TheFileThatIsReadTakesWhatIdleOnesHave) {
  ManyTables tables;
  for (int table = 0; table < 60; ++table) tables.Fill(table);
  EXPECT_GT(PageCacheSize(), PageCacheBound() / 10 * 9);
  const uint64_t before = BytesRead();
  tables.Scan(7);
  const uint64_t first = BytesRead();
  EXPECT_GT(first - before, kInTable * kLength) << "others had its place";
  tables.Scan(7);
  EXPECT_LT(BytesRead() - first, kInTable * kLength / 10) << "now it has theirs";
}

TEST(PageCache, SizeIsASettingInMegabytes) {
  constexpr size_t kMegabyte = 1u << 20;
  const struct {
    const char* setting;
    size_t megabytes;
  } kRows[] = {{nullptr, 64},
               {"4", 4},
               {"128", 128},
               {"65536", 65536},
               {"", 64},
               {"3", 64},
               {"0", 64},
               {"-8", 64},
               {"65537", 64},
               {"8x", 64},
               {" 8", 64},
               {"8.5", 64},
               {"99999999999999999999", 64}};
  for (const auto& row : kRows) {
    EXPECT_EQ(CacheSizeOf(row.setting), row.megabytes * kMegabyte)
        << (row.setting ? row.setting : "(none)");
  }
}

}  // namespace
}  // namespace btrieve::test
