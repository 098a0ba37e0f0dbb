// Files on a server half a millisecond away: walks and lists beside queries written by hand, and
// how often a form's buttons go there. Run by scripts/server.sh, which starts the server.
#include <filesystem>
#include <fstream>

#include "Records.h"
#include "btrieve/server/CopyIn.h"
#include "core/ListFill.h"
#include "extended/FillFromExtended.h"
#include "platform/BtrCall.h"
#include "tests/bench/OrdersForm.h"
#include "tests/bench/ServerPlace.h"
#include "tests/btrieve/kit/Descriptor.h"

namespace bench {
namespace {

constexpr uint32_t kWalked = 100000;
constexpr int kListed = 10000;
constexpr uint32_t kImported = 100000;
constexpr uint32_t kBlockOfTheTool = 10000;  // records, as the data tool imports them
constexpr uint32_t kSmallBlock = 500;
constexpr uint32_t kMany = 1000000;
constexpr uint32_t kFew = 10000;
constexpr int kPlaces = 200;

// A file on the server, open from its first use on: making another one closes all.
class Linked {
 public:
  Linked(const std::string& table, uint32_t records) {
    path_ = Workplace() + "/" + table + ".btr";
    { const BtrieveFile local(path_, records); }
    BTRCALL(BtrOpReset, nullptr, nullptr, nullptr, nullptr, 0, 0);
    MoveToServer(path_, table);
  }
  int Get(uint16_t operation) { return Call(operation, record_.data(), kRecordLength); }
  int Call(uint16_t operation, uint8_t* data, uint32_t length) {
    Open();
    return BTRCALL(operation, block_, data, &length, key_, 255, 0);
  }
  const Record& Last() const { return record_; }
  // The record at hundredths of a percent along a key, then its place asked for.
  void FindPlace(uint16_t hundredths, int8_t keyNumber) {
    Open();
    std::memcpy(record_.data(), &hundredths, sizeof hundredths);
    uint32_t length = kRecordLength;
    int status =
        BTRCALL(BtrOpGetByPercentage, block_, record_.data(), &length, key_, 255, keyNumber);
    Check(status == 0, "no record at a percentage");
    uint32_t place = 0;
    length = sizeof place;
    status = BTRCALL(BtrOpFindPercentage, block_, &place, &length, key_, 255, keyNumber);
    Check(status == 0 && std::abs(int(place) - hundredths) <= 1, "a percentage went wrong");
  }

 private:
  void Open() {
    if (isOpen_) return;
    uint32_t length = 0;
    const int status =
        BTRCALL(BtrOpOpen, block_, nullptr, &length, path_.data(), 255, BtrModeNormal);
    Check(status == 0, "the linked file could not be opened");
    isOpen_ = true;
  }

