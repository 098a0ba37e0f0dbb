// QRNGrid: many records at once, in rows of cells that it draws itself; seen, moved through,
// changed in an edit box and deleted, with no code of the application.
//
// The model (grid/model) keeps cells and properties, the data side (grid/data) fills them and
// writes them back, the rules of keys, mouse and bars (grid/layout) move in them. This class is the
// window of all these: it derives from the model and is both its host and the rules' screen.
#pragma once

#include "binding/BoundControl.h"
#include "grid/GridAccessible.h"
#include "grid/GridBarWindows.h"
#include "grid/GridEdit.h"
#include "grid/GridPaint.h"
#include "grid/data/GridData.h"
#include "grid/layout/GridKeys.h"
#include "grid/layout/GridMouse.h"
#include "grid/layout/GridScroll.h"
#include "ole/VisibleControl.h"

namespace qrn {

class CQRNGrid final : public BoundControl<ole::VisibleControl>,
                       private GridHost,
                       private GridScreen,
                       public GridModel,
                       private GridReading {
 public:
  CQRNGrid();

  // Texts of the binding. The other properties are the model's.
  com::Bstr DbListSource = com::Bstr::Empty();
  com::Bstr DbListTable = com::Bstr::Empty();
  com::Bstr DbListFields = com::Bstr::Empty();
  com::Bstr DbConditions = com::Bstr::Empty();
  com::Bstr DbListIndex = com::Bstr::Empty();

  // Properties that the model checks or converts, as hosts get and put them. While a saved grid is
  // loaded a size only has to fit the capacity: the sizes come one after the other, and what they
  // are held against may not be there yet.
  int32_t GetCols() const { return Cols; }
  int32_t GetRows() const { return Rows; }
  int32_t GetFixedCols() const { return FixedCols; }
  int32_t GetFixedRows() const { return FixedRows; }
  HRESULT PutColumnCount(int32_t cols);
  HRESULT PutRowCount(int32_t rows);
  HRESULT PutFixedColumnCount(int32_t cols);
  HRESULT PutFixedRowCount(int32_t rows);
  void PutDbListFields(const com::Bstr& names);
  HRESULT GetCellText(com::Bstr& text);
  void PutCellText(const com::Bstr& text);
  HRESULT GetFormatText(int32_t col, com::Bstr& format);
  void PutFormatText(int32_t col, const com::Bstr& format);
  // Of the model's indexed properties, as `Get` and `Put` answer.
  template <auto Get, class T>
  HRESULT ReadAt(int32_t index, T& value);
  template <auto Put, class T>
  HRESULT WriteAt(int32_t index, T value);
  void Refresh() { ReloadList(); }
  void EmptyCells() { Clear(); }

  // CQuorin
  std::string GetDbSourceRef() override { return NarrowText(DbListSource); }
  ControlType GetControlType() override { return kTypeGrid; }
  uint16_t GetUpdateOption() override { return LOWORD(DbUpdateOption); }
  void ReloadList() override;

  bool OnWindowMessage(com::Message& message) override;
  bool OnContainedMessage(com::Message& message) override;
  HRESULT OnAccelerator(MSG& message) override;
  void OnChanged(int32_t id) override;
  void OnDraw(HDC dc, const RECT& rect) override;

 protected:
  void OnContainedMade() override;
  void OnRegister() override;
  void OnUnregister() override;
  void LayOut(const RECT& client) override;
  com::Com<IAccessible> MakeAccessible(HWND window) override;

 private:
  // GridHost
  WindowHandle Window() const override { return hwnd(); }
  bool IsInPlace() const override;
  bool IsRunTime() const override { return UserMode(); }
  GridNames Names() override;
  DbTableInfo* FindTable(const GridNames& names) override;
  bool OpenTable(DbTableInfo& table, const GridNames& names) override;
  std::optional<std::string> FormatCell(std::string_view text, std::string_view format) override;
  std::string EditText() override { return edit_.Text(); }
  int32_t NameWidthPx(std::string_view name) override;
  void RepaintCurrentCell() override;
  void Repaint() override;
  void ShowFilled() override;
  void RaiseFormat(std::u16string& text) override;
  Status RaiseBtrieveError(std::string_view tableName, Status status) override;
  bool RaiseBeforeColUpdate(const std::string& text) override;
  bool RaiseBeforeUpdate() override;
  bool RaiseBeforeDelete() override;
  void Raise(GridEvent event) override;

  // GridScreen
  GridSize UsableSize() const override;
  void ToggleFocus() override;
  void PaintSelected(int32_t row, int32_t col, int32_t otherRow, int32_t otherCol) override;
  void InvertLine(GridDirection direction, int32_t place, int32_t length) override;
  void ShowResizeCursor(GridDirection direction) override;
  void ShowPointer() override;
  void PlaceEdit() override;
  void HideEdit() override;
  void LayOutBars() override { LayOutBars(false); }
  void ShowBarPosition(GridDirection direction) override;
  void CommitCell() override { data_.CommitCell(); }
  void CommitRow(int32_t row) override { data_.CommitRow(row); }
  void DeleteCurrentRow() override { data_.DeleteCurrentRow(); }
  void RaiseChange() override;
  void RaiseSelChange() override;

  // GridReading
  const GridModel& ReadModel() const override { return *this; }
  HWND ReadWindow() const override { return hwnd(); }
  GridLook ReadLook() override { return Look(WindowSize()); }
  // The label before the control; without one the table is all that is known.
  std::wstring ReadName() const override;
  bool HasKeyboard() const override { return HasFocusItself() || edit_.HasFocus(); }
  void ChooseCell(int32_t row, int32_t col) override;

  // Messages of the control's own window.
  bool OnEraseBackground(com::Message& message);
  bool OnFocusCame(com::Message& message);
  bool OnFocusWent(com::Message& message);
  bool OnKey(com::Message& message);
  bool OnButtonDown(com::Message& message);
  bool OnButtonUp(com::Message& message);
  bool OnMove(com::Message& message);
  bool OnPointer(com::Message& message);
  bool OnBar(com::Message& message);
  bool OnWheel(com::Message& message);
  // Messages of the edit box.
  bool OnEditMouseActivate(com::Message& message);
  bool OnEditFocusCame(com::Message& message);
  bool OnEditFocusWent(com::Message& message);
  bool OnEditKey(com::Message& message);
  bool OnEditTyped(com::Message& message) { return edit_.LimitTyping(message); }
  bool OnEditPaste(com::Message& message) { return edit_.LimitPasting(message); }
  bool OnEditReplace(com::Message& message) { return edit_.LimitReplacing(message); }
  // Keys that the container offers.
  HRESULT OnOfferedKeyDown(MSG& message);
  HRESULT OnOfferedKeyUp(MSG& message);

  static const com::MessageRow<CQRNGrid> kAlways[];
  static const com::MessageRow<CQRNGrid> kGridMessages[];
  static const com::MessageRow<CQRNGrid> kEditMessages[];

  void LayOutBars(bool resetPositions);
  void ScrollBy(GridDirection direction, int32_t notches);
  void LeaveFor(HWND window);
  bool HasFocusItself() const noexcept { return hwnd() && GetFocus() == hwnd(); }
  GridSize WindowSize() const noexcept;
  GridLook Look(GridSize size);
  HRESULT TakeSize(GridResult result, int32_t& count, int32_t value, int32_t capacity);
  void TakeFont();
  // Draws on the window at once, while it is there.
  template <class Draw>
  void DrawNow(Draw draw);
  // Runs what may move the current cell, and tells who reads the screen.
  template <class Work>
  void Moving(Work work);

  GridData data_;
  GridKeys keys_{*this, *this};
  GridMouse mouse_{*this, *this};
  GridScroll scroll_{*this, *this};
  GridBarWindows bars_;
  GridEdit edit_{*this};
  com::Cursor columnCursor_;
  com::Cursor rowCursor_;
  com::FontInUse drawnFont_;
  bool focusDrawnInDesigner_ = false;
  bool movingEdit_ = false;    // the focus that goes to the box and comes from it is our own doing
  int32_t wheelRest_[2] = {};  // turns of the wheels that have not made a line yet
  GridAccessibility accessibility_{*this};
};

}  // namespace qrn
