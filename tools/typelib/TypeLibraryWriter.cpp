#include "typelib/TypeLibraryWriter.h"

#include <oaidl.h>
#include <oleauto.h>

#include <array>
#include <cstring>
#include <string>
#include <vector>

#include "com/Guard.h"
#include "com/Module.h"
#include "com/Text.h"
#include "com/Variant.h"
#include "ole/SystemGuid.h"
#include "typelib/TypeMaker.h"

namespace qrn::ole {
namespace {

using com::Wide;

std::wstring Wide(std::u16string_view text) { return std::wstring(com::AsWide(text)); }

// One function of a dispatch interface.
struct FunctionText {
  int32_t id;
  const char* name;
  INVOKEKIND kind;
  std::span<const ArgumentRow> arguments;
  ValueType result;
  const ValueType* value = nullptr;  // of a put, after the arguments
  bool hidden = false;
};

class LibraryWriter {
 public:
  LibraryWriter(const LibraryTable& table, const wchar_t* path) : table_(table) {
    Check(CreateTypeLib2(SYS_WIN64, path, library_.put()));
  }

  void Write() {
    Head();
    for (const EnumTable* enumeration : table_.enumerations) Enumeration(*enumeration);
    for (const ControlTable* control : table_.controls) Control(*control);
    Check(library_->SaveAllChanges());
  }

 private:
  void Head() {
    Check(library_->SetName(Wide(table_.name).data()));
    Check(library_->SetGuid(AsGuid(table_.id)));
    Check(library_->SetVersion(table_.major, table_.minor));
    Check(library_->SetLcid(0));
    Check(library_->SetDocString(Wide(table_.description).data()));
    Check(library_->SetHelpFileName(Wide(table_.helpFile).data()));
  }

  Com<ICreateTypeInfo2> Create(const char* name, TYPEKIND kind, const Guid& id, UINT flags) {
    Com<ICreateTypeInfo> made;
    Check(library_->CreateTypeInfo(Wide(name).data(), kind, made.put()));
    auto type = Query<ICreateTypeInfo2>(made);
    Check(type->SetGuid(AsGuid(id)));
    Check(type->SetVersion(table_.major, table_.minor));
    Check(type->SetTypeFlags(flags));
    return type;
  }

  void Enumeration(const EnumTable& table) {
    const auto type = Create(table.name, TKIND_ENUM, table.id, 0);
    for (UINT i = 0; i < table.rows.size(); ++i) {
      const EnumRow& row = table.rows[i];
      Variant value(row.value);
      VARDESC constant{};
      constant.memid = static_cast<MEMBERID>(0x40000000 + i);
      constant.varkind = VAR_CONST;
      constant.lpvarValue = value.get();
      constant.elemdescVar.tdesc.vt = VT_INT;
      Check(type->AddVarDesc(i, &constant));
      Check(type->SetVarName(i, Wide(row.name).data()));
      if (!row.text.empty()) Check(type->SetVarDocString(i, Wide(row.text).data()));
    }
    Check(type->LayOut());
    types_.Add(table, type);
  }

  void Control(const ControlTable& table) {
    const auto members = Interface(table);
    const auto events = Events(table);
    const auto type = Create(table.coclassName, TKIND_COCLASS, table.classId,
                             TYPEFLAG_FCANCREATE | TYPEFLAG_FCONTROL);
    Check(type->SetDocString((Wide(table.className) + L" Class").data()));
    Implement(*type, 0, members, IMPLTYPEFLAG_FDEFAULT);
    Implement(*type, 1, events, IMPLTYPEFLAG_FDEFAULT | IMPLTYPEFLAG_FSOURCE);
    Check(type->LayOut());
  }

  static void Implement(ICreateTypeInfo2& type, UINT index, const Com<ICreateTypeInfo2>& what,
                        int flags) {
    HREFTYPE reference = 0;
    Check(type.AddRefTypeInfo(Query<ITypeInfo>(what).get(), &reference));
    Check(type.AddImplType(index, reference));
    Check(type.SetImplTypeFlags(index, flags));
  }

  Com<ICreateTypeInfo2> DispatchType(const char* name, const Guid& id) {
    auto type = Create(name, TKIND_DISPATCH, id, TYPEFLAG_FDISPATCHABLE);
    Check(type->AddImplType(0, types_.DispatchBase(*type)));
    functions_ = 0;
    return type;
  }

