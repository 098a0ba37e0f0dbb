#include "host/script/ScriptGlobals.h"

#include "host/container/CompanionFiles.h"
#include "host/container/FormatService.h"
#include "host/container/Text.h"
#include "host/form/SourceText.h"
#include "host/script/VbConstants.h"
#include "host/script/VbErrors.h"
#include "host/script/VbFunctions.h"

namespace qrn::host {
namespace {

constexpr DISPID kFirstConstant = 1;

// App.Path and its like.
class AppObject final : public Scriptable {
 public:
  explicit AppObject(ProgramServices& services) noexcept : services_(services) {}
  void Path(Call& call) { call.Give(services_.Folder()); }
  void Title(Call& call) { call.Give(services_.Title()); }

 protected:
  std::vector<MemberTable> Tables() const override {
    static constexpr MemberEntry kMembers[] = {Member<&AppObject::Path>(L"Path", kGet),
                                               Member<&AppObject::Title>(L"Title", kGet),
                                               Member<&AppObject::Title>(L"EXEName", kGet)};
    return {kMembers};
  }

 private:
  ProgramServices& services_;
};

// Screen.MousePointer and its like.
class ScreenObject final : public Scriptable {
 public:
  explicit ScreenObject(ProgramServices& services) noexcept : services_(services) {}
  void MousePointer(Call& call) {
    if (call.IsPut()) return services_.SetMousePointer(call.NewNumber());
    call.Give(static_cast<int32_t>(services_.MousePointer()));
  }
  void Width(Call& call) { call.Give(GetSystemMetrics(SM_CXSCREEN) * 15.0); }
  void Height(Call& call) { call.Give(GetSystemMetrics(SM_CYSCREEN) * 15.0); }
  void TwipsPerPixel(Call& call) { call.Give(int32_t{15}); }

 protected:
  std::vector<MemberTable> Tables() const override {
    static constexpr MemberEntry kMembers[] = {
        Member<&ScreenObject::MousePointer>(L"MousePointer", kProperty),
        Member<&ScreenObject::Width>(L"Width", kGet),
        Member<&ScreenObject::Height>(L"Height", kGet),
        Member<&ScreenObject::TwipsPerPixel>(L"TwipsPerPixelX", kGet),
        Member<&ScreenObject::TwipsPerPixel>(L"TwipsPerPixelY", kGet)};
    return {kMembers};
  }