  std::string path_;
  bool isOpen_ = false;
  uint8_t block_[BtrPositionBlockSize];
  uint8_t key_[255];
  Record record_;
};

Linked& Walked() {
  static Linked linked("records", kWalked);
  return linked;
}

void WalkLinked() {
  uint32_t count = 0;
  uint64_t sum = 0;
  for (int status = Walked().Get(BtrOpGetFirst); status == 0; status = Walked().Get(BtrOpGetNext)) {
    ++count;
    sum += Walked().Last()[31];
  }
  Check(count == kWalked && sum != 0, "the walk went wrong");
}

// Rows of a statement, as often as it gives some.
template <class Take>
uint32_t TakeAll(const std::string& sql, Take take) {
  uint32_t count = 0;
  while (true) {
    const btrieve::server::Rows rows = Link().Ask(sql);
    for (int row = 0; row < rows.Count(); ++row, ++count) take(rows.Bytes(row, 0));
    if (rows.Count() == 0) return count;
  }
}

void WalkByHand() {
  uint64_t sum = 0;
  Link().Run("BEGIN; DECLARE walk NO SCROLL CURSOR FOR SELECT data FROM bench.records ORDER BY k1");
  const uint32_t count =
      TakeAll("FETCH 50 FROM walk", [&](btrieve::ByteView data) { sum += data[31]; });
  Link().Run("COMMIT");
  Check(count == kWalked && sum != 0, "the cursor went wrong");
}

// Quantities from 50 on, of the last hundred names: one record in a thousand.
constexpr char kLowestName[] = "name 000000049921";
constexpr size_t kNameLength = sizeof kLowestName - 1;

uint32_t FoundByHand() {
  static const std::string sql =
      "SELECT data FROM bench.records WHERE get_byte(data, 4) >= 50 AND "
      "substring(data FROM 9 FOR 17) >= '" +
      std::string(kLowestName) + "' ORDER BY k1";
  return static_cast<uint32_t>(Link().Ask(sql).Count());
}

void SearchByHand() { Check(FoundByHand() > kWalked / 2000, "the query went wrong"); }

// By extended reads; each call gives up after so many records.
template <uint16_t kRejects>
void Search() {
  using btrieve::test::Descriptor;
  constexpr uint16_t kWanted = 300;
  Linked& linked = Walked();
  static const uint32_t expected = FoundByHand();
  Descriptor search{.signature = "UC",
                    .rejects = kRejects,
                    .terms = {{1, 4, 4, btrieve::test::kGe, btrieve::test::kAndNext,
                               btrieve::test::Number(int32_t{50})},
                              {0, kNameLength, 8, btrieve::test::kGe, btrieve::test::kLastTerm,
                               btrieve::test::Padded(kLowestName, kNameLength)}},
                    .wanted = kWanted,
                    .fields = {{kRecordLength, 0}}};
  std::vector<uint8_t> buffer(2 + kWanted * (6 + kRecordLength));
  Check(linked.Get(BtrOpGetFirst) == 0, "no first record");
  uint32_t found = 0;
  int status = 0;
  for (; status == 0 || status == 60; search.signature = "EG") {
    std::ranges::copy(btrieve::test::DescriptorBytes(search), buffer.begin());
    status = linked.Call(BtrOpGetNextExtended, buffer.data(), static_cast<uint32_t>(buffer.size()));
    uint16_t count;
    std::memcpy(&count, buffer.data(), sizeof count);
    found += count;
  }
  Check(status == 9 && found == expected, "the search went wrong");
}

template <uint32_t Records>
Linked& Placed() {
  static Linked linked("placed" + std::to_string(Records), Records);
  return linked;
}

template <uint32_t Records>
void FindPlaces() {
  for (int round = 0; round < kPlaces; ++round) {
    Placed<Records>().FindPlace(static_cast<uint16_t>(Scatter(round) % 10001), 0);
  }
}

// A new file on the server, in a folder whose dictionary is there.
BtrieveFile MakeImported() {
  const std::string folder = Workplace() + "/import";
  if (std::filesystem::create_directory(folder)) {
    std::ofstream(folder + "/file.ddf", std::ios::binary)
        << btrieve::server::WriteLinkFile(Place("file_ddf"));
  }
  return {folder + "/imported.btr", 0};
}

// One by one in one transaction: the time of the last records over that of as many first ones.
double SlowingDown() {
  constexpr uint32_t kMeasured = 5000;
  BtrieveFile file = MakeImported();
  uint32_t number = 0;
  const auto insert = [&](uint32_t count) {
    const auto begin = std::chrono::steady_clock::now();
    for (const uint32_t end = number + count; number < end; ++number) {
      Record record = MakeRecord(number);
      Check(file.Call(BtrOpInsert, record.data(), kRecordLength, -1) == 0, "a record was refused");
    }
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
  };
  Check(file.Call(BtrOpBeginTransaction, nullptr, 0) == 0, "no transaction");
  const double first = insert(kMeasured);
  insert(2 * kMeasured);
  const double last = insert(kMeasured);
  Check(file.Call(BtrOpEndTransaction, nullptr, 0) == 0, "the transaction was not written");
  file.Close();
  return last / first;
}

// Filled by blocks.
template <uint32_t Block>
void ImportLinked() {
  BtrieveFile file = MakeImported();
  std::vector<uint8_t> block(2 + Block * (2 + kRecordLength));
  for (uint32_t number = 0; number < kImported; number += Block) {
    uint8_t* at = block.data();
    const auto put = [&at](const void* bytes, size_t size) {
      std::memcpy(at, bytes, size);
      at += size;
    };
    const uint16_t count = Block;
    const uint16_t length = kRecordLength;
    put(&count, sizeof count);
    for (uint32_t each = 0; each < Block; ++each) {
      put(&length, sizeof length);
      put(MakeRecord(number + each).data(), kRecordLength);
    }
    const int status =
        file.Call(BtrOpInsertExtended, block.data(), static_cast<uint32_t>(block.size()), -1);
    Check(status == 0, "a block was refused");
  }
  file.Close();
  static const std::string counted = "SELECT count(*) FROM bench.imported_btr";
  Check(Link().Ask(counted).Number(0, 0) == kImported, "records are missing");
}

// The same columns and indexes, with nothing asked of the records.
void CopyByHand() {
  Link().Run(
      "DROP TABLE IF EXISTS bench.copied; "
      "CREATE TABLE bench.copied(LIKE bench.imported_btr INCLUDING ALL); BEGIN");
  btrieve::server::CopyIn rows(Link(), "bench.copied", 4 + std::size(kKeys));
  for (uint32_t number = 0; number < kImported; ++number) {
    const Record record = MakeRecord(number);
    rows.BeginRow();
    rows.Add(int64_t{number} + 1);
    rows.Add(int64_t{number} + 1);
    rows.Add(btrieve::ByteView());
    rows.Add(btrieve::ByteView(record));
    for (const KeyPart& key : kKeys) {
      btrieve::Entry entry(btrieve::ByteView(record).subspan(key.offset, key.length));
      if (!key.unique) entry.AppendNumber(uint64_t{number + 1} << 32);
      rows.Add(entry.View());
    }
  }
  rows.Finish();
  Link().Run("COMMIT");
}

OrdersForm& TheForm() {
  static OrdersForm form = [] {
    MakeOrders(Workplace(), kListed);
    uint32_t length = 0;
    qrn::BtrCall(BtrOpReset, nullptr, nullptr, &length, nullptr, 0, 0);
    MoveToServer(Workplace() + "/" + kOrdersFile, "orders");
    return OrdersForm(Workplace());
  }();
  return form;
}

// A list that keeps its rows' texts.
class TextList final : public qrn::RowSink {
 public:
  qrn::DbTableInfo* Table() override { return TheForm().Table(); }
  void Empty(size_t) override { rows_.clear(); }
  bool Format(std::u16string&) override { return true; }
  bool AddRow(const char* text) override {
    rows_.emplace_back(text);
    return true;
  }
  void CheckRows() const {
    Check(rows_.size() == kListed && rows_[5].starts_with("name 5"), "the list went wrong");
  }

