#include "typelib/TypeMaker.h"

#include <oaidl.h>
#include <ocidl.h>
#include <oleauto.h>

#include <algorithm>

#include "com/Guard.h"

namespace qrn::ole {
namespace {

HREFTYPE Reference(ICreateTypeInfo2& user, const Com<ITypeInfo>& type) {
  HREFTYPE reference = 0;
  Check(user.AddRefTypeInfo(type.get(), &reference));
  return reference;
}

TYPEDESC UserDefined(HREFTYPE reference) {
  TYPEDESC type{};
  type.vt = VT_USERDEFINED;
  type.hreftype = reference;
  return type;
}

TYPEDESC PointerTo(TYPEDESC& pointee) {
  TYPEDESC type{};
  type.vt = VT_PTR;
  type.lptdesc = &pointee;
  return type;
}

// The standard type behind an alias. Fonts and pictures go by the ids of their interfaces: their
// other names in the standard library have no id, and a reference to one is lost in writing.
struct StandardType {
  Alias alias;
  const wchar_t* name;
  const IID* id;
};
const StandardType kStandardTypes[] = {
    {Alias::Color, L"OLE_COLOR", nullptr},
    {Alias::Handle, L"OLE_HANDLE", nullptr},
    {Alias::Font, nullptr, &__uuidof(IFontDisp)},
    {Alias::Picture, nullptr, &__uuidof(IPictureDisp)},
};

}  // namespace

TypeMaker::TypeMaker() { Check(LoadTypeLib(L"stdole2.tlb", standard_.put())); }

void TypeMaker::Add(const EnumTable& table, const Com<ICreateTypeInfo2>& made) {
  enumerations_[&table] = Query<ITypeInfo>(made);
}

Com<ITypeInfo> TypeMaker::Standard(Alias alias) {
  const auto& wanted = *std::ranges::find(kStandardTypes, alias, &StandardType::alias);
  Com<ITypeInfo> type;
  if (wanted.id) {
    Check(standard_->GetTypeInfoOfGuid(*wanted.id, type.put()));
    return type;
  }
  std::wstring name(wanted.name);
  MEMBERID member = MEMBERID_NIL;
  USHORT found = 1;
  Check(standard_->FindName(name.data(), 0, type.put(), &member, &found));
  if (found == 0) throw Failure{TYPE_E_ELEMENTNOTFOUND};
  return type;
}

TYPEDESC TypeMaker::Named(ICreateTypeInfo2& user, const ValueType& type, TYPEDESC& pointee) {
  if (type.enumeration) return UserDefined(Reference(user, enumerations_.at(type.enumeration)));
  const TYPEDESC named = UserDefined(Reference(user, Standard(type.alias)));
  if (type.vt != vt::kDispatch) return named;
  pointee = named;
  return PointerTo(pointee);
}

void TypeMaker::Describe(ICreateTypeInfo2& user, const ValueType& type, TypeText& text) {
  const auto plain = static_cast<VARTYPE>(type.vt & ~VT_BYREF);
  if (type.enumeration || type.alias != Alias::None) {
    text.type = Named(user, type, text.pointee);
  } else if (type.vt & VT_BYREF) {
    text.pointee.vt = plain;
    text.type = PointerTo(text.pointee);
  } else {
    text.type.vt = plain == VT_EMPTY ? static_cast<VARTYPE>(VT_VOID) : plain;
  }
}

HREFTYPE TypeMaker::DispatchBase(ICreateTypeInfo2& user) {
  Com<ITypeInfo> base;
  Check(standard_->GetTypeInfoOfGuid(__uuidof(IDispatch), base.put()));
  return Reference(user, base);
}

}  // namespace qrn::ole
