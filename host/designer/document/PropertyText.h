// Properties as Visual Basic writes them: three blanks a level, the name padded to 16 columns, the
// value in its own notation.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "host/designer/document/Block.h"
#include "host/designer/document/FileText.h"
#include "host/form/FormFile.h"

namespace qrn::designer {

// How a whole number is written.
enum class NumberLook {
  Plain,    // 12
  Boolean,  // -1  'True
  Colour,   // &H8000000F&
};

struct ValueLook {
  NumberLook number = NumberLook::Plain;
  std::string comment;  // what stands behind the value: 1  'Fixed Single
};

// UTF-8, without a line end. A text must hold no line end.
std::string ValueText(const form::PropertyValue& value, const ValueLook& look = {});

// False for a text with a line end, a NUL or a Ctrl+Z.
bool FitsOnLine(const form::PropertyValue& value);

// A whole line of that depth. Nothing if the file's code page does not have a character of it, or
// the value does not fit on a line.
std::optional<Item> PropertyItem(std::string_view name, const form::PropertyValue& value, int depth,
                                 const FileText& text, const ValueLook& look = {});

// The same for a property with everything in it: a line, or BeginProperty ... EndProperty.
std::optional<Item> PropertyItem(const form::Property& property, int depth, const FileText& text);

// `Begin Library.Class Name`, with no property yet, and `End`. The names are names.
std::optional<BlockRef> ControlBlock(std::string_view library, std::string_view className,
                                     std::string_view name, int depth, const FileText& text);
std::optional<Item> BeginItem(const Block& control, std::string_view name, const FileText& text);

// `Object = "{id}#1.0#0"; "module.ocx"`, without a line end.
std::string LibraryLine(const form::LibraryReference& library);

// What an item of a control says, a line or a group with everything in it. Nothing for a line that
// sets no property or whose value cannot be read.
std::optional<form::Property> PropertyOf(const Item& item, const FileText& text);

// The value's own notation, UTF-8, as it stands in the line; empty for anything else.
std::string ValueTextOf(const Item& item, const FileText& text);

}  // namespace qrn::designer
