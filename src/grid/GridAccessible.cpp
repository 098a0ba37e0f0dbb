#include "grid/GridAccessible.h"

#include <oleacc.h>

#include <optional>

#include "com/Guard.h"
#include "com/Object.h"
#include "com/Text.h"
#include "com/Variant.h"
#include "platform/SystemLibrary.h"

namespace qrn {
namespace {

using com::Bstr;
using com::Com;

// The system's library for screen readers, loaded when the first one asks.
struct AccessibleEntries {
  LRESULT(WINAPI* toResult)(REFIID id, WPARAM wParam, IUnknown* object) = nullptr;
  HRESULT(WINAPI* fromWindow)(HWND window, DWORD object, REFIID id, void** out) = nullptr;
};

AccessibleEntries FindEntries() {
  const SystemLibrary library("oleacc");
  return {library.Find<decltype(AccessibleEntries::toResult)>("LresultFromObject"),
          library.Find<decltype(AccessibleEntries::fromWindow)>("AccessibleObjectFromWindow")};
}

const AccessibleEntries& Entries() {
  static const AccessibleEntries entries = FindEntries();
  return entries;
}

constexpr int32_t kWhole = -1;

// The table (kWhole twice), one of its rows, one of their cells.
struct Place {
  int32_t row = kWhole;
  int32_t col = kWhole;
  bool IsTable() const noexcept { return row == kWhole; }
  bool IsRow() const noexcept { return row != kWhole && col == kWhole; }
  bool IsCell() const noexcept { return col != kWhole; }
  bool operator==(const Place&) const = default;
};

int32_t RowsIn(const GridModel& model) noexcept { return std::max(model.Rows, 0); }
int32_t ColsIn(const GridModel& model) noexcept { return std::max(model.Cols, 0); }

// A cell's number among the table's children; 0, which is none, beyond what a number holds.
int32_t CellNumber(const GridModel& model, Place cell) noexcept {
  const int64_t number = int64_t{RowsIn(model)} + int64_t{cell.row} * ColsIn(model) + cell.col + 1;
  return number <= INT32_MAX ? static_cast<int32_t>(number) : 0;
}

std::optional<Place> ChildOfTable(const GridModel& model, int32_t number) noexcept {
  const int32_t rows = RowsIn(model);
  if (number <= rows) return Place{number - 1, kWhole};
  const int64_t cell = int64_t{number} - rows - 1;
  if (ColsIn(model) == 0 || cell >= int64_t{rows} * ColsIn(model)) return std::nullopt;
  return Place{static_cast<int32_t>(cell / ColsIn(model)),
               static_cast<int32_t>(cell % ColsIn(model))};
}

std::optional<Place> ChildOf(const GridModel& model, Place parent, int32_t number) noexcept {
  if (number == CHILDID_SELF) return parent;
  if (number < 0) return std::nullopt;
  if (parent.IsTable()) return ChildOfTable(model, number);
  if (parent.IsRow() && number <= ColsIn(model)) return Place{parent.row, number - 1};
  return std::nullopt;
}

// What is asked about one place, as the grid is now.
class Reader {
 public:
  explicit Reader(GridReading& grid)
      : model_(grid.ReadModel()),
        look_(grid.ReadLook()),
        frame_(look_.Frame()),
        columns_(ColumnsOf(model_)),
        rows_(RowsOf(model_)),
        grid_(grid) {}

  LONG RoleOf(Place place) const noexcept {
    if (place.IsTable()) return ROLE_SYSTEM_TABLE;
    if (place.IsRow()) return ROLE_SYSTEM_ROW;
    if (rows_.IsFixed(place.row)) return ROLE_SYSTEM_COLUMNHEADER;
    return columns_.IsFixed(place.col) ? ROLE_SYSTEM_ROWHEADER : ROLE_SYSTEM_CELL;
  }

  Bstr TextOf(Place cell) const {
    const char* text = model_.CellText(cell.row, cell.col);
    return com::WidenToBstr(text != nullptr ? text : "");
  }

  // A cell is called as its column is, a row as its header is.
  Bstr NameOf(Place place) const {
    if (place.IsTable()) return Bstr(grid_.ReadName());
    if (place.IsRow()) return model_.FixedCols > 0 ? TextOf({place.row, 0}) : Bstr::Empty();
    const bool named = model_.FixedRows > 0 && !rows_.IsFixed(place.row);
    return TextOf({named ? 0 : place.row, place.col});
  }

