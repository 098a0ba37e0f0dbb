#include "host/designer/classes/TypeInfoReader.h"

#include <algorithm>
#include <map>

#include "host/container/ComObject.h"
#include "host/container/Text.h"
#include "host/container/TypeDescriptions.h"
#include "host/form/SourceText.h"

namespace qrn::designer {
namespace {

using host::Com;
using host::FunctionDescription;
using host::NameOf;
using host::TypeAttributes;
using host::Utf8;
using host::VariableDescription;

struct TypeRow {
  VARTYPE type;
  PropertyKind kind;
  const char* declared;
  int32_t least;
  int32_t most;
};

// clang-format off
constexpr TypeRow kTypes[] = {
    {VT_BSTR,     PropertyKind::Text,     "String",   INT32_MIN, INT32_MAX},
    {VT_BOOL,     PropertyKind::Boolean,  "Boolean",  INT32_MIN, INT32_MAX},
    {VT_I2,       PropertyKind::Whole,    "Integer",  -32768,    32767},
    {VT_UI1,      PropertyKind::Whole,    "Byte",     0,         255},
    {VT_I4,       PropertyKind::Whole,    "Long",     INT32_MIN, INT32_MAX},
    {VT_INT,      PropertyKind::Whole,    "Long",     INT32_MIN, INT32_MAX},
    {VT_UI4,      PropertyKind::Whole,    "Long",     INT32_MIN, INT32_MAX},
    {VT_R4,       PropertyKind::Fraction, "Single",   INT32_MIN, INT32_MAX},
    {VT_R8,       PropertyKind::Fraction, "Double",   INT32_MIN, INT32_MAX},
    {VT_CY,       PropertyKind::Other,    "Currency", INT32_MIN, INT32_MAX},
    {VT_DATE,     PropertyKind::Other,    "Date",     INT32_MIN, INT32_MAX},
    {VT_DISPATCH, PropertyKind::Other,    "Object",   INT32_MIN, INT32_MAX},
    {VT_UNKNOWN,  PropertyKind::Other,    "Object",   INT32_MIN, INT32_MAX},
    {VT_VARIANT,  PropertyKind::Other,    "Variant",  INT32_MIN, INT32_MAX},
};

// Types of the system's own library that have a dialog or a picker.
struct NamedRow {
  const wchar_t* name;
  PropertyKind kind;
};
constexpr NamedRow kNamed[] = {
    {L"OLE_COLOR",  PropertyKind::Colour},
    {L"IFontDisp",  PropertyKind::Font},    {L"Font",    PropertyKind::Font},
    {L"IFont",      PropertyKind::Font},    {L"StdFont", PropertyKind::Font},
    {L"IPictureDisp", PropertyKind::Picture}, {L"Picture",    PropertyKind::Picture},
    {L"IPicture",     PropertyKind::Picture}, {L"StdPicture", PropertyKind::Picture},
};
// clang-format on

const TypeRow* RowOf(VARTYPE type) {
  const auto found = std::find_if(std::begin(kTypes), std::end(kTypes),
                                  [&](const TypeRow& row) { return row.type == type; });
  return found == std::end(kTypes) ? nullptr : found;
}

const NamedRow* NamedRowOf(const std::wstring& name) {
  const auto found = std::find_if(std::begin(kNamed), std::end(kNamed), [&](const NamedRow& row) {
    return host::SameName(row.name, name);
  });
  return found == std::end(kNamed) ? nullptr : found;
}

// What a description of a type leads to: through pointers and names of types.
struct Resolved {
  VARTYPE type = VT_VARIANT;  // VT_I4 for an enumeration, VT_DISPATCH for an interface
  bool isReference = false;
  PropertyKind kind = PropertyKind::Other;
  Com<ITypeInfo> enumeration;
};

Resolved Resolve(ITypeInfo* type, const TYPEDESC& description);

Resolved ResolveNamed(ITypeInfo* named) {
  Resolved resolved;
  const TypeAttributes attributes(named);
  if (!attributes) return resolved;
  if (attributes->typekind == TKIND_ALIAS) {
    resolved = Resolve(named, attributes->tdescAlias);
  } else if (attributes->typekind == TKIND_ENUM) {
    resolved.type = VT_I4;
    resolved.kind = PropertyKind::Enumeration;
    named->AddRef();
    *resolved.enumeration.put() = named;
  } else {
    resolved.type = VT_DISPATCH;
  }
  const NamedRow* row = NamedRowOf(NameOf(named, MEMBERID_NIL));
  if (row) resolved.kind = row->kind;
  return resolved;
}

Resolved Resolve(ITypeInfo* type, const TYPEDESC& description) {
  Resolved resolved;
  if (description.vt == VT_PTR) {
    resolved = Resolve(type, *description.lptdesc);
    resolved.isReference = resolved.type != VT_DISPATCH || description.lptdesc->vt == VT_PTR;
    return resolved;
  }
  if (description.vt == VT_USERDEFINED) {
    Com<ITypeInfo> named;
    if (FAILED(type->GetRefTypeInfo(description.hreftype, named.put()))) return resolved;
    return ResolveNamed(named.get());
  }
  resolved.type = description.vt;
  const TypeRow* row = RowOf(description.vt);
  if (row) resolved.kind = row->kind;
  return resolved;
}

std::string DocumentationOf(ITypeInfo* type, MEMBERID member) {
  host::Bstr text;
  type->GetDocumentation(member, nullptr, text.put(), nullptr, nullptr);
  return Utf8(text.view());
}

// Members are shown by what the library says of them, by their names where it says nothing.
std::vector<EnumerationMember> MembersOf(ITypeInfo* enumeration) {
  std::vector<EnumerationMember> members;
  const TypeAttributes attributes(enumeration);
  for (UINT i = 0; attributes && i < attributes->cVars; ++i) {
    const VariableDescription variable(enumeration, i);
    host::Variant value;
    if (!variable || variable->varkind != VAR_CONST ||
        FAILED(VariantChangeType(value.put(), variable->lpvarValue, 0, VT_I4))) {
      continue;
    }
    std::string text = DocumentationOf(enumeration, variable->memid);
    if (text.empty()) text = Utf8(NameOf(enumeration, variable->memid));
    members.push_back({value->lVal, text, {}});
  }
  return members;
}

PropertyInfo Described(ITypeInfo* face, MEMBERID member, const TYPEDESC& type) {
  PropertyInfo info;
  info.name = Utf8(NameOf(face, member));
  info.description = DocumentationOf(face, member);
  const Resolved resolved = Resolve(face, type);
  info.kind = resolved.kind;
  if (resolved.enumeration) info.members = MembersOf(resolved.enumeration.get());
  if (const TypeRow* row = RowOf(resolved.type)) info.least = row->least, info.most = row->most;
  if (info.kind == PropertyKind::Text) info.offer = OfferOf(info.name);
  info.readOnly = true;
  return info;
}

constexpr WORD kHiddenFunction = FUNCFLAG_FHIDDEN | FUNCFLAG_FRESTRICTED | FUNCFLAG_FNONBROWSABLE;
constexpr WORD kHiddenVariable = VARFLAG_FHIDDEN | VARFLAG_FRESTRICTED | VARFLAG_FNONBROWSABLE;

// Properties by their members' ids, as functions and variables of an interface tell them.
class PropertyTable {
 public:
  explicit PropertyTable(ITypeInfo* face) : face_(face) {}

