// The plain fill of a list or combo box from one field of a table.

#include "Office.h"
#include "core/ListFill.h"
#include "platform/Utf.h"
#include "qrnbt350.h"

namespace qrn::test {
namespace {

struct Fill : ::testing::Test {
  void InsertThree() {
    for (const auto& [code, name] : {std::pair{"3", "さくら"}, {"1", "うめ"}, {"2", ""}}) {
      form_.texts = {{"Code", code}, {"Name", name}};
      EXPECT_EQ(DbButtonInsert(office_.engine, button_, false), 0);
    }
  }

  Status Run(const char* field, int32_t index = 0) {
    return DbFillList(office_.engine, list_, field, index);
  }

  Office office_;
  PlayedForm form_;
  PlayedButton button_{office_, form_, "People"};
  PlayedList list_{office_, "People"};
};

TEST_F(Fill, FollowsTheKeyAndLeavesEmptyRowsOut) {
  InsertThree();
  EXPECT_EQ(Run("Name"), 0);
  EXPECT_EQ(list_.rows, "うめ;さくら;");
  EXPECT_EQ(Run("Code"), 0);
  EXPECT_EQ(list_.rows, "1;2;3;");
  EXPECT_EQ(Run("Code", 3), 0);
  EXPECT_EQ(list_.rows, "2;1;3;") << "by name";
}

TEST_F(Fill, WithoutRecordsOrFieldTheListStays) {
  EXPECT_EQ(Run("Name"), 0);
  EXPECT_EQ(list_.rows, "before;");
  InsertThree();
  CallLog log;
  for (const char* field : {"name", "", "Nothing"}) EXPECT_EQ(Run(field), 0) << field;
  EXPECT_EQ(list_.rows, "before;");
  office_.Close("People");
  log.Take();
  EXPECT_EQ(Run("Name"), 0);
  EXPECT_EQ(log.Take(), "");
}

TEST_F(Fill, ReadsWithoutLocksAtTheFixedLength) {
  InsertThree();
  CallLog log;
  EXPECT_EQ(Run("Name"), 0);
  EXPECT_EQ(log.Take(), "22/0:4 12/0:42 6/0:42 6/0:42 6/0:42 23/0:42 ");
}

TEST_F(Fill, AHandlerRewritesBlanksAndEndsRows) {
  InsertThree();
  int row = 0;
  list_.onFormat = [&](std::u16string& line) {
    ++row;
    if (row == 1) line = u"<" + line + u">";
    if (row == 2) {
      ::DbSetFormattedString("called");
      line = u"assigned";
    }
    return row < 3;
  };
  EXPECT_EQ(Run("Name"), 0);
  EXPECT_EQ(list_.rows, "<うめ>;called;");
  for (const std::u16string& empty : {std::u16string(), std::u16string(2, u'\0')}) {
    list_.onFormat = [&](std::u16string& line) {
      line = empty;
      return true;
    };
    EXPECT_EQ(Run("Name"), 0);
    EXPECT_EQ(list_.rows, "");
  }
}

TEST_F(Fill, ARowComesBackFromItsHandlerWith512Bytes) {
  InsertThree();
  list_.onFormat = [](std::u16string& line) {
    line.assign(600, u'漢');
    return true;
  };
  EXPECT_EQ(Run("Code"), 0);
  std::string row;
  for (int i = 0; i < 256; ++i) row += "漢";
  EXPECT_EQ(list_.rows, row + ";" + row + ";" + row + ";");
}

TEST_F(Fill, AHandlerThatClosesTheTableEndsTheFill) {
  InsertThree();
  list_.onFormat = [&](std::u16string&) {
    office_.Close("People");
    return true;
  };
  EXPECT_EQ(Run("Code"), 0);
  EXPECT_EQ(list_.rows, "1;");
}

}  // namespace
}  // namespace qrn::test
