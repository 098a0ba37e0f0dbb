#include "grid/GridAccessible.h"

#include "com/Guard.h"
#include "com/Text.h"
#include "com/Variant.h"
#include "grid/GridReader.h"
#include "ole/Accessible.h"

namespace qrn {
namespace {

using com::Bstr;
using com::Com;

using Link = std::shared_ptr<GridReading*>;

class AccessibleGrid final : public ole::AccessibleObject<> {
 public:
  AccessibleGrid(Link link, GridPlace place) : link_(std::move(link)), place_(place) {}

  STDMETHODIMP get_accParent(IDispatch** parent) override {
    return Give(parent, [&](GridReading& grid) -> Com<IDispatch> {
      if (place_.IsTable()) return WindowObject(grid.ReadWindow());
      return ObjectAt(place_.IsCell() ? GridPlace{place_.row} : GridPlace{});
    });
  }
  STDMETHODIMP get_accChildCount(LONG* count) override {
    return Give(count, [&](GridReading& grid) -> LONG {
      if (place_.IsTable()) return RowsIn(grid.ReadModel());
      return place_.IsRow() ? ColsIn(grid.ReadModel()) : 0;
    });
  }
  STDMETHODIMP get_accChild(VARIANT child, IDispatch** object) override {
    if (!object) return E_POINTER;
    *object = nullptr;
    return About(child, [&](GridReading&, GridPlace place) {
      *object = ObjectAt(place).detach();
      return S_OK;
    });
  }
  STDMETHODIMP get_accName(VARIANT child, BSTR* name) override {
    return GiveText(child, name,
                    [](const GridReader& reader, GridPlace place) { return reader.NameOf(place); });
  }
  STDMETHODIMP get_accValue(VARIANT child, BSTR* value) override {
    return GiveText(child, value, [](const GridReader& reader, GridPlace place) {
      return place.IsCell() ? reader.TextOf(place) : Bstr();
    });
  }
  STDMETHODIMP get_accRole(VARIANT child, VARIANT* role) override {
    return GiveNumber(child, role, [](const GridReader& reader, GridPlace place) {
      return reader.RoleOf(place);
    });
  }
  STDMETHODIMP get_accState(VARIANT child, VARIANT* state) override {
    return GiveNumber(child, state, [](const GridReader& reader, GridPlace place) {
      return reader.StateOf(place);
    });
  }
  STDMETHODIMP get_accFocus(VARIANT* focus) override {
    return GivePlace(focus,
                     [&](GridReading& grid, const GridReader& reader) -> std::optional<GridPlace> {
                       if (!grid.HasKeyboard()) return std::nullopt;
                       const bool within = place_.IsTable() || place_ == reader.Current() ||
                                           (place_.IsRow() && place_.row == reader.Current().row);
                       if (!within) return std::nullopt;
                       return reader.Current();
                     });
  }
  STDMETHODIMP get_accSelection(VARIANT* selection) override {
    return GivePlace(selection, [&](GridReading& grid, const GridReader& reader) {
      const GridModel& model = grid.ReadModel();
      std::optional<GridPlace> chosen;
      if (model.rowSelected != 0) chosen = GridPlace{model.Row};
      const bool one = model.SelStartRow == model.SelEndRow && model.SelStartCol == model.SelEndCol;
      if (!chosen && one && model.SelStartRow >= model.FixedRows) chosen = reader.Current();
      return chosen;
    });
  }
  STDMETHODIMP accLocation(LONG* left, LONG* top, LONG* width, LONG* height,
                           VARIANT child) override {
    if (!left || !top || !width || !height) return E_POINTER;
    return About(child, [&](GridReading& grid, GridPlace place) {
      RECT rect = GridReader(grid).RectOf(place);
      MapWindowPoints(grid.ReadWindow(), nullptr, reinterpret_cast<POINT*>(&rect), 2);
      *left = rect.left;
      *top = rect.top;
      *width = rect.right - rect.left;
      *height = rect.bottom - rect.top;
      return S_OK;
    });
  }
  STDMETHODIMP accHitTest(LONG x, LONG y, VARIANT* hit) override {
    return GivePlace(hit,
                     [&](GridReading& grid, const GridReader& reader) -> std::optional<GridPlace> {
                       POINT point{x, y};
                       ScreenToClient(grid.ReadWindow(), &point);
                       const RECT own = reader.RectOf(place_);
                       if (!PtInRect(&own, point)) return std::nullopt;
                       return place_.IsCell() ? place_ : reader.At(point.x, point.y);
                     });
  }
  STDMETHODIMP accNavigate(LONG direction, VARIANT start, VARIANT* end) override {
    if (!end) return E_POINTER;
    *end = VARIANT{};
    return About(start, [&](GridReading& grid, GridPlace from) {
      const std::optional<GridPlace> to = NeighbourOf(grid.ReadModel(), from, direction);
      if (!to) return S_FALSE;
      Put(*to, *end);
      return S_OK;
    });
  }
  STDMETHODIMP accSelect(LONG flags, VARIANT child) override {
    constexpr LONG kTaken = SELFLAG_TAKEFOCUS | SELFLAG_TAKESELECTION;
    if ((flags & kTaken) == 0 || (flags & ~kTaken) != 0) return E_INVALIDARG;
    return Choose(child);
  }
  STDMETHODIMP accDoDefaultAction(VARIANT child) override { return Choose(child); }
  STDMETHODIMP get_accDefaultAction(VARIANT child, BSTR* action) override {
    return GiveText(child, action, [](const GridReader& reader, GridPlace place) {
      return reader.RoleOf(place) == ROLE_SYSTEM_CELL ? Bstr(L"選択") : Bstr();
    });
  }

