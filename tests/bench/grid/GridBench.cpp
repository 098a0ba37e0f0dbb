// The grid on the screen with 60,000 rows: what a paint and a step of the current cell cost beside
// 60 rows, and what a fill with its first paint costs beside a list view of the system that is
// handed the ready texts row by row. Prints each ratio of the medians of interleaved runs; ends
// with 1 when one is above its limit.
#include <windows.h>
// Counts on the names of the one above.
#include <commctrl.h>

#include <filesystem>

#include "binding/QRNBtr.h"
#include "grid/QRNGrid.h"
#include "tests/bench/Measure.h"
#include "tests/controls/Hosted.h"
#include "tests/support/MadeDatabase.h"
#include "tests/support/TempFolder.h"

namespace qrn::test {
namespace {

using bench::Check;
using bench::Median;
using bench::Seconds;

constexpr int32_t kMany = 60'000;
constexpr int32_t kFew = 60;
constexpr int32_t kColumns = 6;  // the numbers and five fields
constexpr char kSchema[] = R"([[table]]
name = "People"
field = [
  { name = "Code", type = "Integer", size = 4 },
  { name = "Name", type = "String", size = 40 },
  { name = "Town", type = "String", size = 12 },
  { name = "Rank", type = "Integer", size = 2 },
  { name = "Pay", type = "Decimal", size = 6, decimals = 2 },
]
key = [ { name = "ByCode", fields = ["Code"] } ])";

class Workplace {
 public:
  Workplace() {
    MakeDatabase(folder_.Root(), kSchema);
    FillTable(folder_.Root(), "People", kMany, [](int code) {
      const std::string number = std::to_string(code);
      return qrndata::FieldValues{number, "somebody of the number " + number, "Kyoto",
                                  std::to_string(code % 9), std::to_string(code % 997) + ".25"};
    });
  }
  std::wstring Path() const { return folder_.Root().wstring(); }

 private:
  TempFolder folder_;
};

// Room for all rows while it lives.
class RoomForRows : Pinned {
 public:
  RoomForRows() { Put("65000"); }
  ~RoomForRows() { Put(nullptr); }

 private:
  static void Put(const char* rows) {
    WritePrivateProfileStringA("quorin350", "grid_max_row", rows, "quorin.ini");
  }
};

class FilledGrid {
 public:
  FilledGrid(const wchar_t* name, const wchar_t* condition, int32_t records)
      : grid_(name), records_(records) {
    grid_.events.hears = false;
    grid_.site.place = {0, 0, 400, 300};
    grid_.Set(L"DbListSource", Text(L"Db"));
    grid_.Set(L"DbListTable", Text(L"People"));
    grid_.Set(L"DbListFields", Text(L"Code,Name,Town,Rank,Pay"));
    grid_.Set(L"DbListIndex", Text(L"ByCode"));
    grid_.Set(L"DbConditions", Text(condition));
    grid_.Set(L"DbMaxRecords", Long(1000));
    grid_.Set(L"DbUpdateOption", Long(0));
    Check(grid_.Show(OLEIVERB_UIACTIVATE) == S_OK, "no grid");
    Fill();
  }
  void Fill() {
    CallMethod(grid_.object(), L"Reload");
    Check(grid_->Rows == records_ + 1, "the grid is not full");
    Paint();
  }
  void Paint() {
    RedrawWindow(grid_->hwnd(), nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
    GdiFlush();
  }
  // Forty steps down and up again, in the middle of the rows.
  void Step() {
    for (const WPARAM key : {WPARAM{VK_DOWN}, WPARAM{VK_UP}}) {
      for (int i = 0; i < 40; ++i) {
        SendMessageW(grid_->hwnd(), WM_KEYDOWN, key, 1);
        UpdateWindow(grid_->hwnd());
      }
    }
  }
  void GoToMiddle() {
    grid_->TopRow = grid_->Row = records_ / 4;
    grid_->vScrollPos = grid_->TopRow;
    SetFocus(grid_->hwnd());
  }
  std::wstring TextOf(int32_t row, int32_t col) {
    const char* text = grid_->CellText(row, col);
    return std::wstring(WidenToBstr(text != nullptr ? text : "").view());
  }

 private:
  Hosted<CQRNGrid> grid_;
  const int32_t records_;
};

class ListView : Pinned {
 public:
  explicit ListView(FilledGrid& from) {
    InitCommonControls();
    window_ = CreateWindowExW(0, WC_LISTVIEWW, L"", WS_CHILD | WS_VISIBLE | LVS_REPORT, 0, 0, 400,
                              300, TheForm(), nullptr, nullptr, nullptr);
    Check(window_ != nullptr, "no list view");
    for (int32_t col = 0; col < kColumns; ++col) {
      LVCOLUMNW column{};
      column.mask = LVCF_WIDTH;
      column.cx = 50;
      SendMessageW(window_, LVM_INSERTCOLUMNW, static_cast<WPARAM>(col),
                   reinterpret_cast<LPARAM>(&column));
    }
    for (int32_t row = 1; row <= kMany; ++row) {
      for (int32_t col = 0; col < kColumns; ++col) texts_.push_back(from.TextOf(row, col));
    }
    ShowWindow(window_, SW_HIDE);
  }
  ~ListView() { DestroyWindow(window_); }

