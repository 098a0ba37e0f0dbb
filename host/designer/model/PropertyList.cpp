#include "host/designer/model/PropertyList.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <map>

#include "host/designer/document/PropertyText.h"
#include "host/designer/model/Places.h"
#include "host/designer/model/PropertyRules.h"
#include "host/form/SourceText.h"
#include "host/form/SystemColours.h"

namespace qrn::designer {
namespace {

using form::PropertyValue;
using form::SameWord;

constexpr int32_t kTrue = -1;

template <class Number>
bool ReadWhole(std::string_view text, Number* number, int base = 10) {
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), *number, base);
  return error == std::errc() && end == text.data() + text.size();
}

std::optional<uint32_t> ReadHexadecimal(std::string_view text) {
  if (text.size() < 3 || !SameWord(text.substr(0, 2), "&H")) return std::nullopt;
  text.remove_prefix(2);
  if (text.ends_with('&')) text.remove_suffix(1);
  uint32_t number = 0;
  return ReadWhole(text, &number, 16) ? std::optional(number) : std::nullopt;
}

Refusal ReadWholeNumber(std::string_view text, const PropertyInfo& info, PropertyValue* value) {
  int32_t number = 0;
  if (const auto hexadecimal = ReadHexadecimal(text)) {
    number = static_cast<int32_t>(*hexadecimal);
  } else if (!ReadWhole(text, &number)) {
    return Message{TextId::WholeExpected, {info.name}};
  }
  if (number < info.least || number > info.most) {
    return Message{TextId::RangeExpected, {std::to_string(info.least), std::to_string(info.most)}};
  }
  *value = number;
  return {};
}

Refusal ReadFraction(std::string_view text, const PropertyInfo& info, PropertyValue* value) {
  double number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc() || end != text.data() + text.size() || !std::isfinite(number) ||
      std::abs(number) > kLargestSize) {
    return Message{TextId::NumberExpected, {info.name}};
  }
  if (number == std::trunc(number)) {
    *value = static_cast<int32_t>(number);
  } else {
    *value = number;
  }
  return {};
}

// Any number but 0 is true, as Visual Basic has it.
Refusal ReadTruth(std::string_view text, const PropertyInfo& info, PropertyValue* value) {
  int32_t number = 0;
  const std::string word = form::LowerWord(text);
  const bool isTrue = !word.empty() && std::string_view("true").starts_with(word);
  const bool isFalse = !word.empty() && std::string_view("false").starts_with(word);
  if (!isTrue && !isFalse && !ReadWhole(text, &number)) {
    return Message{TextId::TruthExpected, {info.name}};
  }
  *value = isTrue || number != 0 ? kTrue : 0;
  return {};
}

std::string ColourText(uint32_t colour) {
  return ValueText(static_cast<int32_t>(colour), {NumberLook::Colour, {}});
}

// `&H8000000F& - vbButtonFace`, as the list of them offers it.
std::vector<std::string> ColourChoices() {
  std::vector<std::string> choices;
  for (const char* name : form::kSystemColours) {
    const auto colour = form::kSystemColour + static_cast<uint32_t>(choices.size());
    choices.push_back(ColourText(colour) + " - " + name);
  }
  return choices;
}

// `vbButtonFace`, or the line of the list.
std::optional<uint32_t> ReadNamedColour(std::string_view text) {
  const size_t name = text.rfind(' ') + 1;
  uint32_t colour = form::kSystemColour;
  for (const char* known : form::kSystemColours) {
    const bool isMeant = SameWord(text.substr(name), known) &&
                         (name == 0 || SameWord(text.substr(0, name), ColourText(colour) + " - "));
    if (isMeant) return colour;
    ++colour;
  }
  return std::nullopt;
}

Refusal ReadColour(std::string_view text, const PropertyInfo& info, PropertyValue* value) {
  int64_t number = 0;
  if (const auto named = ReadNamedColour(text)) {
    number = *named;
  } else if (const auto hexadecimal = ReadHexadecimal(text)) {
    number = *hexadecimal;
  } else if (!ReadWhole(text, &number) || number < INT32_MIN || number > UINT32_MAX) {
    return Message{TextId::ColourExpected, {info.name}};
  }
  *value = static_cast<int32_t>(static_cast<uint32_t>(number));
  return {};
}

// `1`, `1 - Fixed Single` or `Fixed Single`.
Refusal ReadChoice(std::string_view text, const PropertyInfo& info, PropertyValue* value) {
  for (const EnumerationMember& member : info.members) {
    const std::string number = std::to_string(member.value);
    if (text == number || SameWord(text, member.text) ||
        SameWord(text, number + " - " + member.text)) {
      *value = member.value;
      return {};
    }
  }
  return Message{TextId::ChoiceExpected, {info.name}};
}

Refusal ReadAnyText(std::string_view text, const PropertyInfo&, PropertyValue* value) {
  *value = std::string(text);
  return {};
}

