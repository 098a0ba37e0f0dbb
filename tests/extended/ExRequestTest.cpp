#include "extended/ExReply.h"
#include "extended/ExRequest.h"
#include "tests/extended/TestTable.h"

namespace qrn::test {
namespace {

struct Request : testing::Test {
  ExRequest Make(const char* condition, const char* fields, uint16_t rejects, uint16_t records) {
    return ExRequest("UC", rejects, *ParseSearchCond(engine_, table_.Info(), condition, false),
                     records, *ParseFieldList(engine_, table_.Info(), fields));
  }

  static std::string Laid(const ExRequest& request) {
    std::vector<uint8_t> buffer(request.BufferSize(), 0xEE);
    request.LayInto(buffer);
    return Hex(buffer);
  }

  QuorinSettings settings_;
  DbEngine engine_{settings_};
  TestTable table_{{{"a", kInteger, 2}, {"b", kInteger, 2}, {"c", kString, 8}}};
};

TEST_F(Request, LaysHeadTermsCountsAndExtractor) {
  EXPECT_EQ(Laid(Make("@0 = 1 | @1 = 2", "b,a", 0x1234, 1)),
            " 26 00 55 43 34 12 02 00"              // head
            " 01 02 00 00 00 01 02 01 00"           // a = 1 or
            " 01 02 00 02 00 01 00 02 00"           // b = 2
            " 01 00 02 00 02 00 02 00 02 00 00 00"  // one record, two fields
  );
}

// The one of docs/search-conditions.md.
TEST_F(Request, DocumentedExample) {
  TestTable orders({{"Code", kInteger, 2}, {"Name", kString, 4}});
  const auto condition = ParseSearchCond(engine_, orders.Info(), "@Code > 1 & @Name = Abe", false);
  const auto fields = ParseFieldList(engine_, orders.Info(), "Name,Code");
  EXPECT_EQ(Laid(ExRequest("UC", 100, *condition, 2, *fields)),
            " 28 00 55 43 64 00 02 00"
            " 01 02 00 00 00 02 01 01 00"
            " 00 04 00 02 00 01 00 41 62 65 20"
            " 02 00 02 00"
            " 04 00 02 00 02 00 00 00");
}

TEST_F(Request, WithoutAConditionTheRecordCountStandsAtOffset8) {
  EXPECT_EQ(Laid(Make("", "a", 100, 1)), " 10 00 55 43 64 00 00 00 01 00 01 00 02 00 00 00");
}

TEST_F(Request, BufferTakesTheLargerOfRequestAndReply) {
  EXPECT_EQ(Make("", "a,b", 100, 100).BufferSize(), 1002u);  // (4 + 6) * 100 + 2
  EXPECT_EQ(Make("", "a,b", 100, 1).BufferSize(), 20u);      // the request
  EXPECT_EQ(Make("", "a,b", 100, 2).BufferSize(), 22u);
  EXPECT_EQ(Make("", "a", 100, 0).BufferSize(), 16u);
  EXPECT_EQ(Make("", "c", 100, 65535).BufferSize(), 14u * 65535 + 2);
}

TEST_F(Request, SignatureChangesInPlace) {
  ExRequest request = Make("", "a", 0, 1);
  request.SetSignature(kBeginAfterCurrent);
  EXPECT_EQ(Laid(request), " 10 00 45 47 00 00 00 00 01 00 01 00 02 00 00 00");
}

TEST_F(Request, AnOverlongOneSaysTheLargestLength) {
  std::string condition = "@2 = x";
  for (int i = 0; i < 5000; ++i) condition += " & @2 = x";
  const ExRequest request = Make(condition.c_str(), "a", 0, 1);
  EXPECT_EQ(request.BufferSize(), 8 + 15 * 5001 + 8);
  EXPECT_EQ(Laid(request).substr(0, 24), " FF FF 55 43 00 00 89 13");
}

TEST_F(Request, IsRecognisedUntilAReplyReplacesIt) {
  const ExRequest request = Make("", "a", 0, 1);
  std::vector<uint8_t> buffer(request.BufferSize());
  request.LayInto(buffer);
  EXPECT_TRUE(request.StandsIn(buffer));
  buffer[0] = 0;
  EXPECT_FALSE(request.StandsIn(buffer));
}

// Two records of two and of no bytes.
const std::vector<uint8_t> kReply = {2, 0, 2, 0, 0x10, 0, 0, 0x80, 0xAA, 0xBB, 0, 0, 0x20, 0, 0, 0};

std::string Read(std::span<const uint8_t> reply) {
  std::string text;
  ExReplyReader reader(reply);
  while (const auto record = reader.Next()) {
    text += std::to_string(record->Position) + ":" + Hex(record->Data) + "; ";
  }
  return text;
}

TEST(Reply, RecordsFollowOneAnother) { EXPECT_EQ(Read(kReply), "2147483664: AA BB; 32:; "); }

TEST(Reply, ACutOneGivesItsWholeRecordsOnly) {
  for (size_t size = 0; size < kReply.size(); ++size) {
    // A copy of its own, so that a read past its end is found.
    const std::vector<uint8_t> cut(kReply.begin(), kReply.begin() + static_cast<long>(size));
    EXPECT_EQ(Read(cut), size < 10 ? "" : "2147483664: AA BB; ") << size;
  }
}

TEST(Reply, ACountTooHighOrTooLowDoesNoHarm) {
  std::vector<uint8_t> reply = kReply;
  reply[0] = 0xFF;
  EXPECT_EQ(Read(reply), Read(kReply));
  reply[0] = 1;
  EXPECT_EQ(Read(reply), "2147483664: AA BB; ");
  reply[2] = 0xFF;  // the first record claims more than there is
  EXPECT_EQ(Read(reply), "");
}

TEST(Reply, StatusesThatBringRecords) {
  std::string statuses;
  for (Status status = -1; status < 100; ++status) {
    if (BringsRecords(status)) statuses += std::to_string(status) + " ";
  }
  EXPECT_EQ(statuses, "0 9 22 60 64 65 ");
}

}  // namespace
}  // namespace qrn::test
