// What the designer must know of a class of controls: its properties and events, and how a control
// of it comes into a form. The furniture's is here in the model; that of modules' controls is read
// from type information by whoever hosts them, and made up by tests.
#pragma once

#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/form/FormFile.h"

namespace qrn::designer {

enum class PropertyKind {
  Text,
  Whole,
  Fraction,
  Boolean,
  Colour,
  Enumeration,
  Font,
  Picture,
  Other
};

// What a live dictionary offers for a text: a name, or names separated by commas.
enum class Offer { None, Source, Table, Field, Fields, Key };

struct EnumerationMember {
  int32_t value = 0;
  std::string text;  // "Fixed Single"
  std::string
      fileComment;  // what Visual Basic writes behind the value; empty for modules' controls
};

struct PropertyInfo {
  std::string name;
  PropertyKind kind = PropertyKind::Text;
  std::vector<EnumerationMember> members = {};
  // The value of a new control, which is not written to the file. Without one the property always
  // stands there.
  std::optional<form::PropertyValue> initial = {};
  int32_t least = std::numeric_limits<int32_t>::min();
  int32_t most = std::numeric_limits<int32_t>::max();
  bool readOnly = false;
  bool hidden = false;  // not shown in the property list
  Offer offer = Offer::None;
  std::string description = {};
  // Its name in form files where a control saves it under another one; else empty.
  std::string savedName = {};

  const std::string& LineName() const noexcept { return savedName.empty() ? name : savedName; }
};

struct EventParameter {
  std::string name;
  std::string type;  // as Visual Basic declares it: Integer, String, Boolean, Object ...
  bool byValue = false;
};

struct EventInfo {
  std::string name;
  std::vector<EventParameter> parameters = {};
};

struct ClassInfo {
  std::string library;
  std::string name;
  // New controls are called this and a number: Command1, QRNEdit1.
  std::string stem;
  std::vector<PropertyInfo> properties;  // in the order of the property list
  std::vector<EventInfo> events;         // in the order of the type information
  std::string usualEvent;                // what a double click goes to; empty if there is none
  bool holdsOthers = false;
  bool hasSize = true;   // false: shows nothing at run time and keeps its size
  int32_t width = 1215;  // of a control that is put on the form by a click, in twips
  int32_t height = 495;
  // The lines of a new control beside its place, TabIndex and what the user sets: _ExtentX ...
  std::vector<form::Property> firstProperties;

  // By its name or by that of its line.
  const PropertyInfo* Property(std::string_view propertyName) const noexcept;
  const EventInfo* Event(std::string_view eventName) const noexcept;
  // Of a new control's lines; nothing if it has none of that name.
  std::optional<form::PropertyValue> FirstValue(std::string_view line) const;
};

class ClassSource {
 public:
  virtual ~ClassSource() = default;

  // Null for a class that is not known: its controls are kept, placed and copied all the same. The
  // result lives as long as the source and does not change.
  virtual const ClassInfo* Find(std::string_view library, std::string_view name) const = 0;
  // The library's line in a form file; nothing for what needs none.
  virtual std::optional<form::LibraryReference> Library(std::string_view library) const = 0;
};

// Names from the dictionaries that the form's database controls have loaded. An empty list where
// nothing is known.
class NameOffers {
 public:
  virtual ~NameOffers() = default;

  virtual std::vector<std::string> Sources() const = 0;
  virtual std::vector<std::string> Tables(const std::string& source) const = 0;
  virtual std::vector<std::string> Fields(const std::string& source,
                                          const std::string& table) const = 0;
  virtual std::vector<std::string> Keys(const std::string& source,
                                        const std::string& table) const = 0;
};

// The properties that every control has on a form, whatever its class: Name, Index, Left ...
// TabStop belongs to those that can take the keyboard.
const std::vector<PropertyInfo>& ExtenderProperties();

// What is offered for a property of that name: by the names that the controls share (DbSource,
// DbListTable ...).
Offer OfferOf(std::string_view propertyName) noexcept;

}  // namespace qrn::designer