Refusal ReadNothing(std::string_view, const PropertyInfo& info, PropertyValue*) {
  return Message{TextId::SetByDialog, {info.name}};
}

// By PropertyKind.
constexpr Refusal (*kReaders[])(std::string_view, const PropertyInfo&, PropertyValue*) = {
    ReadAnyText, ReadWholeNumber, ReadFraction, ReadTruth,  ReadColour,
    ReadChoice,  ReadNothing,     ReadNothing,  ReadNothing};

std::string ShownFont(const form::Property& font) {
  std::string name;
  std::string size;
  for (const form::Property& row : font.group) {
    const auto* text = std::get_if<std::string>(&row.value);
    if (SameWord(row.name, "Name") && text) name = *text;
    if (SameWord(row.name, "Size")) size = ValueText(row.value);
  }
  return size.empty() ? name : name + ", " + size;
}

std::string ShownNumber(int32_t number, const PropertyInfo& info) {
  for (const EnumerationMember& member : info.members) {
    if (member.value == number) return std::to_string(number) + " - " + member.text;
  }
  if (info.kind == PropertyKind::Boolean) return number ? "True" : "False";
  return ValueText(
      number, {info.kind == PropertyKind::Colour ? NumberLook::Colour : NumberLook::Plain, {}});
}

// The property that tells the source or the table which this one's names come from: the one of its
// own family, DbListTable for DbListField.
std::string Related(std::string_view property, const char* what) {
  const bool isList = SameWord(property.substr(0, 6), "DbList");
  return std::string(isList ? "DbList" : "Db") + what;
}

const PropertyInfo& NameInfo() { return ExtenderProperties().front(); }

// A line of a class that is not known, as a property whose text can be changed.
const PropertyInfo& UnknownInfo(const std::string& name) {
  static std::map<std::string, PropertyInfo> known;
  PropertyInfo& info = known[name];
  info.name = name;
  info.kind = PropertyKind::Other;
  return info;
}

bool StandsAlone(std::string_view property) {
  return SameWord(property, "Name") || SameWord(property, "Index");
}

}  // namespace

size_t NextWithLetter(const std::vector<PropertyRow>& rows, size_t from, char letter) noexcept {
  const std::string_view wanted(&letter, 1);
  for (size_t step = 1; step <= rows.size(); ++step) {
    const size_t at = (from + step) % rows.size();
    if (SameWord(std::string_view(rows[at].info->name).substr(0, 1), wanted)) return at;
  }
  return from;
}

std::string ShownValue(const PropertyValue& value, const PropertyInfo& info) {
  if (const auto* text = std::get_if<std::string>(&value)) return *text;
  if (const auto* number = std::get_if<int32_t>(&value)) return ShownNumber(*number, info);
  return ValueText(value);
}

Refusal ReadTyped(const std::string& text, const PropertyInfo& info, PropertyValue* value) {
  if (info.readOnly) return Message{TextId::ReadOnly, {info.name}};
  const bool isText = info.kind == PropertyKind::Text;
  return kReaders[static_cast<size_t>(info.kind)](
      isText ? std::string_view(text) : form::Trimmed(text), info, value);
}

std::vector<const PropertyInfo*> PropertyList::PropertiesOf(ControlId id) const {
  std::vector<const PropertyInfo*> list;
  if (const ClassInfo* known = design_.Class(id)) {
    for (const PropertyInfo& info : known->properties) list.push_back(&info);
    return list;
  }
  list.push_back(&NameInfo());
  for (const Item& item : design_.At(id).items()) {
    const bool isHead = &item == &design_.At(id).items().front();
    if (!isHead && !item.name.empty()) list.push_back(&UnknownInfo(item.name));
  }
  return list;
}

const PropertyInfo* PropertyList::Find(ControlId id, std::string_view property) const {
  for (const PropertyInfo* info : PropertiesOf(id)) {
    if (SameWord(info->name, property)) return info;
  }
  return nullptr;
}

// As the primary control has it; null unless all others have it too.
const PropertyInfo* PropertyList::Common(std::string_view property) const {
  const Ids& ids = design_.selection();
  if (ids.empty() || (ids.size() > 1 && StandsAlone(property))) return nullptr;
  const PropertyInfo* info = Find(ids.back(), property);
  const bool all = info && std::all_of(ids.begin(), ids.end(), [&](ControlId id) {
                     const PropertyInfo* other = Find(id, property);
                     return other && other->kind == info->kind;
                   });
  return all ? info : nullptr;
}

std::string PropertyList::TextOf(ControlId id, const PropertyInfo& info) const {
  if (SameWord(info.name, "Name")) return design_.Name(id);
  if (const auto group = design_.Group(id, info.LineName())) return ShownFont(*group);
  if (info.kind == PropertyKind::Text) return design_.TextValue(id, info.LineName());
  const auto value = design_.ValueOrInitial(id, info.LineName());
  if (!value) return {};
  if (info.kind == PropertyKind::Picture) return "(Picture)";
  return ShownValue(*value, info);
}

