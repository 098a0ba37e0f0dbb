#include "btrieve/server/ScanFilter.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "btrieve.h"

namespace btrieve::server {
namespace {

// Terms that are looked at: the server takes no text of any depth.
constexpr size_t kMostTerms = 20;
constexpr size_t kLongestInteger = 8;
constexpr size_t kNarrowInteger = 4;  // bytes of the server's own, which are cheaper
// From such a length on the server may keep a record in pieces, of which it need not fetch all.
constexpr size_t kLongRecord = 1000;

// By comparison.
constexpr const char* kOperators[] = {"", " = ", " > ", " < ", " <> ", " >= ", " <= "};

// What of a type's fields is known to the server: the order of integers, that of bytes as they
// stand, through the case map too, and of texts that end with a zero; or only when two are equal.
enum class Kind : uint8_t { Unknown, Signed, Unsigned, Bytes, Terminated, EqualBytes };

struct KindRow {
  KeyType type;
  Kind kind;
};
constexpr KindRow kKinds[] = {
    {KeyType::String, Kind::Bytes},
    {KeyType::Integer, Kind::Signed},
    {KeyType::Date, Kind::Unsigned},
    {KeyType::Time, Kind::Unsigned},
    {KeyType::Logical, Kind::Bytes},
    {KeyType::ZString, Kind::Terminated},
    {KeyType::UnsignedBinary, Kind::Unsigned},
    {KeyType::Currency, Kind::Signed},
    {KeyType::Timestamp, Kind::Unsigned},
    {KeyType::WideString, Kind::EqualBytes},
    {KeyType::Guid, Kind::Bytes},
};

bool AsksForEqual(uint8_t comparison) noexcept {
  return comparison == BtrEqual || comparison == BtrNotEqual;
}

Kind KindOf(const ExtendedRequest::Term& term) noexcept {
  const auto row = std::ranges::find(kKinds, static_cast<KeyType>(term.type), &KindRow::type);
  if (row == std::end(kKinds) || term.secondField || term.usesSequence) return Kind::Unknown;
  const bool isInteger = row->kind == Kind::Signed || row->kind == Kind::Unsigned;
  const bool byEqualBytes =
      row->kind == Kind::EqualBytes || (isInteger && term.length > kLongestInteger);
  if (!byEqualBytes) return row->kind;
  return AsksForEqual(term.comparison) ? Kind::Bytes : Kind::Unknown;
}

// The field's first bytes. Text of the server's has no zeros, and letters of all kinds; escaped
// bytes have none of either, and letters only where the bytes are those.
std::string BytesOf(const ExtendedRequest::Term& term, size_t length) {
  const std::string bytes = "substring(data FROM " + std::to_string(term.offset + 1) + " FOR " +
                            std::to_string(length) + ")";
  if (!term.foldsCase) return bytes;
  return "decode(upper(encode(" + bytes + ", 'escape') COLLATE \"C\"), 'escape')";
}

std::vector<uint8_t> Folded(const ExtendedRequest::Term& term, ByteView constant) {
  std::vector<uint8_t> bytes(constant.begin(), constant.end());
  if (term.foldsCase) {
    std::ranges::transform(bytes, bytes.begin(), [](uint8_t byte) { return CaseFoldMap()[byte]; });
  }
  return bytes;
}

// Two texts are equal where the shorter one's bytes and a zero stand at the beginning; all below
// stand below that zero, all above above it.
struct TerminatedRow {
  const char* comparison;
  uint8_t end;  // behind the constant's text
};
constexpr TerminatedRow kTerminated[] = {{"", 0},     {" = ", 0},  {" >= ", 1}, {" < ", 0},
                                         {" <> ", 0}, {" >= ", 0}, {" < ", 1}};

}  // namespace

// A false term before AND rejects, a true one before OR accepts: each is joined with all that is
// behind it. Taking a term, or all behind it, for true accepts no fewer records.
ScanFilter::ScanFilter(const ExtendedRequest* request, const FileSpec& file, int first)
    : file_(file), next_(first) {
  if (!request) return;
  const auto terms = request->Terms().first(std::min(request->Terms().size(), kMostTerms));
  for (size_t at = terms.size(); at-- > 0;) {
    const Term& term = terms[at];
    auto judgement = term.secondField ? std::nullopt : Judge(term, request->ConstantOf(term));
    const bool isOpenBehind = text_.empty() && term.connector != BtrLastTerm;
    if (term.connector == BtrOr && (!judgement || isOpenBehind)) {
      text_.clear();
      constants_.clear();
      next_ = first;
    } else if (judgement) {
      Put(std::move(*judgement), term.connector == BtrOr ? " OR " : " AND ");
    }
  }
}

void ScanFilter::Put(Judgement judgement, const char* connector) {
  const char* type = judgement.constant.isNumber ? "::bigint" : "::bytea";
  const std::string term =
      judgement.before + "$" + std::to_string(next_++) + type + judgement.after;
  text_ = text_.empty() ? term : "(" + term + connector + text_ + ")";
  constants_.push_back(std::move(judgement.constant));
}

void ScanFilter::AddTo(Arguments& arguments) const {
  for (const Constant& constant : constants_) {
    constant.isNumber ? arguments.Add(constant.number) : arguments.Add(ByteView(constant.bytes));
  }
}

std::optional<ScanFilter::Judgement> ScanFilter::Judge(const Term& term, ByteView constant) const {
  const Kind kind = KindOf(term);
  if (kind == Kind::Unknown) return std::nullopt;
  if (kind == Kind::Signed || kind == Kind::Unsigned) {
    return JudgeInteger(term, constant, kind == Kind::Signed);
  }
  std::vector<uint8_t> bytes = Folded(term, constant);
  const auto end = std::ranges::find(bytes, uint8_t{0});
  if (kind == Kind::Bytes || end == bytes.end()) {
    return Judgement{BytesOf(term, term.length) + kOperators[term.comparison],
                     {.bytes = std::move(bytes)}};
  }
  const TerminatedRow& row = kTerminated[term.comparison];
  *end = row.end;
  bytes.erase(end + 1, bytes.end());
  const size_t length = AsksForEqual(term.comparison) ? bytes.size() : term.length;
  return Judgement{BytesOf(term, length) + row.comparison, {.bytes = std::move(bytes)}};
}

std::string ScanFilter::ByteAt(const Term& term, size_t at) const {
  const bool isLong = file_.IsVariable() || file_.recordLength >= kLongRecord;
  if (!isLong) return "get_byte(data, " + std::to_string(term.offset + at) + ")";
  return "get_byte(substring(data FROM " + std::to_string(term.offset + 1) + " FOR " +
         std::to_string(term.length) + "), " + std::to_string(at) + ")";
}

// Put together in an integer of the server's, all of which have signs: one that fills it is to have
// one, one that does not is to have none. Turning the highest bit makes each from the other, in the
// same order. A byte that is not there is an error.
ScanFilter::Judgement ScanFilter::JudgeInteger(const Term& term, ByteView constant,
                                               bool isSigned) const {
  const bool isNarrow = term.length <= kNarrowInteger;
  const size_t room = isNarrow ? kNarrowInteger : kLongestInteger;
  std::string value;
  for (size_t at = 0; at < term.length; ++at) {
    const std::string byte = ByteAt(term, at) + (isNarrow ? "" : "::bigint");
    value += at == 0 ? byte : " | (" + byte + " << " + std::to_string(8 * at) + ")";
  }
  uint64_t number = 0;
  std::memcpy(&number, constant.data(), constant.size());
  if (isSigned != (term.length == room)) {
    const uint64_t top = uint64_t{1} << (8 * term.length - 1);
    number ^= top;
    const auto mask = isNarrow ? int64_t{static_cast<int32_t>(static_cast<uint32_t>(top))}
                               : static_cast<int64_t>(top);
    value = "(" + value + ") # '" + std::to_string(mask) + (isNarrow ? "'::int" : "'::bigint");
  }
  const bool fillsNarrow = term.length == kNarrowInteger;
  const auto held = fillsNarrow ? int64_t{static_cast<int32_t>(static_cast<uint32_t>(number))}
                                : static_cast<int64_t>(number);
  const std::string comparison = "(" + value + ")" + kOperators[term.comparison];
  const size_t needed = size_t{term.offset} + term.length;
  if (needed <= file_.recordLength) return {comparison, {.isNumber = true, .number = held}};
  return {"CASE WHEN octet_length(data) >= " + std::to_string(needed) + " THEN " + comparison,
          {.isNumber = true, .number = held},
          " ELSE false END"};
}

}  // namespace btrieve::server