  void Take(const FUNCDESC& function) {
    if (function.invkind == INVOKE_PROPERTYGET && function.cParams == 0) {
      Add(function.memid, function.elemdescFunc.tdesc).hidden =
          (function.wFuncFlags & kHiddenFunction) != 0;
    } else if (function.invkind == INVOKE_PROPERTYPUT ||
               function.invkind == INVOKE_PROPERTYPUTREF) {
      settable_.push_back(function.memid);
    }
  }

  void Take(const VARDESC& variable) {
    if (variable.varkind != VAR_DISPATCH) return;
    PropertyInfo& info = Add(variable.memid, variable.elemdescVar.tdesc);
    info.hidden = (variable.wVarFlags & kHiddenVariable) != 0;
    if ((variable.wVarFlags & VARFLAG_FREADONLY) == 0) settable_.push_back(variable.memid);
  }

  std::vector<PropertyInfo> Rows() {
    for (const MEMBERID member : settable_) {
      const auto place = places_.find(member);
      if (place != places_.end()) rows_[place->second].readOnly = false;
    }
    return std::move(rows_);
  }

 private:
  PropertyInfo& Add(MEMBERID member, const TYPEDESC& type) {
    const auto [place, isNew] = places_.try_emplace(member, rows_.size());
    if (isNew) rows_.push_back(Described(face_, member, type));
    return rows_[place->second];
  }

