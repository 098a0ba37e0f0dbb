// Field lists of any kind, and replies of any bytes read by them: nothing beyond the reply is read,
// whatever its lengths claim.
#include "extended/ExResultStore.h"
#include "extended/ExResults.h"
#include "extended/ExRow.h"
#include "tests/fuzz/ExtendedFuzz.h"

using namespace qrn;
using namespace qrn::fuzz;

namespace {

// clang-format off
constexpr const char* kWords[] = {
    "0", "1", "3", "28", "29", "f1", "f2", "f11", "f9", "x", " ", ",", ",", ",", ", ", "\t", "12",
    "99", "f13", "f21", "\x83\x7C", "\x83\x5C", "\x81", "@", ("\x83\x7C\x83\x5C\x83\x40" "0,"),
};
// clang-format on

void CheckList(const FieldList& list) {
  uint32_t sum = 0;
  for (size_t i = 0; i < list.Fields.size(); ++i) {
    sum += list.Extractor[4 * i] + list.Extractor[4 * i + 1] * 256u;
  }
  Require(list.Extractor.size() == 4 * list.Fields.size(), "an extractor of another length");
  Require(sum == list.DataSum, "a sum of other fields");
}

// Reads every field of every record, by number, by name and as a row.
void ReadReply(DbEngine& engine, const DbTableInfo& table, const char* fields,
               const FieldList& list, const std::vector<uint8_t>& reply) {
  const int16_t id = TheExResults().Keep(table, fields, list, reply);
  const ExResultSlot* slot = TheExResults().Find(id);
  ExRow row(engine.Settings, list.Fields, "; ");
  for (int32_t location = 0; location < static_cast<int32_t>(slot->Records.size()); ++location) {
    for (const ExField& field : list.Fields) {
      Require(DbExReadField(engine, id, field.Number, location) != nullptr, "a fetched field lost");
      DbExReadFieldByName(engine, id, field.Info.Name, location);
    }
    Require(row.Text(&table, slot->Record(location)->Data).size() <= kLineLength, "a long row");
  }
  DbExFreeResult(id);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static Table table;
  static QuorinSettings settings;
  static DbEngine engine(settings);
  const std::span input(data, size);
  const size_t listSize = size > 0 ? std::min<size_t>(size, data[0] / 4) : 0;
  const std::vector<char> text = TextOf(input.first(listSize), kWords);
  shown = 0;
  const auto list = ParseFieldList(engine, table.Info(), text.data());
  Require(shown == (list ? 0 : 1), "not one message for one fault");
  if (!list) return 0;
  CheckList(*list);
  const auto rest = input.subspan(listSize);
  ReadReply(engine, table.Info(), text.data(), *list, {rest.begin(), rest.end()});
  return 0;
}