std::vector<PropertyRow> PropertyList::Rows() const {
  std::vector<PropertyRow> rows;
  const Ids& ids = design_.selection();
  if (ids.empty()) return rows;
  for (const PropertyInfo* info : PropertiesOf(ids.back())) {
    if (info->hidden || !Common(info->name)) continue;
    PropertyRow row{info, TextOf(ids.back(), *info), false, false};
    row.isInitial = design_.At(ids.back()).Find(info->LineName()) == kNowhere &&
                    info != &NameInfo() && !SameWord(info->name, "Name");
    row.differs = std::any_of(ids.begin(), ids.end(),
                              [&](ControlId id) { return TextOf(id, *info) != row.text; });
    if (row.differs) row.text.clear();
    rows.push_back(std::move(row));
  }
  return rows;
}

std::vector<std::string> PropertyList::Choices(std::string_view property) const {
  const PropertyInfo* info = Common(property);
  std::vector<std::string> choices;
  if (!info) return choices;
  if (info->kind == PropertyKind::Boolean) return {"True", "False"};
  if (info->kind == PropertyKind::Colour) return ColourChoices();
  for (const EnumerationMember& member : info->members) {
    choices.push_back(std::to_string(member.value) + " - " + member.text);
  }
  if (!offers_ || info->offer == Offer::None) return choices;
  const ControlId id = design_.Primary();
  const std::string source = design_.TextValue(id, Related(property, "Source"));
  const std::string table = design_.TextValue(id, Related(property, "Table"));
  if (info->offer == Offer::Source) return offers_->Sources();
  if (info->offer == Offer::Table) return offers_->Tables(source);
  if (info->offer == Offer::Key) return offers_->Keys(source, table);
  return offers_->Fields(source, table);
}

std::string PropertyList::NextChoice(std::string_view property) const {
  const PropertyInfo* info = Common(property);
  const std::vector<std::string> choices = Choices(property);
  if (!info || choices.empty() || info->kind == PropertyKind::Colour) return {};
  const std::string shown = TextOf(design_.Primary(), *info);
  const auto now = std::find(choices.begin(), choices.end(), shown);
  return now == choices.end() || now + 1 == choices.end() ? choices.front() : *(now + 1);
}

template <class Change>
Refusal PropertyList::ForSelected(std::string_view property, Change change) {
  const Ids ids = design_.selection();
  const PropertyInfo* info = Common(property);
  if (!info) {
    const std::string name = ids.empty() ? std::string() : design_.Name(ids.back());
    return Message{TextId::NoSuchProperty, {name, std::string(property)}};
  }
  if (info->readOnly) return Message{TextId::ReadOnly, {info->name}};
  std::string key = "property:" + info->name;
  for (const ControlId id : ids) key += ":" + std::to_string(id);
  Step step(design_, TextId::ChangeProperty, {info->name}, std::move(key));
  for (const ControlId id : ids) {
    if (Refusal refusal = change(id, *info)) return refusal;
  }
  return step.Commit(Refusal{});
}

Refusal PropertyList::Enter(std::string_view property, const std::string& text) {
  return ForSelected(property,
                     [&](ControlId id, const PropertyInfo& info) { return Put(id, info, text); });
}

Refusal PropertyList::Put(ControlId id, const PropertyInfo& info, const std::string& text) {
  PropertyValue value = std::string();
  const bool leavesArray = SameWord(info.name, "Index") && form::Trimmed(text).empty();
  if (!leavesArray) {
    if (Refusal refusal = ReadTyped(text, info, &value)) return refusal;
  }
  return PutByRules(design_, id, info, value);
}

Refusal PropertyList::EnterColour(std::string_view property, uint32_t colour) {
  return ForSelected(property, [&](ControlId id, const PropertyInfo& info) {
    return design_.Put(id, info.name, static_cast<int32_t>(colour));
  });
}

Refusal PropertyList::EnterFont(const form::Property& font) {
  return ForSelected(font.name,
                     [&](ControlId id, const PropertyInfo&) { return design_.PutGroup(id, font); });
}

Refusal PropertyList::EnterPicture(std::string_view property, std::string_view image) {
  return ForSelected(property, [&](ControlId id, const PropertyInfo& info) {
    return design_.PutPicture(id, info.LineName(), image);
  });
}

Refusal PropertyList::Reset(std::string_view property) {
  if (StandsAlone(property)) return Message{TextId::ReadOnly, {std::string(property)}};
  return ForSelected(property, [&](ControlId id, const PropertyInfo& info) {
    return design_.Remove(id, info.LineName()), Refusal{};
  });
}

}  // namespace qrn::designer
