#include "extended/SearchCond.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <new>
#include <string>
#include <string_view>

#include "extended/ExMemoryFailure.h"
#include "extended/FieldReference.h"
#include "extended/TextCursor.h"
#include "fields/FieldText.h"
#include "fields/Messages.h"

namespace qrn {
namespace {

constexpr size_t kReferenceLimit = 256;  // bytes of a field's name or number
constexpr size_t kLiteralLimit = 256;    // bytes of a value or a connector's word

// Some codecs store beyond their field's size; a literal's field stands alone, with room behind it.
constexpr size_t kRoomBehindLiteral = 1024;

struct Operator {
  std::string_view text;
  BtrComparison code;
};
// In the order they are tried: the two-character ones first.
constexpr Operator kOperators[] = {
    {"<>", BtrNotEqual}, {">=", BtrGreaterOrEqual}, {"<=", BtrLessOrEqual},
    {"=", BtrEqual},     {">", BtrGreater},         {"<", BtrLess},
};

bool ComparesAsText(const DbFieldInfo& field) {
  return field.Type == kString || field.Type == kLString || field.Type == kZString;
}

bool HasVariableLength(const DbFieldInfo& field) {
  return field.Type == kNote || field.Type == kLVar;
}

bool IsDelimiter(char byte) { return byte == '"' || byte == '\'' || byte == '/'; }

BtrConnector ConnectorOf(char byte) {
  if (byte == '&') return BtrAnd;
  return byte == '|' ? BtrOr : BtrLastTerm;
}

class ConditionParser {
 public:
  ConditionParser(const QuorinSettings& settings, const DbTableInfo& table, const char* text,
                  bool ignoreCase, SearchFault& fault)
      : settings_(settings),
        table_(table),
        text_(text),
        cursor_(text),
        size_(cursor_.Left()),
        ignoreCase_(ignoreCase),
        fault_(fault) {}

  bool Parse() {
    do {
      if (!ParseTerm()) return false;
    } while (connector_ != BtrLastTerm);
    MarkPlace();
    return true;
  }

  SearchCondition TakeCondition() { return std::move(condition_); }

 private:
  // Steps over `@field operator value connector` and appends the term.
  bool ParseTerm() {
    const DbFieldInfo* field = TakeField();
    if (field == nullptr) return false;
    if (HasVariableLength(*field)) return Fail(kVE043);
    MarkPlace();
    BtrTerm head{static_cast<uint8_t>(field->Type), FieldWidth(*field), FieldOffset(*field), 0, 0};
    if (!TakeOperator(head)) return Fail(kVE042);
    if (ignoreCase_ && ComparesAsText(*field)) head.comparison |= BtrIgnoringCase;
    if (!TakeValue(*field, head)) return false;
    TakeConnector();
    head.connector = static_cast<uint8_t>(connector_);
    Append(head);
    return true;
  }

  // The field behind an "@"; null after a fault.
  const DbFieldInfo* TakeField() {
    cursor_.SkipSpaces();
    MarkPlace();
    if (!cursor_.Accept("@")) {
      Fail(kVE041);
      return nullptr;
    }
    FieldFault fault;
    const int32_t position = ReadFieldReference(table_, cursor_, kReferenceLimit, fault);
    if (position != kNoSuchField) return &table_.Fields[position];
    Fail(fault.message, std::move(fault.name));
    return nullptr;
  }

  bool TakeOperator(BtrTerm& head) {
    cursor_.SkipSpaces();
    const auto found = std::find_if(std::begin(kOperators), std::end(kOperators),
                                    [&](const Operator& row) { return cursor_.Accept(row.text); });
    if (found == std::end(kOperators)) return false;
    head.comparison = static_cast<uint8_t>(found->code);
    return true;
  }

  bool TakeValue(const DbFieldInfo& field, BtrTerm& head) {
    cursor_.SkipSpaces();
    if (cursor_.Peek() != '@') return TakeLiteral(field);
    head.comparison |= BtrWithField;
    const DbFieldInfo* second = TakeField();
    if (second == nullptr) return false;
    const uint16_t offset = FieldOffset(*second);
    value_ = {static_cast<uint8_t>(offset), static_cast<uint8_t>(offset >> 8)};
    return true;
  }

  bool TakeLiteral(const DbFieldInfo& field) {
    MarkPlace();
    const std::string literal(IsDelimiter(cursor_.Peek()) ? cursor_.TakeDelimited(kLiteralLimit)
                                                          : cursor_.TakeWord(kLiteralLimit));
    if (literal.empty()) {
      value_ = {0, 0};
      return true;
    }
    if (ConnectorOf(literal.front()) != BtrLastTerm) return Fail(kVE046, text_);
    value_.assign(FieldWidth(field) + kRoomBehindLiteral, 0);
    SetFieldText(settings_, value_, literal.c_str(), field);
    value_.resize(FieldWidth(field));
    return true;
  }

  // A connector swallows its whole word: `& @1` goes on with field 1, `&@1` has lost it.
  void TakeConnector() {
    cursor_.SkipSpaces();
    connector_ = ConnectorOf(cursor_.Peek());
    if (connector_ != BtrLastTerm) cursor_.TakeWord(kLiteralLimit);
  }

  void Append(const BtrTerm& head) {
    const auto* bytes = reinterpret_cast<const uint8_t*>(&head);
    condition_.Terms.insert(condition_.Terms.end(), bytes, bytes + sizeof head);
    condition_.Terms.insert(condition_.Terms.end(), value_.begin(), value_.end());
    if (condition_.TermCount < std::numeric_limits<uint16_t>::max()) ++condition_.TermCount;
  }

  void MarkPlace() { fault_.place = size_ - cursor_.Left(); }

  bool Fail(int message, std::string word = {}) {
    fault_.message = message;
    fault_.word = std::move(word);
    return false;
  }

  const QuorinSettings& settings_;
  const DbTableInfo& table_;
  const char* text_;
  TextCursor cursor_;
  size_t size_;
  bool ignoreCase_;
  BtrConnector connector_ = BtrLastTerm;
  SearchFault& fault_;
  std::vector<uint8_t> value_;  // of the term under way
  SearchCondition condition_;
};

}  // namespace

std::optional<SearchCondition> ReadSearchCond(const QuorinSettings& settings,
                                              const DbTableInfo& table, const char* text,
                                              bool ignoreCase, SearchFault& fault) {
  if (text == nullptr || *text == '\0') return SearchCondition{};
  ConditionParser parser(settings, table, text, ignoreCase, fault);
  if (!parser.Parse()) return std::nullopt;
  return parser.TakeCondition();
}

std::optional<SearchCondition> ParseSearchCond(const DbEngine& engine, const DbTableInfo& table,
                                               const char* text, bool ignoreCase) {
  try {
    SearchFault fault;
    auto condition = ReadSearchCond(engine.Settings, table, text, ignoreCase, fault);
    if (!condition) ShowMessage(fault.message, fault.word.c_str());
    return condition;
  } catch (const std::bad_alloc&) {
    ReportExMemoryFailure();
    return std::nullopt;
  }
}

}  // namespace qrn
