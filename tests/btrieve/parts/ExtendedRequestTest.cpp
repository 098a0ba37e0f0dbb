// Descriptors, conditions, the end of a range, replies.
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

Bytes With(Bytes bytes, size_t at, uint8_t value) {
  bytes.at(at) = value;
  return bytes;
}

const DescriptorCase kDescriptors[] = {
    {"no terms", DescriptorBytes({}), 0},
    {"begin with the current", DescriptorBytes({.signature = "UC"}), 0},
    {"one term", DescriptorBytes({.terms = {IntegerIs(1)}}), 0},
    {"bytes behind", DescriptorBytes({.terms = {IntegerIs(1)}}) + Bytes(64, 0xFF), 0},
    {"second field",
     DescriptorBytes({.terms = {{1, 4, 0, kEq | kWithField, 0, Number(uint16_t{4})}}}), 0},
    {"long string", DescriptorBytes({.terms = {{0, 300, 0, kEq, 0, Bytes(300, 'x')}}}), 0},
    {"sequence of the file", DescriptorBytes({.terms = {{0, 1, 0, kEq | kWithSequence, 0, {1}}}}),
     0},
    {"fold on a number is ignored",
     DescriptorBytes({.terms = {{1, 1, 0, kEq | kWithFold, 0, {1}}}}), 0},
    {"empty data", {}, 62},
    {"length word alone", Hex("0200"), 62},
    {"length word above the data", DescriptorBytes({.lengthOff = 1}), 62},
    {"length word above, bytes behind", DescriptorBytes({.lengthOff = 1}) + Bytes(8), 62},
    {"length word below", DescriptorBytes({.lengthOff = -1}), 62},
    {"length word 0", With(DescriptorBytes({}), 0, 0), 62},
    {"signature", DescriptorBytes({.signature = "XX"}), 62},
    {"signature in small letters", DescriptorBytes({.signature = "eg"}), 62},
    {"comparison 0", DescriptorBytes({.terms = {IntegerIs(1, 0, 0)}}), 62},
    {"comparison 7", DescriptorBytes({.terms = {IntegerIs(1, 0, 7)}}), 62},
    {"named sequence", DescriptorBytes({.terms = {{0, 1, 0, kEq | 8, 0, {1}}}}), 62},
    {"unknown flag", DescriptorBytes({.terms = {{0, 1, 0, kEq | 16, 0, {1}}}}), 62},
    {"connector on the last term", DescriptorBytes({.terms = {IntegerIs(1, kAndNext)}}), 62},
    {"no connector before the last", DescriptorBytes({.terms = {IntegerIs(1), IntegerIs(1)}}), 62},
    {"connector 3", DescriptorBytes({.terms = {IntegerIs(1, 3), IntegerIs(1)}}), 62},
    {"constant shorter than told", DescriptorBytes({.terms = {{1, 4, 0, kEq, 0, {1, 0}}}}), 62},
    {"no records wanted", DescriptorBytes({.wanted = 0}), 62},
    {"no fields", DescriptorBytes({.fields = {}}), 62},
    {"field list cut", With(DescriptorBytes({}), 10, 2), 62},
    {"more terms than stand there", With(DescriptorBytes({}), 6, 200), 62},
    {"note", DescriptorBytes({.terms = {{12, 1, 0, kEq, 0, {1}}}}), 62},
    {"type 99", DescriptorBytes({.terms = {{99, 1, 0, kEq, 0, {1}}}}), 62},
    {"term without length", DescriptorBytes({.terms = {{0, 0, 0, kEq, 0, {}}}}), 62},
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

TEST(ExtendedDescriptor, RejectCountOfZeroIsTheSystems) {
  ExtendedRequest request;
  ASSERT_EQ(request.Compile(DescriptorBytes({.wanted = 9}), {}), kOk);
  EXPECT_EQ(request.RejectCount(), 4095);
  EXPECT_EQ(request.RecordsWanted(), 9);
  ExtendedRequest limited;
  ASSERT_EQ(limited.Compile(DescriptorBytes({.rejects = 3}), {}), kOk);
  EXPECT_EQ(limited.RejectCount(), 3);
}

// 'A' accepted, 'r' rejected, 'E' rejected at the end of the range.
char Judged(const Descriptor& descriptor, const Bytes& record, bool bind = false,
            bool forward = true, Seg key = {.flags = 0x100, .type = 1}) {
  FileSpec file;
  EXPECT_EQ(ParseCreateBlock(CreateBlock({}, {key}, ReversingSequence()), file), kOk);
  ExtendedRequest request;
  EXPECT_EQ(request.Compile(DescriptorBytes(descriptor), file), kOk);
  if (bind) request.BindLimit(file.keys[0], forward);
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
    {"nothing asked", {}, "00", 'A'},
    {"A and (B or C): TFT", Three(kAndNext, kOrNext), kTFT, 'A'},
    {"A and (B or C): TTF", Three(kAndNext, kOrNext), kTTF, 'A'},
    {"A and (B or C): TFF", Three(kAndNext, kOrNext), kTFF, 'r'},
    {"A and (B or C): FTT", Three(kAndNext, kOrNext), kFTT, 'r'},
    {"A and (B or C): FFT", Three(kAndNext, kOrNext), kFFT, 'r'},
    {"A or (B and C): TFF", Three(kOrNext, kAndNext), kTFF, 'A'},
    {"A or (B and C): FTT", Three(kOrNext, kAndNext), kFTT, 'A'},
    {"A or (B and C): FTF", Three(kOrNext, kAndNext), kFTF, 'r'},
    {"A or (B and C): FFT", Three(kOrNext, kAndNext), kFFT, 'r'},
    {"all: TTT", Three(kAndNext, kAndNext), kTTT, 'A'},
    {"all: TTF", Three(kAndNext, kAndNext), kTTF, 'r'},
    {"one of them: FFT", Three(kOrNext, kOrNext), kFFT, 'A'},
    {"one of them: FFF", Three(kOrNext, kOrNext), kFFF, 'r'},
    {"equal", {IntegerIs(-1)}, "FFFFFFFF", 'A'},
    {"greater, not", {IntegerIs(-1, 0, kGt)}, "FFFFFFFF", 'r'},
    {"greater", {IntegerIs(-1, 0, kGt)}, "00000000", 'A'},
    {"less", {IntegerIs(-1, 0, kLt)}, "FEFFFFFF", 'A'},
    {"unequal", {IntegerIs(-1, 0, kNe)}, "FEFFFFFF", 'A'},
    {"at least", {IntegerIs(-1, 0, kGe)}, "FFFFFFFF", 'A'},
    {"at most", {IntegerIs(-1, 0, kLe)}, "00000000", 'r'},
    {"fields equal", WithField(1, kEq), "05000000 05000000", 'A'},
    {"first field less", WithField(1, kLt), "FFFFFFFF 00000000", 'A'},
    {"first unsigned not less", WithField(14, kLt), "FFFFFFFF 00000000", 'r'},
    {"second field beyond", WithField(1, kNe, 5), "FFFFFFFF 00000000", 'r'},
    {"term beyond the record", {IntegerIs(0, 0, kNe, 1)}, "01020304", 'r'},
    {"beyond, before OR", {IntegerIs(0, kOrNext, kNe, 1), IntegerIs(0, 0, kNe)}, "01020304", 'A'},
    {"term ends with the record", {IntegerIs(0, 0, kNe, 1)}, "0001020304", 'A'},
    {"far offset", {IntegerIs(0, 0, kNe, 65535)}, "01020304", 'r'},
    {"string sees case", {{0, 2, 0, kEq, 0, Hex("6142")}}, "4142", 'r'},
    {"string folds case", {{0, 2, 0, kEq | kWithFold, 0, Hex("6142")}}, "4142", 'A'},
    {"lstring folds case", {{10, 3, 0, kEq | kWithFold, 0, Hex("016100")}}, "014155", 'A'},
    {"zstring folds case", {{11, 3, 0, kEq | kWithFold, 0, Hex("610000")}}, "410055", 'A'},
    {"sequence turns less round", {{0, 1, 0, kLt | kWithSequence, 0, Hex("61")}}, "62", 'A'},
    {"sequence after folding",
     {{0, 1, 0, kEq | kWithSequence | kWithFold, 0, Hex("61")}},
     "41",
     'A'},
    {"decimal by value", {{5, 2, 0, kEq, 0, Hex("000D")}}, "0000", 'A'},
    {"numericsts below zero", {{17, 3, 0, kLt, 0, Hex("30302B")}}, "30312D", 'A'},
};

TEST(ExtendedCondition, TermsDecideFromLeftToRight) {
  for (const ConditionCase& row : kConditions) {
    EXPECT_EQ(Judged({.terms = row.terms}, Hex(row.record)), row.verdict) << row.name;
  }
}

struct LimitCase {
  const char* name;
  int comparison;
  bool growing;
  const char* below;  // verdicts for 4, 5, 6 against the constant 5
};

const LimitCase kLimits[] = {
    {"= up", kEq, true, "rAE"},     {"= down", kEq, false, "EAr"},  {"> up", kGt, true, "rrA"},
    {"> down", kGt, false, "EEA"},  {"< up", kLt, true, "AEE"},     {"< down", kLt, false, "Arr"},
    {"<> up", kNe, true, "ArA"},    {"<> down", kNe, false, "ArA"}, {">= up", kGe, true, "rAA"},
    {">= down", kGe, false, "EAA"}, {"<= up", kLe, true, "AAE"},    {"<= down", kLe, false, "AAr"},
};

std::string Verdicts(const std::vector<TermOf>& terms, bool forward, Seg key) {
  std::string text;
  for (const int32_t value : {4, 5, 6}) {
    text += Judged({.terms = terms}, Number(value) + Bytes(12), true, forward, key);
  }
  return text;
}

TEST(FilterLimit, EndsWhereNoLaterRecordCanMatch) {
  const Seg up{.flags = 0x100, .type = 1};
  const Seg down{.flags = 0x140, .type = 1};
  for (const LimitCase& row : kLimits) {
    const std::vector<TermOf> terms = {IntegerIs(5, kLastTerm, row.comparison)};
    EXPECT_EQ(Verdicts(terms, row.growing, up), row.below) << row.name;
    EXPECT_EQ(Verdicts(terms, !row.growing, down), row.below) << row.name << ", descending key";
  }
}

TEST(FilterLimit, NeedsTheKeysFieldAndNoAlternative) {
  const Seg key{.flags = 0x100, .type = 1};
  const std::vector<TermOf> isFive = {IntegerIs(5)};
  EXPECT_EQ(Verdicts({IntegerIs(5, kAndNext), IntegerIs(0, 0, kEq, 4)}, true, key), "rAE");
  EXPECT_EQ(Verdicts({IntegerIs(5, kAndNext), IntegerIs(1, 0, kEq, 4)}, true, key), "rrE");
  EXPECT_EQ(Verdicts({IntegerIs(5, kOrNext), IntegerIs(1, 0, kEq, 4)}, true, key), "rAr");
  EXPECT_EQ(Verdicts(isFive, true, {.position = 5, .flags = 0x100, .type = 1}), "rAr");
  EXPECT_EQ(Verdicts(isFive, true, {.length = 2, .flags = 0x100, .type = 1}), "rAr");
  EXPECT_EQ(Verdicts(isFive, true, {.flags = 0x100, .type = 14}), "rAr");
  EXPECT_EQ(Verdicts(WithField(1, kEq), true, key), "rrr");
}

TEST(FilterLimit, NeedsTheKeysCollation) {
  const Seg plain{.length = 1, .flags = 0x100};
  const Seg folding{.length = 1, .flags = 0x500};
  const Seg sequenced{.length = 1, .flags = 0x120};
  const auto judged = [](int flag, const Seg& key) {
    return Judged({.terms = {{0, 1, 0, kEq | flag, 0, Hex("62")}}}, Hex("63"), true, true, key);
  };
  EXPECT_EQ(judged(0, plain), 'E');
  EXPECT_EQ(judged(kWithFold, plain), 'r');
  EXPECT_EQ(judged(0, folding), 'r');
  EXPECT_EQ(judged(kWithFold, folding), 'E');
  EXPECT_EQ(judged(0, sequenced), 'r');
  EXPECT_EQ(judged(kWithSequence, sequenced), 'r');  // 63 lies below 62 in the reversed order
  EXPECT_EQ(Judged({.terms = {{0, 1, 0, kEq | kWithSequence, 0, Hex("62")}}}, Hex("61"), true, true,
                   sequenced),
            'E');
}

struct ReplyCase {
  const char* name;
  std::vector<FieldOf> fields;
  size_t room;
  const char* text;  // status of each record added, then the reply
};

// Records added: 010203, 0405060708, 09.
const ReplyCase kReplies[] = {
    {"whole records", {{100, 0}}, 100, "0 0 0 1:010203 2:0405060708 3:09"},
    {"one byte", {{1, 0}}, 100, "0 0 0 1:01 2:04 3:09"},
    {"out of order and twice", {{1, 2}, {1, 0}, {1, 2}}, 100, "0 0 65 1:030103 2:060406"},
    {"last field is cut", {{1, 0}, {9, 1}}, 100, "0 0 65 1:010203 2:0405060708"},
    {"field before it is not", {{4, 0}, {1, 0}}, 100, "65 0 65 2:0405060704"},
    {"begins at the end", {{1, 3}}, 100, "65 0 65 2:07"},
    {"room for one", {{1, 0}}, 15, "0 22 22 1:01"},
    {"room for two", {{1, 0}}, 16, "0 0 22 1:01 2:04"},
    {"a later one still fits", {{100, 0}}, 18, "0 22 0 1:010203 3:09"},
    {"room for the count", {{1, 0}}, 2, "22 22 22 "},
    {"empty field", {{0, 0}}, 100, "0 0 0 1: 2: 3:"},
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

TEST(ExtendedReply, StaysBelowItsLargestSize) {
  Bytes out(80000, 0xEE);
  const std::vector<ExtractField> fields = {{40000, 0}};
  ReplyWriter writer(out, fields);
  const Bytes record(40000, 1);
  EXPECT_EQ(writer.Add(1, record.data(), record.size()), kOk);
  EXPECT_EQ(writer.Add(2, record.data(), record.size()), kDataBufferLength);
  EXPECT_EQ(writer.Finish(), 40008u);
}

struct InsertCase {
  const char *name, *data;
  const char* images;  // the images, or the status
};

const InsertCase kInserts[] = {
    {"one", "0100 0200 0102", "0102,"},
    {"two", "0200 0100 01 0200 0203", "01,0203,"},
    {"empty image", "0100 0000", ","},
    {"none", "0000", "63"},
    {"no data", "", "63"},
    {"count cut", "01", "63"},
    {"length cut", "0100 02", "63"},
    {"image cut", "0100 0200 01", "63"},
    {"second missing", "0200 0100 01", "63"},
    {"byte behind", "0100 0100 01 00", "63"},
};

TEST(InsertExtended, SplitsExactDataOnly) {
  for (const InsertCase& row : kInserts) {
    const Bytes data = Hex(row.data);
    std::vector<std::span<const uint8_t>> images;
    std::string text;
    if (const Status status = ParseInsertExtended(data, images)) {
      text = std::to_string(status);
    } else {
      for (const auto& image : images) text += ToHex({image.begin(), image.end()}) + ",";
    }
    EXPECT_EQ(text, row.images) << row.name;
  }
}

}  // namespace
}  // namespace btrieve::test
