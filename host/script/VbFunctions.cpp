#include "host/script/VbFunctions.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "host/container/Scriptable.h"
#include "host/container/Text.h"
#include "host/script/VbErrors.h"

namespace qrn::host {
namespace {

constexpr UINT kJapaneseCodePage = 932;
constexpr size_t kPrintZone = 14;

struct ConversionRow {
  int bit;
  DWORD map;
};

constexpr ConversionRow kConversions[] = {
    {4, LCMAP_FULLWIDTH}, {8, LCMAP_HALFWIDTH}, {16, LCMAP_KATAKANA}, {32, LCMAP_HIRAGANA}};

DWORD CaseMap(int conversion) noexcept {
  if ((conversion & 3) == 1) return LCMAP_UPPERCASE;
  return (conversion & 3) == 0 ? 0 : LCMAP_LOWERCASE;
}

std::wstring Mapped(const std::wstring& text, DWORD map) {
  if (map == 0 || text.empty()) return text;
  const int length = static_cast<int>(text.size());
  const int needed = LCMapStringW(kJapanese, map, text.data(), length, nullptr, 0);
  std::wstring mapped(static_cast<size_t>(std::max(needed, 0)), L'\0');
  LCMapStringW(kJapanese, map, text.data(), length, mapped.data(), needed);
  return mapped;
}

// After the lower case of all: the first letter of each word.
void RaiseWords(std::wstring& text) {
  bool first = true;
  for (wchar_t& letter : text) {
    if (first) letter = static_cast<wchar_t>(towupper(letter));
    first = iswspace(letter) != 0;
  }
}

Bstr TextToBytes(const Bstr& text) {
  const auto view = text.view();
  const int units = static_cast<int>(view.size());
  const int size =
      WideCharToMultiByte(kJapaneseCodePage, 0, view.data(), units, nullptr, 0, nullptr, nullptr);
  std::string bytes(static_cast<size_t>(size), '\0');
  WideCharToMultiByte(kJapaneseCodePage, 0, view.data(), units, bytes.data(), size, nullptr,
                      nullptr);
  return Bstr::Take(SysAllocStringByteLen(bytes.data(), static_cast<UINT>(bytes.size())));
}

Bstr BytesToText(const Bstr& bytes) {
  const auto* data = reinterpret_cast<const char*>(bytes.get());
  const int size = static_cast<int>(SysStringByteLen(bytes.get()));
  const int units = MultiByteToWideChar(kJapaneseCodePage, 0, data, size, nullptr, 0);
  std::wstring text(static_cast<size_t>(units), L'\0');
  MultiByteToWideChar(kJapaneseCodePage, 0, data, size, text.data(), units);
  return Bstr(text);
}

SYSTEMTIME Parts(DATE date) {
  SYSTEMTIME parts{};
  if (!VariantTimeToSystemTime(date, &parts)) {
    throw ScriptError{kInvalidCall, L"the value is no date"};
  }
  return parts;
}

// Days and seconds count from the same zero; a time before it is written as a positive fraction.
double Seconds(DATE date) {
  const double day = date < 0 ? std::ceil(date) : std::floor(date);
  return day * 86400 + std::round(std::abs(date - day) * 86400);
}

double Days(DATE date) { return std::floor(Seconds(date) / 86400); }
double Weeks(DATE date) { return std::floor((Days(date) - 1) / 7); }
double Months(DATE date) {
  const SYSTEMTIME parts = Parts(date);
  return parts.wYear * 12.0 + parts.wMonth;
}

struct IntervalRow {
  const wchar_t* name;
  double (*count)(DATE date);  // intervals passed since some fixed beginning
};

// clang-format off
constexpr IntervalRow kIntervals[] = {
    {L"yyyy", [](DATE d) { return double(Parts(d).wYear); }},
    {L"q",    [](DATE d) { return std::floor((Months(d) - 1) / 3); }},
    {L"m",    Months},
    {L"y",    Days},
    {L"d",    Days},
    {L"ww",   Weeks},
    {L"h",    [](DATE d) { return std::floor(Seconds(d) / 3600); }},
    {L"n",    [](DATE d) { return std::floor(Seconds(d) / 60); }},
    {L"s",    Seconds},
};

struct PartRow {
  const wchar_t* name;
  int (*part)(const SYSTEMTIME& parts, DATE date);
};

int DayOfYear(const SYSTEMTIME& parts, DATE date) {
  SYSTEMTIME first = parts;
  first.wMonth = first.wDay = 1;
  first.wHour = first.wMinute = first.wSecond = first.wMilliseconds = 0;
  double january = 0;
  SystemTimeToVariantTime(&first, &january);
  return static_cast<int>(Days(date) - Days(january)) + 1;
}

int WeekOfYear(const SYSTEMTIME& parts, DATE date) {
  const int day = DayOfYear(parts, date);
  const int firstWeekday = ((parts.wDayOfWeek - (day - 1)) % 7 + 7) % 7;
  return (day - 1 + firstWeekday) / 7 + 1;
}

constexpr PartRow kParts[] = {
    {L"yyyy", [](const SYSTEMTIME& p, DATE) { return int(p.wYear); }},
    {L"q",    [](const SYSTEMTIME& p, DATE) { return (p.wMonth - 1) / 3 + 1; }},
    {L"m",    [](const SYSTEMTIME& p, DATE) { return int(p.wMonth); }},
    {L"y",    DayOfYear},
    {L"d",    [](const SYSTEMTIME& p, DATE) { return int(p.wDay); }},
    {L"w",    [](const SYSTEMTIME& p, DATE) { return p.wDayOfWeek + 1; }},
    {L"ww",   WeekOfYear},
    {L"h",    [](const SYSTEMTIME& p, DATE) { return int(p.wHour); }},
    {L"n",    [](const SYSTEMTIME& p, DATE) { return int(p.wMinute); }},
    {L"s",    [](const SYSTEMTIME& p, DATE) { return int(p.wSecond); }},
};
// clang-format on

[[noreturn]] void NoInterval(const std::wstring& interval) {
  throw ScriptError{kInvalidCall, L"'" + interval + L"' is no interval"};
}

bool IsNumber(const VARIANT& value) noexcept {
  switch (value.vt) {
    case VT_I1:
    case VT_UI1:
    case VT_I2:
    case VT_UI2:
    case VT_I4:
    case VT_UI4:
    case VT_I8:
    case VT_UI8:
    case VT_INT:
    case VT_UINT:
    case VT_R4:
    case VT_R8:
    case VT_CY:
    case VT_DECIMAL:
      return true;
    default:
      return false;
  }
}

std::wstring PrintedItem(const Variant& value) {
  const std::wstring text = ValueAsText(*value.get());
  if (!IsNumber(*value.get())) return text;
  return (text.starts_with(L"-") ? L"" : L" ") + text + L" ";
}

std::wstring_view SkipBlanks(std::wstring_view text) {
  const size_t first = text.find_first_not_of(L" \t\r\n");
  return first == std::wstring_view::npos ? std::wstring_view() : text.substr(first);
}

double BasedNumber(std::wstring_view digits, int base) {
  const std::wstring text(digits);
  return static_cast<double>(static_cast<int32_t>(wcstoul(text.c_str(), nullptr, base)));
}

}  // namespace

std::wstring NumberText(double number) {
  Variant value;
  value->vt = VT_R8;
  value->dblVal = number;
  return (number < 0 ? L"" : L" ") + ValueAsText(*value.get());
}

double LeadingNumber(std::wstring_view text) {
  std::wstring dense;
  for (const wchar_t letter : SkipBlanks(text)) {
    if (letter != L' ' && letter != L'\t' && letter != L'\r' && letter != L'\n') dense += letter;
  }
  if (dense.size() > 2 && dense[0] == L'&') {
    if (towupper(dense[1]) == L'H') return BasedNumber(std::wstring_view(dense).substr(2), 16);
    if (towupper(dense[1]) == L'O') return BasedNumber(std::wstring_view(dense).substr(2), 8);
  }
  // What is no decimal number (0x10, inf, nan) must not be read as one.
  const size_t digits = dense.find_first_not_of(L"+-0123456789.eEdD");
  dense.erase(std::min(digits, dense.size()));
  std::replace_if(
      dense.begin(), dense.end(), [](wchar_t c) { return c == L'd' || c == L'D'; }, L'E');
  return wcstod(dense.c_str(), nullptr);
}

Bstr ConvertText(const Bstr& text, int conversion) {
  if (conversion == 64) return BytesToText(text);
  if (conversion == 128) return TextToBytes(text);
  std::wstring mapped = Mapped(std::wstring(text.view()), CaseMap(conversion));
  if ((conversion & 3) == 3) RaiseWords(mapped);
  for (const ConversionRow& row : kConversions) {
    if ((conversion & row.bit) != 0) mapped = Mapped(mapped, row.map);
  }
  return Bstr(mapped);
}

Bstr BytesOf(const Bstr& text, size_t start, size_t count) {
  const size_t size = SysStringByteLen(text.get());
  start = std::min(start, size);
  count = std::min(count, size - start);
  const auto* bytes = reinterpret_cast<const char*>(text.c_str());
  return Bstr::Take(SysAllocStringByteLen(bytes + start, static_cast<UINT>(count)));
}

double DateDifference(const std::wstring& interval, DATE from, DATE to) {
  if (SameName(interval, L"w")) {
    return std::trunc((Days(to) - Days(from)) / 7);
  }
  for (const IntervalRow& row : kIntervals) {
    if (SameName(row.name, interval)) return row.count(to) - row.count(from);
  }
  NoInterval(interval);
}

int DatePartOf(const std::wstring& interval, DATE date) {
  for (const PartRow& row : kParts) {
    if (SameName(row.name, interval)) return row.part(Parts(date), date);
  }
  NoInterval(interval);
}

std::wstring PrintLine(const std::vector<Variant>& parts, size_t columnsBefore, bool* openEnd) {
  std::wstring line;
  *openEnd = false;
  for (size_t i = 0; i < parts.size(); ++i) {
    const bool isSeparator = i % 2 == 1;
    if (!isSeparator) {
      line += PrintedItem(parts[i]);
    } else if (ValueAsText(*parts[i].get()) == L",") {
      const size_t column = columnsBefore + line.size();
      line.append(kPrintZone - column % kPrintZone, L' ');
    }
    *openEnd = isSeparator;
  }
  return line;
}

}  // namespace qrn::host
