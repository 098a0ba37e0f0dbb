// The changes of a design: each ends in splices of lines or blocks.
#include <algorithm>

#include "host/designer/document/PropertyText.h"
#include "host/designer/model/Design.h"
#include "host/form/SourceText.h"
#include "platform/CodePage.h"

namespace qrn::designer {
namespace {

// What is longer goes to the companion: Visual Basic reads lines of up to 1,023 characters.
constexpr size_t kLongestTextOnLine = 900;

bool IsControlBlock(const Item& item) {
  return item.block && item.block->kind() == BlockKind::Control;
}

// Where the controls of a container begin among its items; before its End if there are none.
size_t FirstControl(const Block& container) {
  const auto& items = container.items();
  const auto found = std::find_if(items.begin(), items.end(), IsControlBlock);
  return found == items.end() ? items.size() - 1 : static_cast<size_t>(found - items.begin());
}

// Behind the last control that is no menu, which Visual Basic wants to be last.
size_t BehindControls(const Block& container) {
  const auto& items = container.items();
  size_t at = FirstControl(container);
  for (size_t i = at; i < items.size(); ++i) {
    if (IsControlBlock(items[i]) && !items[i].block->Is("VB", "Menu")) at = i + 1;
  }
  return at;
}

// Visual Basic writes the text of a text box without the sign that other texts have.
bool HasTextSign(const Block& control, std::string_view property) {
  return !control.Is("VB", "TextBox") || !form::SameWord(property, "Text");
}

bool FitsInFile(const form::PropertyValue& value) {
  const auto* text = std::get_if<std::string>(&value);
  return FitsOnLine(value) && (!text || text->size() <= kLongestTextOnLine);
}

ValueLook LookOf(const PropertyInfo* info, const form::PropertyValue& value) {
  ValueLook look;
  if (!info) return look;
  if (info->kind == PropertyKind::Boolean) look.number = NumberLook::Boolean;
  if (info->kind == PropertyKind::Colour) look.number = NumberLook::Colour;
  const int32_t* number = std::get_if<int32_t>(&value);
  for (const EnumerationMember& member : info->members) {
    if (number && member.value == *number) look.comment = member.fileComment;
  }
  return look;
}

bool IsSame(const form::PropertyValue& left, const form::PropertyValue& right) {
  return left.index() == right.index() && ValueText(left) == ValueText(right);
}

// A line of that name goes before the first that comes after it in the alphabet; the control's own
// bookkeeping (_ExtentX ...) is in no order.
bool ComesBefore(std::string_view property, const Item& item) {
  return !item.block && !item.name.empty() && item.name[0] != '_' &&
         form::LowerWord(property) < form::LowerWord(item.name);
}

}  // namespace

size_t Design::PlaceFor(const Block& control, std::string_view property) const {
  const auto& items = control.items();
  const size_t end = FirstControl(control);
  for (size_t at = 1; at < end; ++at) {
    if (ComesBefore(property, items[at])) return at;
  }
  return end;
}

Refusal Design::PutLine(ControlId id, std::string_view property, std::optional<Item> item,
                        const std::string& shown) {
  if (!item) return Message{TextId::NotWritable, {shown}};
  const BlockRef block = Hold(id);
  const size_t stands = block->Find(property);
  Splice splice{block, stands, 1, {}};
  if (stands == kNowhere) splice.at = PlaceFor(*block, property), splice.count = 0;
  splice.items.push_back(std::move(*item));
  Make(std::move(splice));
  return {};
}

Refusal Design::Put(ControlId id, std::string_view name, const form::PropertyValue& value) {
  const ClassInfo* known = Class(id);
  const PropertyInfo* info = known ? known->Property(name) : nullptr;
  const std::string property = info ? info->LineName() : std::string(name);
  const auto now = Value(id, property);
  if (now && IsSame(*now, value)) return {};
  const bool isInitial = info && info->initial && IsSame(*info->initial, value);
  if (isInitial) return Remove(id, property), Refusal{};
  const std::string shown = ValueText(value);
  if (!FitsInFile(value)) {
    const std::string& text = std::get<std::string>(value);
    if (now && TextValue(id, property) == text) return {};
    form::FileReference place;
    if (Refusal refusal = TextRecord(text, HasTextSign(At(id), property), &place)) return refusal;
    return PutLine(id, property,
                   PropertyItem(property, place, At(id).Depth() + 1, document_->text()), shown);
  }
  return PutLine(
      id, property,
      PropertyItem(property, value, At(id).Depth() + 1, document_->text(), LookOf(info, value)),
      shown);
}

Refusal Design::TextRecord(const std::string& text, bool hasSign, form::FileReference* reference) {
  const FileText page;  // records are in code page 932 whatever the form's file is in
  const auto bytes = page.Encode(text);
  if (!bytes) return Message{TextId::NotWritable, {text}};
  if (companionIsMissing_) return Message{TextId::CompanionMissing, {companion_->name()}};
  const auto place = companion_->AddText(*bytes, hasSign);
  if (!place) return Message{TextId::TextTooLong, {}};
  *reference = *place;
  return {};
}

Refusal Design::PutPicture(ControlId id, std::string_view property, std::string_view image) {
  if (image.empty()) return Remove(id, property), Refusal{};
  if (companionIsMissing_) return Message{TextId::CompanionMissing, {companion_->name()}};
  const bool ofModule = !form::SameWord(At(id).library(), "VB");
  const form::FileReference place = companion_->AddPicture(image, ofModule);
  return PutLine(id, property, PropertyItem(property, place, At(id).Depth() + 1, document_->text()),
                 companion_->name());
}

std::optional<form::FileReference> Design::AddRecord(std::string_view record, bool isText) {
  if (companionIsMissing_) return std::nullopt;
  return companion_->AddRecord(record, isText);
}

Refusal Design::PutGroup(ControlId id, const form::Property& group) {
  const BlockRef block = Hold(id);
  auto item = PropertyItem(group, block->Depth() + 1, document_->text());
  if (!item) return Message{TextId::NotWritable, {group.name}};
  const size_t stands = block->Find(group.name);
  Splice splice{block, stands == kNowhere ? 1 : stands, stands == kNowhere ? 0u : 1u, {}};
  splice.items.push_back(std::move(*item));
  Make(std::move(splice));
  return {};
}

void Design::Remove(ControlId id, std::string_view property) {
  const BlockRef block = Hold(id);
  const size_t at = block->Find(property);
  if (at != kNowhere) Make({block, at, 1, {}});
}

void Design::PutInFront(ControlId container, BlockRef control) {
  const BlockRef block = Hold(container);
  Splice splice{block, FirstControl(*block), 0, {}};
  splice.items.push_back({{}, {}, std::move(control)});
  Make(std::move(splice));
}

BlockRef Design::TakeOut(ControlId id) {
  BlockRef control = Hold(id);
  const BlockRef container = Hold(Container(id));
  Make({container, container->Find(*control), 1, {}});
  return control;
}

void Design::PutBefore(ControlId container, BlockRef control, ControlId next) {
  const BlockRef block = Hold(container);
  Splice splice{block, next ? block->Find(At(next)) : BehindControls(*block), 0, {}};
  splice.items.push_back({{}, {}, std::move(control)});
  Make(std::move(splice));
}

Refusal Design::NeedLibrary(const form::LibraryReference& library) {
  const BlockRef head = document_->head();
  const FileText& text = document_->text();
  size_t behind = head->items().empty() ? 0 : 1;
  for (size_t at = 0; at < head->items().size(); ++at) {
    const Item& item = head->items()[at];
    if (!form::SameWord(item.name, "Object")) continue;
    const std::string line = form::LowerWord(text.Decode(item.bytes));
    if (line.find(form::LowerWord(library.typeLibrary)) != std::string::npos) return {};
    behind = at + 1;
  }
  auto bytes = text.Encode(LibraryLine(library));
  if (!bytes) return Message{TextId::NotWritable, {library.fileName}};
  Splice splice{head, behind, 0, {}};
  splice.items.push_back({*bytes + text.lineEnd, "Object", nullptr});
  Make(std::move(splice));
  return {};
}

}  // namespace qrn::designer
