// A list without a window: what a fill does to it, as one line of text.
#pragma once

#include <functional>
#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>

#include "core/RowSink.h"
#include "platform/CodePage.h"

namespace qrn::test {

class FakeList : public RowSink {
 public:
  explicit FakeList(DbTableInfo* shown) : table(shown) {}

  DbTableInfo* table;
  std::function<bool(std::u16string&)> onFormat = [](std::u16string&) { return true; };
  size_t room = 1000;  // rows
  int16_t resultId = -1;

  // "empty(2) [Abe 1] @16 error(Orders,60) result(0)"
  std::string TakeLog() { return std::exchange(log_, {}); }

  DbTableInfo* Table() override { return table; }
  void Empty(size_t fieldCount) override {
    Note({"empty(", std::to_string(fieldCount), ")"});
    rows_ = 0;
  }
  bool Format(std::u16string& lineData) override { return onFormat(lineData); }
  bool AddRow(const char* text) override {
    Note({"[", CodePageToUtf8(text), "]"});
    return ++rows_ < room;
  }
  void GivePosition(uint32_t position) override { Note({"@", std::to_string(position)}); }
  void TakeResultId(int16_t id) override {
    resultId = id;
    Note({"result(", std::to_string(id), ")"});
  }
  void BtrieveError(const char* tableName, Status status) override {
    Note({"error(", tableName, ",", std::to_string(status), ")"});
  }

 private:
  void Note(std::initializer_list<std::string_view> pieces) {
    if (!log_.empty()) log_ += ' ';
    for (const std::string_view piece : pieces) log_ += piece;
  }

  std::string log_;
  size_t rows_ = 0;
};

}  // namespace qrn::test
