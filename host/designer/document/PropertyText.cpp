#include "host/designer/document/PropertyText.h"

#include <array>
#include <charconv>

#include "host/form/PropertyLine.h"
#include "host/form/SourceText.h"

namespace qrn::designer {
namespace {

constexpr size_t kIndent = 3;
constexpr size_t kNameColumns = 16;

std::string Blanks(int depth) { return std::string(kIndent * static_cast<size_t>(depth), ' '); }

std::string Hexadecimal(uint32_t number, size_t digits) {
  std::array<char, 8> text;
  const auto end = std::to_chars(text.data(), text.data() + text.size(), number, 16).ptr;
  std::string hex(text.data(), end);
  for (char& digit : hex) {
    if (digit >= 'a') digit = static_cast<char>(digit - 'a' + 'A');
  }
  return hex.size() < digits ? std::string(digits - hex.size(), '0') + hex : hex;
}

std::string Quoted(std::string_view text) {
  std::string quoted = "\"";
  for (const char byte : text) quoted.append(byte == '"' ? 2 : 1, byte);
  return quoted + '"';
}

struct Writer {
  const ValueLook& look;

  std::string operator()(const std::string& text) const { return Quoted(text); }
  std::string operator()(int32_t number) const {
    if (look.number == NumberLook::Colour) {
      return "&H" + Hexadecimal(static_cast<uint32_t>(number), 8) + "&";
    }
    if (look.number == NumberLook::Boolean) return number ? "-1  'True" : "0   'False";
    return std::to_string(number);
  }
  std::string operator()(double number) const {
    std::array<char, 32> text;
    return {text.data(), std::to_chars(text.data(), text.data() + text.size(), number).ptr};
  }
  std::string operator()(const form::FileReference& place) const {
    return (place.isText ? "$" : "") + Quoted(place.fileName) + ":" + Hexadecimal(place.offset, 4);
  }
  std::string operator()(const form::BareWord& word) const { return word.text; }
};

std::optional<Item> LineItem(const std::string& line, std::string name, const FileText& text) {
  auto bytes = text.Encode(line);
  if (!bytes) return std::nullopt;
  return Item{std::move(*bytes) + text.lineEnd, std::move(name), nullptr};
}

// Numbers of a font that Visual Basic writes as truths.
bool IsTruth(std::string_view name) {
  return form::SameWord(name, "Underline") || form::SameWord(name, "Italic") ||
         form::SameWord(name, "Strikethrough");
}

std::optional<Item> GroupItem(const form::Property& property, int depth, const FileText& text) {
  auto group = std::make_shared<Block>(BlockKind::Group, std::string(), property.groupClass);
  const std::string classId = property.groupClass.empty() ? "" : property.groupClass + " ";
  std::vector<std::optional<Item>> items;
  items.push_back(LineItem(Blanks(depth) + "BeginProperty " + property.name + " " + classId,
                           property.name, text));
  for (const form::Property& inner : property.group) {
    items.push_back(PropertyItem(inner, depth + 1, text));
  }
  items.push_back(LineItem(Blanks(depth) + "EndProperty", {}, text));
  for (std::optional<Item>& item : items) {
    if (!item) return std::nullopt;
    group->Append(std::move(*item));
  }
  return Item{{}, {}, std::move(group)};
}

}  // namespace

bool FitsOnLine(const form::PropertyValue& value) {
  const auto* text = std::get_if<std::string>(&value);
  return !text || text->find_first_of(std::string_view("\r\n\x1A\0", 4)) == std::string::npos;
}

std::string ValueText(const form::PropertyValue& value, const ValueLook& look) {
  const std::string text = std::visit(Writer{look}, value);
  return look.comment.empty() ? text : text + "  '" + look.comment;
}

std::optional<Item> PropertyItem(std::string_view name, const form::PropertyValue& value, int depth,
                                 const FileText& text, const ValueLook& look) {
  if (!FitsOnLine(value)) return std::nullopt;
  std::string line = Blanks(depth);
  line += name;
  if (name.size() < kNameColumns) line.append(kNameColumns - name.size(), ' ');
  return LineItem(line + "=   " + ValueText(value, look), std::string(name), text);
}

std::optional<Item> PropertyItem(const form::Property& property, int depth, const FileText& text) {
  if (property.isGroup) return GroupItem(property, depth, text);
  ValueLook look;
  if (IsTruth(property.name)) look.number = NumberLook::Boolean;
  return PropertyItem(property.name, property.value, depth, text, look);
}

std::optional<BlockRef> ControlBlock(std::string_view library, std::string_view className,
                                     std::string_view name, int depth, const FileText& text) {
  auto control =
      std::make_shared<Block>(BlockKind::Control, std::string(library), std::string(className));
  const std::string begin = Blanks(depth) + "Begin " + control->library() + "." +
                            control->className() + " " + std::string(name) + " ";
  auto first = LineItem(begin, std::string(name), text);
  auto last = LineItem(Blanks(depth) + "End", {}, text);
  if (!first || !last) return std::nullopt;
  control->Append(std::move(*first));
  control->Append(std::move(*last));
  return control;
}

std::optional<Item> BeginItem(const Block& control, std::string_view name, const FileText& text) {
  const std::string begin = Blanks(control.Depth()) + "Begin " + control.library() + "." +
                            control.className() + " " + std::string(name) + " ";
  return LineItem(begin, std::string(name), text);
}

std::string LibraryLine(const form::LibraryReference& library) {
  return "Object = \"" + library.typeLibrary + "#" +
         Hexadecimal(static_cast<uint32_t>(library.major), 1) + "." +
         Hexadecimal(static_cast<uint32_t>(library.minor), 1) + "#0\"; " + Quoted(library.fileName);
}

std::optional<form::Property> PropertyOf(const Item& item, const FileText& text) {
  form::Property property;
  if (!item.block) {
    std::string reason;
    const std::string line = text.Decode(WithoutEnd(item.bytes));
    if (item.name.empty() || !form::ReadPropertyLine(form::Trimmed(line), &property, &reason)) {
      return std::nullopt;
    }
    return property;
  }
  if (item.block->kind() != BlockKind::Group) return std::nullopt;
  property.name = item.block->Name();
  property.isGroup = true;
  property.groupClass = item.block->className();
  for (size_t at = 1; at + 1 < item.block->items().size(); ++at) {
    auto inner = PropertyOf(item.block->items()[at], text);
    if (inner) property.group.push_back(std::move(*inner));
  }
  return property;
}

std::string ValueTextOf(const Item& item, const FileText& text) {
  if (item.name.empty() || item.block) return {};
  const std::string line = text.Decode(WithoutEnd(item.bytes));
  const size_t equals = line.find('=');
  if (equals == std::string::npos) return {};
  return std::string(form::Trimmed(std::string_view(line).substr(equals + 1)));
}

}  // namespace qrn::designer
