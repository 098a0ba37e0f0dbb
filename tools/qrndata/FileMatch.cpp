#include "tools/qrndata/FileMatch.h"

#include <algorithm>

#include "tools/qrndata/Failure.h"
#include "tools/qrndata/Messages.h"
#include "tools/qrndata/TableFile.h"

namespace qrndata {

namespace {

// How the bytes of a value make a number; other types are bytes to a key.
enum class Form { Bytes, LittleEndian, Real, BFloat, Packed, Digits };

struct FormRow {
  int32_t type;
  Form form;
};

// clang-format off
constexpr FormRow kForms[] = {
    {qrn::kInteger,  Form::LittleEndian}, {qrn::kUBin,       Form::LittleEndian},
    {qrn::kAutoInc,  Form::LittleEndian}, {qrn::kCurrency,   Form::LittleEndian},
    {qrn::kDate,     Form::LittleEndian}, {qrn::kTime,       Form::LittleEndian},
    {qrn::kFloat,    Form::Real},         {qrn::kBFloat,     Form::BFloat},
    {qrn::kDecimal,  Form::Packed},       {qrn::kMoney,      Form::Packed},
    {qrn::kNumeric,  Form::Digits},       {qrn::kNumericSTS, Form::Digits},
    {qrn::kNumericSA, Form::Digits},
};
// clang-format on

Form FormOf(int32_t type) {
  const auto* row = std::find_if(std::begin(kForms), std::end(kForms),
                                 [&](const FormRow& each) { return each.type == type; });
  return row == std::end(kForms) ? Form::Bytes : row->form;
}

// A key may sort dates as integers, or numbers as bytes; no bytes are two forms of number at once.
Weight WeightOfTypes(int32_t inFile, int32_t described) {
  const Form left = FormOf(inFile), right = FormOf(described);
  const bool areBoth = left != Form::Bytes && right != Form::Bytes;
  return areBoth && left != right ? Weight::Record : Weight::Note;
}

// What two descriptions of one segment must agree in: the rest only says how they are written.
constexpr uint16_t kComparedFlags =
    btrieve::kDuplicates | btrieve::kModifiable | btrieve::kSequence | btrieve::kNullAllSegments |
    btrieve::kCaseInsensitive | btrieve::kDescending | btrieve::kNullAnySegment;

std::string NumberPair(const std::string& what, size_t inFile, size_t described) {
  return Say(Message::InFileAndDictionary, what, inFile, described);
}

std::string KeyName(size_t number) { return Say(Message::KeyNumber, number); }

class Matcher {
 public:
  Matcher(const Table& table, const btrieve::FileSpec& file) : table_(table), file_(file) {}

  FileMatch Run() {
    CompareRecords();
    PairKeys();
    CompareKeys();
    return std::move(match_);
  }

 private:
  void Add(Weight weight, std::string text) {
    match_.mismatches.push_back({weight, std::move(text)});
  }

  void CompareRecords();
  bool SaysAnything(const Key& key) const;
  bool IsAtSamePlace(const btrieve::KeySpec& inFile, const Key& key) const;
  void PairKeys();
  void PairByNumber();
  void CompareKeys();
  void CompareKey(size_t number, bool isUntold);
  void TellPlaces(size_t number, const btrieve::KeySpec& inFile);
  void TellKinds(size_t number, const btrieve::KeySpec& inFile);
  static std::string AtPlace(size_t number, size_t segment, const qrn::DbFieldInfo& field,
                             Message what);

