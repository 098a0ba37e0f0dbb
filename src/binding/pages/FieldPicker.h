// The choice of several fields in an order: those on offer, and those chosen, whose names joined by
// commas are a field list as DbListFields takes it. Names are code page 932.
#pragma once

#include <string>
#include <string_view>

#include "binding/pages/Choices.h"

namespace qrn {

class FieldPicker {
 public:
  // What a page writes of a longer list is its beginning.
  static constexpr size_t kAppliedBytes = 640;

  // The fields of a table are on offer; those named in `list` are chosen, in its order. The text is
  // `list` as it stands, also where it names no field: it is the property's until something moves.
  void Start(NameList fields, std::string_view list);

  // Whoever shows what is on offer may sort it: it is told by name, and all of it in the order
  // shown. A name or a position that is not there moves nothing.
  void Choose(std::string_view name);
  void ChooseAll(const NameList& asShown);
  void GiveBack(size_t position);
  void GiveBackAll();

  const NameList& offered() const noexcept { return offered_; }
  const NameList& chosen() const noexcept { return chosen_; }
  const std::string& text() const noexcept { return text_; }

 private:
  bool Move(std::string_view name);
  void Join();

  NameList offered_;
  NameList chosen_;
  std::string text_;
};

// At most so many bytes of `text`, no character halved.
std::string CutToBytes(std::string_view text, size_t limit);

}  // namespace qrn