  Com<ICreateTypeInfo2> Interface(const ControlTable& table) {
    const auto type = DispatchType(table.interfaceName, table.interfaceId);
    Check(type->SetDocString((Wide(table.interfaceName) + L" Interface").data()));
    for (const PropertyRow& row : table.properties) Property(*type, row);
    for (const MethodRow& row : table.methods) Method(*type, row);
    Check(type->LayOut());
    return type;
  }

  Com<ICreateTypeInfo2> Events(const ControlTable& table) {
    const auto type = DispatchType(table.eventsName, table.eventsId);
    for (const EventRow& row : table.events) {
      Function(*type, {row.id, row.name, INVOKE_FUNC, row.arguments, kNothing});
    }
    Check(type->LayOut());
    return type;
  }

  void Property(ICreateTypeInfo2& type, const PropertyRow& row) {
    const bool hidden = (row.rules & kHidden) != 0;
    FunctionText function{row.id, row.name, INVOKE_PROPERTYGET, row.index, row.type};
    function.hidden = hidden || row.rules & kGetHidden;
    Function(type, function);
    if (row.rules & kReadOnly) return;
    function.hidden = hidden;
    function.result = kNothing;
    function.value = &row.type;
    function.kind = INVOKE_PROPERTYPUT;
    Function(type, function);
    if (row.type.vt != vt::kDispatch) return;
    function.kind = INVOKE_PROPERTYPUTREF;
    Function(type, function);
  }

  // An answer in the last argument is what the call gives back.
  void Method(ICreateTypeInfo2& type, const MethodRow& row) {
    FunctionText function{row.id, row.name, INVOKE_FUNC, row.arguments, kNothing};
    if (row.lastIsResult) {
      function.result = row.arguments.back().type;
      function.result.vt &= static_cast<VarType>(~vt::kByRef);
      function.arguments = row.arguments.first(row.arguments.size() - 1);
    }
    function.hidden = (row.rules & kHidden) != 0;
    Function(type, function);
  }

  void Function(ICreateTypeInfo2& type, const FunctionText& text) {
    const size_t count = text.arguments.size() + (text.value ? 1 : 0);
    std::vector<TypeText> types(count + 1);
    std::vector<ELEMDESC> elements(count + 1);
    FUNCDESC function{};
    for (size_t i = 0; i < text.arguments.size(); ++i) {
      Argument(type, text.arguments[i], types[i], elements[i]);
      function.cParamsOpt = static_cast<SHORT>(function.cParamsOpt + text.arguments[i].optional);
    }
    if (text.value) Argument(type, {"", *text.value}, types[count - 1], elements[count - 1]);
    types_.Describe(type, text.result, types[count]);
    function.memid = text.id;
    function.funckind = FUNC_DISPATCH;
    function.invkind = text.kind;
    function.callconv = CC_STDCALL;
    function.cParams = static_cast<SHORT>(count);
    function.lprgelemdescParam = elements.data();
    function.elemdescFunc.tdesc = types[count].type;
    function.wFuncFlags = text.hidden ? FUNCFLAG_FHIDDEN : 0;
    Check(type.AddFuncDesc(functions_, &function));
    Name(type, text);
    ++functions_;
  }

  void Argument(ICreateTypeInfo2& type, const ArgumentRow& row, TypeText& text, ELEMDESC& element) {
    types_.Describe(type, row.type, text);
    element = ELEMDESC{};
    element.tdesc = text.type;
    USHORT flags = PARAMFLAG_FIN;
    if (row.type.vt & VT_BYREF) flags |= PARAMFLAG_FOUT;
    if (row.optional) flags |= PARAMFLAG_FOPT;
    element.paramdesc.wParamFlags = flags;
  }

  // A get and its puts share one name.
  void Name(ICreateTypeInfo2& type, const FunctionText& text) {
    std::vector<std::wstring> names{Wide(text.name)};
    for (const ArgumentRow& row : text.arguments) names.push_back(Wide(row.name));
    std::vector<LPOLESTR> pointers;
    for (std::wstring& name : names) pointers.push_back(name.data());
    Check(
        type.SetFuncAndParamNames(functions_, pointers.data(), static_cast<UINT>(pointers.size())));
  }

  const LibraryTable& table_;
  Com<ICreateTypeLib2> library_;
  TypeMaker types_;
  UINT functions_ = 0;
};

}  // namespace

void WriteTypeLibrary(const LibraryTable& library, const wchar_t* path) {
  LibraryWriter(library, path).Write();
}

}  // namespace qrn::ole
