// A Visual Basic form file (.frm) as read: what it refers to, the form with everything on it, and
// the code behind. Texts are UTF-8. Nothing is judged here that needs a control: whether a control
// takes a property is asked of the control when the form comes up.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "host/form/Mistakes.h"

namespace qrn::form {

// `"customers.frx":0A3C` or `$"customers.frx":0A3C`: a value kept in the companion file, because it
// is binary (a picture) or a text that does not fit on a line.
struct FileReference {
  std::string fileName;
  uint32_t offset = 0;
  bool isText = false;
};

// A word that is neither a text nor a number, such as the ^S of a menu's shortcut.
struct BareWord {
  std::string text;
};

// A text, a whole number (decimal, or hexadecimal up to 32 bits, which stands for its signed value:
// &H8000000F& is a system colour), a number with a fraction, a reference, a bare word.
using PropertyValue = std::variant<std::string, int32_t, double, FileReference, BareWord>;

// `Caption = "Name"`, or a group between BeginProperty and EndProperty, which has no value but the
// class id of the object it describes (empty if none is written) and properties of its own.
struct Property {
  std::string name;
  int line = 0;
  PropertyValue value;
  bool isGroup = false;
  std::string groupClass;
  std::vector<Property> group;
};

// `Begin Library.Class Name ... End`. `index` is the Index property of an element of a control
// array, -1 for a control that stands alone.
struct ControlNode {
  std::string library;
  std::string className;
  std::string name;
  int line = 0;
  int index = -1;
  std::vector<Property> properties;
  std::vector<ControlNode> children;

  // Null if the property is not written. Names ignore case.
  const Property* Find(std::string_view propertyName) const noexcept;
  bool Is(std::string_view libraryName, std::string_view className) const noexcept;
};

// `Object = "{id}#1.0#0"; "qrnbt350.ocx"`: a type library and the module that carries it.
struct LibraryReference {
  std::string typeLibrary;  // with braces
  int major = 0;
  int minor = 0;
  std::string fileName;
  int line = 0;
};

struct FormFile {
  std::vector<LibraryReference> libraries;
  ControlNode form;
  std::vector<Property> attributes;  // VB_Name and its like
  // The code, one entry a line, and the file's line number of the first.
  std::vector<std::string> code;
  int codeLine = 1;

  // VB_Name if the file gives it, else the name after Begin.
  std::string Name() const;
};

// Reads a form file from its bytes. Every mistake is added to `mistakes`; with any the result is
// what could be made out and is not to be run. Never throws but for memory.
FormFile ReadFormFile(std::string_view fileBytes, Mistakes& mistakes);

}  // namespace qrn::form
