// A fill of a list without a window, from a record manager that says what a test tells it.
#pragma once

#include "extended/ExResultStore.h"
#include "extended/FillFromExtended.h"
#include "tests/extended/FakeList.h"
#include "tests/extended/Replies.h"
#include "tests/extended/ScriptedManager.h"
#include "tests/extended/TestTable.h"
#include "tests/support/Test.h"

namespace qrn::test {

// A reply of records "Name, Code", the codes and positions (16, 32, ...) counted from the first.
inline std::vector<uint8_t> Names(const std::vector<std::string>& names) {
  std::vector<ReplyRecord> records;
  for (const std::string& name : names) {
    records.push_back({static_cast<uint32_t>(records.size() + 1) * 16, {}});
    for (const char byte : name) records.back().data.push_back(static_cast<uint8_t>(byte));
    records.back().data.resize(4, ' ');
    records.back().data.push_back(static_cast<uint8_t>(records.size()));
    records.back().data.push_back(0);
  }
  return Reply(records);
}

struct FillFixture : testing::Test {
  FillFixture() {
    table_.MakeBuffer("........");
    table_.Info().IsOpen = 1;
    fill_.DbListFields = "Name,Code";
  }
  ~FillFixture() override { TheExResults().Clear(); }

  bool Run(FillKind kind = FillKind::ListBox) {
    fill_.Kind = kind;
    return FillFromExtended(engine_, fill_, list_);
  }

  // The list's log of a fill.
  std::string Log(FillKind kind = FillKind::ListBox) {
    Run(kind);
    return list_.TakeLog();
  }

  QuorinSettings settings_;
  DbEngine engine_{settings_};
  ShownMessages messages_;
  ScriptedManager manager_;
  TestTable table_{{{"Code", kInteger, 2}, {"Name", kString, 4}},
                   {{{1, 0}}, {{0}}}};  // index positions 0 and 2
  FakeList list_{&table_.Info()};
  ExFill fill_;
};

}  // namespace qrn::test
