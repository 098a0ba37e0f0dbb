// The COM kit's names as the container uses them.
#pragma once

#include "com/Com.h"
#include "com/Guard.h"
#include "com/Object.h"
#include "com/Variant.h"

namespace qrn::host {

using com::Bstr;
using com::Com;
using com::Guard;
using com::liveObjects;
using com::Query;
using com::Variant;

template <class First, class... Rest>
using ComObject = com::Object<First, Rest...>;

template <class T, class... Arguments>
Com<T> MakeCom(Arguments&&... arguments) {
  return com::Make<T>(std::forward<Arguments>(arguments)...);
}

}  // namespace qrn::host
