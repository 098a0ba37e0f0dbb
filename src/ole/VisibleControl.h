// The base of the controls that show something: stock properties, the contained window, colours,
// font, cursor, focus, keys and mouse.
//
// The order in which a window comes up: the contained window, its font, its enabled state,
// OnContainedMade; at run time then OnRegister. OnUnregister runs when the window goes, if
// OnRegister had run.
#pragma once

#include <optional>

#include "com/Fonts.h"
#include "ole/Accessible.h"
#include "ole/Bind.h"
#include "ole/ContainedWindow.h"
#include "ole/Control.h"

namespace qrn::ole {

// Where a kind of control starts.
struct StockDefaults {
  uint32_t backColor;
  uint32_t foreColor;
  int16_t appearance = 1;
  bool hasFont = true;
};
// Of controls that show a field or a list, and of buttons.
inline constexpr StockDefaults kWindowLook{0x80000005, 0x80000008};
inline constexpr StockDefaults kButtonLook{0x8000000F, 0x80000012};

class VisibleControl : public Control {
 public:
  VisibleControl(const ControlTable& table, const Binding& binding, const StockDefaults& defaults);

  // Stock properties; a binding names them.
  uint32_t BackColor;
  uint32_t ForeColor;
  int16_t Enabled = -1;
  int16_t TabStop = -1;
  int32_t BorderStyle = 1;
  int16_t Appearance;
  int32_t MousePointer = 0;
  Com<IPictureDisp> MouseIcon;
  Com<IFontDisp> GetFont() const { return font_.get(); }
  void PutFont(const Com<IFontDisp>& font) { font_.Set(font); }
  int32_t GetHwnd() const { return static_cast<int32_t>(reinterpret_cast<LONG_PTR>(hwnd())); }

  HWND contained() const noexcept { return contained_.get(); }
  // Solid, of BackColor; the system's white where that could not be made.
  HBRUSH BackgroundBrush() const noexcept;
  FontHolder& font() noexcept { return font_; }

  // Messages of the contained window.
  virtual bool OnContainedMessage(Message& message);

  bool OnWindowMessage(Message& message) override;
  HRESULT OnAccelerator(MSG& message) override;
  void OnChanged(int32_t id) override;
  void OnDraw(HDC dc, const RECT& rect) override;
  DWORD ExtraWindowStyle() const override { return TabStop ? WS_TABSTOP : 0; }

 protected:
  // The contained window to make; none for a control that draws itself. Its text also stands in the
  // stand-in that is drawn where there is no window yet.
  virtual std::optional<ContainedDescription> DescribeContained() { return std::nullopt; }
  virtual void OnContainedMade() {}
  // Properties whose change makes the contained window anew while a form is designed. At run time
  // they only store.
  virtual std::span<const int32_t> RemadeInDesigner() const { return {}; }
  virtual void OnRegister() {}
  virtual void OnUnregister() {}
  // What a screen reader finds in the contained window, in one inside it, or in the control's own
  // where that shows everything; null for the system's own object.
  virtual Com<IAccessible> MakeAccessible(HWND window);
  // What that is, ROLE_SYSTEM_...; 0 leaves it to the system.
  virtual LONG AccessibleRole() const { return 0; }
  bool OnGetObject(Message& message);
  // A key went down and its event is over. Whether the key ends here, is offered to the site, or
  // goes the usual way to the window that has the focus.
  enum class KeyEnd { Here, Site, Window };
  virtual KeyEnd OnKeyDown(MSG& message);
  // Gives the contained window its place in the client area.
  virtual void LayOut(const RECT& client);

  // Adds the border that BorderStyle and Appearance ask for: sunken, plain or none.
  void AddBorder(ContainedDescription& description) const noexcept;
  // Destroys the contained window and makes it again, with its font and state.
  void RemakeContained();
  // Colours a device context as the colour messages ask.
  LRESULT ColorContext(HDC dc) const noexcept;
  WNDPROC SystemProcedure() const noexcept { return contained_.original(); }
  LRESULT CallOriginal(const Message& message) { return contained_.CallOriginal(message); }

 private:
  bool OnMouse(Message& message);          // raises the event of a button or a move, then goes on
  bool OnSetCursor(Message& message);      // run time: MousePointer
  bool OnMouseActivate(Message& message);  // run time: UI activation
  bool OnCreate(Message& message);
  bool OnDestroy(Message& message);
  bool OnSize(Message& message);
  bool OnSetFocus(Message& message);
  bool OnKillFocus(Message& message);
  bool OnContainedSetFocus(Message& message);
  bool OnContainedKillFocus(Message& message);
  bool OnColor(Message& message);
  bool OnContainedKeyDown(Message& message);
  HRESULT OnKeyUp(MSG& message);
  HRESULT OnChar(MSG& message);
  void MakeContained();
  void MakeBrush();
  void ApplyFont();
  void ApplyEnabled();
  void ApplyTabStop();
  void EnableWindows() noexcept;
  void FontChanged();
  void DrawStandIn(HDC dc, RECT rect, std::wstring_view text);

  static const MessageRow<VisibleControl> kOwnMessages[];
  static const MessageRow<VisibleControl> kContainedMessages[];
  // Of whichever window is what the user sees and points at: the contained one, or the control's
  // own without it.
  static const MessageRow<VisibleControl> kShownMessages[];

  // What a stock property does to the windows when it changes. To be drawn anew is not told here:
  // that follows from the row of the property's table.
  struct AppliedRow {
    int32_t id;
    void (VisibleControl::*apply)();
  };
  static const AppliedRow kApplied[];

  FontHolder font_;
  Brush brush_;
  ContainedWindow contained_;
  bool registered_ = false;
};

// Access to the stock properties, for the bindings of derived controls.
inline constexpr PropertyEntry kStockAccess[] = {
    {stock::kBackColor, Field<&VisibleControl::BackColor>},
    {stock::kForeColor, Field<&VisibleControl::ForeColor>},
    {stock::kEnabled, Field<&VisibleControl::Enabled>},
    {stock::kTabStop, Field<&VisibleControl::TabStop>},
    {stock::kBorderStyle, Field<&VisibleControl::BorderStyle>},
    {stock::kAppearance, Field<&VisibleControl::Appearance>},
    {stock::kMousePointer, Field<&VisibleControl::MousePointer>},
    {stock::kMouseIcon, Field<&VisibleControl::MouseIcon>},
    {stock::kFont, Pair<&VisibleControl::GetFont, &VisibleControl::PutFont>},
    {stock::kHwnd, Getter<&VisibleControl::GetHwnd>},
};

}  // namespace qrn::ole
