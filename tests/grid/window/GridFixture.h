// A grid over the office's people, worked as its user works it: by keys that the container offers
// first, by the mouse, and by characters that are typed.
#pragma once

#include "Hosted.h"
#include "PlayedDatabase.h"
#include "grid/QRNGrid.h"
#include "tests/support/Test.h"

namespace qrn::test {

// Of _DQRNGridEvents, as the log has them.
inline constexpr DISPID kBtrieveError = 1, kFormat = 2, kChange = 3, kAfterUpdate = 5,
                        kAfterDelete = 6, kBeforeUpdate = 7, kBeforeDelete = 8, kAfterColUpdate = 9,
                        kBeforeColUpdate = 10;

struct Grids : ::testing::Test {
  // People by code: 1 うめ Kyoto, 2 (no name) Osaka, 3 さくら Kyoto, 4 うめだ Nara.
  void SetUp() override {
    Insert("3", "さくら", "Kyoto");
    Insert("1", "うめ", "Kyoto");
    Insert("2", "", "Osaka");
    Insert("4", "うめだ", "Nara");
  }
  void TearDown() override { host_.reset(); }
  void Insert(const char* code, const char* name, const char* town) {
    PlayedForm form;
    form.texts = {{"Code", code}, {"Name", name}, {"Town", town}};
    PlayedButton button(office_, form, "People");
    ASSERT_EQ(DbButtonInsert(office_.engine, button, false), 0);
  }

  // A grid of code, name and town along ByCode, not yet shown; 300 by 150 pixels.
  CQRNGrid& Make(bool runs = true) {
    host_.reset();
    host_.emplace(L"grd1", runs);
    host_->site.place = {0, 0, 300, 150};
    Set(L"DbListSource", Text(L"Db1"));
    Set(L"DbListTable", Text(L"People"));
    Set(L"DbListFields", Text(L"Code,Name,Town"));
    Set(L"DbListIndex", Text(L"ByCode"));
    return grid();
  }
  // The same, shown, with the keyboard. "u" may update, "d" may delete.
  CQRNGrid& MakeShown(const char* rights = "") {
    Make();
    Set(L"AllowUpdate", Bool(strchr(rights, 'u') != nullptr));
    Set(L"AllowDelete", Bool(strchr(rights, 'd') != nullptr));
    EXPECT_EQ(host_->Show(OLEIVERB_UIACTIVATE), S_OK);
    host_->events.log.clear();
    return grid();
  }
  void Set(const wchar_t* name, VARIANT value) { EXPECT_EQ(host_->Set(name, value), S_OK); }
  void SetAt(const wchar_t* name, int32_t index, VARIANT value) {
    EXPECT_EQ(Put(host_->object(), name, {Long(index), value}).result, S_OK);
  }
  std::string Value(const wchar_t* name) { return host_->Value(name); }
  void Refill() { CallMethod(host_->object(), L"Reload"); }
  CQRNGrid& grid() { return **host_; }
  HWND window() { return grid().hwnd(); }
  HWND Edit() { return FindWindowExW(window(), nullptr, L"ATL:Edit", nullptr); }
  HWND Bar(bool vertical) { return GetDlgItem(window(), vertical ? 128 : 127); }
  bool EditShows() { return Edit() && IsWindowVisible(Edit()); }

  // Cells as UTF-8: "a|b|" for each row of cells that are in use, rows behind ";".
  std::string Cells() {
    std::string cells;
    for (int32_t row = 0; row < grid().Rows; ++row) cells += Row(row) + ";";
    return cells;
  }
  std::string Row(int32_t row) {
    std::string texts;
    for (int32_t col = 0; col < grid().Cols; ++col) {
      const char* text = grid().CellText(row, col);
      texts += CodePageToUtf8(text != nullptr ? text : "") + "|";
    }
    return texts;
  }
  // "row,col" of the current cell.
  std::string Current() { return std::to_string(grid().Row) + "," + std::to_string(grid().Col); }
  // What was raised since the last look, without keys and Click.
  std::string Events() { return host_->TakeEvents("01234567"); }

  // In the middle of a cell, or at a point of the control.
  POINT Middle(int32_t row, int32_t col) {
    const TrackSpan across = ColumnsOf(grid()).Place(col);
    const TrackSpan down = RowsOf(grid()).Place(row);
    return {(across.start + across.end) / 2, (down.start + down.end) / 2};
  }
  void Press(POINT at) { SendMouse(WM_LBUTTONDOWN, MK_LBUTTON, at); }
  void DragTo(POINT at) { SendMouse(WM_MOUSEMOVE, MK_LBUTTON, at); }
  void HoverOver(POINT at) { SendMouse(WM_MOUSEMOVE, 0, at); }
  void Release(POINT at) { SendMouse(WM_LBUTTONUP, 0, at); }
  void Click(POINT at) {
    Press(at);
    Release(at);
  }
  void SendMouse(UINT message, WPARAM keys, POINT at) {
    SendMessageW(window(), message, keys, MAKELPARAM(at.x, at.y));
  }
  // Offered to the control first; what it lets pass goes to the window with the focus.
  void Key(WPARAM key) {
    if (host_->Offer(WM_KEYDOWN, key) != S_OK) SendMessageW(GetFocus(), WM_KEYDOWN, key, 1);
    if (host_ && window()) host_->Offer(WM_KEYUP, key);
  }
  void TypeText(std::u16string_view text) { Type(Edit(), text); }
  // The colour of a pixel as the grid is on the screen.
  COLORREF Pixel(int32_t x, int32_t y) {
    UpdateWindow(window());
    const com::WindowDc dc(window());
    return GetPixel(dc.get(), x, y);
  }

  Office office_;
  PlayedDatabase database_{office_};
  std::optional<Hosted<CQRNGrid>> host_;
};

}  // namespace qrn::test
