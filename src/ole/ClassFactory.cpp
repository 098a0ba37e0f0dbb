#include "ole/ClassFactory.h"

#include <algorithm>

#include "com/Module.h"
#include "ole/SystemGuid.h"

namespace qrn::ole {
namespace {

class ClassFactory final : public IClassFactory {
 public:
  explicit ClassFactory(const ClassRow& row) noexcept : row_(row) {}

  STDMETHODIMP QueryInterface(REFIID id, void** out) override {
    if (!out) return E_POINTER;
    const bool known = id == __uuidof(IUnknown) || id == __uuidof(IClassFactory);
    *out = known ? static_cast<IClassFactory*>(this) : nullptr;
    if (known) AddRef();
    return known ? S_OK : E_NOINTERFACE;
  }
  STDMETHODIMP_(ULONG) AddRef() override { return ++references_; }
  STDMETHODIMP_(ULONG) Release() override {
    const ULONG left = --references_;
    if (left == 0) delete this;
    return left;
  }

  STDMETHODIMP CreateInstance(IUnknown* aggregator, REFIID id, void** out) override {
    return row_.create(aggregator, id, out);
  }
  STDMETHODIMP LockServer(BOOL lock) override {
    lock ? LockModule() : UnlockModule();
    return S_OK;
  }

 private:
  virtual ~ClassFactory() = default;

  ModuleLock lock_;
  const ClassRow& row_;
  ULONG references_ = 1;
};

}  // namespace

HRESULT GetClassObject(std::span<const ClassRow> classes, REFCLSID classId, REFIID id,
                       void** out) noexcept {
  if (!out) return E_POINTER;
  *out = nullptr;
  const auto row = std::ranges::find(classes, FromGuid(classId), &ClassRow::classId);
  if (row == classes.end()) return CLASS_E_CLASSNOTAVAILABLE;
  return Guard([&] {
    const auto factory = Com<ClassFactory>::Take(new ClassFactory(*row));
    return factory->QueryInterface(id, out);
  });
}

}  // namespace qrn::ole
