// What every form's code knows by itself: Visual Basic's functions beyond the engine's own, the
// constants of the controls' libraries, App, Screen, Load and Unload.
#pragma once

#include <map>
#include <string>

#include "host/container/Scriptable.h"

namespace qrn::host {

// What the program does for the code of its forms.
class ProgramServices {
 public:
  virtual ~ProgramServices() = default;
  // Writes `text`, and ends the line unless `openEnd`.
  virtual void Print(const std::wstring& text, bool openEnd) = 0;
  virtual size_t PrintColumn() const = 0;
  // A message box; the result is the button's id (1 OK, 2 Cancel, ...).
  virtual int ShowBox(const std::wstring& text, UINT style, const std::wstring& title) = 0;
  virtual void LoadForm(const Variant& form) = 0;
  virtual void UnloadForm(const Variant& form) = 0;
  // Ends the program when the code under way has returned.
  virtual void EndProgram() = 0;
  // Lets waiting messages through.
  virtual void DoEvents() = 0;
  virtual std::wstring Folder() const = 0;  // of the first form's file
  virtual std::wstring Title() const = 0;
  virtual int MousePointer() const = 0;
  virtual void SetMousePointer(int pointer) = 0;
};

class ScriptGlobals final : public Scriptable {
 public:
  // `services` outlives every call.
  explicit ScriptGlobals(ProgramServices& services) noexcept : services_(&services) {}

  // Adds constants; a name that is there already keeps its value.
  void AddConstants(std::map<std::wstring, Variant> constants);

  void Print(Call& call);
  void Assert(Call& call);
  void End(Call& call);
  void MsgBox(Call& call);
  void Format(Call& call);
  void Str(Call& call);
  void Val(Call& call);
  void StrConv(Call& call);
  void LenB(Call& call);
  void LeftB(Call& call);
  void RightB(Call& call);
  void MidB(Call& call);
  void AscW(Call& call);
  void ChrW(Call& call);
  void Join(Call& call);
  void DateDiff(Call& call);
  void DatePart(Call& call);
  void DateValue(Call& call);
  void TimeValue(Call& call);
  void IIf(Call& call);
  void Choose(Call& call);
  void Switch(Call& call);
  void DoEvents(Call& call);
  void Beep(Call& call);
  void Load(Call& call);
  void Unload(Call& call);
  void Environ(Call& call);
  void LoadPicture(Call& call);
  void App(Call& call);
  void Screen(Call& call);

 protected:
  std::vector<MemberTable> Tables() const override;
  HRESULT FindOther(LPOLESTR name, LCID locale, DISPID* id) override;
  HRESULT InvokeOther(DISPID id, LCID locale, WORD flags, DISPPARAMS* parameters, VARIANT* result,
                      EXCEPINFO* exception, UINT* badArgument) override;

 private:
  ProgramServices* services_;
  std::vector<std::pair<std::wstring, Variant>> constants_;  // id is the place, from 1
  Com<IDispatch> app_;
  Com<IDispatch> screen_;
};

}  // namespace qrn::host
