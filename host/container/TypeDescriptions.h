// Descriptions that a type hands out, given back at scope end.
#pragma once

#include <oaidl.h>

#include <string>

#include "com/Bstr.h"

namespace qrn::host {

// What `Get` fills and `Release` takes back; empty if there is none.
template <class Description>
class TypeDescription {
 public:
  TypeDescription(const TypeDescription&) = delete;
  TypeDescription& operator=(const TypeDescription&) = delete;
  const Description* operator->() const noexcept { return description_; }
  explicit operator bool() const noexcept { return description_ != nullptr; }

 protected:
  explicit TypeDescription(ITypeInfo* type) noexcept : type_(type) {}
  ~TypeDescription() = default;

  ITypeInfo* type_;
  Description* description_ = nullptr;
};

class TypeAttributes : public TypeDescription<TYPEATTR> {
 public:
  explicit TypeAttributes(ITypeInfo* type) noexcept : TypeDescription(type) {
    if (!type || FAILED(type->GetTypeAttr(&description_))) description_ = nullptr;
  }
  ~TypeAttributes() {
    if (description_) type_->ReleaseTypeAttr(description_);
  }
};

class FunctionDescription : public TypeDescription<FUNCDESC> {
 public:
  FunctionDescription(ITypeInfo* type, UINT index) noexcept : TypeDescription(type) {
    if (FAILED(type->GetFuncDesc(index, &description_))) description_ = nullptr;
  }
  ~FunctionDescription() {
    if (description_) type_->ReleaseFuncDesc(description_);
  }
};

class VariableDescription : public TypeDescription<VARDESC> {
 public:
  VariableDescription(ITypeInfo* type, UINT index) noexcept : TypeDescription(type) {
    if (FAILED(type->GetVarDesc(index, &description_))) description_ = nullptr;
  }
  ~VariableDescription() {
    if (description_) type_->ReleaseVarDesc(description_);
  }
};

inline std::wstring NameOf(ITypeInfo* type, MEMBERID member) {
  com::Bstr name;
  type->GetDocumentation(member, name.put(), nullptr, nullptr, nullptr);
  return std::wstring(name.view());
}

}  // namespace qrn::host
