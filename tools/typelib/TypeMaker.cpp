#include "typelib/TypeMaker.h"

#include <oaidl.h>
#include <oleauto.h>

#include "ole/Guard.h"

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

const wchar_t* StandardName(Alias alias) {
  switch (alias) {
    case Alias::Color:
      return L"OLE_COLOR";
    case Alias::Handle:
      return L"OLE_HANDLE";
    case Alias::Font:
      return L"IFontDisp";
    case Alias::Picture:
      return L"IPictureDisp";
    default:
      return nullptr;
  }
}

}  // namespace

TypeMaker::TypeMaker() { Check(LoadTypeLib(L"stdole2.tlb", standard_.put())); }

void TypeMaker::Add(const EnumTable& table, const Com<ICreateTypeInfo2>& made) {
  enumerations_[&table] = Query<ITypeInfo>(made);
}

Com<ITypeInfo> TypeMaker::Standard(const wchar_t* name) {
  std::wstring text(name);
  Com<ITypeInfo> type;
  MEMBERID member = MEMBERID_NIL;
  USHORT found = 1;
  Check(standard_->FindName(text.data(), 0, type.put(), &member, &found));
  if (found == 0) throw Failure{TYPE_E_ELEMENTNOTFOUND};
  return type;
}

TYPEDESC TypeMaker::Named(ICreateTypeInfo2& user, const ValueType& type, TYPEDESC& pointee) {
  if (type.enumeration) return UserDefined(Reference(user, enumerations_.at(type.enumeration)));
  const TYPEDESC named = UserDefined(Reference(user, Standard(StandardName(type.alias))));
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