  STDMETHODIMP get_accDescription(VARIANT, BSTR* text) override { return NoText(text); }
  STDMETHODIMP get_accHelp(VARIANT, BSTR* text) override { return NoText(text); }
  STDMETHODIMP get_accKeyboardShortcut(VARIANT, BSTR* text) override { return NoText(text); }
  STDMETHODIMP get_accHelpTopic(BSTR* file, VARIANT, LONG* topic) override {
    if (topic) *topic = 0;
    return NoText(file);
  }
  STDMETHODIMP put_accName(VARIANT, BSTR) override { return DISP_E_MEMBERNOTFOUND; }
  STDMETHODIMP put_accValue(VARIANT, BSTR) override { return DISP_E_MEMBERNOTFOUND; }

 private:
  static HRESULT NoText(BSTR* text) noexcept {
    if (!text) return E_POINTER;
    *text = nullptr;
    return S_FALSE;
  }

  static Com<IDispatch> WindowObject(HWND window) {
    Com<IDispatch> object;
    AccessibleObjectFromWindow(window, static_cast<DWORD>(OBJID_WINDOW), __uuidof(IDispatch),
                               object.putVoid());
    return object;
  }

  Com<IDispatch> ObjectAt(GridPlace place) const {
    return Com<IDispatch>(com::Make<AccessibleGrid>(link_, place).get());
  }
  void Put(GridPlace place, VARIANT& value) const {
    value = com::Variant(ObjectAt(place)).release();
  }

  // Work on the grid, as long as it has a window.
  template <class Work>
  HRESULT Run(Work work) noexcept {
    const Com<IUnknown> alive(static_cast<IAccessible*>(this));
    return com::Guard([&] {
      GridReading* grid = *link_;
      if (grid == nullptr || !grid->ReadWindow()) return CO_E_OBJNOTCONNECTED;
      return work(*grid);
    });
  }
  template <class Work>
  HRESULT About(const VARIANT& child, Work work) noexcept {
    return Run([&](GridReading& grid) {
      const VARIANT number = ole::ChildNumber(child);
      if (number.vt != VT_I4) return E_INVALIDARG;
      const auto place = ChildOf(grid.ReadModel(), place_, number.lVal);
      return place && IsThere(grid.ReadModel(), *place) ? work(grid, *place) : E_INVALIDARG;
    });
  }

