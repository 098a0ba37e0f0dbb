// A grid without a window: its model and its data, with container, screen and handlers played by
// the test. Texts are UTF-8.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <utility>

#include "core/DbEngine.h"
#include "fields/QuorinSettings.h"
#include "grid/data/GridData.h"
#include "platform/CodePage.h"

namespace qrn::test {

class PlayedGrid : public GridHost {
 public:
  explicit PlayedGrid(GridCapacity capacity = {}, DbEngine* engine = nullptr)
      : model(*this, capacity), data(model, engine != nullptr ? *engine : ownEngine_) {}

  GridModel model;
  GridData data;

  // The container.
  bool runTime = true;
  bool inPlace = true;
  WindowHandle window = this;
  GridNames names;
  std::function<DbTableInfo*(const GridNames&)> findTable = [](const GridNames&) {
    return nullptr;
  };
  std::function<bool(DbTableInfo&)> openTable = [](DbTableInfo&) { return false; };
  // The format service, by format; a format that is not here fails.
  std::map<std::string, std::function<std::string(const std::string&)>> formats;

  std::string edit;     // what the edit box holds
  std::string cancel;   // the event whose handler cancels: "BeforeUpdate"
  Status handled = -1;  // what the handler of BtrieveError makes of the status; -1 leaves it
  // Handlers, by the event's name.
  std::map<std::string, std::function<void()>> on;
  std::function<void(std::u16string&)> onFormat;

  // The events raised, "BeforeColUpdate(x) AfterColUpdate", and what the screen was asked for:
  // "cell" a repaint of the current cell, "all" of the control, "filled" the end of a fill.
  std::string TakeLog() { return std::exchange(log_, {}); }

  // The cells of a rectangle, ends included: "a|b/|d", rows from the top.
  std::string Cells(int64_t row, int64_t col, int64_t lastRow, int64_t lastCol) const {
    std::string all;
    for (int64_t r = row; r <= lastRow; ++r) {
      if (r > row) all += '/';
      for (int64_t c = col; c <= lastCol; ++c) all += (c > col ? "|" : "") + Cell(r, c);
    }
    return all;
  }
  std::string Cell(int64_t row, int64_t col) const {
    const char* text = model.CellText(row, col);
    return text != nullptr ? CodePageToUtf8(text) : "";
  }

  // Everything that the grid has in use.
  std::string AllCells() const { return Cells(0, 0, model.Rows - 1, model.Cols - 1); }

  void Put(int32_t row, int32_t col, const std::string& text) {
    model.Row = row;
    model.Col = col;
    model.PutText(Utf8ToCodePage(text));
  }
  int32_t PutLine(int64_t row, int64_t col, const std::string& text) {
    bool memory = true;
    return model.SetRowText(row, col, Utf8ToCodePage(text), memory);
  }
  // The user comes into a cell and types there.
  void Type(int32_t row, int32_t col, const std::string& text) {
    model.Row = row;
    model.Col = col;
    model.KeepEditText();
    model.editActive = 1;
    edit = text;
  }

  WindowHandle Window() const override { return window; }
  bool IsInPlace() const override { return inPlace; }
  bool IsRunTime() const override { return runTime; }
  GridNames Names() override { return names; }
  DbTableInfo* FindTable(const GridNames& wanted) override { return findTable(wanted); }
  bool OpenTable(DbTableInfo& table, const GridNames&) override { return openTable(table); }
  std::optional<std::string> FormatCell(std::string_view text, std::string_view format) override {
    const auto found = formats.find(CodePageToUtf8(format));
    if (found == formats.end()) return std::nullopt;
    return Utf8ToCodePage(found->second(CodePageToUtf8(text)));
  }
  std::string EditText() override { return Utf8ToCodePage(edit); }
  int32_t NameWidthPx(std::string_view name) override {
    return static_cast<int32_t>(8 * name.size()) + 3;
  }
  void RepaintCurrentCell() override { Note("cell"); }
  void Repaint() override { Note("all"); }
  void ShowFilled() override { Note("filled"); }

  void RaiseFormat(std::u16string& text) override {
    if (onFormat) onFormat(text);
  }
  Status RaiseBtrieveError(std::string_view tableName, Status status) override {
    Handle("BtrieveError", "(" + std::string(tableName) + "," + std::to_string(status) + ")");
    return handled >= 0 ? handled : status;
  }
  bool RaiseBeforeColUpdate(const std::string& text) override {
    return Handle("BeforeColUpdate", "(" + CodePageToUtf8(text) + ")");
  }
  bool RaiseBeforeUpdate() override { return Handle("BeforeUpdate"); }
  bool RaiseBeforeDelete() override { return Handle("BeforeDelete"); }
  void Raise(GridEvent event) override {
    static constexpr const char* kNames[] = {"AfterColUpdate", "AfterUpdate", "AfterDelete"};
    Handle(kNames[static_cast<int>(event)]);
  }

 private:
  bool Handle(const std::string& event, const std::string& arguments = "") {
    Note(event + arguments);
    if (const auto handler = on.find(event); handler != on.end()) {
      const auto once = handler->second;  // a handler may put another one in its place
      once();
    }
    return cancel == event;
  }
  void Note(const std::string& what) { log_ += (log_.empty() ? "" : " ") + what; }

  QuorinSettings ownSettings_;
  DbEngine ownEngine_{ownSettings_};
  std::string log_;
};

}  // namespace qrn::test