  ITypeInfo* face_;
  std::map<MEMBERID, size_t> places_;
  std::vector<PropertyInfo> rows_;
  std::vector<MEMBERID> settable_;
};

EventInfo DescribedEvent(ITypeInfo* events, const FUNCDESC& function) {
  std::vector<BSTR> names(static_cast<size_t>(function.cParams) + 1);
  UINT count = 0;
  events->GetNames(function.memid, names.data(), static_cast<UINT>(names.size()), &count);
  EventInfo event;
  for (UINT i = 0; i < names.size(); ++i) {
    const host::Bstr held = host::Bstr::Take(names[i]);
    const std::string name = i < count ? Utf8(held.view()) : "Arg" + std::to_string(i);
    if (i == 0) {
      event.name = name;
      continue;
    }
    const Resolved resolved = Resolve(events, function.lprgelemdescParam[i - 1].tdesc);
    const TypeRow* row = RowOf(resolved.type);
    event.parameters.push_back({name, row ? row->declared : "Variant", !resolved.isReference});
  }
  return event;
}

bool IsEvent(const FunctionDescription& function) {
  return function && (function->wFuncFlags & FUNCFLAG_FRESTRICTED) == 0;
}

}  // namespace

std::vector<PropertyInfo> ReadProperties(ITypeInfo* face) {
  PropertyTable table(face);
  const TypeAttributes attributes(face);
  for (UINT i = 0; attributes && i < attributes->cVars; ++i) {
    const VariableDescription variable(face, i);
    if (variable) table.Take(*variable.operator->());
  }
  for (UINT i = 0; attributes && i < attributes->cFuncs; ++i) {
    const FunctionDescription function(face, i);
    if (function) table.Take(*function.operator->());
  }
  return table.Rows();
}

std::vector<EventInfo> ReadEvents(ITypeInfo* events) {
  std::vector<EventInfo> list;
  const TypeAttributes attributes(events);
  for (UINT i = 0; attributes && i < attributes->cFuncs; ++i) {
    const FunctionDescription function(events, i);
    if (IsEvent(function)) list.push_back(DescribedEvent(events, *function.operator->()));
  }
  return list;
}

std::string UsualEventOf(ITypeInfo* events, const std::vector<EventInfo>& list) {
  const TypeAttributes attributes(events);
  for (UINT i = 0; attributes && i < attributes->cFuncs; ++i) {
    const FunctionDescription function(events, i);
    if (IsEvent(function) && (function->wFuncFlags & FUNCFLAG_FUIDEFAULT) != 0) {
      return Utf8(NameOf(events, function->memid));
    }
  }
  for (const char* usual : {"Click", "Change"}) {
    const bool has = std::any_of(list.begin(), list.end(), [&](const EventInfo& event) {
      return form::SameWord(event.name, usual);
    });
    if (has) return usual;
  }
  return list.empty() ? std::string() : list.front().name;
}

}  // namespace qrn::designer
