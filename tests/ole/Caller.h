// Late-bound calls as scripts make them.
#pragma once

#include <initializer_list>

#include "Sinks.h"

namespace qrn::test {

struct CallResult {
  HRESULT result = E_FAIL;
  Variant value;
  HRESULT scode = S_OK;  // of the exception, where there was one
  UINT badArgument = 99;

  std::string Text() const;  // "ok I2:4", or the failure in hex with the exception's code
};

// Calls a member of the object by name; arguments in reading order, by reference where a VARIANT
// says so.
CallResult Call(IDispatch* object, const wchar_t* name, WORD flags,
                std::initializer_list<VARIANT> arguments);
CallResult Get(IDispatch* object, const wchar_t* name, std::initializer_list<VARIANT> index = {});
CallResult Put(IDispatch* object, const wchar_t* name,
               std::initializer_list<VARIANT> indexAndValue);
CallResult CallMethod(IDispatch* object, const wchar_t* name,
                      std::initializer_list<VARIANT> arguments = {});

// Plain arguments. The text lives as long as the program: tests are short.
VARIANT Text(const wchar_t* text);
VARIANT Short(int16_t number);
VARIANT Long(int32_t number);
VARIANT Bool(bool yes);
VARIANT Missing();
VARIANT Ref(VARTYPE type, void* place);
VARIANT Ref(Variant& variable);

}  // namespace qrn::test
