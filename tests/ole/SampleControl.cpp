#include "SampleControl.h"

#include "ole/Names.h"

namespace qrn::test {
namespace {

constexpr PropertyEntry kAccess[] = {
    {stock::kText, Field<&Sample::Text>},
    {1, Field<&Sample::Name>},
    {2, Field<&Sample::Count>},
    {3, Field<&Sample::Total>},
    {4, Field<&Sample::Flag>},
    {5, Field<&Sample::Flavour>},
    {6, FieldAndPut<&Sample::Checked, &Sample::PutChecked>},
    {7, Field<&Sample::Live>},
    {8, Getter<&Sample::GetFixed>},
    {9, Field<&Sample::Quiet>},
    {10, Field<&Sample::Same>},
    {11, Pair<&Sample::GetCell, &Sample::PutCell>},
};
constexpr MethodEntry kMethods[] = {
    {20, Method<&Sample::Twice>}, {21, Method<&Sample::Swap>},  {22, Method<&Sample::KindOf>},
    {23, Method<&Sample::Fail>},  {24, Method<&Sample::Throw>}, {25, Method<&Sample::Join>},
    {26, Method<&Sample::Ring>},
};
constexpr auto kPropertyBinding = BindProperties<kSampleTable>(kAccess, kStockAccess);
constexpr auto kMethodBinding = BindMethods<kSampleTable>(kMethods);
constexpr Binding kBinding{kPropertyBinding, kMethodBinding};

std::string Narrow(std::wstring_view text) { return std::string(text.begin(), text.end()); }

}  // namespace

int Sample::destroyed = 0;

Sample::Sample() : VisibleControl(kSampleTable, kBinding, kWindowLook) {}

HRESULT Sample::PutChecked(int16_t value) {
  if (value > 10) return kInvalidPropertyValue;
  Checked = value;
  return S_OK;
}

HRESULT Sample::GetCell(int32_t index, Bstr& text) {
  if (index < 0 || index > 2) return kInvalidArrayIndex;
  text = Cells[index];
  return S_OK;
}

HRESULT Sample::PutCell(int32_t index, const Bstr& text) {
  if (index < 0 || index > 2) return kInvalidArrayIndex;
  Cells[index] = text;
  return S_OK;
}

void Sample::Swap(Bstr& text, int32_t& number, int16_t& rc) {
  if (number == kDenied) {
    rc = -4;
    return;
  }
  const int32_t length = static_cast<int32_t>(text.view().size());
  text = Bstr(std::to_wstring(number));
  number = length;
  rc = 0;
}

void Sample::KindOf(VARIANT& anything, VARIANT& perhaps, Bstr& kind) {
  const bool missing = perhaps.vt == VT_ERROR && perhaps.scode == DISP_E_PARAMNOTFOUND;
  kind = Bstr(std::to_wstring(anything.vt) + (missing ? L" missing" : L" given"));
}

void Sample::Join(const Bstr& first, const Bstr& second, Bstr& joined) {
  joined = Bstr(std::wstring(first.view()) + L"+" + std::wstring(second.view()));
}

void Sample::Ring() {
  int16_t number = 5;
  Bstr line(L"line");
  Fire<kSampleTable, "Rang">(*this, Name.get(), &number, &line);
  log += "rang(" + std::to_string(number) + "," + Narrow(line.view()) + ") ";
}

void Sample::OnChanged(int32_t id) {
  VisibleControl::OnChanged(id);
  log += "changed(" + std::to_string(id) + ") ";
}

std::optional<ContainedDescription> Sample::DescribeContained() {
  return ContainedDescription{L"Edit", WS_CHILD | WS_VISIBLE | ES_AUTOHSCROLL, 0,
                              std::wstring(Text.view())};
}

}  // namespace qrn::test
