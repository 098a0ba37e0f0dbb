// The property list: what the selected controls have in common, as text, and what is typed into it.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "host/designer/model/Design.h"

namespace qrn::designer {

struct PropertyRow {
  const PropertyInfo* info = nullptr;  // never null; lives as long as the class source
  std::string text;                    // as shown; empty where the selected controls differ
  bool differs = false;
  bool isInitial = false;  // the value of a new control, not written to the file
};

class PropertyList {
 public:
  // `offers` may be null. Both outlive the list.
  explicit PropertyList(Design& design, const NameOffers* offers = nullptr)
      : design_(design), offers_(offers) {}

  // Properties that every selected control has under the same name and kind, in the order of the
  // primary one's class; hidden ones, and of several controls Name and Index, are left out. Of a
  // control whose class is not known: Name, and the lines that stand in the file.
  std::vector<PropertyRow> Rows() const;

  // What the drop-down of a row holds: texts of an enumeration, True and False, the colours that
  // the system names, names from the dictionary. Empty for anything else.
  std::vector<std::string> Choices(std::string_view property) const;
  // The one behind that which the row shows, round and round: what a double click gives. Empty
  // without choices, and for a colour, which has more than those.
  std::string NextChoice(std::string_view property) const;

  // What was typed or chosen, for all selected controls; refused with the reason, nothing is
  // changed then. Typing in one property of the same controls is one step until Design::Seal.
  Refusal Enter(std::string_view property, const std::string& text);
  // What dialogs give, for all selected controls.
  Refusal EnterColour(std::string_view property, uint32_t colour);
  Refusal EnterFont(const form::Property& font);
  Refusal EnterPicture(std::string_view property, std::string_view image);
  // The value of a new control.
  Refusal Reset(std::string_view property);

 private:
  std::vector<const PropertyInfo*> PropertiesOf(ControlId id) const;
  const PropertyInfo* Find(ControlId id, std::string_view property) const;
  const PropertyInfo* Common(std::string_view property) const;
  std::string TextOf(ControlId id, const PropertyInfo& info) const;
  Refusal Put(ControlId id, const PropertyInfo& info, const std::string& text);
  template <class Change>
  Refusal ForSelected(std::string_view property, Change change);

  Design& design_;
  const NameOffers* offers_;
};

// The next row behind `from`, round and round, whose name begins with the letter, whatever its
// case; `from` itself if there is none.
size_t NextWithLetter(const std::vector<PropertyRow>& rows, size_t from, char letter) noexcept;

// A value as the list shows it: `True`, `1 - Fixed Single`, `&H00C0C0C0&`.
std::string ShownValue(const form::PropertyValue& value, const PropertyInfo& info);
// What was typed, as a value of the property, or the reason why it is none.
Refusal ReadTyped(const std::string& text, const PropertyInfo& info, form::PropertyValue* value);

}  // namespace qrn::designer
