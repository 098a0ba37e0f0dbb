// Objects that scripts and late-bound callers use by name: members stand in tables.
#pragma once

#include <oaidl.h>

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "com/Variant.h"
#include "host/container/ComObject.h"

namespace qrn::host {

// A failure that a script sees as an error of its own: number and description.
struct ScriptError {
  HRESULT code;
  std::wstring description;
};

// One call of a member. Arguments count from 0 in the order they are written.
class Call {
 public:
  Call(DISPPARAMS* parameters, VARIANT* result, WORD flags) noexcept
      : parameters_(parameters), result_(result), flags_(flags) {}

  bool IsPut() const noexcept {
    return (flags_ & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0;
  }
  // Arguments without the value of a put.
  size_t Count() const noexcept { return parameters_->cArgs - (IsPut() ? 1 : 0); }
  // True if the argument is there and was not left out.
  bool Has(size_t index) const noexcept;

  // The argument, references followed, in the type asked for; `fallback` if it is left out. Throw
  // ScriptError when the value does not convert.
  Variant Value(size_t index) const;
  std::wstring Text(size_t index, std::wstring_view fallback = L"") const;
  int32_t Number(size_t index, int32_t fallback = 0) const;
  double Real(size_t index, double fallback = 0) const;
  bool Truth(size_t index, bool fallback = false) const;

  // The value of a put, in the type asked for.
  Variant NewValue(VARTYPE type = VT_EMPTY) const;
  std::wstring NewText() const;
  int32_t NewNumber() const;
  double NewReal() const;
  bool NewTruth() const;

  // Answers the call.
  void Give(Variant value) noexcept;
  void Give(std::wstring_view text);
  void Give(int32_t number) noexcept;
  void Give(double number) noexcept;
  void GiveTruth(bool truth) noexcept;

 private:
  Variant Converted(const VARIANT& value, VARTYPE type) const;
  VARIANT* At(size_t index) const noexcept;

  DISPPARAMS* parameters_;
  VARIANT* result_;
  WORD flags_;
};

class Scriptable;

inline constexpr WORD kGet = DISPATCH_PROPERTYGET | DISPATCH_METHOD;
inline constexpr WORD kPut = DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF;
inline constexpr WORD kProperty = kGet | kPut;
inline constexpr WORD kMethod = DISPATCH_METHOD | DISPATCH_PROPERTYGET;

// One member. A property's function is run for both ways and asks the call which it is.
struct MemberEntry {
  const wchar_t* name;
  WORD flags;
  void (*run)(Scriptable& self, Call& call);
  DISPID id;  // 0: the place in its table gives the id; DISPID_VALUE is kValueMember
};

inline constexpr DISPID kValueMember = -1000;  // stands for DISPID_VALUE in a table

using MemberTable = std::span<const MemberEntry>;

// IDispatch by tables. A derived class names its tables, nearest first; what none of them has may
// be looked for elsewhere by FindOther.
class Scriptable : public ComObject<IDispatch> {
 public:
  STDMETHODIMP GetTypeInfoCount(UINT* count) override;
  STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID locale,
                             DISPID* ids) override;
  STDMETHODIMP Invoke(DISPID id, REFIID, LCID locale, WORD flags, DISPPARAMS* parameters,
                      VARIANT* result, EXCEPINFO* exception, UINT* badArgument) override;

 protected:
  virtual std::vector<MemberTable> Tables() const = 0;
  // Ids given here must lie outside kFirstTableId .. kFirstTableId + 0xFFFF.
  virtual HRESULT FindOther(LPOLESTR name, LCID locale, DISPID* id);
  virtual HRESULT InvokeOther(DISPID id, LCID locale, WORD flags, DISPPARAMS* parameters,
                              VARIANT* result, EXCEPINFO* exception, UINT* badArgument);
  // True if a name of the tables is to be looked for elsewhere first.
  virtual bool OthersFirst(std::wstring_view) const noexcept { return false; }

 private:
  const MemberEntry* EntryOf(DISPID id) const noexcept;
  DISPID IdOf(std::wstring_view name) const noexcept;
};

inline constexpr DISPID kFirstTableId = 0x6FFF0000;

namespace detail {
template <class T, void (T::*Run)(Call&)>
void RunMember(Scriptable& self, Call& call) {
  (static_cast<T&>(self).*Run)(call);
}
template <auto Run>
struct Runner;
template <class T, void (T::*Run)(Call&)>
struct Runner<Run> {
  static constexpr auto kFunction = &RunMember<T, Run>;
};
}  // namespace detail

// A row of a member table: Member<&Form::Caption>(L"Caption", kProperty).
template <auto Run>
constexpr MemberEntry Member(const wchar_t* name, WORD flags, DISPID id = 0) {
  return {name, flags, detail::Runner<Run>::kFunction, id};
}

// Gets a property or calls a method by its name; throws ScriptError with the member's name when
// that fails.
Variant GetMember(IDispatch* object, const std::wstring& name, std::span<const Variant> arguments);
// Puts a property by its name, an object by reference first. False if there is no such member;
// other failures throw ScriptError.
bool PutMember(IDispatch* object, const std::wstring& name, const VARIANT& value,
               std::span<const Variant> arguments = {});

}  // namespace qrn::host
