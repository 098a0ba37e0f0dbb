// Bound operations on tables of variable-length records: notes, blobs, records beyond the buffer.

#include "Office.h"
#include "core/KeyBuffer.h"
#include "core/LongRecord.h"

namespace qrn::test {
namespace {

struct LongRecords : ::testing::Test {
  Status InsertPaper(const char* no, const std::string& head, const std::string& body) {
    form_.texts = {{"No", no}, {"Head", head}, {"Body", body}};
    return DbButtonInsert(office_.engine, papers_, false);
  }

  // "head|body" of the paper of that number; long texts as their length.
  std::string Paper(const char* no) {
    form_.texts = {{"No", no}, {"Head", ""}, {"Body", ""}};
    const Status status = DbButtonRead(office_.engine, BtrOpGetEqual, papers_);
    if (status != 0) return "#" + std::to_string(status);
    return Short(form_.texts["Head"]) + "|" + Short(form_.texts["Body"]);
  }

  static std::string Short(const std::string& text) {
    return text.size() > 20 ? std::to_string(text.size()) : text;
  }

  Office office_;
  PlayedForm form_;
  PlayedButton papers_{office_, form_, "Papers"};
  PlayedButton notes_{office_, form_, "Notes"};
};

TEST_F(LongRecords, UpdatesLengthenAndShortenBlobs) {
  EXPECT_EQ(InsertPaper("1", "head", "body"), 0);
  const std::pair<const char*, const char*> texts[] = {
      {"a longer head", "body"}, {"h", "a body that grew"}, {"", "b"}, {"again", ""}, {"x", "y"}};
  for (const auto& [head, body] : texts) {
    EXPECT_NE(Paper("1").substr(0, 1), "#");
    form_.texts = {{"No", "1"}, {"Head", head}, {"Body", body}};
    EXPECT_EQ(DbButtonUpdate(office_.engine, papers_, false), 0);
    EXPECT_EQ(Paper("1"), std::string(head) + "|" + body);
  }
}

TEST_F(LongRecords, UpdateKeepsABlobThatHasNoControl) {
  EXPECT_EQ(InsertPaper("1", "head", "the body stays"), 0);
  EXPECT_EQ(Paper("1"), "head|the body stays");
  form_.texts = {{"No", "1"}, {"Head", "another head"}};
  EXPECT_EQ(DbButtonUpdate(office_.engine, papers_, false), 0);
  EXPECT_EQ(Paper("1"), "another head|the body stays");
  form_.texts = {{"No", "2"}, {"Head", "new"}};
  EXPECT_EQ(DbButtonInsert(office_.engine, papers_, false), 0);
  EXPECT_EQ(Paper("2"), "new|") << "Insert empties it";
}

TEST_F(LongRecords, NotesKeepTheirLengthThroughUpdates) {
  const std::string texts[] = {"短い", "", std::string(3999, 'x'), "end"};
  for (const std::string& text : texts) {
    form_.texts = {{"Id", "0"}, {"Text", text}};
    EXPECT_EQ(DbButtonInsert(office_.engine, notes_, false), 0);
  }
  form_.texts = {{"Id", ""}, {"Text", ""}};
  Status status = DbButtonRead(office_.engine, BtrOpGetFirst, notes_);
  for (size_t i = 0; i < std::size(texts); ++i) {
    EXPECT_EQ(status, 0);
    EXPECT_EQ(form_.texts["Id"], std::to_string(i + 1));
    EXPECT_EQ(form_.texts["Text"], texts[i]);
    form_.texts["Text"] = "replaced " + std::to_string(i);
    EXPECT_EQ(DbButtonUpdate(office_.engine, notes_, false), 0);
    status = DbButtonRead(office_.engine, BtrOpGetNext, notes_);
  }
  EXPECT_EQ(status, 9);
  EXPECT_EQ(DbButtonRead(office_.engine, BtrOpGetLast, notes_), 0);
  EXPECT_EQ(form_.texts["Text"], "replaced 3");
}

TEST_F(LongRecords, AStepTellsThatTheRecordIsCut) {
  EXPECT_EQ(InsertPaper("1", "head", "body"), 0);
  form_.texts = {{"No", "screen"}};
  EXPECT_EQ(DbButtonStep(office_.engine, BtrOpStepFirst, papers_), 22);
  EXPECT_EQ(form_.texts["No"], "screen");
}

TEST_F(LongRecords, WithoutMemoryThereIsARefusalAndAMessage) {
  EXPECT_EQ(InsertPaper("1", "head", "body"), 0);
  Messages messages;
  form_.texts = {{"No", "1"}};
  DbTableInfo& table = *papers_.Table();
  ASSERT_LT(table.BufferSize, kLongRecordSize);
  const MemoryRunsOut none(0);
  EXPECT_EQ(DbButtonRead(office_.engine, BtrOpGetEqual, papers_), -1);
  EXPECT_TRUE(none.Happened());
  EXPECT_EQ(messages.Take().find("VE001 メモリ不足  Qrndb "), 0u);
}

TEST_F(LongRecords, InsertAfterInsertFitsInOneBuffer) {
  for (int no = 1; no <= 12; ++no) {
    EXPECT_EQ(InsertPaper(std::to_string(no).c_str(), "head", std::string(50000, 'b')), 0);
  }
  EXPECT_LE(papers_.Table()->BufferSize, kLongRecordSize);
  EXPECT_LE(papers_.Table()->BufferAllocated, static_cast<size_t>(kLongRecordSize));
  EXPECT_EQ(Paper("12"), "head|4096") << "what a field's text holds of it";
}

TEST_F(LongRecords, ALongRecordMakesTheBufferGrow) {
  EXPECT_EQ(InsertPaper("1", "head", std::string(60000, 'b')), 0);
  DbTableInfo& table = *papers_.Table();
  ASSERT_EQ(DbRecordCall(office_.engine, table, BtrOpGetFirst, 0), 0);
  table.BufferSize = table.RecordLength;
  KeyBuffer key;
  ASSERT_TRUE(DbBuildKey(table, 0, key));
  uint32_t length = 0;
  CallLog log;
  EXPECT_EQ(DbReadLongRecord(office_.engine, table, length, key, 0), 0);
  EXPECT_EQ(table.BufferSize, table.RecordLength + kLongRecordSize);
  EXPECT_EQ(length, static_cast<uint32_t>(table.RecordLength) + 4 + 60000);
  EXPECT_EQ(log.Take(), "22/0:4 23/0:" + std::to_string(table.BufferSize) + " ");
}

}  // namespace
}  // namespace qrn::test
