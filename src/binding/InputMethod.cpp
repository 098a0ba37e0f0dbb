#include "binding/InputMethod.h"

namespace qrn {

ole::ImeApi& TheInputMethod() {
  static ole::ImeApi api(ole::FindImeEntries());
  return api;
}

}  // namespace qrn
