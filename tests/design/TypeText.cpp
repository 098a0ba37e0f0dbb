#include "TypeText.h"

#include <oleauto.h>

#include <algorithm>

#include "com/Bstr.h"
#include "com/Com.h"

namespace qrn::test {
namespace {

using namespace qrn::com;
using namespace qrn::ole;

std::string Lower(std::string text) {
  for (char& c : text) c = static_cast<char>(std::tolower(c));
  return text;
}

std::string NameOf(ITypeInfo& type) {
  Bstr name;
  type.GetDocumentation(MEMBERID_NIL, name.put(), nullptr, nullptr, nullptr);
  return Utf8(name.view());
}

std::string TypeName(ITypeInfo& owner, const TYPEDESC& type) {
  if (type.vt == VT_PTR) return TypeName(owner, *type.lptdesc) + "*";
  if (type.vt != VT_USERDEFINED) return std::to_string(type.vt);
  Com<ITypeInfo> named;
  owner.GetRefTypeInfo(type.hreftype, named.put());
  return named ? NameOf(*named) : "(lost)";
}

const char* KindName(INVOKEKIND kind) {
  switch (kind) {
    case INVOKE_PROPERTYGET:
      return "get ";
    case INVOKE_PROPERTYPUT:
      return "put ";
    case INVOKE_PROPERTYPUTREF:
      return "set ";
    default:
      return "fn ";
  }
}

std::string FunctionText(ITypeInfo& type, const FUNCDESC& function) {
  BSTR raw[32] = {};
  UINT count = 0;
  type.GetNames(function.memid, raw, 32, &count);
  std::vector<std::string> names;
  for (UINT i = 0; i < count; ++i) names.push_back(Utf8(Bstr::Take(raw[i]).view()));
  names.resize(33);
  std::string text = KindName(function.invkind) + std::to_string(function.memid) + " " + names[0];
  std::string arguments;
  for (int i = 0; i < function.cParams; ++i) {
    const ELEMDESC& element = function.lprgelemdescParam[i];
    const bool value = function.invkind >= INVOKE_PROPERTYPUT && i + 1 == function.cParams;
    arguments += arguments.empty() ? "" : ", ";
    if (!value) arguments += names[static_cast<size_t>(i) + 1] + " ";
    arguments += TypeName(type, element.tdesc);
    if (element.paramdesc.wParamFlags & PARAMFLAG_FOPT) arguments += "?";
  }
  text += "(" + arguments + ") " + TypeName(type, function.elemdescFunc.tdesc);
  if (function.wFuncFlags & FUNCFLAG_FHIDDEN) text += " hidden";
  return Lower(text);
}

std::string TypeName(const ValueType& type) {
  const bool out = (type.vt & vt::kByRef) != 0;
  std::string name = std::to_string(type.vt & ~vt::kByRef);
  if (type.alias == Alias::Color) name = "OLE_COLOR";
  if (type.alias == Alias::Handle) name = "OLE_HANDLE";
  if (type.alias == Alias::Font) name = "Font*";
  if (type.alias == Alias::Picture) name = "Picture*";
  if (type.enumeration) name = type.enumeration->name;
  return name + (out ? "*" : "");
}

std::string ArgumentsText(std::span<const ArgumentRow> rows) {
  std::string text;
  for (const ArgumentRow& row : rows) {
    text += (text.empty() ? "" : ", ") + std::string(row.name) + " " + TypeName(row.type);
    if (row.optional) text += "?";
  }
  return text;
}

std::string Member(const char* kind, int32_t id, const char* name, const std::string& arguments,
                   const std::string& result, bool hidden) {
  return Lower(kind + std::to_string(id) + " " + name + "(" + arguments + ") " + result +
               (hidden ? " hidden" : ""));
}

constexpr const char* kVoid = "24";

void AddProperty(const PropertyRow& row, std::vector<std::string>& lines) {
  const bool hidden = (row.rules & kHidden) != 0;
  const std::string index = ArgumentsText(row.index);
  lines.push_back(Member("get ", row.id, row.name, index, TypeName(row.type),
                         hidden || row.rules & kGetHidden));
  if (row.rules & kReadOnly) return;
  const std::string put = index + (index.empty() ? "" : ", ") + TypeName(row.type);
  lines.push_back(Member("put ", row.id, row.name, put, kVoid, hidden));
  if (row.type.vt == vt::kDispatch) {
    lines.push_back(Member("set ", row.id, row.name, put, kVoid, hidden));
  }
}

std::string MethodText(const MethodRow& row) {
  auto arguments = row.arguments;
  std::string result = kVoid;
  if (row.lastIsResult) {
    result = TypeName(arguments.back().type);
    result.pop_back();
    arguments = arguments.first(arguments.size() - 1);
  }
  return Member("fn ", row.id, row.name, ArgumentsText(arguments), result,
                (row.rules & kHidden) != 0);
}

}  // namespace

std::string Utf8(std::wstring_view text) {
  const int size = static_cast<int>(text.size());
  std::string utf8(text.size() * 3, '\0');
  utf8.resize(
      static_cast<size_t>(WideCharToMultiByte(CP_UTF8, 0, text.data(), size, utf8.data(),
                                              static_cast<int>(utf8.size()), nullptr, nullptr)));
  return utf8;
}

// A library that was read shows IDispatch's own members before a dispatch interface's.
std::vector<std::string> MembersOf(ITypeInfo& type) {
  std::vector<std::string> lines;
  FUNCDESC* function = nullptr;
  for (UINT i = 0; SUCCEEDED(type.GetFuncDesc(i, &function)); ++i) {
    if (function->funckind == FUNC_DISPATCH && !(function->wFuncFlags & FUNCFLAG_FRESTRICTED)) {
      lines.push_back(FunctionText(type, *function));
    }
    type.ReleaseFuncDesc(function);
  }
  std::ranges::sort(lines);
  return lines;
}

std::vector<std::string> MembersOf(const ControlTable& table) {
  std::vector<std::string> lines;
  for (const PropertyRow& row : table.properties) AddProperty(row, lines);
  for (const MethodRow& row : table.methods) lines.push_back(MethodText(row));
  std::ranges::sort(lines);
  return lines;
}

std::vector<std::string> EventsOf(const ControlTable& table) {
  std::vector<std::string> lines;
  for (const EventRow& row : table.events) {
    lines.push_back(Member("fn ", row.id, row.name, ArgumentsText(row.arguments), kVoid, false));
  }
  std::ranges::sort(lines);
  return lines;
}

std::vector<std::string> ConstantsOf(ITypeInfo& type) {
  std::vector<std::string> lines;
  VARDESC* constant = nullptr;
  for (UINT i = 0; SUCCEEDED(type.GetVarDesc(i, &constant)); ++i) {
    Bstr name;
    Bstr text;
    type.GetDocumentation(constant->memid, name.put(), text.put(), nullptr, nullptr);
    lines.push_back(Utf8(name.view()) + " = " + std::to_string(constant->lpvarValue->lVal) + " (" +
                    Utf8(text.view()) + ")");
    type.ReleaseVarDesc(constant);
  }
  return lines;
}

std::vector<std::string> ConstantsOf(const EnumTable& table) {
  std::vector<std::string> lines;
  for (const EnumRow& row : table.rows) {
    const auto* text = reinterpret_cast<const wchar_t*>(row.text.data());
    lines.push_back(std::string(row.name) + " = " + std::to_string(row.value) + " (" +
                    Utf8({text, row.text.size()}) + ")");
  }
  return lines;
}

}  // namespace qrn::test
