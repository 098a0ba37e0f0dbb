#include "binding/QRNBtr.h"

#include <olectl.h>

#include "binding/BtrieveError.h"
#include "binding/ContainerForm.h"
#include "binding/tables/QRNBtrTable.h"
#include "core/Transactions.h"
#include "ole/Bind.h"

namespace qrn {
namespace {

using com::Bstr;
using ole::Field;
using ole::Method;
using ole::Pair;

Status SetLockBias(int32_t bias) noexcept { return DbSetLockBias(TheEngine(), bias); }

// Members of the part that knows nothing of automation, and of the engine.
template <auto Member>
constexpr ole::PropertyAccess Data = Field<Member, CQRNBtr>;
template <auto Function>
constexpr ole::MethodAccess Engine = Method<Function, CQRNBtr>;

// clang-format off
constexpr ole::PropertyEntry kProperties[] = {
    {ole::stock::kTabStop, Field<&CQRNBtr::TabStop>},
    { 1, Pair<&CQRNBtr::GetDDFDir, &CQRNBtr::PutDDFDir>},
    { 2, Pair<&CQRNBtr::GetOwnerName, &CQRNBtr::PutOwnerName>},
    { 3, Data<&Database::OpenMode>},
    { 4, Data<&Database::AllOpen>},
    { 5, Pair<&CQRNBtr::GetDistName, &CQRNBtr::PutDistName>},
    {40, Data<&Database::CacheDDF>},
};

constexpr ole::MethodEntry kMethods[] = {
    { 6, Engine<&Database::DbOpen>},
    { 7, Engine<&Database::DbClose>},
    { 8, Method<&CQRNBtr::GetUseCount>},
    { 9, Engine<&Database::DbIsOpen>},
    {10, Engine<&Database::DbGetFieldData>},
    {11, Engine<&Database::DbSetFieldData>},
    {12, Engine<&Database::DbAccess>},
    {13, Engine<&Database::DbTransferToControl>},
    {14, Engine<&Database::DbTransferFromControl>},
    {15, Engine<&DbBeginTransaction>},
    {16, Engine<&DbEndTransaction>},
    {17, Engine<&DbAbortTransaction>},
    {18, Engine<&DbBeginConCurTransaction>},
    {19, Engine<&Database::DbClearControlData>},
    {20, Engine<&Database::DbUnlock>},
    {21, Engine<&Database::DbGetPosition>},
    {22, Engine<&Database::DbGetDirect>},
    {23, Engine<&Database::DbGetDataSize>},
    {24, Engine<&Database::DbGetDataType>},
    {25, Engine<&Database::DbGetByPercentage>},
    {26, Engine<&Database::DbFindPercentage>},
    {27, Engine<&Database::DbExGetFieldData>},
    {28, Engine<&Database::DbExGetPosition>},
    {29, Method<&CQRNBtr::DbExFree>},
    {30, Method<&CQRNBtr::DbExAccess>},
    {31, Engine<&Database::DbCreate>},
    {32, Engine<&Database::DbGetNumOfRecords>},
    {33, Method<&CQRNBtr::DbExSetMode>},
    {34, Engine<&Database::DbSetFileName>},
    {35, Engine<&Database::DbClearFieldBuffer>},
    {36, Engine<&Database::DbGetFieldDataByID>},
    {37, Engine<&Database::DbSetFieldDataByID>},
    {38, Method<&CQRNBtr::DbGetRecord>},
    {39, Method<&CQRNBtr::DbSetRecord>},
    {41, Engine<&Database::DbOpenAll>},
    {42, Engine<&Database::DbCloseAll>},
    {43, Engine<&Database::DbLoadDDF>},
    {44, Engine<&Database::DbReset>},
    {45, Engine<&Database::DbGetRecordLength>},
    {46, Method<&CQRNBtr::DbGetRecordImage>},
    {47, Method<&CQRNBtr::DbSetRecordImage>},
    {48, Method<&CQRNBtr::DbGetPosBlock>},
    {49, Engine<&Database::DbAccessByID>},
    {50, Method<&CQRNBtr::DbGetModulePath>},
    {51, Engine<&SetLockBias>},
    {52, Engine<&Database::DbGetNumOfTable>},
    {53, Engine<&Database::DbGetNumOfField>},
    {54, Engine<&Database::DbGetTableName>},
    {55, Engine<&Database::DbGetFieldName>},
    {56, Engine<&Database::DbGetNumOfIndex>},
    {57, Engine<&Database::DbGetIndexName>},
    {58, Engine<&Database::DbIsNull>},
    {59, Engine<&Database::DbLogIn>},
    {60, Engine<&Database::DbLogOut>},
    {ole::stock::kAbout, Method<&CQRNBtr::About>},
};
// clang-format on

constexpr auto kBoundProperties = ole::BindProperties<kQRNBtrTable>(kProperties);
constexpr auto kBoundMethods = ole::BindMethods<kQRNBtrTable>(kMethods);

Bstr TextOf(const PropertyText& text) {
  if (text.null()) return Bstr();
  return Bstr(com::AsWide(text.wide()));
}

void Keep(PropertyText& text, const Bstr& value) {
  if (value.null()) return text.SetNull();
  text.Set(com::AsUtf16(value.view()));
}

}  // namespace

CQRNBtr::CQRNBtr() : BoundControl(kQRNBtrTable, {kBoundProperties, kBoundMethods}) {}

Bstr CQRNBtr::GetDDFDir() const { return TextOf(DDFDir); }
Bstr CQRNBtr::GetOwnerName() const { return TextOf(OwnerName); }
void CQRNBtr::PutOwnerName(const Bstr& value) { Keep(OwnerName, value); }
Bstr CQRNBtr::GetDistName() const { return TextOf(DistName); }
void CQRNBtr::PutDistName(const Bstr& value) { Keep(DistName, value); }

// The container hears of the change before the dictionary is read, which may show a message.
HRESULT CQRNBtr::PutDDFDir(const Bstr& value) {
  const HRESULT changed = Change(ole::IdOf<kQRNBtrTable, "DDFDir">, [&] { Keep(DDFDir, value); });
  if (changed == S_OK && !persistence().loading()) DirectoryWasPut();
  return changed;
}

void CQRNBtr::FireBtrieveError(const char* tableName, Status& status) {
  status = TellBtrieveError<kQRNBtrTable>(*this, tableName, status);
}

std::optional<std::string> CQRNBtr::AskFormName() { return FormNameOf(site()); }
std::optional<WindowHandle> CQRNBtr::AskFormWindow() { return FormWindowOf(site()); }

void CQRNBtr::OnAmbientChanged(int32_t id) {
  if (id == DISPID_AMBIENT_BACKCOLOR || id == DISPID_UNKNOWN) Redraw();
}

bool CQRNBtr::OnWindowMessage(com::Message& message) {
  if (message.id == WM_CREATE) DbControlStart();
  if (message.id == WM_DESTROY) WindowGoes();
  return message.id == WM_CREATE;
}

}  // namespace qrn
