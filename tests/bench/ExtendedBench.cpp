// Extended reads beside the same scan by hand, and beside one call for each record.

#include "Records.h"

namespace bench {
namespace {

constexpr uint32_t kKept = kRecords / 10;
constexpr uint16_t kChunk = 500;

// quantity >= 40 and quantity < 50 keeps one record in ten.
constexpr int32_t kLow = 40;
constexpr int32_t kHigh = 50;

void Append(std::vector<uint8_t>& bytes, uint64_t value, int width) {
  for (int byte = 0; byte < width; ++byte)
    bytes.push_back(static_cast<uint8_t>(value >> (8 * byte)));
}

std::vector<uint8_t> Request(const char* signature, uint16_t rejects = 0xFFFF) {
  std::vector<uint8_t> bytes;
  Append(bytes, 0, 2);
  bytes.push_back(static_cast<uint8_t>(signature[0]));
  bytes.push_back(static_cast<uint8_t>(signature[1]));
  Append(bytes, rejects, 2);
  Append(bytes, 2, 2);
  const struct {
    uint8_t comparison, connector;
    int32_t constant;
  } terms[] = {{5, 1, kLow}, {3, 0, kHigh}};
  for (const auto& term : terms) {
    Append(bytes, 1, 1);  // integer
    Append(bytes, 4, 2);
    Append(bytes, 4, 2);
    Append(bytes, term.comparison, 1);
    Append(bytes, term.connector, 1);
    Append(bytes, static_cast<uint32_t>(term.constant), 4);
  }
  Append(bytes, kChunk, 2);
  Append(bytes, 2, 2);
  for (const auto& [length, offset] : {std::pair{4, 0}, {20, 8}}) {
    Append(bytes, static_cast<uint64_t>(length), 2);
    Append(bytes, static_cast<uint64_t>(offset), 2);
  }
  const size_t length = bytes.size();
  std::memcpy(bytes.data(), &length, 2);
  return bytes;
}

void ExtendedScan(uint16_t first, uint16_t extended, int8_t key) {
  BtrieveFile& file = Ours();
  Record record;
  Check(file.Call(first, record.data(), kRecordLength, key) == 0, "no first record");
  std::vector<uint8_t> buffer(2 + kChunk * 30);
  uint32_t kept = 0;
  int status = 0;
  for (const char* signature = "UC"; status == 0 || status == 60; signature = "EG") {
    const std::vector<uint8_t> request = Request(signature);
    std::memcpy(buffer.data(), request.data(), request.size());
    status = file.Call(extended, buffer.data(), static_cast<uint32_t>(buffer.size()), key);
    uint16_t count;
    std::memcpy(&count, buffer.data(), 2);
    kept += count;
  }
  Check(status == 9 && kept == kKept, "the extended scan went wrong");
}

void HandScan(const char* sql) {
  sqlite3_stmt* walk = ByHand().Prepare(sql);
  std::vector<uint8_t> answer;
  answer.reserve(kKept * 30);
  uint32_t kept = 0;
  while (sqlite3_step(walk) == SQLITE_ROW) {
    const auto* data = static_cast<const uint8_t*>(sqlite3_column_blob(walk, 1));
    int32_t quantity;
    std::memcpy(&quantity, data + 4, 4);
    if (quantity < kLow || quantity >= kHigh) continue;
    Append(answer, static_cast<uint32_t>(sqlite3_column_int64(walk, 0)), 4);
    answer.insert(answer.end(), data, data + 4);
    answer.insert(answer.end(), data + 8, data + 28);
    ++kept;
  }
  sqlite3_finalize(walk);
  Check(kept == kKept, "the scan by hand went wrong");
}

void OneCallARecord(uint16_t first, uint16_t next, int8_t key) {
  BtrieveFile& file = Ours();
  Record record;
  uint32_t kept = 0;
  for (int status = file.Call(first, record.data(), kRecordLength, key); status == 0;
       status = file.Call(next, record.data(), kRecordLength, key)) {
    int32_t quantity;
    std::memcpy(&quantity, &record[4], 4);
    if (quantity >= kLow && quantity < kHigh) ++kept;
  }
  Check(kept == kKept, "the plain walk went wrong");
}

// Fifty searches that each give up after 900 rejected records, in the middle of a file of `count`.
template <uint32_t kCount>
void FixedSearches() {
  static BtrieveFile file(Workplace() + "/sized" + std::to_string(kCount) + ".btr", kCount);
  std::vector<uint8_t> buffer(2 + kChunk * 30);
  const std::vector<uint8_t> request = Request("EG", 900);
  for (uint16_t search = 0; search < 50; ++search) {
    const uint16_t percentage = static_cast<uint16_t>(2000 + 100 * search);
    std::memcpy(buffer.data(), &percentage, 2);
    Check(file.Call(44, buffer.data(), kRecordLength, -1) == 0, "get by percentage failed");
    std::memcpy(buffer.data(), request.data(), request.size());
    Check(file.Call(38, buffer.data(), static_cast<uint32_t>(buffer.size())) == 60,
          "the search did not end by its reject count");
  }
}

void KeyExtended() { ExtendedScan(12, 36, 0); }
void KeyByHand() {
  HandScan("SELECT k.pos, r.data FROM k0 k CROSS JOIN rec r ON r.pos=k.pos ORDER BY k.e");
}
void KeyOneCall() { OneCallARecord(12, 6, 0); }
void StepExtended() { ExtendedScan(33, 38, 0); }
void StepByHand() { HandScan("SELECT pos, data FROM rec ORDER BY pos"); }
void StepOneCall() { OneCallARecord(33, 24, 0); }

}  // namespace
}  // namespace bench

int main(int argc, char** argv) {
  using namespace bench;
  Figure("100,000 records by extended steps, over the scan by hand", 0.7, StepExtended, StepByHand,
         31);
  Figure("100,000 records by extended reads along a key, over the scan by hand", 0.3, KeyExtended,
         KeyByHand, 31);
  Figure("the answer by extended steps, over one step call a record", 1.0, StepExtended,
         StepOneCall);
  Figure("the answer by extended reads along a key, over one get-next call a record", 1.0,
         KeyExtended, KeyOneCall);
  Figure("1,000 records examined in a file of 500,000, over a file of 50,000", 2.0,
         FixedSearches<500000>, FixedSearches<50000>);
  return RunRatios(argc, argv);
}
