// Extended reads and inserts through the calls: where they begin and stop, what they reply, where
// the cursor stands afterwards.
#include <gtest/gtest.h>

#include "clients/TestFile.h"
#include "kit/Descriptor.h"

namespace btrieve::test {
namespace {

// Ten records: key 0 counts 1..10 (unique), key 1 holds 5 for every second one (duplicates) and 6
// for the others, key 2 is key 0 turned round. A byte follows so that a cut field shows.
Bytes TenBlock() {
  return CreateBlock({.recordLength = 12}, {{.position = 1, .flags = 0x102, .type = 1},
                                            {.position = 5, .flags = 0x103, .type = 1},
                                            {.position = 1, .flags = 0x142, .type = 1}});
}

Bytes Row(int32_t id, int32_t group) { return Number(id) + Number(group) + Padded("abcd", 4); }

TermOf Is(int32_t value, uint16_t offset, int comparison = kEq, int connector = kLastTerm) {
  return {1, 4, offset, comparison, connector, Number(value)};
}

struct ExtendedTest : testing::Test {
  ExtendedTest() : file_(TenBlock()) {
    for (int i = 1; i <= 10; ++i) EXPECT_EQ(file_.Insert(Row(i, 5 + i % 2)), 0);
  }

  void First(int key = 0) {
    EXPECT_EQ(file_.Call(kGetFirst, {.room = 12, .keyNumber = key}).status, 0);
  }
  void Last(int key = 0) {
    EXPECT_EQ(file_.Call(kGetLast, {.room = 12, .keyNumber = key}).status, 0);
  }
  void To(int id) {
    EXPECT_EQ(file_.Call(kGetEqual, {.room = 12, .key = Number(int32_t{id})}).status, 0);
  }

  // "status: 1 2 3": ids of the first field, which must be the id.
  std::string Run(int operation, const Descriptor& descriptor, int key = 0, size_t room = 1000) {
    const CallOut out = file_.Call(
        operation, {.data = DescriptorBytes(descriptor), .room = room, .keyNumber = key});
    std::string text = std::to_string(out.status) + ":";
    if (out.status == kDescriptor || out.status < 0 ||
        (out.status > 0 && out.status < 9 && !out.dataTouched)) {
      return text;
    }
    const Bytes reply = out.Returned();
    size_t at = 2;
    for (int left = NumberAt<uint16_t>(reply, 0); left > 0; --left) {
      text += " " + std::to_string(NumberAt<int32_t>(reply, at + 6));
      at += 6 + NumberAt<uint16_t>(reply, at);
    }
    return at == reply.size() ? text : text + " ?";
  }

  // The current record's id, by Get Position and Get Direct on a cursor of its own.
  std::string Current() {
    const CallOut position = file_.Call(kGetPosition, {.room = 4});
    if (position.status != 0) return "#" + std::to_string(position.status);
    EXPECT_EQ(file_.Open(0, 1), 0);
    const CallOut read =
        file_.Call(kGetDirect, {.data = position.data, .room = 12, .keyNumber = -1}, 1);
    EXPECT_EQ(file_.Close(1), 0);
    return std::to_string(NumberAt<int32_t>(read.data, 0));
  }