  LONG StateOf(Place place) const noexcept {
    LONG state = IsShown(place) ? 0 : STATE_SYSTEM_OFFSCREEN;
    if (place.IsTable()) return state | STATE_SYSTEM_FOCUSABLE | FocusedIf(grid_.HasKeyboard());
    if (place.IsCell() && RoleOf(place) != ROLE_SYSTEM_CELL) return state | STATE_SYSTEM_READONLY;
    state |= STATE_SYSTEM_FOCUSABLE | STATE_SYSTEM_SELECTABLE;
    if (model_.AllowUpdate == 0) state |= STATE_SYSTEM_READONLY;
    if (IsSelected(place)) state |= STATE_SYSTEM_SELECTED;
    return state | FocusedIf(place.IsCell() && place == Current() && grid_.HasKeyboard());
  }

  Place Current() const noexcept { return {model_.Row, model_.Col}; }

  // Pixels from the corner of the control.
  RECT RectOf(Place place) const noexcept {
    const RECT inner{frame_.depth, frame_.depth, frame_.depth + frame_.usable.width,
                     frame_.depth + frame_.usable.height};
    if (place.IsTable()) return {0, 0, look_.window.width, look_.window.height};
    const TrackSpan row = rows_.Place(place.row, frame_.usable.height);
    const TrackSpan column = place.IsCell() ? columns_.Place(place.col, frame_.usable.width)
                                            : TrackSpan{0, columns_.End(frame_.usable.width)};
    const LONG right = std::min<LONG>(column.end + frame_.depth, inner.right);
    return {column.start + frame_.depth, row.start + frame_.depth,
            place.IsCell() ? column.end + frame_.depth : right, row.end + frame_.depth};
  }

  // The cell at a point of the control, else the row, else the table.
  Place At(int32_t x, int32_t y) const noexcept {
    const int32_t row = TrackAt(rows_, y - frame_.depth);
    if (row == kNoTrack || y - frame_.depth >= frame_.usable.height) return {};
    const int32_t col = TrackAt(columns_, x - frame_.depth);
    return {row, x - frame_.depth < frame_.usable.width && col != kNoTrack ? col : kWhole};
  }

 private:
  static LONG FocusedIf(bool focused) noexcept { return focused ? STATE_SYSTEM_FOCUSED : 0; }

  static int32_t TrackAt(const GridAxis& axis, int32_t place) noexcept {
    const int32_t fixed = axis.FixedAt(place);
    return fixed != kNoTrack ? fixed : axis.ScrollingAt(place);
  }

  static bool IsShown(const GridAxis& axis, int32_t index, int32_t limit) noexcept {
    return axis.IsFixed(index) ? axis.Place(index, limit).start < limit
                               : axis.StartsInView(index, limit);
  }
  bool IsShown(Place place) const noexcept {
    if (place.IsTable()) return true;
    return IsShown(rows_, place.row, frame_.usable.height) &&
           (place.IsRow() || IsShown(columns_, place.col, frame_.usable.width));
  }

  bool IsSelected(Place place) const noexcept {
    const bool inRows = place.row >= model_.SelStartRow && place.row <= model_.SelEndRow;
    if (place.IsRow()) return inRows && model_.rowSelected != 0;
    return inRows && place.col >= model_.SelStartCol && place.col <= model_.SelEndCol;
  }

  const GridModel& model_;
  const GridLook look_;
  const GridFrame frame_;
  const GridAxis columns_;
  const GridAxis rows_;
  const GridReading& grid_;

 public:
  Reader(const Reader&) = delete;
  Reader& operator=(const Reader&) = delete;
};

using Link = std::shared_ptr<GridReading*>;

class AccessibleGrid final : public com::Object<IAccessible> {
 public:
  AccessibleGrid(Link link, Place place) : link_(std::move(link)), place_(place) {}

  STDMETHODIMP GetTypeInfoCount(UINT* count) override {
    if (count) *count = 0;
    return S_OK;
  }
  STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return E_NOTIMPL; }
  STDMETHODIMP Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*,
                      UINT*) override {
    return E_NOTIMPL;
  }

