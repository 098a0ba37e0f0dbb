// Types of a library in the making, by what the rows call them.
#pragma once

#include <oaidl.h>

#include <map>
#include <string>

#include "com/Com.h"
#include "ole/tables/Members.h"

namespace qrn::ole {

using namespace com;

// A TYPEDESC that owns what it points at.
struct TypeText {
  TYPEDESC type{};
  TYPEDESC pointee{};

  TypeText() = default;
  TypeText(const TypeText&) = delete;
  TypeText& operator=(const TypeText&) = delete;
};

class TypeMaker {
 public:
  // Opens the system's standard types. Throws Failure.
  TypeMaker();

  // Makes an enumeration known that the library now holds.
  void Add(const EnumTable& table, const Com<ICreateTypeInfo2>& made);

  // Describes a row's type for use in `user`: a plain type, an enumeration, a colour, a font, and
  // a pointer to any of these for out arguments.
  void Describe(ICreateTypeInfo2& user, const ValueType& type, TypeText& text);

  // A reference to IDispatch, which every dispatch interface derives from.
  HREFTYPE DispatchBase(ICreateTypeInfo2& user);

 private:
  Com<ITypeInfo> Standard(Alias alias);
  TYPEDESC Named(ICreateTypeInfo2& user, const ValueType& type, TYPEDESC& pointee);

  Com<ITypeLib> standard_;
  std::map<const EnumTable*, Com<ITypeInfo>> enumerations_;
};

}  // namespace qrn::ole
