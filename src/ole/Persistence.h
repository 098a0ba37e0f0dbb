// A control's state in a stream, a storage or a property bag, all over one map of its table.
#pragma once

#include <ocidl.h>

#include <vector>

#include "ole/Face.h"
#include "ole/tables/Members.h"
#include "ole/tables/PersistStream.h"

namespace qrn::ole {

// A stream or storage is read to its end before anything is put: one that is cut or damaged fails
// with E_FAIL and leaves the control as it was.
class Persistence final : public Face<IPersistStreamInit, IPersistStorage, IPersistPropertyBag> {
 public:
  Persistence(Control& control, const ControlTable& table) noexcept
      : Face(control), table_(table) {}

  bool dirty() const noexcept { return dirty_; }
  void SetDirty(bool dirty) noexcept { dirty_ = dirty; }
  // State is coming in: puts ask nobody and tell nobody.
  bool loading() const noexcept { return loading_; }

  STDMETHODIMP GetClassID(CLSID* id) override;
  STDMETHODIMP IsDirty() override;
  STDMETHODIMP InitNew() override;

  STDMETHODIMP Load(IStream* stream) override;
  STDMETHODIMP Save(IStream* stream, BOOL clearDirty) override;
  STDMETHODIMP GetSizeMax(ULARGE_INTEGER* size) override;

  STDMETHODIMP InitNew(IStorage* storage) override;
  STDMETHODIMP Load(IStorage* storage) override;
  STDMETHODIMP Save(IStorage* storage, BOOL sameAsLoad) override;
  STDMETHODIMP SaveCompleted(IStorage* storage) override;
  STDMETHODIMP HandsOffStorage() override;

  // A value that the bag does not hold keeps its default. One that cannot be put is reported to
  // `log` with its name, and ends the load.
  STDMETHODIMP Load(IPropertyBag* bag, IErrorLog* log) override;
  STDMETHODIMP Save(IPropertyBag* bag, BOOL clearDirty, BOOL all) override;

 private:
  // Runs a load: everything it puts is quiet, and a good end is told to the control.
  template <class Body>
  HRESULT Loading(Body body);

  std::vector<PersistedItem> Collect();
  void Apply(const std::vector<PersistedItem>& items);
  HRESULT LoadFromBag(IPropertyBag& bag, const PersistRow& row);
  HRESULT Store(const PersistRow& row, VARIANT& value, SIZE& extent);

  const ControlTable& table_;
  bool dirty_ = false;
  bool loading_ = false;
};

}  // namespace qrn::ole
