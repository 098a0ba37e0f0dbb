#include "ole/ClassFactory.h"

#include <algorithm>

#include "com/Object.h"
#include "ole/SystemGuid.h"

namespace qrn::ole {
namespace {

class ClassFactory final : public Object<IClassFactory> {
 public:
  explicit ClassFactory(const ClassRow& row) noexcept : row_(row) {}

  STDMETHODIMP CreateInstance(IUnknown* aggregator, REFIID id, void** out) override {
    return row_.create(aggregator, id, out);
  }
  STDMETHODIMP LockServer(BOOL lock) override {
    lock ? LockModule() : UnlockModule();
    return S_OK;
  }

 private:
  const ClassRow& row_;
};

}  // namespace

HRESULT GetClassObject(std::span<const ClassRow> classes, REFCLSID classId, REFIID id,
                       void** out) noexcept {
  if (!out) return E_POINTER;
  *out = nullptr;
  const auto row = std::ranges::find(classes, FromGuid(classId), &ClassRow::classId);
  if (row == classes.end()) return CLASS_E_CLASSNOTAVAILABLE;
  return Guard([&] { return Make<ClassFactory>(*row)->QueryInterface(id, out); });
}

}  // namespace qrn::ole
