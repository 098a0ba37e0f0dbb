// What the user typed over a property's value and nobody took yet, and for whom it is meant.
#pragma once

#include <optional>
#include <string>

#include "host/designer/model/PropertyList.h"
#include "host/designer/panes/Workplace.h"

namespace qrn::designer {

class TypedValue {
 public:
  // The place outlives it.
  explicit TypedValue(Workplace& place) noexcept : place_(place) {}

  bool Stands() const noexcept { return typed_.has_value(); }
  // For the row of what is selected, each time more is typed.
  void Put(const PropertyRow& row, std::string text);
  void Forget() noexcept { typed_.reset(); }
  void ForgetAll() noexcept;

  // True if what stands is for others than those that are selected now: it is put aside then.
  bool PutAside();
  bool IsAside() const noexcept { return aside_.has_value(); }
  // Gives it to those whom it was typed for; what is equal to what they have changes nothing. False
  // if it is refused: then it stays.
  bool Take();
  // The same with what was put aside, unless something is typed or nobody is left to have it.
  bool TakeAside();

  // Of what was refused, once; nothing otherwise.
  struct Refused {
    Ids ids;
    std::string property;
    std::string text;
    Message reason;
  };
  bool IsRefused() const noexcept { return refusal_.has_value(); }
  std::optional<Refused> TakeRefused();

 private:
  struct Typed {
    Ids ids;
    std::string property;
    std::string before;
    std::string text;
  };

  Refusal Enter(const Typed& typed);

  Workplace& place_;
  std::optional<Typed> typed_;
  std::optional<Typed> aside_;
  Refusal refusal_;
};

}  // namespace qrn::designer
