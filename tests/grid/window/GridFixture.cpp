#include "GridFixture.h"

namespace qrn::test {

void Grids::SetUp() {
  Insert("3", "さくら", "Kyoto");
  Insert("1", "うめ", "Kyoto");
  Insert("2", "", "Osaka");
  Insert("4", "うめだ", "Nara");
}

void Grids::TearDown() { host_.reset(); }

void Grids::Insert(const char* code, const char* name, const char* town) {
  PlayedForm form;
  form.texts = {{"Code", code}, {"Name", name}, {"Town", town}};
  PlayedButton button(office_, form, "People");
  ASSERT_EQ(DbButtonInsert(office_.engine, button, false), 0);
}

CQRNGrid& Grids::Make(bool runs) {
  host_.reset();
  host_.emplace(L"grd1", runs);
  host_->site.place = {0, 0, 300, 150};
  Set(L"DbListSource", Text(L"Db1"));
  Set(L"DbListTable", Text(L"People"));
  Set(L"DbListFields", Text(L"Code,Name,Town"));
  Set(L"DbListIndex", Text(L"ByCode"));
  return grid();
}

CQRNGrid& Grids::MakeShown(const char* rights) {
  Make();
  Set(L"AllowUpdate", Bool(strchr(rights, 'u') != nullptr));
  Set(L"AllowDelete", Bool(strchr(rights, 'd') != nullptr));
  EXPECT_EQ(host_->Show(OLEIVERB_UIACTIVATE), S_OK);
  host_->events.log.clear();
  return grid();
}

std::string Grids::Row(int32_t row) {
  std::string texts;
  for (int32_t col = 0; col < grid().Cols; ++col) {
    const char* text = grid().CellText(row, col);
    texts += CodePageToUtf8(text != nullptr ? text : "") + "|";
  }
  return texts;
}

std::string Grids::Cells() {
  std::string cells;
  for (int32_t row = 0; row < grid().Rows; ++row) cells += Row(row) + ";";
  return cells;
}

std::string Grids::Current() {
  return std::to_string(grid().Row) + "," + std::to_string(grid().Col);
}

std::string Grids::Events() {
  std::string events;
  std::string& log = host_->events.log;
  for (size_t at = 0; at < log.size();) {
    const size_t end = std::min(log.find(") ", at), log.size() - 2) + 2;
    const std::string event = log.substr(at, end - at);
    if (!event.starts_with("-6")) events += event;
    at = end;
  }
  log.clear();
  return events;
}

POINT Grids::Middle(int32_t row, int32_t col) {
  const TrackSpan across = ColumnsOf(grid()).Place(col);
  const TrackSpan down = RowsOf(grid()).Place(row);
  return {(across.start + across.end) / 2, (down.start + down.end) / 2};
}

void Grids::Key(WPARAM key) {
  if (host_->Offer(WM_KEYDOWN, key) != S_OK) SendMessageW(GetFocus(), WM_KEYDOWN, key, 1);
  if (host_ && window()) host_->Offer(WM_KEYUP, key);
}

COLORREF Grids::Pixel(int32_t x, int32_t y) {
  UpdateWindow(window());
  const com::WindowDc dc(window());
  return GetPixel(dc.get(), x, y);
}

}  // namespace qrn::test