  TestFile file_;
};

TEST_F(ExtendedTest, BeginsWithOrAfterTheCurrentRecord) {
  First();
  EXPECT_EQ(Run(36, {.signature = "UC", .wanted = 3}), "0: 1 2 3");
  EXPECT_EQ(Run(36, {.signature = "EG", .wanted = 3}), "0: 4 5 6");
  EXPECT_EQ(Run(36, {.signature = "UC", .wanted = 2}), "0: 6 7");
  EXPECT_EQ(Run(37, {.signature = "EG", .wanted = 2}), "0: 6 5");
  EXPECT_EQ(Run(37, {.signature = "UC", .wanted = 2}), "0: 5 4");
}

// Its length word has 16 bits.
TEST(ExtendedRead, GivesNoRecordThatItsLengthWordCannotTell) {
  constexpr uint16_t kLength = 60000;
  const struct {
    uint16_t first, second;
    Status status;
    uint16_t records, told;
  } kRows[] = {
      {32767, 32768, kOk, 1, 65535},
      {32768, 32768, kDataBufferLength, 0, 0},
      {40000, 40000, kDataBufferLength, 0, 0},
  };
  TestFile file(CreateBlock({.recordLength = 8, .flags = 1}, {{.flags = 0x102, .type = 1}}));
  ASSERT_EQ(file.Insert(Number(int32_t{1}) + Bytes(kLength - 4, 'x')), 0);
  for (const auto& row : kRows) {
    SCOPED_TRACE(row.first + row.second);
    const Descriptor fields{.signature = "UC", .fields = {{row.first, 0}, {row.second, 4}}};
    ASSERT_EQ(file.Call(kGetFirst, {.room = kLength}).status, 0);
    const CallOut out = file.Call(36, {.data = DescriptorBytes(fields), .room = 300000});
    EXPECT_EQ(out.status, row.status);
    EXPECT_EQ(NumberAt<uint16_t>(out.data, 0), row.records);
    EXPECT_EQ(out.length, row.records == 0 ? 2u : 8u + row.told);
    if (row.records != 0) {
      EXPECT_EQ(NumberAt<uint16_t>(out.data, 2), row.told);
    }
  }
}

TEST_F(ExtendedTest, GoesOnToTheEnd) {
  First();
  EXPECT_EQ(Run(36, {.signature = "UC", .wanted = 5}), "0: 1 2 3 4 5");
  EXPECT_EQ(Run(36, {.wanted = 5}), "0: 6 7 8 9 10");
  EXPECT_EQ(Run(36, {.wanted = 5}), "9:");
  EXPECT_EQ(Current(), "10");
  EXPECT_EQ(Run(37, {.wanted = 20}), "9: 9 8 7 6 5 4 3 2 1");
  EXPECT_EQ(Run(37, {.wanted = 20}), "9:");
  EXPECT_EQ(Current(), "1");
}

TEST_F(ExtendedTest, EmptyReplyIsItsCount) {
  Last();
  const CallOut out = file_.Call(36, {.data = DescriptorBytes({}), .room = 100});
  EXPECT_EQ(out.status, kEndOfFile);
  EXPECT_EQ(ToHex(out.Returned()), "0000");
}

TEST_F(ExtendedTest, FollowsTheKeyGiven) {
  First(1);
  EXPECT_EQ(Run(36, {.signature = "UC", .wanted = 7}, 1), "0: 2 4 6 8 10 1 3");
  First(2);
  EXPECT_EQ(Run(36, {.signature = "UC", .wanted = 3}, 2), "0: 10 9 8");
  EXPECT_EQ(Run(37, {.wanted = 9}, 2), "9: 9 10");
}

TEST_F(ExtendedTest, NeedsAPlaceOnTheKey) {
  EXPECT_EQ(Run(36, {}), "8:");
  First();
  EXPECT_EQ(Run(36, {}, 1), "7:");
  EXPECT_EQ(Run(37, {}, 9), "6:");
  EXPECT_EQ(Run(36, {}), "0: 2");
}

TEST_F(ExtendedTest, StepsInPhysicalOrder) {
  ASSERT_EQ(file_.Close(), 0);
  ASSERT_EQ(file_.Open(), 0);
  EXPECT_EQ(Run(38, {.wanted = 3}), "0: 1 2 3");
  EXPECT_EQ(Run(38, {.wanted = 3}), "0: 4 5 6");
  EXPECT_EQ(Run(39, {.wanted = 3}), "0: 5 4 3");
  EXPECT_EQ(Run(39, {.signature = "UC", .wanted = 9}), "9: 3 2 1");
  EXPECT_EQ(Run(36, {}), "8:");
}

TEST_F(ExtendedTest, StepsAfterOpenBeginAtTheirEndOfTheFile) {
  for (const char* signature : {"UC", "EG"}) {
    ASSERT_EQ(file_.Close(), 0);
    ASSERT_EQ(file_.Open(), 0);
    EXPECT_EQ(Run(39, {.signature = signature, .wanted = 2}), "0: 10 9");
    ASSERT_EQ(file_.Close(), 0);
    ASSERT_EQ(file_.Open(), 0);
    EXPECT_EQ(Run(38, {.signature = signature, .wanted = 2}), "0: 1 2");
  }
}

TEST_F(ExtendedTest, StopsBeforeTheRecordThatDoesNotFit) {
  // A record takes 6 + 4 bytes of the reply, the descriptor 16.
  First();
  EXPECT_EQ(Run(36, {.signature = "UC", .wanted = 3}, 0, 22), "22: 1 2");
  EXPECT_EQ(Current(), "2");
  EXPECT_EQ(Run(36, {.wanted = 3}, 0, 22), "22: 3 4");
  EXPECT_EQ(Run(36, {.wanted = 3, .fields = {{12, 0}, {12, 0}}}, 0, 24), "22:");
  EXPECT_EQ(Current(), "4");
  EXPECT_EQ(Run(36, {.wanted = 1}), "0: 5");
}

TEST_F(ExtendedTest, StopsAtTheRejectCount) {
  First();
  const Descriptor three{.signature = "UC", .rejects = 1, .terms = {Is(3, 0, kGe)}, .wanted = 1};
  EXPECT_EQ(Run(36, three), "60:");
  EXPECT_EQ(Current(), "1");
  EXPECT_EQ(Run(36, {.rejects = 1, .terms = three.terms}), "60:");
  EXPECT_EQ(Run(36, {.rejects = 1, .terms = three.terms}), "0: 3");
  First();
  EXPECT_EQ(Run(36, {.rejects = 3, .terms = {Is(5, 4)}, .wanted = 9}), "60: 2 4 6");
  EXPECT_EQ(Current(), "7");
}

TEST_F(ExtendedTest, StopsWhereTheKeyPassesTheRange) {
  First(1);
  const std::vector<TermOf> five = {Is(5, 4)};
  EXPECT_EQ(Run(36, {.signature = "UC", .terms = five, .wanted = 9}, 1), "64: 2 4 6 8 10");
  EXPECT_EQ(Current(), "1");
  Last(1);
  EXPECT_EQ(Run(37, {.signature = "UC", .terms = {Is(6, 4)}, .wanted = 9}, 1), "64: 9 7 5 3 1");
  EXPECT_EQ(Current(), "10");
  First(2);
  EXPECT_EQ(Run(36, {.signature = "UC", .terms = {Is(9, 0, kGe)}, .wanted = 9}, 2), "64: 10 9");
  First();
  EXPECT_EQ(Run(36, {.signature = "UC", .terms = {Is(5, 0, kNe)}, .wanted = 20}),
            "9: 1 2 3 4 6 7 8 9 10");
  First();
  EXPECT_EQ(Run(36, {.signature = "UC", .terms = {Is(2, 0, kEq, kOrNext), Is(9, 0)}, .wanted = 9}),
            "9: 2 9");
  EXPECT_EQ(Run(39, {.terms = {Is(9, 0)}, .wanted = 9}), "9: 9") << "steps have no range";
}

TEST_F(ExtendedTest, JudgesByTerms) {
  First();
  const std::vector<TermOf> terms = {Is(5, 4, kEq, kAndNext), Is(4, 0, kEq, kOrNext), Is(8, 0)};
  EXPECT_EQ(Run(36, {.signature = "UC", .terms = terms, .wanted = 9}), "9: 4 8");
  EXPECT_EQ(Current(), "10");
}

TEST_F(ExtendedTest, NoUpdateAfterwardsButAPosition) {
  for (const int operation : {36, 38}) {
    First();
    EXPECT_EQ(Run(operation, {.wanted = 3}), "0: 2 3 4");
    EXPECT_EQ(file_.Call(kUpdate, {.data = Row(4, 0), .keyNumber = -1}).status,
              kInvalidPositioning);
    EXPECT_EQ(file_.Call(kDelete, {}).status, kInvalidPositioning);
    EXPECT_EQ(Current(), "4");
    const CallOut next = file_.Call(kStepNext, {.room = 12});
    EXPECT_EQ(NumberAt<int32_t>(next.data, 0), 5);
  }
}

TEST_F(ExtendedTest, GetNextGoesOnFromTheLastExamined) {
  First();
  EXPECT_EQ(Run(36, {.rejects = 1, .terms = {Is(99, 0)}}), "60:");
  const CallOut next = file_.Call(kGetNext, {.room = 12});
  EXPECT_EQ(NumberAt<int32_t>(next.data, 0), 3);
}

TEST_F(ExtendedTest, DeletedCurrentRecordIsPassed) {
  To(3);
  ASSERT_EQ(file_.Call(kDelete, {}).status, 0);
  EXPECT_EQ(Run(36, {.signature = "UC", .wanted = 2}), "0: 4 5");
  To(6);
  ASSERT_EQ(file_.Call(kDelete, {}).status, 0);
  EXPECT_EQ(Run(37, {.signature = "UC", .wanted = 2}), "0: 5 4");
}

TEST_F(ExtendedTest, WrongDescriptorsLeaveEverything) {
  const Descriptor kWrong[] = {
      {.signature = "XX"},
      {.wanted = 0},
      {.fields = {}},
      {.lengthOff = 1},
      {.lengthOff = -1},
      {.terms = {Is(1, 0, 7)}},
      {.terms = {Is(1, 0, kEq, kAndNext)}},
      {.terms = {{1, 4, 0, kEq, 0, {1, 0}}}},
  };
  for (const Descriptor& descriptor : kWrong) {
    To(2);
    const CallOut out = file_.Call(36, {.data = DescriptorBytes(descriptor)});
    EXPECT_EQ(out.status, kDescriptor);
    EXPECT_FALSE(out.dataTouched);
    EXPECT_EQ(out.length, out.data.size());
    const CallOut next = file_.Call(kGetNext, {.room = 12});
    EXPECT_EQ(NumberAt<int32_t>(next.data, 0), 3);
  }
}

TEST_F(ExtendedTest, KeyBufferIsNeverLookedAt) {
  First();
  const CallOut out =
      file_.Call(36, {.data = DescriptorBytes({}), .room = 100, .key = Bytes(255, 0x7F)});
  EXPECT_EQ(out.status, 0);
  EXPECT_FALSE(out.keyTouched);
}

TEST_F(ExtendedTest, OwnWritesInsideATransactionAreSeen) {
  for (const int begin : {19, 1019}) {
    ASSERT_EQ(file_.Call(begin, {}).status, 0);
    ASSERT_EQ(file_.Insert(Row(0, 5)), 0);
    To(4);
    ASSERT_EQ(file_.Call(kDelete, {}).status, 0);
    To(6);
    ASSERT_EQ(file_.Call(kUpdate, {.data = Row(16, 5)}).status, 0);
    First();
    EXPECT_EQ(Run(36, {.signature = "UC", .terms = {Is(5, 4)}, .wanted = 20}), "9: 0 2 8 10 16");
    Last();
    EXPECT_EQ(Run(37, {.signature = "UC", .terms = {Is(5, 4)}, .wanted = 20}), "9: 16 10 8 2 0");
    First(1);
    EXPECT_EQ(Run(36, {.signature = "UC", .terms = {Is(5, 4)}, .wanted = 20}, 1), "64: 2 16 8 10 0")
        << "the record that kept its value keeps its place";
    ASSERT_EQ(file_.Call(kAbort, {}).status, 0);
  }
}

TEST(ExtendedVariable, ShortRecordsCutTheLastFieldOnly) {
  TestFile file(CreateBlock({.recordLength = 4, .flags = 1}, {{.flags = 0x102, .type = 1}}));
  ASSERT_EQ(file.Insert(Number(int32_t{1}) + Hex("aabbccdd")), 0);
  ASSERT_EQ(file.Insert(Number(int32_t{2}) + Hex("ee")), 0);
  const auto run = [&](const std::vector<FieldOf>& fields) {
    EXPECT_EQ(file.Call(kGetFirst, {.room = 100}).status, 0);
    const CallOut out = file.Call(
        36,
        {.data = DescriptorBytes({.signature = "UC", .wanted = 2, .fields = fields}), .room = 200});
    std::string text = std::to_string(out.status);
    for (size_t at = 2; at + 6 <= out.length; at += 6 + NumberAt<uint16_t>(out.data, at)) {
      const auto from = out.data.begin() + static_cast<std::ptrdiff_t>(at) + 6;
      text += " " + ToHex({from, from + NumberAt<uint16_t>(out.data, at)});
    }
    return text;
  };
  EXPECT_EQ(run({{999, 0}}), "0 01000000aabbccdd 02000000ee");
  EXPECT_EQ(run({{2, 4}, {1, 0}}), "65 aabb01");
  EXPECT_EQ(run({{1, 5}}), "65 bb");
  EXPECT_EQ(run({{1, 0}, {9, 4}}), "0 01aabbccdd 02ee");
}

TEST(ExtendedSearch, RejectsUpToTheSystemsCount) {
  TestFile file(CreateBlock({.recordLength = 4}, {{.flags = 0x102, .type = 1}}));
  ASSERT_EQ(file.Call(kBegin, {}).status, 0);
  for (int32_t i = 0; i < 5000; ++i) ASSERT_EQ(file.Insert(Number(i)), 0);
  ASSERT_EQ(file.Call(kEnd, {}).status, 0);
  ASSERT_EQ(file.Call(kGetFirst, {.room = 4}).status, 0);
  const Bytes descriptor = DescriptorBytes({.signature = "UC", .terms = {Is(4999, 0)}});
  EXPECT_EQ(file.Call(36, {.data = descriptor, .room = 100}).status, kRejectCount);
  const CallOut position = file.Call(kGetNext, {.room = 4});
  EXPECT_EQ(NumberAt<int32_t>(position.data, 0), 4095);
}

Bytes Images(const std::vector<Bytes>& records) {
  Bytes data = Number(static_cast<uint16_t>(records.size()));
  for (const Bytes& record : records) {
    data = std::move(data) + Number(static_cast<uint16_t>(record.size())) + record;
  }
  return data;
}

TEST_F(ExtendedTest, InsertsManyAndTellsTheirPositions) {
  const Bytes data = Images({Row(20, 1), Row(21, 1), Row(22, 1)});
  const CallOut out = file_.Call(kInsertExtended, {.data = data, .keyNumber = 0});
  EXPECT_EQ(out.status, 0);
  EXPECT_EQ(out.length, 14u);
  EXPECT_EQ(NumberAt<uint16_t>(out.data, 0), 3);
  EXPECT_EQ(NumberAt<int32_t>(out.key, 0), 22);
  EXPECT_EQ(Current(), "22");
  const Bytes second(out.data.begin() + 6, out.data.begin() + 10);
  EXPECT_EQ(NumberAt<int32_t>(file_.Call(kGetDirect, {.data = second, .room = 12}).data, 0), 21);
}

TEST_F(ExtendedTest, InsertStopsAtTheFirstFailureAndKeepsTheEarlier) {
  const Bytes data = Images({Row(20, 1), Row(3, 1), Row(22, 1)});
  const CallOut out = file_.Call(kInsertExtended, {.data = data, .keyNumber = -1});
  EXPECT_EQ(out.status, kDuplicateKey);
  EXPECT_EQ(out.length, 6u);
  EXPECT_EQ(NumberAt<uint16_t>(out.data, 0), 1);
  EXPECT_EQ(Current(), "20");
  EXPECT_EQ(file_.Counts(), "11 11,3,11");
}

TEST_F(ExtendedTest, InsertRefusesDataThatDoesNotAddUp) {
  const Bytes good = Images({Row(20, 1)});
  for (const Bytes& data :
       {Bytes{}, Hex("0000"), good + Bytes{0}, Bytes(good.begin(), good.end() - 1),
        Hex("0200") + Bytes(good.begin() + 2, good.end())}) {
    const CallOut out = file_.Call(kInsertExtended, {.data = data});
    EXPECT_EQ(out.status, kInsertDescriptor) << ToHex(data);
    EXPECT_FALSE(out.dataTouched);
  }
  EXPECT_EQ(file_.Call(kInsertExtended, {.data = Images({Bytes(11)})}).status, kDataBufferLength);
  EXPECT_EQ(file_.Counts(), "10 10,2,10");
}

}  // namespace
}  // namespace btrieve::test