 private:
  std::vector<std::string> rows_;
};

void PlainList() {
  TextList list;
  Check(qrn::DbFillList(qrn::TheEngine(), list, "F1", 0) == 0, "no list");
  list.CheckRows();
}

void ExtendedList() {
  TextList list;
  Check(qrn::FillFromExtended(qrn::TheEngine(), {.DbListFields = "F1"}, list), "no list");
  list.CheckRows();
}

void ListByHand() {
  std::vector<std::string> rows;
  const btrieve::server::Rows read = Link().Ask("SELECT data FROM bench.orders ORDER BY k1");
  for (int row = 0; row < read.Count(); ++row) {
    std::string text = btrieve::TextOf(read.Bytes(row, 0).subspan(4, 40));
    text.resize(text.find_last_not_of(' ') + 1);
    rows.push_back(std::move(text));
  }
  Check(rows.size() == kListed && rows[5] == "name 5", "the query went wrong");
}

void Press(int32_t operation) {
  Check(qrn::DbButtonRead(qrn::TheEngine(), operation, TheForm()) == 0, "a click went wrong");
}

// The most that one of a few hundred clicks takes.
double TripsOfNext() {
  Press(BtrOpGetFirst);
  double most = 0;
  for (int click = 0; click < 300; ++click) {
    most = std::max(most, TripsOf([] { Press(BtrOpGetNext); }));
  }
  return most;
}

// The most that one of a hundred updates takes, each of a record that a click has shown.
double TripsOfUpdate() {
  Press(BtrOpGetFirst);
  double most = 0;
  for (int click = 0; click < 100; ++click) {
    Press(BtrOpGetNext);
    most = std::max(most, TripsOf([] {
                      Check(qrn::DbButtonUpdate(qrn::TheEngine(), TheForm(), false) == 0,
                            "an update went wrong");
                    }));
  }
  return most;
}

}  // namespace
}  // namespace bench

int main(int argc, char** argv) {
  using namespace bench;
  Placed<kFew>();
  Placed<kMany>();
  Walked();  // The files are made before anything is timed.
  PlainList();
  Figure("100,000 records along a key on a server, over a cursor fetched by fifties", 2.0,
         WalkLinked, WalkByHand);
  Figure("200 percentages and back among 1,000,000 records on a server, over 10,000", 1.5,
         FindPlaces<kMany>, FindPlaces<kFew>);
  ImportLinked<kBlockOfTheTool>();
  Figure("100,000 records inserted as the data tool does on a server, over COPY", 3.0,
         ImportLinked<kBlockOfTheTool>, CopyByHand);
  Figure("the same in blocks of 500", 3.5, ImportLinked<kSmallBlock>, CopyByHand);
  Figure("a list of 10,000 records on a server, over one query", 2.0, PlainList, ListByHand);
  Figure("the same by extended reads", 2.0, ExtendedList, ListByHand);
  Figure("1 in 1,000 of 100,000 records found on a server, over one query", 4.0, Search<0>,
         SearchByHand);
  Figure("the same by calls that give up after 100 records", 4.0, Search<100>, SearchByHand);
  const int code = RunRatios(argc, argv);
  const bool kept = Tell("round trips of a click on Next with ten bound edits", TripsOfNext(), 2);
  const bool keptToo =
      Tell("round trips of a button's Update, with reading back", TripsOfUpdate(), 3);
  const bool keepsOn = Tell("the last 5,000 of 20,000 inserts in one transaction over the first",
                            SlowingDown(), 1.3);
  return kept && keptToo && keepsOn ? code : 1;
}
