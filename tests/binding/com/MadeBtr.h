// A database control of the test's own, in a small container or in none.
#pragma once

#include "binding/QRNBtr.h"
#include "com/Module.h"
#include "ole/ClassFactory.h"
#include "tests/extended/ShownMessages.h"
#include "tests/ole/Caller.h"
#include "tests/ole/TestSite.h"
#include "tests/support/Company.h"
#include "tests/support/Test.h"

namespace qrn::test {

using namespace qrn::ole;

class MadeBtr {
 public:
  MadeBtr() { CreateControl<CQRNBtr>(nullptr, __uuidof(IDispatch), object_.putVoid()); }

  IDispatch* object() { return object_.get(); }
  // The answer of a method as text, its result read as a function's.
  std::string Say(const wchar_t* method, std::initializer_list<VARIANT> arguments = {}) {
    return CallMethod(object(), method, arguments).Text();
  }
  std::string Set(const wchar_t* property, VARIANT value) {
    return Put(object(), property, {value}).Text();
  }
  std::string Value(const wchar_t* property) { return Get(object(), property).Text(); }
  Com<IUnknown> unknown() { return Query<IUnknown>(object_); }
  void Drop() { object_.reset(); }

 private:
  Com<IDispatch> object_;
};

}  // namespace qrn::test