 private:
  ProgramServices& services_;
};

Bstr TextArgument(const Call& call, size_t index) {
  Variant text;
  if (FAILED(call.Value(index).as(VT_BSTR, text))) {
    throw ScriptError{DISP_E_TYPEMISMATCH, L"a text is needed"};
  }
  return Bstr::Take(text.release().bstrVal);
}

DATE DateArgument(const Call& call, size_t index) {
  Variant date;
  if (FAILED(call.Value(index).as(VT_DATE, date))) {
    throw ScriptError{DISP_E_TYPEMISMATCH, L"a date is needed"};
  }
  return date->date;
}

Variant DateOf(double date) {
  Variant value;
  value->vt = VT_DATE;
  value->date = date;
  return value;
}

size_t CountArgument(const Call& call, size_t index, size_t fallback) {
  if (!call.Has(index)) return fallback;
  const int32_t count = call.Number(index);
  if (count < 0) throw ScriptError{kInvalidCall, L"a count below 0"};
  return static_cast<size_t>(count);
}

constexpr size_t kNoLimit = ~size_t{0};

// Elements of a one-dimensional array as texts.
std::vector<std::wstring> Elements(const Variant& array) {
  if ((array.type() & VT_ARRAY) == 0 || SafeArrayGetDim(array->parray) != 1) {
    throw ScriptError{DISP_E_TYPEMISMATCH, L"an array is needed"};
  }
  LONG lower = 0;
  LONG upper = -1;
  SafeArrayGetLBound(array->parray, 1, &lower);
  SafeArrayGetUBound(array->parray, 1, &upper);
  std::vector<std::wstring> texts;
  for (LONG i = lower; i <= upper; ++i) {
    Variant element;
    if ((array.type() & VT_TYPEMASK) == VT_VARIANT) {
      SafeArrayGetElement(array->parray, &i, element.put());
    } else {
      element->vt = static_cast<VARTYPE>(array.type() & VT_TYPEMASK);
      SafeArrayGetElement(array->parray, &i, &element->byref);
    }
    texts.push_back(ValueAsText(*element.get()));
  }
  return texts;
}

}  // namespace

std::vector<MemberTable> ScriptGlobals::Tables() const {
  // clang-format off
  static constexpr MemberEntry kMembers[] = {
      Member<&ScriptGlobals::Print>(L"HostPrint_", kMethod),
      Member<&ScriptGlobals::Assert>(L"HostAssert_", kMethod),
      Member<&ScriptGlobals::End>(L"HostEnd_", kMethod),
      Member<&ScriptGlobals::MsgBox>(L"Host_MsgBox", kMethod),
      Member<&ScriptGlobals::LenB>(L"Host_LenB", kMethod),
      Member<&ScriptGlobals::LeftB>(L"Host_LeftB", kMethod),
      Member<&ScriptGlobals::RightB>(L"Host_RightB", kMethod),
      Member<&ScriptGlobals::MidB>(L"Host_MidB", kMethod),
      Member<&ScriptGlobals::AscW>(L"Host_AscW", kMethod),
      Member<&ScriptGlobals::ChrW>(L"Host_ChrW", kMethod),
      Member<&ScriptGlobals::Join>(L"Host_Join", kMethod),
      Member<&ScriptGlobals::DateDiff>(L"Host_DateDiff", kMethod),
      Member<&ScriptGlobals::DatePart>(L"Host_DatePart", kMethod),
      Member<&ScriptGlobals::DateValue>(L"Host_DateValue", kMethod),
      Member<&ScriptGlobals::TimeValue>(L"Host_TimeValue", kMethod),
      Member<&ScriptGlobals::LoadPicture>(L"Host_LoadPicture", kMethod),
      Member<&ScriptGlobals::Format>(L"Format", kMethod),
      Member<&ScriptGlobals::Str>(L"Str", kMethod),
      Member<&ScriptGlobals::Val>(L"Val", kMethod),
      Member<&ScriptGlobals::StrConv>(L"StrConv", kMethod),
      Member<&ScriptGlobals::IIf>(L"IIf", kMethod),
      Member<&ScriptGlobals::Choose>(L"Choose", kMethod),
      Member<&ScriptGlobals::Switch>(L"Switch", kMethod),
      Member<&ScriptGlobals::DoEvents>(L"DoEvents", kMethod),
      Member<&ScriptGlobals::Beep>(L"Beep", kMethod),
      Member<&ScriptGlobals::Load>(L"Load", kMethod),
      Member<&ScriptGlobals::Unload>(L"Unload", kMethod),
      Member<&ScriptGlobals::Environ>(L"Environ", kMethod),
      Member<&ScriptGlobals::App>(L"App", kGet),
      Member<&ScriptGlobals::Screen>(L"Screen", kGet),
  };
  // clang-format on
  return {kMembers};
}

void ScriptGlobals::AddConstants(std::map<std::wstring, Variant> constants) {
  for (auto& [name, value] : constants) constants_.emplace_back(name, std::move(value));
}

HRESULT ScriptGlobals::FindOther(LPOLESTR name, LCID, DISPID* id) {
  for (size_t i = 0; i < constants_.size(); ++i) {
    if (!SameName(constants_[i].first, name)) continue;
    *id = kFirstConstant + static_cast<DISPID>(i);
    return S_OK;
  }
  const std::optional<int32_t> own = VbConstant(name);
  if (!own) return DISP_E_UNKNOWNNAME;
  constants_.emplace_back(name, Variant(*own));
  *id = kFirstConstant + static_cast<DISPID>(constants_.size() - 1);
  return S_OK;
}

HRESULT ScriptGlobals::InvokeOther(DISPID id, LCID, WORD flags, DISPPARAMS*, VARIANT* result,
                                   EXCEPINFO*, UINT*) {
  const auto place = static_cast<size_t>(id - kFirstConstant);
  if (id < kFirstConstant || place >= constants_.size() || (flags & kGet) == 0) {
    return DISP_E_MEMBERNOTFOUND;
  }
  return result ? VariantCopy(result, constants_[place].second.get()) : S_OK;
}

void ScriptGlobals::Print(Call& call) {
  std::vector<Variant> parts;
  for (size_t i = 0; i < call.Count(); ++i) parts.push_back(call.Value(i));
  bool openEnd = false;
  const std::wstring line = PrintLine(parts, services_->PrintColumn(), &openEnd);
  services_->Print(line, openEnd);
}

void ScriptGlobals::Assert(Call& call) {
  if (!call.Truth(0, true))
    throw ScriptError{kInvalidCall, L"Debug.Assert: the condition is False"};
}

void ScriptGlobals::End(Call&) { services_->EndProgram(); }

void ScriptGlobals::MsgBox(Call& call) {
  const std::wstring title = call.Text(2, services_->Title());
  call.Give(static_cast<int32_t>(
      services_->ShowBox(call.Text(0), static_cast<UINT>(call.Number(1)), title)));
}

void ScriptGlobals::Format(Call& call) {
  const Variant value = call.Value(0);
  std::wstring text;
  const HRESULT result =
      FormatValue(*value.get(), call.Text(1), kJapanese, call.Number(2), call.Number(3), &text);
  if (FAILED(result)) throw ScriptError{result, L"Format: the value or the format is not valid"};
  call.Give(text);
}

void ScriptGlobals::Str(Call& call) { call.Give(NumberText(call.Real(0))); }
void ScriptGlobals::Val(Call& call) { call.Give(LeadingNumber(call.Text(0))); }

void ScriptGlobals::StrConv(Call& call) {
  call.Give(Variant(ConvertText(TextArgument(call, 0), call.Number(1))));
}

void ScriptGlobals::LenB(Call& call) {
  call.Give(static_cast<int32_t>(SysStringByteLen(TextArgument(call, 0).get())));
}

void ScriptGlobals::LeftB(Call& call) {
  call.Give(Variant(BytesOf(TextArgument(call, 0), 0, CountArgument(call, 1, 0))));
}

void ScriptGlobals::RightB(Call& call) {
  const Bstr text = TextArgument(call, 0);
  const size_t size = SysStringByteLen(text.get());
  const size_t count = std::min(size, CountArgument(call, 1, 0));
  call.Give(Variant(BytesOf(text, size - count, count)));
}

void ScriptGlobals::MidB(Call& call) {
  const size_t start = CountArgument(call, 1, 1);
  if (start == 0) throw ScriptError{kInvalidCall, L"MidB counts from 1"};
  call.Give(Variant(BytesOf(TextArgument(call, 0), start - 1, CountArgument(call, 2, kNoLimit))));
}

void ScriptGlobals::AscW(Call& call) {
  const std::wstring text = call.Text(0);
  if (text.empty()) throw ScriptError{kInvalidCall, L"AscW needs a character"};
  call.Give(Variant(static_cast<int16_t>(text[0])));
}

void ScriptGlobals::ChrW(Call& call) {
  call.Give(std::wstring(1, static_cast<wchar_t>(call.Number(0))));
}

void ScriptGlobals::Join(Call& call) {
  const std::wstring delimiter = call.Text(1, L" ");
  std::wstring joined;
  bool first = true;
  for (const std::wstring& element : Elements(call.Value(0))) {
    joined += (first ? L"" : delimiter) + element;
    first = false;
  }
  call.Give(joined);
}

void ScriptGlobals::DateDiff(Call& call) {
  const double count = DateDifference(call.Text(0), DateArgument(call, 1), DateArgument(call, 2));
  call.Give(static_cast<int32_t>(count));
}

void ScriptGlobals::DatePart(Call& call) {
  call.Give(static_cast<int32_t>(DatePartOf(call.Text(0), DateArgument(call, 1))));
}

void ScriptGlobals::DateValue(Call& call) {
  const DATE date = DateArgument(call, 0);
  call.Give(DateOf(static_cast<double>(static_cast<int64_t>(date))));
}

void ScriptGlobals::TimeValue(Call& call) {
  const DATE date = DateArgument(call, 0);
  const double time = date - static_cast<double>(static_cast<int64_t>(date));
  call.Give(DateOf(time < 0 ? -time : time));
}

void ScriptGlobals::IIf(Call& call) { call.Give(call.Value(call.Truth(0) ? 1 : 2)); }

void ScriptGlobals::Choose(Call& call) {
  const int32_t index = call.Number(0);
  Variant none;
  none->vt = VT_NULL;
  const bool there = index >= 1 && call.Has(static_cast<size_t>(index));
  call.Give(there ? call.Value(static_cast<size_t>(index)) : std::move(none));
}

void ScriptGlobals::Switch(Call& call) {
  for (size_t i = 0; i + 1 < call.Count(); i += 2) {
    if (call.Truth(i)) return call.Give(call.Value(i + 1));
  }
  Variant none;
  none->vt = VT_NULL;
  call.Give(std::move(none));
}

void ScriptGlobals::DoEvents(Call& call) {
  services_->DoEvents();
  call.Give(int32_t{0});
}

void ScriptGlobals::Beep(Call&) { MessageBeep(MB_OK); }
void ScriptGlobals::Load(Call& call) { services_->LoadForm(call.Value(0)); }
void ScriptGlobals::Unload(Call& call) { services_->UnloadForm(call.Value(0)); }

void ScriptGlobals::Environ(Call& call) {
  std::wstring value(32767, L'\0');
  value.resize(GetEnvironmentVariableW(call.Text(0).c_str(), value.data(),
                                       static_cast<DWORD>(value.size())));
  call.Give(value);
}

void ScriptGlobals::LoadPicture(Call& call) {
  const std::wstring path = call.Text(0);
  if (path.empty()) return call.Give(Variant(Com<IDispatch>()));
  std::string bytes;
  try {
    bytes = form::ReadWholeFile(Utf8(path));
  } catch (const std::runtime_error&) {
    throw ScriptError{kFileNotFound, L"LoadPicture: there is no file " + path};
  }
  const Com<IPictureDisp> picture = host::LoadPicture(bytes);
  if (!picture) throw ScriptError{kInvalidPicture, L"LoadPicture: no picture"};
  call.Give(Variant(Com<IDispatch>(picture.get())));
}

void ScriptGlobals::App(Call& call) {
  if (!app_) app_ = Com<IDispatch>(MakeCom<AppObject>(*services_).get());
  call.Give(Variant(app_));
}

void ScriptGlobals::Screen(Call& call) {
  if (!screen_) screen_ = Com<IDispatch>(MakeCom<ScreenObject>(*services_).get());
  call.Give(Variant(screen_));
}

}  // namespace qrn::host