  template <class T, class Work>
  HRESULT Give(T** out, Work work) noexcept {
    if (!out) return E_POINTER;
    *out = nullptr;
    return Run([&](GridReading& grid) {
      *out = work(grid).detach();
      return *out ? S_OK : S_FALSE;
    });
  }
  template <class Work>
  HRESULT Give(LONG* out, Work work) noexcept {
    if (!out) return E_POINTER;
    *out = 0;
    return Run([&](GridReading& grid) {
      *out = work(grid);
      return S_OK;
    });
  }
  template <class Work>
  HRESULT GiveText(const VARIANT& child, BSTR* out, Work work) noexcept {
    if (!out) return E_POINTER;
    *out = nullptr;
    return About(child, [&](GridReading& grid, GridPlace place) {
      *out = work(GridReader(grid), place).detach();
      return *out ? S_OK : S_FALSE;
    });
  }
  template <class Work>
  HRESULT GiveNumber(const VARIANT& child, VARIANT* out, Work work) noexcept {
    if (!out) return E_POINTER;
    *out = VARIANT{};
    return About(child, [&](GridReading& grid, GridPlace place) {
      *out = com::Variant(static_cast<int32_t>(work(GridReader(grid), place))).release();
      return S_OK;
    });
  }
  // This object itself is told as such.
  template <class Work>
  HRESULT GivePlace(VARIANT* out, Work work) noexcept {
    if (!out) return E_POINTER;
    *out = VARIANT{};
    return Run([&](GridReading& grid) {
      const std::optional<GridPlace> place = work(grid, GridReader(grid));
      if (!place) return S_FALSE;
      if (*place == place_) {
        *out = com::Variant(int32_t{CHILDID_SELF}).release();
      } else {
        Put(*place, *out);
      }
      return S_OK;
    });
  }

  HRESULT Choose(const VARIANT& child) noexcept {
    return About(child, [&](GridReading& grid, GridPlace place) {
      if (GridReader(grid).RoleOf(place) != ROLE_SYSTEM_CELL) return DISP_E_MEMBERNOTFOUND;
      grid.ChooseCell(place.row, place.col);
      return S_OK;
    });
  }

  const Link link_;
  const GridPlace place_;
};

// The edit box is called as the column of the cell that it stands on.
class AccessibleCellEdit final : public ole::TextAccessible {
 public:
  AccessibleCellEdit(Link link, HWND window)
      : TextAccessible(window, window, ROLE_SYSTEM_TEXT), link_(std::move(link)) {}

 protected:
  std::wstring Label() const override {
    GridReading* grid = *link_;
    if (grid == nullptr || !grid->ReadWindow()) return {};
    const GridReader reader(*grid);
    return std::wstring(reader.NameOf(reader.Current()).view());
  }

 private:
  const Link link_;
};

}  // namespace

Com<IAccessible> GridAccessibility::Table() const {
  return Com<IAccessible>(com::Make<AccessibleGrid>(link_, GridPlace{}).get());
}

Com<IAccessible> GridAccessibility::CellEdit(HWND window) const {
  return Com<IAccessible>(com::Make<AccessibleCellEdit>(link_, window).get());
}

void GridAccessibility::TellCurrent() const {
  GridReading& grid = **link_;
  const GridModel& model = grid.ReadModel();
  const int32_t number = CellNumber(model, {model.Row, model.Col});
  NotifyWinEvent(EVENT_OBJECT_FOCUS, grid.ReadWindow(), OBJID_CLIENT, number);
  NotifyWinEvent(EVENT_OBJECT_SELECTION, grid.ReadWindow(), OBJID_CLIENT, number);
}

}  // namespace qrn