  const Table& table_;
  const btrieve::FileSpec& file_;
  FileMatch match_;
};

void Matcher::CompareRecords() {
  if (!file_.IsVariable() && file_.recordLength != RecordLength(table_)) {
    Add(Weight::Record,
        NumberPair(Say(Message::TheRecordLength), file_.recordLength, RecordLength(table_)));
  }
  if (file_.IsVariable() && file_.recordLength > FixedLength(table_)) {
    Add(Weight::Record,
        NumberPair(Say(Message::TheFixedPart), file_.recordLength, FixedLength(table_)));
  }
  if (!file_.IsVariable() && HasVariableRecords(table_)) {
    Add(Weight::Record, Say(Message::FixedRecords));
  }
}

// Rows over fields that the table does not have say nothing of the file.
bool Matcher::SaysAnything(const Key& key) const {
  return std::any_of(key.segments.begin(), key.segments.end(), [&](const Segment& segment) {
    return FindField(table_, segment.fieldId) != nullptr;
  });
}

bool Matcher::IsAtSamePlace(const btrieve::KeySpec& inFile, const Key& key) const {
  if (inFile.segments.size() != key.segments.size() || !SaysAnything(key)) return false;
  for (size_t at = 0; at < key.segments.size(); ++at) {
    const qrn::DbFieldInfo* field = FindField(table_, key.segments[at].fieldId);
    if (field == nullptr) continue;
    if (inFile.segments[at].offset != static_cast<size_t>(field->Offset) ||
        inFile.segments[at].length != static_cast<size_t>(field->Size)) {
      return false;
    }
  }
  return true;
}

// In both orders alike, since a key left out of the dictionary moves the numbers of those behind.
void Matcher::PairKeys() {
  size_t from = 0;
  for (const Key& key : table_.keys) {
    size_t slot = from;
    while (slot < file_.keys.size() && !IsAtSamePlace(file_.keys[slot], key)) ++slot;
    const bool isFound = slot < file_.keys.size();
    match_.slots.push_back(isFound ? std::optional(slot) : std::nullopt);
    if (isFound) from = slot + 1;
  }
}

// Where both have keys of their own, those of one number are meant to be the same.
void Matcher::PairByNumber() {
  for (size_t number = 0; number < match_.slots.size(); ++number) {
    const bool isSame =
        number < file_.keys.size() && IsAtSamePlace(file_.keys[number], table_.keys[number]);
    match_.slots[number] = isSame ? std::optional(number) : std::nullopt;
  }
}

void Matcher::CompareKeys() {
  size_t missing = 0, found = 0;
  for (size_t number = 0; number < table_.keys.size(); ++number) {
    if (match_.slots[number]) ++found;
    if (!match_.slots[number] && SaysAnything(table_.keys[number])) ++missing;
  }
  const bool isUntold = found < file_.keys.size();
  if (file_.keys.size() != table_.keys.size()) {
    const Weight weight = missing == 0 ? Weight::Note : isUntold ? Weight::Record : Weight::Key;
    Add(weight, NumberPair(Say(Message::TheNumberOfKeys), file_.keys.size(), table_.keys.size()));
  }
  if (missing != 0 && isUntold) PairByNumber();
  for (size_t number = 0; number < table_.keys.size(); ++number) CompareKey(number, isUntold);
}

void Matcher::CompareKey(size_t number, bool isUntold) {
  const std::optional<size_t> slot = match_.slots[number];
  if (slot && *slot != number) {
    Add(Weight::Key, Say(Message::KeyElsewhere, KeyName(number), KeyName(*slot)));
  }
  if (slot) return TellKinds(number, file_.keys[*slot]);
  if (!SaysAnything(table_.keys[number])) return;
  if (!isUntold) return Add(Weight::Key, Say(Message::FileLacksKey, KeyName(number)));
  if (number < file_.keys.size()) TellPlaces(number, file_.keys[number]);
}

std::string Matcher::AtPlace(size_t number, size_t segment, const qrn::DbFieldInfo& field,
                             Message what) {
  return Say(Message::SegmentPlace, number, segment, Quoted(field.Name), Say(what));
}

// The file has another key of that number: what is where the description says?
void Matcher::TellPlaces(size_t number, const btrieve::KeySpec& inFile) {
  const std::vector<Segment>& segments = table_.keys[number].segments;
  if (inFile.segments.size() != segments.size()) {
    Add(Weight::Record, NumberPair(Say(Message::OfKey, number, Say(Message::TheNumberOfSegments)),
                                   inFile.segments.size(), segments.size()));
    return;
  }
  for (size_t at = 0; at < segments.size(); ++at) {
    const qrn::DbFieldInfo* field = FindField(table_, segments[at].fieldId);
    if (field == nullptr) continue;
    const auto compare = [&](Message what, size_t left, size_t right) {
      if (left != right) {
        Add(Weight::Record, NumberPair(AtPlace(number, at, *field, what), left, right));
      }
    };
    compare(Message::TheOffset, inFile.segments[at].offset, static_cast<size_t>(field->Offset));
    compare(Message::TheLength, inFile.segments[at].length, static_cast<size_t>(field->Size));
  }
  TellKinds(number, inFile);
}

void Matcher::TellKinds(size_t number, const btrieve::KeySpec& inFile) {
  const std::vector<Segment>& segments = table_.keys[number].segments;
  for (size_t at = 0; at < segments.size(); ++at) {
    const qrn::DbFieldInfo* field = FindField(table_, segments[at].fieldId);
    if (field == nullptr) continue;
    const btrieve::KeySegment& segment = inFile.segments[at];
    const auto type = static_cast<int32_t>(segment.Type());
    if ((segment.flags & btrieve::kExtendedType) != 0 && type != field->Type) {
      Add(WeightOfTypes(type, field->Type),
          NumberPair(AtPlace(number, at, *field, Message::TheType), static_cast<size_t>(type),
                     static_cast<size_t>(field->Type)));
    }
    const auto flags = static_cast<uint16_t>(segment.flags & kComparedFlags);
    const auto described = static_cast<uint16_t>(FileKeyFlags(segments[at].flags) & kComparedFlags);
    if (flags != described) {
      Add(Weight::Note,
          NumberPair(AtPlace(number, at, *field, Message::TheFlagWord), flags, described));
    }
  }
}

}  // namespace

const Mismatch* FileMatch::Heaviest(Weight least) const noexcept {
  const auto found = std::max_element(
      mismatches.begin(), mismatches.end(),
      [](const Mismatch& left, const Mismatch& right) { return left.weight < right.weight; });
  return found == mismatches.end() || found->weight < least ? nullptr : &*found;
}

FileMatch MatchFile(const Table& table, const btrieve::FileSpec& file) {
  return Matcher(table, file).Run();
}

void RequireMatch(const Table& table, const FileMatch& match, Weight refused) {
  const Mismatch* wrong = match.Heaviest(refused);
  if (wrong == nullptr) return;
  throw Failure(kSystem, Say(Message::FileNotAsDescribed, Quoted(table.name), wrong->text));
}

void WarnOf(const Table& table, const FileMatch& match, std::ostream& warnings) {
  for (const Mismatch& each : match.mismatches) {
    const std::string text = Say(Message::OfTable, Quoted(table.name), each.text);
    warnings << Say(Message::Warning, text) << '\n';
  }
}

}  // namespace qrndata
