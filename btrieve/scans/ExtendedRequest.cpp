// Compiling the descriptor of an extended read, and judging records by it.
#include "btrieve/scans/ExtendedRequest.h"

#include <algorithm>

#include "btrieve/keys/FieldOrder.h"
#include "btrieve/system/ByteReader.h"

namespace btrieve {
namespace {

enum Connector : uint8_t { kLast = BtrLastTerm, kAnd = BtrAnd, kOr = BtrOr };

constexpr uint8_t kComparisonMask = 0x07;
constexpr uint8_t kNamedSequenceFlag = BtrNamedSequence;
constexpr uint8_t kSequenceFlag = BtrWithSequence;
constexpr uint8_t kSecondFieldFlag = BtrWithField;
constexpr uint8_t kFoldCaseFlag = BtrIgnoringCase;

// Outcomes of a comparison as bits.
constexpr uint8_t kLess = 1;
constexpr uint8_t kEqual = 2;
constexpr uint8_t kGreater = 4;

struct ComparisonRow {
  uint8_t accepted;  // outcomes that make the term true
  // Outcomes after which, going up or down the index, it stays false.
  uint8_t endGrowing;
  uint8_t endFalling;
};

// clang-format off
constexpr ComparisonRow kComparisons[] = {
    {0,                 0,                 0},                 // no comparison
    {kEqual,            kGreater,          kLess},             // =
    {kGreater,          0,                 kEqual | kLess},    // >
    {kLess,             kEqual | kGreater, 0},                 // <
    {kLess | kGreater,  0,                 0},                 // <>
    {kGreater | kEqual, 0,                 kLess},             // >=
    {kLess | kEqual,    kGreater,          0},                 // <=
};
// clang-format on

uint8_t Outcome(int sign) noexcept { return sign < 0 ? kLess : sign > 0 ? kGreater : kEqual; }

// Strings in a condition may be longer than a key segment.
bool TakesLength(const KeyTypeRow& type, size_t length) {
  return type.isString ? length >= type.shortest : type.Takes(length);
}

}  // namespace

Status ExtendedRequest::Compile(std::span<const uint8_t> data, const FileSpec& file) {
  ByteReader whole(data);
  const uint16_t length = whole.Take<uint16_t>();
  if (whole.Failed() || length > data.size()) return kDescriptor;
  descriptor_.assign(data.begin(), data.begin() + length);
  ByteReader reader(descriptor_);
  if (const Status status = ReadHead(reader, file)) return status;
  return ReadFields(reader);
}

Status ExtendedRequest::ReadHead(ByteReader& reader, const FileSpec& file) {
  reader.Skip(sizeof(uint16_t));
  const uint16_t signature = reader.Take<uint16_t>();
  beginsWithCurrent_ = signature == ('U' | 'C' << 8);
  if (!beginsWithCurrent_ && signature != ('E' | 'G' << 8)) return kDescriptor;
  if (const uint16_t rejects = reader.Take<uint16_t>()) rejectCount_ = rejects;
  const uint16_t terms = reader.Take<uint16_t>();
  for (size_t i = 0; i < terms; ++i) {
    if (const Status status = ReadTerm(reader, file, i + 1 == terms)) return status;
  }
  if (reader.Failed()) return kDescriptor;
  conditionSize_ = descriptor_.size() - kHeadSize - reader.Rest().size();
  return kOk;
}

Status ExtendedRequest::ReadTerm(ByteReader& reader, const FileSpec& file, bool last) {
  Term term{};
  term.type = reader.Take<uint8_t>();
  term.length = reader.Take<uint16_t>();
  term.offset = reader.Take<uint16_t>();
  const uint8_t comparison = reader.Take<uint8_t>();
  term.connector = reader.Take<uint8_t>();
  if (reader.Failed()) return kDescriptor;

  const KeyTypeRow* type = FindKeyType(term.type);
  if (!type || !TakesLength(*type, term.length)) return kDescriptor;
  if (term.connector > kOr || last != (term.connector == kLast)) return kDescriptor;
  term.comparison = comparison & kComparisonMask;
  if (comparison & kNamedSequenceFlag || (comparison & 16)) return kDescriptor;
  if (term.comparison < 1 || term.comparison > 6) return kDescriptor;
  term.accepted = kComparisons[term.comparison].accepted;
  term.compare = type->compare;
  if ((comparison & kSequenceFlag) && file.sequences.empty()) return kDescriptor;
  term.usesSequence = type->isString && (comparison & kSequenceFlag);
  term.foldsCase = type->isString && (comparison & kFoldCaseFlag);
  term.map = ChooseMap(term, file);
  term.secondField = (comparison & kSecondFieldFlag) != 0;
  ReadOperand(reader, term);
  terms_.push_back(term);
  return reader.Failed() ? kDescriptor : kOk;
}

void ExtendedRequest::ReadOperand(ByteReader& reader, Term& term) {
  term.end = uint32_t{term.offset} + term.length;
  if (term.secondField) {
    term.operand = reader.Take<uint16_t>();
    term.end = std::max(term.end, term.operand + term.length);
    return;
  }
  const auto constant = reader.TakeBytes(term.length);
  if (!reader.Failed()) term.operand = static_cast<uint32_t>(constant.data() - descriptor_.data());
}

const uint8_t* ExtendedRequest::ChooseMap(const Term& term, const FileSpec& file) {
  if (!term.usesSequence) return term.foldsCase ? CaseFoldMap() : nullptr;
  const uint8_t* map = file.sequences[0].Map();
  if (!term.foldsCase) {
    sequenceMap_.assign(map, map + 256);
    return sequenceMap_.data();
  }
  foldedMap_.resize(256);
  std::transform(CaseFoldMap(), CaseFoldMap() + 256, foldedMap_.begin(),
                 [map](uint8_t folded) { return map[folded]; });
  return foldedMap_.data();
}

Status ExtendedRequest::ReadFields(ByteReader& reader) {
  recordsWanted_ = reader.Take<uint16_t>();
  const uint16_t fields = reader.Take<uint16_t>();
  for (size_t i = 0; i < fields && !reader.Failed(); ++i) {
    const uint16_t length = reader.Take<uint16_t>();
    fields_.push_back({length, reader.Take<uint16_t>()});
  }
  const bool whole = !reader.Failed() && reader.Rest().empty();
  return whole && recordsWanted_ > 0 && fields > 0 ? kOk : kDescriptor;
}

void ExtendedRequest::BindLimit(const KeySpec& key, bool forward) {
  if (terms_.empty() || terms_[0].connector == kOr || terms_[0].secondField) return;
  Term& term = terms_[0];
  const KeySegment& segment = key.segments[0];
  const bool sameField = term.offset == segment.offset && term.length == segment.length &&
                         term.type == static_cast<uint8_t>(segment.Type());
  if (!sameField || !CollatesAs(term, segment)) return;
  const bool growing = forward != segment.Has(kDescending);
  const ComparisonRow& row = kComparisons[term.comparison];
  term.atEnd = growing ? row.endGrowing : row.endFalling;
  forward_ = forward;
  descending_ = segment.Has(kDescending);
}

// The first segment's ordered bytes begin an entry, so its place is that of the constant's, before
// or behind all entries that begin so.
std::optional<Entry> ExtendedRequest::EndOfMatches() const {
  if (terms_.empty() || terms_[0].atEnd == 0) return std::nullopt;
  const Term& term = terms_[0];
  const KeyTypeRow& type = *FindKeyType(term.type);
  Entry end;
  end.SetSize(type.orderedSize(term.length, term.map != nullptr));
  type.order(ConstantOf(term).data(), term.length, term.map, end.Data());
  if (descending_) {
    std::transform(end.Data(), end.Data() + end.Size(), end.Data(),
                   [](uint8_t byte) { return static_cast<uint8_t>(~byte); });
  }
  const bool endsWithEqual = (term.atEnd & kEqual) != 0;
  if (endsWithEqual != forward_) end.Fill(0xFF, kMaxOrderedSize + kBehindAll - end.Size());
  return end;
}

size_t ExtendedRequest::BytesReplied(size_t recordLength) const noexcept {
  size_t bytes = sizeof(uint16_t) + sizeof(uint32_t);
  for (const ExtractField& field : fields_) {
    if (field.offset < recordLength) {
      bytes += std::min<size_t>(field.length, recordLength - field.offset);
    }
  }
  return bytes;
}

// The request knows only the file's first sequence.
bool ExtendedRequest::CollatesAs(const Term& term, const KeySegment& segment) noexcept {
  if (term.usesSequence) return !term.foldsCase && segment.sequence == 0;
  return !segment.Has(kSequence) && term.foldsCase == segment.FoldsCase();
}

Verdict ExtendedRequest::Judge(const uint8_t* record, size_t length) const noexcept {
  for (const Term& term : terms_) {
    uint8_t outcome = 0;
    if (term.end <= length) {
      const uint8_t* base = term.secondField ? record : descriptor_.data();
      outcome =
          Outcome(term.compare(record + term.offset, base + term.operand, term.length, term.map));
    }
    const bool holds = (outcome & term.accepted) != 0;
    if (holds && term.connector != kAnd) return Verdict::Accept;
    if (!holds && term.connector != kOr) {
      return outcome & term.atEnd ? Verdict::RejectAtEnd : Verdict::Reject;
    }
  }
  return Verdict::Accept;
}

}  // namespace btrieve
