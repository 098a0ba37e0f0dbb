// Condition texts of any kind: either one message and nothing, or terms that read back as what
// they are, in a request that the record manager takes or refuses as a whole.
#include <set>

#include "btrieve/scans/ExtendedRequest.h"
#include "extended/ExRequest.h"
#include "extended/SearchCond.h"
#include "fields/LittleEndian.h"
#include "tests/fuzz/ExtendedFuzz.h"

using namespace qrn;
using namespace qrn::fuzz;

namespace {

// clang-format off
constexpr const char* kWords[] = {
    "@0", "@1 ", "@3", "@10 ", "@f1 ", "@f2", "@17", "@99999999999 ", "@12", "@", " ", " ", " ",
    "= ", "<>", ">=", "<", "> ", "<= ", " = 5", " & ", "|", " | ", "&", "'a'", "\"", "2024",
    "-1.5", "/", "\t", "x", "\x83\x7C", "\x95\x5C", "\x83@ ", "\x81",
    ("@\x83\x7C\x83\x5C\x83\x40" "0 "),
};
// clang-format on

bool IsTermHead(std::span<const uint8_t> head, bool last) {
  const int comparison = head[5] & ~(BtrWithField | BtrIgnoringCase);
  const bool logic = last ? head[6] == 0 : head[6] == 1 || head[6] == 2;
  return comparison >= 1 && comparison <= 6 && logic;
}

// Whether the bytes are `count` terms, one after another. A term without a value is not told from
// one with, so every place that a term may begin at is followed.
bool AreTerms(std::span<const uint8_t> bytes, size_t count) {
  std::set<size_t> starts = {0};
  for (size_t term = 1; term <= count; ++term) {
    std::set<size_t> next;
    for (const size_t start : starts) {
      if (bytes.size() - start < sizeof(BtrTerm)) continue;
      const auto head = bytes.subspan(start);
      if (!IsTermHead(head, term == count)) continue;
      const size_t value = start + sizeof(BtrTerm);
      for (const size_t size : {size_t{2}, size_t{LoadLittle<uint16_t>(head.subspan(1))}}) {
        if (value + size <= bytes.size()) next.insert(value + size);
      }
    }
    starts = next;
  }
  return starts.contains(bytes.size());
}

void TakeToRecordManager(const DbEngine& engine, const DbTableInfo& table,
                         const SearchCondition& condition) {
  const auto fields = ParseFieldList(engine, table, "0,3");
  const ExRequest request(kBeginWithCurrent, 10, condition, 3, *fields);
  std::vector<uint8_t> buffer(request.BufferSize());
  request.LayInto(buffer);
  btrieve::ExtendedRequest compiled;
  const auto status = static_cast<int>(compiled.Compile(buffer, btrieve::FileSpec{}));
  Require(status == 0 || status == 62, "a status of its own for a request");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static Table table;
  static QuorinSettings settings;
  static DbEngine engine(settings);
  const std::span input(data, size);
  const bool ignoreCase = size > 0 && (data[0] & 2) != 0;
  const std::vector<char> text = TextOf(input, kWords);
  shown = 0;
  const auto condition = ParseSearchCond(engine, table.Info(), text.data(), ignoreCase);
  Require(shown == (condition ? 0 : 1), "not one message for one fault");
  if (!condition) return 0;
  Require(AreTerms(condition->Terms, condition->TermCount), "bytes that are no terms");
  TakeToRecordManager(engine, table.Info(), *condition);
  return 0;
}
