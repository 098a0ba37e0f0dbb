#include "host/script/ScriptFault.h"

#include "host/script/VbErrors.h"

namespace qrn::host {
namespace {

constexpr int kAutomationError = 440;
constexpr int kSyntaxError = 1002;

constexpr wchar_t kBareWords[] =
    L"a name is not declared, or a variable holds no object (Set is missing)";

struct NumberRow {
  HRESULT code;
  int number;
};

constexpr NumberRow kNumbers[] = {
    {DISP_E_TYPEMISMATCH, 13},   {DISP_E_OVERFLOW, 6},
    {DISP_E_DIVBYZERO, 11},      {DISP_E_BADINDEX, 9},
    {DISP_E_UNKNOWNNAME, 438},   {DISP_E_MEMBERNOTFOUND, 438},
    {DISP_E_BADPARAMCOUNT, 450}, {DISP_E_PARAMNOTOPTIONAL, 449},
    {DISP_E_ARRAYISLOCKED, 10},  {E_OUTOFMEMORY, 7},
    {E_INVALIDARG, 5},           {E_NOTIMPL, 445},
    {REGDB_E_CLASSNOTREG, 429},  {E_NOINTERFACE, 430},
};

struct WordsRow {
  int number;
  const wchar_t* words;
};

constexpr WordsRow kWords[] = {
    {5, L"the argument or call is not valid"},
    {6, L"the number is too large (overflow)"},
    {7, L"out of memory"},
    {9, L"the index lies outside the array"},
    {10, L"the array is fixed or locked"},
    {11, L"division by zero"},
    {13, L"the types do not fit (type mismatch)"},
    {91, L"the variable holds no object (Set is missing)"},
    {92, L"the For loop is not initialised"},
    {94, L"Null cannot be used here"},
    {380, L"the value is not valid for the property"},
    {381, L"the index is not valid for the property"},
    {383, L"the property can only be read"},
    {394, L"the property cannot be read now"},
    {424, L"an object is needed here"},
    {429, L"the object cannot be created"},
    {430, L"the object does not support what is asked of it"},
    {438, L"the object has no such property or method"},
    {445, L"the object or function does not support this"},
    {448, L"there is no such named argument"},
    {449, L"an argument is missing"},
    {450, L"the number of arguments is wrong"},
    {451, L"the object is no collection"},
    {500, L"a name is not declared"},
    {501, L"this cannot be assigned to"},
    {kSyntaxError, L"syntax error"},
};

std::wstring Described(int number, const Bstr& given) {
  if (!given.empty()) return std::wstring(given.view());
  std::wstring words = ErrorWords(number);
  return words.empty() ? L"an error without a description" : words;
}

}  // namespace

int ErrorNumber(HRESULT code) noexcept {
  const auto bits = static_cast<DWORD>(code);
  if ((bits & 0xFFFF0000) == kControlFacility) return static_cast<int>(bits & 0xFFFF);
  for (const NumberRow& row : kNumbers) {
    if (row.code == code) return row.number;
  }
  return kAutomationError;
}

std::wstring ErrorWords(int number) {
  for (const WordsRow& row : kWords) {
    if (row.number == number) return row.words;
  }
  return L"";
}

ScriptFault FaultOf(IActiveScriptError* error, FaultTime time) {
  ScriptFault fault;
  EXCEPINFO exception{};
  if (FAILED(error->GetExceptionInfo(&exception))) exception = EXCEPINFO{};
  if (exception.pfnDeferredFillIn) exception.pfnDeferredFillIn(&exception);
  const Bstr source = Bstr::Take(exception.bstrSource);
  const Bstr description = Bstr::Take(exception.bstrDescription);
  const Bstr help = Bstr::Take(exception.bstrHelpFile);
  DWORD context = 0;
  ULONG line = 0;
  LONG column = 0;
  if (SUCCEEDED(error->GetSourcePosition(&context, &line, &column))) {
    fault.line = static_cast<int>(line);
  }
  const HRESULT code = exception.scode != 0 ? exception.scode : E_FAIL;
  const bool bare = code == E_FAIL && description.empty();
  if (bare && time == FaultTime::Running) {
    fault.number = kAutomationError;
    fault.description = kBareWords;
    return fault;
  }
  fault.number = bare ? kSyntaxError : ErrorNumber(code);
  fault.description = Described(fault.number, description);
  return fault;
}

}  // namespace qrn::host
