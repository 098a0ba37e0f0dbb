// The model of extended reads and percentages.
#include <algorithm>
#include <cmath>

#include "ModelCursor.h"

namespace btrieve::test {
namespace {

const uint8_t* MapOf(const FileSpec& file, const TermOf& term, std::array<uint8_t, 256>& room) {
  const bool text = FindKeyType(term.type)->isString;
  for (int i = 0; i < 256; ++i) {
    auto byte = static_cast<uint8_t>(i);
    if (text && (term.comparison & kWithFold) && byte >= 'a' && byte <= 'z') byte -= 32;
    if (text && (term.comparison & kWithSequence)) byte = file.sequences[0].Map()[byte];
    room[i] = byte;
  }
  return room.data();
}

// -1, 0, 1, or nothing where a field lies outside the record.
std::optional<int> Outcome(const FileSpec& file, const TermOf& term, const Bytes& record) {
  if (size_t{term.offset} + term.length > record.size()) return std::nullopt;
  const uint8_t* other = term.operand.data();
  if (term.comparison & kWithField) {
    const auto offset = NumberAt<uint16_t>(term.operand, 0);
    if (size_t{offset} + term.length > record.size()) return std::nullopt;
    other = record.data() + offset;
  }
  std::array<uint8_t, 256> map;
  const int sign = FindKeyType(term.type)->compare(record.data() + term.offset, other, term.length,
                                                   MapOf(file, term, map));
  return sign < 0 ? -1 : sign > 0;
}

bool Holds(std::optional<int> outcome, int comparison) {
  if (!outcome) return false;
  switch (comparison & 7) {
    case kEq:
      return *outcome == 0;
    case kGt:
      return *outcome > 0;
    case kLt:
      return *outcome < 0;
    case kNe:
      return *outcome != 0;
    case kGe:
      return *outcome >= 0;
    default:
      return *outcome <= 0;
  }
}

// `A op rest`: A decides alone where it can, else the rest does.
bool Accepts(const FileSpec& file, std::span<const TermOf> terms, const Bytes& record) {
  if (terms.empty()) return true;
  const bool holds = Holds(Outcome(file, terms[0], record), terms[0].comparison);
  if (terms[0].connector == kAndNext) return holds && Accepts(file, terms.subspan(1), record);
  if (terms[0].connector == kOrNext) return holds || Accepts(file, terms.subspan(1), record);
  return holds;
}

bool RangeIsKnown(const KeySegment& segment, const TermOf& term) {
  const bool text = FindKeyType(term.type)->isString;
  const bool folds = text && (term.comparison & kWithFold);
  const bool sequenced = text && (term.comparison & kWithSequence);
  return term.connector != kOrNext && !(term.comparison & kWithField) &&
         term.offset == segment.offset && term.length == segment.length &&
         term.type == static_cast<uint8_t>(segment.Type()) && folds == segment.FoldsCase() &&
         sequenced == segment.Has(kSequence);
}

// The first term is false here and for everything further on in this direction.
bool PassesRange(const FileSpec& file, const KeySegment& segment, const TermOf& term, bool forward,
                 const Bytes& record) {
  if (!RangeIsKnown(segment, term)) return false;
  const auto outcome = Outcome(file, term, record);
  if (!outcome || Holds(outcome, term.comparison)) return false;
  const bool growing = forward != segment.Has(kDescending);
  switch (term.comparison & 7) {
    case kEq:
      return growing ? *outcome > 0 : *outcome < 0;
    case kLt:
    case kLe:
      return growing;
    case kGt:
    case kGe:
      return !growing;
    default:
      return false;
  }
}

// What a record gives to the reply; nothing where a field cannot be taken.
std::optional<Bytes> Extracted(const std::vector<FieldOf>& fields, const Bytes& record) {
  Bytes data;
  for (size_t i = 0; i < fields.size(); ++i) {
    const size_t from = fields[i].offset;
    const size_t to = from + fields[i].length;
    if (from >= record.size()) return std::nullopt;
    if (to > record.size() && i + 1 < fields.size()) return std::nullopt;
    const auto begin = record.begin() + static_cast<std::ptrdiff_t>(from);
    const auto end = record.begin() + static_cast<std::ptrdiff_t>(std::min(to, record.size()));
    data.insert(data.end(), begin, end);
  }
  return data;
}

}  // namespace

// Positions in the order that the operation meets them.
std::vector<uint32_t> ModelCursor::Ahead(int operation, bool withCurrent, int key) const {
  const bool forward = operation == kGetNextExtended || operation == kStepNextExtended;
  const bool onKey = operation == kGetNextExtended || operation == kGetPreviousExtended;
  std::vector<uint32_t> ahead;
  const auto take = [&](uint32_t position, int side) {
    if (side == 0 ? withCurrent : (side > 0) == forward) ahead.push_back(position);
  };
  if (onKey) {
    for (const ModelEntry& entry : Index(key)) {
      const int order = file_->Compare(static_cast<size_t>(key), entry.value, place_.value);
      take(entry.position, order != 0                   ? order
                           : entry.order > place_.order ? 1
                           : entry.order < place_.order ? -1
                                                        : 0);
    }
  } else {
    const bool fresh = physical_ == Physical::BeforeFirst;
    for (const auto& [position, record] : file_->records) {
      take(position, fresh                  ? (forward ? 1 : -1)
                     : position > position_ ? 1
                     : position < position_ ? -1
                                            : 0);
    }
  }
  if (!forward) std::reverse(ahead.begin(), ahead.end());
  return ahead;
}

Expected ModelCursor::Extended(int operation, const Descriptor& descriptor, const CallIn& in) {
  const FileSpec& file = file_->Spec();
  const bool onKey = operation == kGetNextExtended || operation == kGetPreviousExtended;
  const bool forward = operation == kGetNextExtended || operation == kStepNextExtended;
  if (onKey) {
    if (!HasKey(in.keyNumber)) return Fails(kInvalidKeyNumber);
    Status status = kOk;
    (void)Neighbour(in.keyNumber, forward, false, status);
    if (status != kOk && status != kEndOfFile) return Fails(status);
  }
  const int rejects = descriptor.rejects ? descriptor.rejects : 4095;
  const size_t room = std::max(in.room, in.data.size());
  Expected expected{.status = kEndOfFile};
  Bytes reply = Number(uint16_t{0});
  uint16_t count = 0;
  int rejected = 0;
  std::optional<uint32_t> last;
  for (const uint32_t position :
       Ahead(operation, std::string(descriptor.signature) == "UC", in.keyNumber)) {
    const Bytes& record = file_->records.at(position).data;
    if (!Accepts(file, descriptor.terms, record)) {
      last = position;
      const bool passed =
          onKey && PassesRange(file, file.keys[static_cast<size_t>(in.keyNumber)].segments[0],
                               descriptor.terms[0], forward, record);
      if (passed || ++rejected == rejects) {
        expected.status = passed ? kFilterLimit : kRejectCount;
        break;
      }
      continue;
    }
    const auto data = Extracted(descriptor.fields, record);
    if (!data) {
      last = position;
      expected.status = kFieldOffset;
      break;
    }
    if (reply.size() + 6 + data->size() > room) {
      expected.status = kDataBufferLength;
      break;
    }
    reply = reply + Number(static_cast<uint16_t>(data->size())) + Number(position) + *data;
    last = position;
    if (++count == descriptor.wanted) {
      expected.status = kOk;
      break;
    }
  }
  std::memcpy(reply.data(), &count, sizeof count);
  expected.data = reply;
  if (last && onKey) {
    StandOn(in.keyNumber, *file_->EntryOf(static_cast<size_t>(in.keyNumber), *last), false);
  } else if (last) {
    Stand(*last, false);
    logical_ = Logical::None;
  }
  return expected;
}

Expected ModelCursor::Percent(const CallIn& in) {
  const int key = in.keyNumber;
  if (key != -1 && !HasKey(key)) return Fails(kInvalidKeyNumber);
  const int percent = std::clamp<int>(NumberAt<int16_t>(in.data, 0), 0, 10000);
  const size_t count = key == -1 ? file_->records.size() : Index(key).size();
  if (count == 0) return Fails(kEndOfFile);
  const auto at = std::lround(percent * static_cast<double>(count - 1) / 10000);
  if (key == -1) {
    const uint32_t position = std::next(file_->records.begin(), at)->first;
    Stand(position, true);
    logical_ = Logical::None;
    return Deliver(position, -1, in);
  }
  const ModelEntry entry = *std::next(Index(key).begin(), at);
  StandOn(key, entry, true);
  return Deliver(entry.position, key, in);
}

Expected ModelCursor::FindPercent(const CallIn& in) const {
  const int key = in.keyNumber;
  if (key != -1 && !HasKey(key)) return Fails(kInvalidKeyNumber);
  std::ptrdiff_t at = 0;
  size_t count = file_->records.size();
  if (key == -1) {
    const auto record = file_->records.find(NumberAt<uint32_t>(in.data, 0));
    if (count == 0) return Fails(kEndOfFile);
    if (record == file_->records.end()) return Fails(kInvalidAddress);
    at = std::distance(file_->records.begin(), record);
  } else {
    const ModelIndex& index = Index(key);
    count = index.size();
    if (count == 0) return Fails(kEndOfFile);
    Entry entry = LowerBound(key, in.key);
    const bool mine = logical_ == Logical::At && key_ == key &&
                      file_->Compare(static_cast<size_t>(key), place_.value, in.key) == 0;
    if (mine) entry = index.lower_bound(place_);
    at = std::distance(index.begin(), entry);
  }
  if (at == static_cast<std::ptrdiff_t>(count)) return {.data = Number(uint32_t{10000})};
  long percent = 0;
  if (count > 1)
    percent = std::lround(static_cast<double>(at) * 10000 / static_cast<double>(count - 1));
  return {.data = Number(static_cast<uint32_t>(percent))};
}

}  // namespace btrieve::test
