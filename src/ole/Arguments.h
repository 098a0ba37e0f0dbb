// The arguments of one call: what the host sent, by position or by name, laid out in the order of
// the rows and converted to their types.
#pragma once

#include <array>
#include <span>

#include "ole/Kit.h"
#include "ole/tables/Members.h"

namespace qrn::ole {

class Arguments {
 public:
  static constexpr size_t kMost = 16;  // no member has more

  // `sent` is looked at until StoreAnswers; `locale` rules conversions. The first `skipped` named
  // arguments (a put's value) are none of these.
  Arguments(std::span<const ArgumentRow> rows, const DISPPARAMS& sent, UINT skipped, LCID locale)
      : rows_(rows), sent_(sent), skipped_(skipped), locale_(locale) {}

  // Lays out and converts. With `lastIsResult` the last argument may be missing: it then only takes
  // the answer. On failure `*badArgument` is where it stands in what was sent.
  HRESULT Collect(bool lastIsResult, UINT* badArgument);

  // One VARIANT for each row, to be handed to the call. Out arguments stand there without their
  // reference; what the call leaves in them is stored by StoreAnswers.
  VARIANT* values() noexcept { return reinterpret_cast<VARIANT*>(values_.data()); }

  // With `lastIsResult` a last argument that is a number other than 0 says that the call failed:
  // out arguments that it left as they came are not stored then, so that a variable of another type
  // keeps its own value.
  HRESULT StoreAnswers(bool lastIsResult);

  // Moves the last argument's answer to where the host wants the call's result.
  void GiveLastAsResult(VARIANT& result);

 private:
  static_assert(sizeof(Variant) == sizeof(VARIANT));

  HRESULT Place(UINT* badArgument);
  HRESULT Convert(size_t row, bool mayMiss);
  HRESULT ConvertAny(const VARIANT* sent, VARIANT& value);
  bool LastSaysFailure() noexcept;
  bool Untouched(size_t row);

  std::span<const ArgumentRow> rows_;
  const DISPPARAMS& sent_;
  UINT skipped_;
  LCID locale_;
  std::array<const VARIANT*, kMost> places_{};  // what was sent for each row, null for nothing
  std::array<Variant, kMost> values_;
  Variant missing_;
};

}  // namespace qrn::ole
