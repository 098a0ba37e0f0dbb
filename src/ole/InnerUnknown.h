// The control's own IUnknown: the count of references and the answer to queries, whoever
// aggregates it.
#pragma once

#include <unknwn.h>

namespace qrn::ole {

class Control;

class InnerUnknown final : public IUnknown {
 public:
  explicit InnerUnknown(Control& control) noexcept : control_(control) {}
  InnerUnknown(const InnerUnknown&) = delete;
  InnerUnknown& operator=(const InnerUnknown&) = delete;
  virtual ~InnerUnknown() = default;

  STDMETHODIMP QueryInterface(REFIID id, void** out) override;
  STDMETHODIMP_(ULONG) AddRef() override { return ++references_; }
  STDMETHODIMP_(ULONG) Release() override;

 private:
  Control& control_;
  ULONG references_ = 1;  // its creator's
};

}  // namespace qrn::ole