  STDMETHODIMP get_accParent(IDispatch** parent) override {
    return Give(parent, [&](GridReading& grid) -> Com<IDispatch> {
      if (place_.IsTable()) return WindowObject(grid.ReadWindow());
      return ObjectAt(place_.IsCell() ? Place{place_.row, kWhole} : Place{});
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
    return About(child, [&](GridReading&, Place place) {
      *object = ObjectAt(place).detach();
      return S_OK;
    });
  }
  STDMETHODIMP get_accName(VARIANT child, BSTR* name) override {
    return GiveText(child, name,
                    [](const Reader& reader, Place place) { return reader.NameOf(place); });
  }
  STDMETHODIMP get_accValue(VARIANT child, BSTR* value) override {
    return GiveText(child, value, [](const Reader& reader, Place place) {
      return place.IsCell() ? reader.TextOf(place) : Bstr();
    });
  }
  STDMETHODIMP get_accRole(VARIANT child, VARIANT* role) override {
    return GiveNumber(child, role,
                      [](const Reader& reader, Place place) { return reader.RoleOf(place); });
  }
  STDMETHODIMP get_accState(VARIANT child, VARIANT* state) override {
    return GiveNumber(child, state,
                      [](const Reader& reader, Place place) { return reader.StateOf(place); });
  }
  STDMETHODIMP get_accFocus(VARIANT* focus) override {
    return GivePlace(focus, [&](GridReading& grid, const Reader& reader) -> std::optional<Place> {
      if (!grid.HasKeyboard()) return std::nullopt;
      const bool within = place_.IsTable() || place_ == reader.Current() ||
                          (place_.IsRow() && place_.row == reader.Current().row);
      if (!within) return std::nullopt;
      return reader.Current();
    });
  }
  STDMETHODIMP get_accSelection(VARIANT* selection) override {
    return GivePlace(selection, [&](GridReading& grid, const Reader& reader) {
      const GridModel& model = grid.ReadModel();
      std::optional<Place> chosen;
      if (model.rowSelected != 0) chosen = Place{model.Row, kWhole};
      const bool one = model.SelStartRow == model.SelEndRow && model.SelStartCol == model.SelEndCol;
      if (!chosen && one && model.SelStartRow >= model.FixedRows) chosen = reader.Current();
      return chosen;
    });
  }
  STDMETHODIMP accLocation(LONG* left, LONG* top, LONG* width, LONG* height,
                           VARIANT child) override {
    if (!left || !top || !width || !height) return E_POINTER;
    return About(child, [&](GridReading& grid, Place place) {
      RECT rect = Reader(grid).RectOf(place);
      MapWindowPoints(grid.ReadWindow(), nullptr, reinterpret_cast<POINT*>(&rect), 2);
      *left = rect.left;
      *top = rect.top;
      *width = rect.right - rect.left;
      *height = rect.bottom - rect.top;
      return S_OK;
    });
  }
  STDMETHODIMP accHitTest(LONG x, LONG y, VARIANT* hit) override {
    return GivePlace(hit, [&](GridReading& grid, const Reader& reader) -> std::optional<Place> {
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
    return About(start, [&](GridReading& grid, Place from) {
      const std::optional<Place> to = Neighbour(grid.ReadModel(), direction, from);
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
    return GiveText(child, action, [](const Reader& reader, Place place) {
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

 protected:
  void* Find(REFIID id) noexcept override {
    if (id == __uuidof(IDispatch)) return static_cast<IDispatch*>(this);
    return Object::Find(id);
  }

 private:
  static HRESULT NoText(BSTR* text) noexcept {
    if (!text) return E_POINTER;
    *text = nullptr;
    return S_FALSE;
  }

  static Com<IDispatch> WindowObject(HWND window) {
    Com<IDispatch> object;
    if (const auto find = Entries().fromWindow) {
      find(window, static_cast<DWORD>(OBJID_WINDOW), __uuidof(IDispatch), object.putVoid());
    }
    return object;
  }

  Com<IDispatch> ObjectAt(Place place) const {
    return Com<IDispatch>(com::Make<AccessibleGrid>(link_, place).get());
  }
  void Put(Place place, VARIANT& value) const { value = com::Variant(ObjectAt(place)).release(); }

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
      if (child.vt != VT_I4) return E_INVALIDARG;
      const auto place = ChildOf(grid.ReadModel(), place_, child.lVal);
      const bool isThere =
          place && place->row < RowsIn(grid.ReadModel()) && place->col < ColsIn(grid.ReadModel());
      return isThere || (place && place->IsTable()) ? work(grid, *place) : E_INVALIDARG;
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
    return About(child, [&](GridReading& grid, Place place) {
      *out = work(Reader(grid), place).detach();
      return *out ? S_OK : S_FALSE;
    });
  }
  template <class Work>
  HRESULT GiveNumber(const VARIANT& child, VARIANT* out, Work work) noexcept {
    if (!out) return E_POINTER;
    *out = VARIANT{};
    return About(child, [&](GridReading& grid, Place place) {
      *out = com::Variant(static_cast<int32_t>(work(Reader(grid), place))).release();
      return S_OK;
    });
  }
  // This object itself is told as such.
  template <class Work>
  HRESULT GivePlace(VARIANT* out, Work work) noexcept {
    if (!out) return E_POINTER;
    *out = VARIANT{};
    return Run([&](GridReading& grid) {
      const std::optional<Place> place = work(grid, Reader(grid));
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
    return About(child, [&](GridReading& grid, Place place) {
      if (Reader(grid).RoleOf(place) != ROLE_SYSTEM_CELL) return DISP_E_MEMBERNOTFOUND;
      grid.ChooseCell(place.row, place.col);
      return S_OK;
    });
  }

  struct Step {
    LONG direction;
    int32_t rows;
    int32_t cols;
  };

  static std::optional<Place> Neighbour(const GridModel& model, LONG direction,
                                        Place from) noexcept {
    static constexpr Step kOfCells[] = {{NAVDIR_UP, -1, 0},   {NAVDIR_DOWN, 1, 0},
                                        {NAVDIR_LEFT, 0, -1}, {NAVDIR_RIGHT, 0, 1},
                                        {NAVDIR_NEXT, 0, 1},  {NAVDIR_PREVIOUS, 0, -1}};
    static constexpr Step kOfRows[] = {
        {NAVDIR_UP, -1, 0}, {NAVDIR_DOWN, 1, 0}, {NAVDIR_NEXT, 1, 0}, {NAVDIR_PREVIOUS, -1, 0}};
    if (direction == NAVDIR_FIRSTCHILD || direction == NAVDIR_LASTCHILD) {
      return EndChild(model, direction == NAVDIR_LASTCHILD, from);
    }
    if (from.IsTable()) return std::nullopt;
    for (const Step& step : from.IsCell() ? std::span<const Step>(kOfCells) : kOfRows) {
      if (step.direction != direction) continue;
      const Place to{from.row + step.rows, from.IsCell() ? from.col + step.cols : kWhole};
      const bool isThere = to.row >= 0 && to.row < RowsIn(model) && to.col < ColsIn(model) &&
                           (from.IsRow() || to.col >= 0);
      return isThere ? std::optional(to) : std::nullopt;
    }
    return std::nullopt;
  }
  static std::optional<Place> EndChild(const GridModel& model, bool last, Place from) noexcept {
    const int32_t count = from.IsTable() ? RowsIn(model) : from.IsRow() ? ColsIn(model) : 0;
    if (count == 0) return std::nullopt;
    const int32_t index = last ? count - 1 : 0;
    return from.IsTable() ? Place{index, kWhole} : Place{from.row, index};
  }

  const Link link_;
  const Place place_;
};

}  // namespace

bool GridAccessibility::Answer(com::Message& message) {
  if (static_cast<LONG>(message.lParam) != OBJID_CLIENT || !Entries().toResult) return false;
  const auto table = com::Make<AccessibleGrid>(link_, Place{});
  message.result = Entries().toResult(__uuidof(IAccessible), message.wParam, table.get());
  return true;
}

void GridAccessibility::TellCurrent() const {
  GridReading& grid = **link_;
  const GridModel& model = grid.ReadModel();
  const int32_t number = CellNumber(model, {model.Row, model.Col});
  NotifyWinEvent(EVENT_OBJECT_FOCUS, grid.ReadWindow(), OBJID_CLIENT, number);
  NotifyWinEvent(EVENT_OBJECT_SELECTION, grid.ReadWindow(), OBJID_CLIENT, number);
}

}  // namespace qrn
