#include "tools/qrndata/export/RecordFilter.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <vector>

#include "extended/SearchCond.h"
#include "fields/Messages.h"
#include "tools/qrndata/BtrFile.h"
#include "tools/qrndata/Failure.h"
#include "tools/qrndata/Messages.h"
#include "tools/qrndata/Names.h"
#include "tools/qrndata/Text.h"

namespace qrndata {

namespace {

struct FaultText {
  int message;
  Message text;
};

constexpr std::array<FaultText, 5> kFaultTexts = {{
    {qrn::kVE041, Message::AtExpected},
    {qrn::kVE025, Message::NoFieldNumber},
    {qrn::kVE042, Message::OperatorExpected},
    {qrn::kVE043, Message::VariableNotCompared},
    {qrn::kVE046, Message::ValueExpected},
}};

// A condition, with what is said of its places.
class ConditionText {
 public:
  ConditionText(const Table& table, const std::string& utf8) : table_(table), utf8_(utf8) {
    const Converted bytes = ToCodePage(utf8, OnUnmappable::Error);
    if (!bytes.IsExact()) {
      Refuse(bytes.unmappableAt, Say(Message::NoneInCodePageShort, bytes.unmappable));
    }
    bytes_ = bytes.text;
  }

  const char* Bytes() const noexcept { return bytes_.c_str(); }

  [[noreturn]] void Refuse(const qrn::SearchFault& fault) const {
    const auto* row = std::ranges::find(kFaultTexts, fault.message, &FaultText::message);
    if (row != kFaultTexts.end()) RefuseAt(fault.place, Say(row->text));
    Names names;
    for (const qrn::DbFieldInfo& field : table_.fields) names.emplace_back(field.Name);
    const std::string name = Show(fault.word);
    RefuseAt(fault.place, Say(Message::NoFieldOfName, name, DidYouMean(names, name)));
  }

  // What stands behind the condition's end would be passed over.
  void RequireRead(size_t place) const {
    if (bytes_.find_first_not_of(' ', place) == bytes_.npos) return;
    RefuseAt(place, Say(Message::TermOrEndExpected));
  }

  [[noreturn]] void RefuseAt(size_t place, const std::string& text) const {
    place = std::min(bytes_.find_first_not_of(' ', place), bytes_.size());
    Refuse(CountCharacters(Show(std::string_view(bytes_).substr(0, place))), text);
  }

 private:
  [[noreturn]] static void Refuse(size_t character, const std::string& text) {
    const Position place{0, static_cast<uint32_t>(character + 1)};
    throw Failure(kUsage, AtPlace("--where", place, text));
  }

  const Table& table_;
  const std::string& utf8_;
  std::string bytes_;
};

template <class Part>
void Append(std::vector<uint8_t>& bytes, const Part& part) {
  const auto* begin = reinterpret_cast<const uint8_t*>(&part);
  bytes.insert(bytes.end(), begin, begin + sizeof part);
}

// Every record as a whole, where the condition holds.
std::vector<uint8_t> RequestOf(const qrn::SearchCondition& condition, const ConditionText& text) {
  constexpr BtrExtraction kOne = {1, 1};
  constexpr BtrExtractField kField = {1, 0};
  const size_t length =
      sizeof(BtrExtendedHead) + condition.Terms.size() + sizeof kOne + sizeof kField;
  if (length > UINT16_MAX) text.RefuseAt(0, Say(Message::ConditionTooLong));
  std::vector<uint8_t> request;
  Append(request,
         BtrExtendedHead{static_cast<uint16_t>(length), {'E', 'G'}, 0, condition.TermCount});
  request.insert(request.end(), condition.Terms.begin(), condition.Terms.end());
  Append(request, kOne);
  Append(request, kField);
  return request;
}

}  // namespace

RecordFilter::RecordFilter(const qrn::QuorinSettings& settings, const Table& table,
                           const btrieve::FileSpec& file, const std::string& condition)
    : takesAll_(condition.empty()) {
  if (takesAll_) return;
  const ConditionText text(table, condition);
  std::vector<qrn::DbFieldInfo> fields = table.fields;
  qrn::DbTableInfo info{};
  info.Fields = fields.data();
  info.FieldCount = static_cast<int32_t>(fields.size());
  qrn::SearchFault fault;
  const auto terms = qrn::ReadSearchCond(settings, info, text.Bytes(), false, fault);
  if (!terms) text.Refuse(fault);
  text.RequireRead(fault.place);
  if (request_.Compile(RequestOf(*terms, text), file) != btrieve::kOk) {
    text.RefuseAt(0, Say(Message::NoValueOrOrder));
  }
}

}  // namespace qrndata
