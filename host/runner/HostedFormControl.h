// A control of a module on a form.
#pragma once

#include <memory>
#include <optional>

#include "host/container/HostedControl.h"
#include "host/runner/FormControl.h"

namespace qrn::host {

class HostedFormControl final : public FormControl, public ControlOwner {
 public:
  using FormControl::FormControl;

  IUnknown* HostedObject() const noexcept override { return hosted_ ? hosted_->Object() : nullptr; }

  void Detach() noexcept override;
  void Read(CompanionFiles& files, form::Mistakes& mistakes) override;
  void Make() override;
  bool Create() override;
  void Destroy() noexcept override;
  HWND Window() const noexcept override { return hosted_ ? hosted_->Window() : nullptr; }
  bool IsTabStop() const override;
  bool TakeFocus() override;
  void GiveUpFocus() noexcept override;
  bool WantsEnter() const override;
  MnemonicUse TryMnemonic(const MSG& message, wchar_t key) override;
  void AmbientChanged(DISPID id) noexcept override;
  std::span<const EventInfo> Events() const override;

 protected:
  std::vector<MemberTable> Tables() const override { return {ContainerMembers()}; }
  bool OthersFirst(std::wstring_view name) const noexcept override;
  HRESULT FindOther(LPOLESTR name, LCID locale, DISPID* id) override;
  HRESULT InvokeOther(DISPID id, LCID locale, WORD flags, DISPPARAMS* parameters, VARIANT* result,
                      EXCEPINFO* exception, UINT* badArgument) override;
  void OnMoved() override;
  void OnShown() override;
  Com<IDispatch> Own() override;

 private:
  HWND ParentWindow() const override { return FormControl::ParentWindow(); }
  RECT Place() const override { return FormControl::Place(); }
  Com<InPlaceFrame> Frame() const override;
  AmbientValues Ambients() const override;
  Com<IDispatch> Extended() override { return Com<IDispatch>(this); }
  void OnEvent(const EventInfo& event, DISPPARAMS& parameters) override;
  void OnUIActive(bool active) override;
  void OnFocus(bool focus) override;
  void OnMoved(const RECT& place) override;
  bool OnKey(MSG& message) override;
  void ShowPages() override;

  std::unique_ptr<HostedControl> hosted_;
};

}  // namespace qrn::host