  void Fill() {
    ShowWindow(window_, SW_SHOWNA);
    SendMessageW(window_, WM_SETREDRAW, FALSE, 0);
    SendMessageW(window_, LVM_DELETEALLITEMS, 0, 0);
    SendMessageW(window_, LVM_SETITEMCOUNT, kMany, 0);
    for (int32_t i = 0; i < kMany * kColumns; ++i) Put(i / kColumns, i % kColumns);
    SendMessageW(window_, WM_SETREDRAW, TRUE, 0);
    RedrawWindow(window_, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
    ShowWindow(window_, SW_HIDE);
  }

 private:
  void Put(int32_t row, int32_t col) {
    LVITEMW item{};
    item.mask = LVIF_TEXT;
    item.iItem = row;
    item.iSubItem = col;
    item.pszText = texts_[static_cast<size_t>(row) * kColumns + static_cast<size_t>(col)].data();
    SendMessageW(window_, col == 0 ? LVM_INSERTITEMW : LVM_SETITEMW, 0,
                 reinterpret_cast<LPARAM>(&item));
  }

  HWND window_ = nullptr;
  std::vector<std::wstring> texts_;
};

// The ratio of two works, run in turn.
bool Report(const char* what, double limit, int runs, const std::function<void()>& ours,
            const std::function<void()>& yardstick) {
  std::vector<double> mine;
  std::vector<double> other;
  for (int run = 0; run < runs; ++run) {
    mine.push_back(Seconds(ours));
    other.push_back(Seconds(yardstick));
  }
  return bench::Tell(what, Median(mine) / Median(other), limit);
}

int Run() {
  const RoomForRows room;
  Workplace place;
  Hosted<CQRNBtr> database(L"Db");
  database.Set(L"DDFDir", Text(place.Path().c_str()));
  Check(database.Show() == S_OK, "no database");
  FilledGrid few(L"few", L"@Code < 60", kFew);
  FilledGrid many(L"many", L"@Code >= 0", kMany);
  bool good = Report(
      "paint of 60,000 rows in the grid, over 60", 1.2, 101, [&] { many.Paint(); },
      [&] { few.Paint(); });
  // Each has the keyboard for its own steps.
  good &= Report(
      "steps of the current cell among 60,000 rows, over 60", 1.5, 31,
      [&] {
        many.GoToMiddle();
        many.Step();
      },
      [&] {
        few.GoToMiddle();
        few.Step();
      });
  ListView view(many);
  good &= Report(
      "fill of 60,000 records with first paint, over ready texts into a list view", 0.2, 3,
      [&] { many.Fill(); }, [&] { view.Fill(); });
  return good ? 0 : 1;
}

}  // namespace
}  // namespace qrn::test

int main() {
  if (FAILED(OleInitialize(nullptr))) return 2;
  const int code = qrn::test::Run();
  OleUninitialize();
  return code;
}
