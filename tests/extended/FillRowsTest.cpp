// What becomes of the rows: their positions, their event, the results left behind.

#include "core/RecordBuffer.h"
#include "extended/ExResults.h"
#include "extended/ExRowText.h"
#include "qrnbt350.h"
#include "tests/extended/FillFixture.h"

namespace qrn::test {
namespace {

class FillRows : public FillFixture {};

TEST_F(FillRows, ACancelledRowEndsItLikeTheEndOfTheFile) {
  fill_.SavePosition = true;
  fill_.DbLeaveResults = true;
  const auto cancelAtB = [](std::u16string& line) { return line[0] != u'b'; };
  list_.onFormat = cancelAtB;
  for (const Status status : {0, 60}) {
    manager_.batches = {{status, Names({"a", "b", "c"})}, {0, Names({"d"})}};
    EXPECT_EQ(Log(), "empty(2) [a 1] @16") << status;
    manager_.batches = {{status, Names({"a", "b", "c"})}, {0, Names({"d"})}};
    EXPECT_EQ(Log(FillKind::Grid), "empty(2) @16 [a\t1] @32") << "the position stays";
  }
  EXPECT_EQ(TheExResults().Find(0), nullptr);
  EXPECT_EQ(manager_.TakeLog().substr(0, 31), "22 12:k0 36UC:k0 23@77:k0 22 12");
}

TEST_F(FillRows, AHandlerRewritesARow) {
  list_.onFormat = [](std::u16string& line) {
    if (line[0] == u'a') line = u"表示";
    if (line[0] == u'b') line.clear();
    if (line[0] == u'c') ::DbExSetFormattedString("mine");
    if (line[0] == u'd') ::DbExSetFormattedString("");
    if (line[0] == u'e') ::DbExSetFormattedString(nullptr);
    return true;
  };
  manager_.batches = {{9, Names({"a", "b", "c", "d", "e"})}};
  EXPECT_EQ(Log(), "empty(2) [表示] [] [mine] [d 4] [e 5]");
}

// Lengths of the event's text, of the row when the handler returns it, and of one set by the
// exported function.
TEST_F(FillRows, RowsAreCutAtTheirAreas) {
  TestTable wide({{"Text", kString, 1500}}, {{{0}}});
  wide.Info().IsOpen = 1;
  wide.MakeBuffer("");
  FakeList list(&wide.Info());
  size_t units = 0;
  bool replace = false;
  list.onFormat = [&](std::u16string& line) {
    units = line.size();
    if (replace) ::DbExSetFormattedString(std::string(2000, 'y').c_str());
    return true;
  };
  fill_.DbListFields = "Text";
  fill_.DbMaxRecords = 10;
  const auto lengths = [&](FillKind kind, bool replaced) {
    manager_.batches = {{9, Reply({{16, std::vector<uint8_t>(1500, 'x')}})}};
    replace = replaced;
    fill_.Kind = kind;
    FillFromExtended(engine_, fill_, list);
    return std::to_string(units) + "," +
           std::to_string(list.TakeLog().size() - sizeof "empty(1) []" + 1);
  };
  EXPECT_EQ(lengths(FillKind::ListBox, false), "1024,512");
  EXPECT_EQ(lengths(FillKind::ListBox, true), "1024,1024");
  EXPECT_EQ(lengths(FillKind::Grid, false), "512,512");
}

TEST_F(FillRows, TwoByteCharactersAreCutWhole) {
  TestTable wide({{"Head", kString, 1}, {"Text", kString, 1200}}, {{{0}}});
  wide.Info().IsOpen = 1;
  wide.MakeBuffer("");
  FakeList list(&wide.Info());
  std::vector<uint8_t> data(1, 'x');
  for (int i = 0; i < 600; ++i) data.insert(data.end(), {0x95, 0x5C});
  manager_.batches = {{9, Reply({{16, data}})}};
  fill_.DbListFields = "Head,Text";
  fill_.DbMaxRecords = 1;
  std::u16string seen;
  list.onFormat = [&](std::u16string& line) {
    seen = line;
    line.resize(300);
    return true;
  };
  FillFromExtended(engine_, fill_, list);
  EXPECT_EQ(seen.size(), 2u + 511);  // 1,024 bytes: "x ", then whole pairs
  EXPECT_EQ(seen.back(), u'表');
  EXPECT_EQ(list.TakeLog().size(), sizeof "empty(1) [x ]" - 1 + 3 * 255);
}

TEST_F(FillRows, LeavesItsRepliesAsOneResult) {
  fill_.DbLeaveResults = true;
  manager_.batches = {{0, Names({"a", "b"})}, {0, Names({"c"})}, {9, Names({"d"})}};
  EXPECT_EQ(Log(), "empty(2) [a 1] [b 2] result(0) [c 1] [d 1]");
  std::string names;
  for (int location = 0; location < 4; ++location) {
    const char* text = DbExReadFieldByName(engine_, 0, "Name", location);
    names += text != nullptr ? text : "-";
  }
  EXPECT_EQ(names, "abc-");
  EXPECT_EQ(*TheExResults().Find(0)->Fields, "Name,Code");
  EXPECT_EQ(TheExResults().Find(0)->FileId, 7);
}

TEST_F(FillRows, AFullStoreStopsNothing) {
  const auto plan = ParseFieldList(engine_, table_.Info(), "Code");
  for (int i = 0; i < 48; ++i) TheExResults().Keep(table_.Info(), "Code", *plan, Reply({}));
  fill_.DbLeaveResults = true;
  list_.onFormat = [](std::u16string& line) {
    if (line[0] == u'b') TheExResults().Free(3);
    return true;
  };
  manager_.batches = {{0, Names({"a"})}, {0, Names({"b"})}, {0, Names({"c"})}};
  EXPECT_EQ(Log(), "empty(2) [a 1] [b 1] [c 1]");
  EXPECT_EQ(TheExResults().Find(3), nullptr) << "half a result is none";
}

TEST_F(FillRows, AResultThatAHandlerFreesTakesNoMore) {
  fill_.DbLeaveResults = true;
  list_.onFormat = [](std::u16string& line) {
    if (line[0] == u'b') TheExResults().Free(0);
    return true;
  };
  manager_.batches = {{0, Names({"a"})}, {0, Names({"b"})}, {0, Names({"c"})}};
  EXPECT_EQ(Log(), "empty(2) [a 1] result(0) [b 1] [c 1]");
  EXPECT_EQ(TheExResults().Find(0), nullptr);
}

TEST_F(FillRows, ATableThatAHandlerClosesEndsIt) {
  list_.onFormat = [&](std::u16string& line) {
    if (line[0] == u'b') {
      FreeRecordBuffer(table_.Info());
      table_.Info().IsOpen = 0;
    }
    return true;
  };
  manager_.batches = {{0, Names({"a", "b", "c"})}, {0, Names({"d"})}};
  EXPECT_EQ(Log(), "empty(2) [a 1] [b 2] [c 3]");
  EXPECT_EQ(manager_.TakeLog(), "22 12:k0 36UC:k0");
}

TEST_F(FillRows, ADictionaryThatAHandlerFreesEndsIt) {
  auto table =
      std::make_unique<TestTable>(std::vector<Column>{{"Code", kInteger, 2}, {"Name", kString, 4}},
                                  std::vector<KeyColumns>{{{0}}});
  table->MakeBuffer("");
  table->Info().IsOpen = 1;
  FakeList list(&table->Info());
  list.onFormat = [&](std::u16string&) {
    table.reset();
    list.table = nullptr;
    return true;
  };
  fill_.DbLeaveResults = true;
  manager_.batches = {{0, Names({"a", "b"})}, {0, Names({"c"})}};
  EXPECT_TRUE(FillFromExtended(engine_, fill_, list));
  EXPECT_EQ(list.TakeLog(), "empty(2) [a 1] [b 2]");
}

}  // namespace
}  // namespace qrn::test
