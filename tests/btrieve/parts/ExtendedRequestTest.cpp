// Descriptors, conditions, replies.
#include <gtest/gtest.h>

#include "btrieve/scans/ExtendedRequest.h"
#include "kit/Descriptor.h"

namespace btrieve::test {
namespace {

FileSpec FileWithSequence() {
  FileSpec file;
  const Bytes block = CreateBlock({}, {{.length = 1, .flags = 0x120}}, ReversingSequence());
  EXPECT_EQ(ParseCreateBlock(block, file), kOk);
  return file;
}

TermOf IntegerIs(int32_t value, int connector = kLastTerm, int comparison = kEq,
                 uint16_t offset = 0) {
  return {1, 4, offset, comparison, connector, Number(value)};
}

struct DescriptorCase {
  const char* name;
  Bytes data;
  Status status;
};

const DescriptorCase kDescriptors[] = {
    {"begin with the current", DescriptorBytes({.signature = "UC"}), 0},
    {"second field",
     DescriptorBytes({.terms = {{1, 4, 0, kEq | kWithField, 0, Number(uint16_t{4})}}}), 0},
    {"sequence of the file", DescriptorBytes({.terms = {{0, 1, 0, kEq | kWithSequence, 0, {1}}}}),
     0},
    {"fold on a number is ignored",
     DescriptorBytes({.terms = {{1, 1, 0, kEq | kWithFold, 0, {1}}}}), 0},
    {"empty data", {}, 62},
    {"length word above the data", DescriptorBytes({.lengthOff = 1}), 62},
    {"signature", DescriptorBytes({.signature = "XX"}), 62},
    {"signature in small letters", DescriptorBytes({.signature = "eg"}), 62},
    {"comparison 0", DescriptorBytes({.terms = {IntegerIs(1, 0, 0)}}), 62},
    {"comparison 7", DescriptorBytes({.terms = {IntegerIs(1, 0, 7)}}), 62},
    {"named sequence", DescriptorBytes({.terms = {{0, 1, 0, kEq | 8, 0, {1}}}}), 62},
    {"unknown flag", DescriptorBytes({.terms = {{0, 1, 0, kEq | 16, 0, {1}}}}), 62},
    {"connector on the last term", DescriptorBytes({.terms = {IntegerIs(1, kAndNext)}}), 62},
    {"no connector before the last", DescriptorBytes({.terms = {IntegerIs(1), IntegerIs(1)}}), 62},
    {"connector 3", DescriptorBytes({.terms = {IntegerIs(1, 3), IntegerIs(1)}}), 62},
    {"no records wanted", DescriptorBytes({.wanted = 0}), 62},
    {"no fields", DescriptorBytes({.fields = {}}), 62},
    {"note", DescriptorBytes({.terms = {{12, 1, 0, kEq, 0, {1}}}}), 62},
    {"float of 5", DescriptorBytes({.terms = {{2, 5, 0, kEq, 0, Bytes(5)}}}), 62},
    {"lstring of 1", DescriptorBytes({.terms = {{10, 1, 0, kEq, 0, {1}}}}), 62},
};

TEST(ExtendedDescriptor, TakesGoodOnesAndRefusesTheRest) {
  const FileSpec file = FileWithSequence();
  for (const DescriptorCase& row : kDescriptors) {
    // In a block of its own size, so that reading past it is seen.
    const std::vector<uint8_t> exact(row.data);
    EXPECT_EQ(ExtendedRequest().Compile(exact, file), row.status) << row.name;
  }
}

TEST(ExtendedDescriptor, SequenceNeedsOneInTheFile) {
  const Bytes data = DescriptorBytes({.terms = {{0, 1, 0, kEq | kWithSequence, 0, {1}}}});
  EXPECT_EQ(ExtendedRequest().Compile(data, FileSpec{}), kDescriptor);
}

// 'A' accepted, 'r' rejected, 'E' rejected at the end of the range of a read up that key.
char Judged(const std::vector<TermOf>& terms, const Bytes& record, const Seg* key = nullptr) {
  FileSpec file;
  const Bytes block = CreateBlock({}, {key != nullptr ? *key : Seg{}}, ReversingSequence());
  EXPECT_EQ(ParseCreateBlock(block, file), kOk);
  ExtendedRequest request;
  EXPECT_EQ(request.Compile(DescriptorBytes({.terms = terms}), file), kOk);
  if (key != nullptr) request.BindLimit(file.keys[0], true);
  switch (request.Judge(record.data(), record.size())) {
    case Verdict::Accept:
      return 'A';
    case Verdict::Reject:
      return 'r';
    default:
      return 'E';
  }
}

struct ConditionCase {
  const char* name;
  std::vector<TermOf> terms;
  const char* record;
  char verdict;
};

// Three terms on bytes 0, 4, 8, true where the record holds 1.
std::vector<TermOf> Three(int first, int second) {
  return {IntegerIs(1, first), IntegerIs(1, second, kEq, 4), IntegerIs(1, kLastTerm, kEq, 8)};
}

// Whether the number at the beginning compares so with the one at `second`.
std::vector<TermOf> WithField(uint8_t type, int comparison, uint16_t second = 4) {
  return {{type, 4, 0, comparison | kWithField, 0, Number(second)}};
}

constexpr char kTTT[] = "01000000 01000000 01000000";
constexpr char kTTF[] = "01000000 01000000 00000000";
constexpr char kTFT[] = "01000000 00000000 01000000";
constexpr char kTFF[] = "01000000 00000000 00000000";
constexpr char kFTT[] = "00000000 01000000 01000000";
constexpr char kFTF[] = "00000000 01000000 00000000";
constexpr char kFFT[] = "00000000 00000000 01000000";
constexpr char kFFF[] = "00000000 00000000 00000000";

const ConditionCase kConditions[] = {
    {"A and (B or C): TFT", Three(kAndNext, kOrNext), kTFT, 'A'},
    {"A and (B or C): TFF", Three(kAndNext, kOrNext), kTFF, 'r'},
    {"A or (B and C): FTT", Three(kOrNext, kAndNext), kFTT, 'A'},
    {"A or (B and C): FTF", Three(kOrNext, kAndNext), kFTF, 'r'},
    {"A or (B and C): FFT", Three(kOrNext, kAndNext), kFFT, 'r'},
    {"all: TTT", Three(kAndNext, kAndNext), kTTT, 'A'},
    {"all: TTF", Three(kAndNext, kAndNext), kTTF, 'r'},
    {"one of them: FFF", Three(kOrNext, kOrNext), kFFF, 'r'},
    {"greater, not", {IntegerIs(-1, 0, kGt)}, "FFFFFFFF", 'r'},
    {"at least", {IntegerIs(-1, 0, kGe)}, "FFFFFFFF", 'A'},
    {"at most", {IntegerIs(-1, 0, kLe)}, "00000000", 'r'},
    {"second field beyond", WithField(1, kNe, 5), "FFFFFFFF 00000000", 'r'},
    {"term beyond the record", {IntegerIs(0, 0, kNe, 1)}, "01020304", 'r'},
    {"sequence turns less round", {{0, 1, 0, kLt | kWithSequence, 0, Hex("61")}}, "62", 'A'},
    {"sequence after folding",
     {{0, 1, 0, kEq | kWithSequence | kWithFold, 0, Hex("61")}},
     "41",
     'A'},
};

TEST(ExtendedCondition, TermsDecideFromLeftToRight) {
  for (const ConditionCase& row : kConditions) {
    EXPECT_EQ(Judged(row.terms, Hex(row.record)), row.verdict) << row.name;
  }
}

// Where it ends otherwise is held against the model.
TEST(FilterLimit, NeedsTheKeysCollation) {
  const Seg plain{.length = 1, .flags = 0x100};
  const Seg folding{.length = 1, .flags = 0x500};
  const Seg sequenced{.length = 1, .flags = 0x120};
  const auto judged = [](int flag, const Seg& key, const char* value = "63") {
    return Judged({{0, 1, 0, kEq | flag, 0, Hex("62")}}, Hex(value), &key);
  };
  EXPECT_EQ(judged(0, plain), 'E');
  EXPECT_EQ(judged(kWithFold, plain), 'r');
  EXPECT_EQ(judged(0, folding), 'r');
  EXPECT_EQ(judged(kWithFold, folding), 'E');
  EXPECT_EQ(judged(0, sequenced), 'r');
  EXPECT_EQ(judged(kWithSequence, sequenced), 'r');  // 63 lies below 62 in the reversed order
  EXPECT_EQ(judged(kWithSequence, sequenced, "61"), 'E');
  const Seg number{.flags = 0x100, .type = 1};
  EXPECT_EQ(Judged(WithField(1, kEq), Number(int32_t{6}) + Number(int32_t{5}), &number), 'r');
}

struct ReplyCase {
  const char* name;
  std::vector<FieldOf> fields;
  size_t room;
  const char* text;  // status of each record added, then the reply
};

// Records added: 010203, 0405060708, 09.
const ReplyCase kReplies[] = {
    {"last field is cut", {{1, 0}, {9, 1}}, 100, "0 0 65 1:010203 2:0405060708"},
    {"field before it is not", {{4, 0}, {1, 0}}, 100, "65 0 65 2:0405060704"},
    {"begins at the end", {{1, 3}}, 100, "65 0 65 2:07"},
    {"room for one", {{1, 0}}, 15, "0 22 22 1:01"},
    {"a later one still fits", {{100, 0}}, 18, "0 22 0 1:010203 3:09"},
};

std::string Replied(const ReplyCase& row) {
  std::vector<ExtractField> fields;
  for (const FieldOf& field : row.fields) fields.push_back({field.length, field.offset});
  Bytes out(row.room, 0xEE);
  ReplyWriter writer(out, fields);
  std::string text;
  uint32_t position = 0;
  for (const char* record : {"010203", "0405060708", "09"}) {
    const Bytes bytes = Hex(record);
    text += std::to_string(writer.Add(++position, bytes.data(), bytes.size())) + " ";
  }
  out.resize(writer.Finish());
  return text + ReplyText(out);
}

TEST(ExtendedReply, HoldsWholeRecordsAsFarAsTheyFit) {
  for (const ReplyCase& row : kReplies) EXPECT_EQ(Replied(row), row.text) << row.name;
}

}  // namespace
}  // namespace btrieve::test
