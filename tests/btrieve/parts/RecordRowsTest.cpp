// Reading row after row by what the one before was like gives what reading each by itself gives.

#include "btrieve/storage/RecordRows.h"
#include "kit/Choices.h"
#include "tests/support/Setting.h"
#include "tests/support/Test.h"

namespace btrieve::test {
namespace {

constexpr uint16_t kLength = 40;

void AddType(std::vector<uint8_t>& row, uint32_t type) {
  if (type >= 0x80) row.push_back(static_cast<uint8_t>(0x80 | type >> 7));
  row.push_back(type & 0x7F);
}

// A row as SQLite stores one: its types, then its columns. Now and then one that nobody would
// write.
std::vector<uint8_t> SomeRow(Choices& choices) {
  constexpr uint32_t kBlob = 12;
  const uint32_t version = choices.Chance(8) ? 7 + choices.Pick(3) : 1 + choices.Pick(3);
  const uint32_t numbers = choices.Pick(3) * kOrderNumberRow + choices.Chance(30);
  const uint32_t data = kLength + (choices.Chance(3) ? choices.Pick(40) : 0) - choices.Chance(30);
  std::vector<uint8_t> row{0};
  AddType(row, choices.Chance(10));
  AddType(row, version);
  AddType(row, kBlob + 2 * numbers);
  AddType(row, kBlob + 2 * data);
  row[0] = static_cast<uint8_t>(row.size());
  constexpr uint32_t kSizes[] = {0, 1, 2, 3, 4, 6, 8, 8, 0, 0};
  uint32_t size = row[1] + kSizes[version] + numbers + data;
  if (choices.Chance(20)) size += choices.Pick(3) - 1;
  while (size-- > 0) row.push_back(static_cast<uint8_t>(choices.Pick(256)));
  return row;
}

template <class Read>
std::string Told(Read read) {
  const auto text = [](ByteView bytes) { return std::string(bytes.begin(), bytes.end()); };
  try {
    Hit hit;
    read(hit);
    return std::to_string(hit.version) + '|' + text(hit.numbers) + '|' + text(hit.data);
  } catch (const Failure& failure) {
    return "status " + std::to_string(failure.status);
  }
}

TEST(RecordRows, RowsAreReadAsIfEachWereAlone) {
  const uint32_t seed = qrn::test::Seed();
  SCOPED_TRACE("QRN_SEED=" + std::to_string(seed));
  Choices choices(seed);
  FileSpec spec;
  spec.recordLength = kLength;
  spec.flags = kVariableRecords;
  RecordRows rows;
  int read = 0;
  for (int turn = 0; turn < 20000; ++turn) {
    const std::vector<uint8_t> row = SomeRow(choices);
    const auto alone = Told([&](Hit& hit) { TakeRecord(spec, row, hit); });
    ASSERT_EQ(Told([&](Hit& hit) { rows.Take(spec, row, hit); }), alone);
    read += alone.find('|') != std::string::npos;
  }
  EXPECT_GT(read, 10000);
}

}  // namespace
}  // namespace btrieve::test
