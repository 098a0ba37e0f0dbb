// The test control itself: an "Edit" window, with a log of the hooks that ran.
#pragma once

#include <string>

#include "SampleTable.h"
#include "ole/VisibleControl.h"

namespace qrn::test {

class Sample final : public VisibleControl {
 public:
  Sample();
  ~Sample() override { ++destroyed; }

  // Objects of this class destroyed so far.
  static int destroyed;

  Bstr Text = Bstr::Empty();
  Bstr Name = Bstr::Empty();
  int16_t Count = 0;
  int32_t Total = 0;
  int16_t Flag = 0;
  int32_t Flavour = 0;
  int16_t Checked = 0;
  Bstr Live = Bstr::Empty();
  Bstr Quiet = Bstr::Empty();
  Bstr Same = Bstr::Empty();
  Bstr Cells[3];

  HRESULT PutChecked(int16_t value);
  int32_t GetFixed() const { return 42; }
  HRESULT GetCell(int32_t index, Bstr& text);
  HRESULT PutCell(int32_t index, const Bstr& text);
  void Twice(int16_t number, int16_t& rc) { rc = static_cast<int16_t>(number * 2); }
  // Fails with -4 and changes nothing where the number is this one.
  static constexpr int32_t kDenied = 13;
  void Swap(Bstr& text, int32_t& number, int16_t& rc);
  void KindOf(VARIANT& anything, VARIANT& perhaps, Bstr& kind);
  HRESULT Fail() { return kInvalidPropertyValue; }
  void Throw() { throw 1; }
  void Join(const Bstr& first, const Bstr& second, Bstr& joined);
  void Ring();

  void OnSited() override { log += "sited "; }
  void OnLoaded() override { log += "loaded "; }
  void OnChanged(int32_t id) override;
  void OnRetire() override { log += "retire "; }

  std::string log;
  bool fixedSize = false;
  bool HasFixedSize() const override { return fixedSize; }

 protected:
  std::optional<ContainedDescription> DescribeContained() override;
  void OnContainedMade() override { log += "made "; }
  void OnRegister() override { log += "registered "; }
  void OnUnregister() override { log += "unregistered "; }
};

}  // namespace qrn::test
