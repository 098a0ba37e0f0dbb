// A folder of the nineties brought into today's format, whole and damaged.
#include <cstddef>

#include "ToolFixture.h"
#include "btrieve/legacy/Layout.h"
#include "tests/btrieve/kit/DamagedFile.h"
#include "tests/btrieve/kit/OldSite.h"
#include "tests/btrieve/kit/Plan.h"
#include "tools/qrndata/BtrFile.h"
#include "tools/qrndata/RecordScan.h"
#include "tools/qrndata/convert/TodaysSpec.h"

namespace qrndata::test {
namespace {

namespace fs = std::filesystem;
using btrieve::test::OldSite;

class Converting : public ToolTest {
 protected:
  Converting() : site_((fs::create_directory(Folder() / "old"), Folder() / "old")) {
    for (int32_t code = 5; code > 0; --code) site_.People().Insert(OldSite::Person(code, "Abe"));
    // A slot that is used again: its record is the last of its person, and stands before others.
    const uint32_t first = site_.Visits().Insert(OldSite::Visit(9, 1, "gone"));
    for (const int32_t day : {3, 2}) site_.Visits().Insert(OldSite::Visit(1, day, "early"));
    site_.Visits().Remove(first);
    site_.Visits().Insert(OldSite::Visit(1, 3, "late"));
    site_.Write();
  }

  Said Convert(const std::vector<std::string>& options = {}) const {
    std::vector<std::string> arguments = {"convert", Path("old"), Path("new")};
    arguments.insert(arguments.end(), options.begin(), options.end());
    return Run(arguments);
  }

  // The texts of the visits in the new folder.
  std::string Visits(int8_t key) const {
    BtrFile file(Folder() / "new" / "VISITS.DAT", Access::ReadOnly);
    std::string texts;
    for (RecordScan scan(file, key); scan.Next();) {
      texts +=
          std::to_string(scan.Record()[4]) + std::string(1, static_cast<char>(scan.Record()[8]));
    }
    return texts;
  }

  void Damage(const char* name, size_t at, uint32_t value) {
    const std::string path = Path("old/") + name;
    btrieve::test::Bytes bytes = btrieve::test::ReadBytes(path);
    btrieve::legacy::StoreHighLow(&bytes[at], value);
    btrieve::test::WriteBytes(path, bytes);
  }

  std::map<std::string, std::string> OldBytes() const {
    std::map<std::string, std::string> all;
    for (const auto& entry : fs::directory_iterator(Folder() / "old")) {
      all[entry.path().filename().string()] = Read("old/" + entry.path().filename().string());
    }
    return all;
  }

  OldSite site_;
};

constexpr const char* kAllConverted =
    "FIELD.DDF: 5 records, 4 keys: alike by place and along every key\n"
    "FILE.DDF: 3 records, 2 keys: alike by place and along every key\n"
    "INDEX.DDF: 5 records, 1 key: alike by place and along every key\n"
    "People: 5 records, 2 keys: alike by place and along every key\n"
    "Visits: 3 records, 2 keys: alike by place and along every key\n"
    "5 files converted, 21 records\n";

// What others have left where a file is to stand: a log, which is of another file, and a file of
// the user's with a name much like it.
TEST_F(Converting, TakesNothingThatLiesThereAlready) {
  fs::create_directory(Folder() / "new");
  {
    btrieve::test::ThisProcess other;
    const btrieve::test::Bytes path = btrieve::test::PathKey(Path("x.dat"));
    ASSERT_EQ(
        other.Call(btrieve::test::kCreate, 0, {.data = btrieve::test::PlanBlock(), .key = path})
            .status,
        0);
    ASSERT_EQ(other.Call(btrieve::test::kOpen, 0, {.key = path}).status, 0);
    for (uint8_t id = 0; id < 50; ++id) {
      btrieve::test::Bytes record(24, id);
      ASSERT_EQ(other.Call(btrieve::test::kInsert, 0, {.data = record, .keyNumber = -1}).status, 0);
    }
    fs::copy_file(Path("x.dat-wal"), Path("new/PEOPLE.DAT-wal"));
  }
  Write("new/PEOPLE.DAT.new", "mine");
  EXPECT_EQ(Convert().code, kDone);
  EXPECT_EQ(Run({"check", Path("new")}).code, kDone);
  EXPECT_EQ(Read("new/PEOPLE.DAT.new"), "mine");
}

// Before anything is written.
TEST_F(Converting, RefusesAPlaceThatCannotHoldTheFiles) {
  Write("new", "a file");
  EXPECT_EQ(Line(Convert()), "code=4 err=qrndata: new: cannot be written\n");
  fs::remove(Folder() / "new");
  std::string deep = "new";
  for (int level = 0; level < 6; ++level) deep += "/" + std::string(50, 'd');
  EXPECT_EQ(Run({"convert", Path("old"), Path(deep)}).code, kSystem);
  EXPECT_FALSE(fs::exists(Folder() / "new"));
}

TEST_F(Converting, KeepsPlacesAndTheOrderOfDuplicates) {
  const auto before = OldBytes();
  const Said said = Convert();
  EXPECT_EQ(said.out, kAllConverted);
  EXPECT_EQ(said.code, 0) << said.err;
  EXPECT_EQ(OldBytes(), before) << "nothing is written there";
  EXPECT_EQ(Visits(kNoKey), "3l3e2e");
  EXPECT_EQ(Visits(0), "3e2e3l");
  EXPECT_EQ(Visits(1), "2e3e3l");
}

TEST_F(Converting, SaysWhatItsDocumentShows) {
  constexpr std::string_view kCommand = "    $ qrndata convert old new\n";
  const btrieve::test::Bytes bytes = btrieve::test::ReadBytes(QRN_DOCS "/moving-old-data.md");
  std::string text(bytes.begin(), bytes.end());
  ASSERT_NE(text.find(kCommand), std::string::npos);
  text.erase(0, text.find(kCommand) + kCommand.size());
  std::string shown;
  for (const std::string& line : btrieve::test::Split(text.substr(0, text.find("\n\n")), '\n')) {
    shown += line.substr(4) + "\n";
  }
  EXPECT_EQ(Convert().out, shown);
}

// Their own record manager may be writing them at the moment.
TEST_F(Converting, IsNoCopyOfOldFiles) {
  const Said said = Run({"copy", Path("old"), Path("new")});
  EXPECT_EQ(said.code, 4);
  EXPECT_NE(said.err.find(": status 30 (not a file of the record manager); nothing was copied\n"),
            std::string::npos)
      << said.err;
  EXPECT_FALSE(fs::exists(Folder() / "new"));
  ASSERT_EQ(Convert().code, 0);
  EXPECT_EQ(Line(Run({"copy", Path("new"), Path("copy")})), "code=0 out=copy: 2 tables, 5 files\n");
}

TEST_F(Converting, AsksBeforeItTakesOwnedFiles) {
  site_.Write(true);
  const Said refused = Convert();
  EXPECT_EQ(refused.code, 1);
  EXPECT_NE(refused.out.find("People: not converted: it has an owner name"), std::string::npos);
  EXPECT_FALSE(fs::exists(Folder() / "new" / "PEOPLE.DAT"));
  EXPECT_EQ(Convert({"--unlock"}).out, kAllConverted);
}

TEST_F(Converting, SalvagesWhatCanBeRead) {
  Damage("PEOPLE.DAT", btrieve::legacy::inhead::kRecords, 6);
  Damage("VISITS.DAT", btrieve::legacy::inhead::kDescriptors + 4, 77);
  const Said refused = Convert();
  EXPECT_EQ(refused.code, 1);
  EXPECT_NE(refused.out.find("People: not converted: it is damaged; 5 of 6 records can be read "
                             "(--salvage takes them)\n"
                             "People: the data pages have 5 records, page 0 says 6\n"),
            std::string::npos)
      << refused.out;
  fs::remove_all(Folder() / "new");
  const Said said = Convert({"--salvage"});
  EXPECT_EQ(said.code, 1);
  EXPECT_NE(said.out.find("People: 5 records, 2 keys: all that can be read of 6 records in a "
                          "damaged file\n"),
            std::string::npos)
      << said.out;
  EXPECT_NE(said.out.find("Visits: key 0 has 1 values, page 0 says 77\n"), std::string::npos)
      << said.out;
  EXPECT_EQ(Visits(kNoKey), "3l3e2e");
  EXPECT_EQ(Run({"check", Path("new")}).code, 0);
}

TEST_F(Converting, RefusesTargetsThatAreNotFree) {
  for (const char* target : {"old", "old/new"}) {
    const Said said = Run({"convert", Path("old"), Path(target)});
    EXPECT_EQ(said.code, 2) << target;
  }
  ASSERT_EQ(Convert().code, 0);
  EXPECT_EQ(Convert().code, 4);
  fs::create_directory(Folder() / "empty");
  EXPECT_EQ(Line(Run({"convert", Path("empty"), Path("new")})),
            "code=4 err=qrndata: empty: there is no version 5 file\n");
}

TEST_F(Converting, TellsWhatAnOldFileIs) {
  const auto note = [this] { return Line(Run({"show", Path("old/PEOPLE.DAT")})); };
  EXPECT_NE(note().find("written by a record manager of the nineties (version 5)"),
            std::string::npos);
  const struct {
    size_t at;
    uint32_t value;
    const char* words;
  } kCases[] = {
      {btrieve::legacy::inhead::kUsage, 0x00000600,
       "status 30 (not a file of the record manager): not a data file, or one of format 6.0, which "
       "is not read"},
      {btrieve::legacy::inhead::kUsage, 0x0000FC00, "cannot be compared with one given"},
      {btrieve::legacy::inhead::kRecordLength, 0x0018001C,
       "a version 5 file with records of variable length, which is not read"},
      {btrieve::legacy::inhead::kRecords, 9,
       "a version 5 file; the data pages have 5 records, page 0 says 9"},
  };
  for (const auto& row : kCases) {
    site_.Write();
    Damage("PEOPLE.DAT", row.at, row.value);
    EXPECT_NE(note().find(row.words), std::string::npos) << note();
  }
}

// A counter with duplicates, in records that fill the page.
TEST_F(Converting, TakesWhatOnlyOldRulesAllow) {
  btrieve::FileSpec spec;
  spec.recordLength = 498;
  spec.pageSize = 512;
  spec.keys = {{0, {{.length = 4, .flags = 0x103, .givenType = 15}}}};
  btrieve::test::OldFileMaker maker(spec, {.pageSize = 512});
  for (const uint8_t id : {3, 1, 3}) maker.Insert(Bytes(498, id));
  btrieve::test::WriteBytes(Path("old/COUNTS.DAT"), maker.Build());
  const Said shown = Run({"show", Path("old/COUNTS.DAT")});
  EXPECT_NE(shown.out.find("3 records of 498 bytes, pages of 512"), std::string::npos)
      << Line(shown);
  EXPECT_NE(Convert().out.find("COUNTS.DAT: 3 records, 1 key: alike by place and along every key\n"
                               "COUNTS.DAT: key 0: AutoInc is not possible there today; it is an "
                               "unsigned number now\n"
                               "COUNTS.DAT: pages of 1024 bytes in place of 512\n"),
            std::string::npos);
}

struct SpecCase {
  const char* what;
  std::vector<btrieve::test::Seg> segments;
  uint16_t recordLength, pageSize;
  uint16_t expectedPage;
  const char* notes;
};

TEST(TodaysSpec, TakesTheNearestThatTodaysRulesTake) {
  const SpecCase kCases[] = {
      {"as it was", {{.flags = 0x102, .type = 15}}, 100, 512, 512, ""},
      {"a counter with duplicates",
       {{.flags = 0x103, .type = 15}},
       100,
       512,
       512,
       "key 0: AutoInc is not possible there today; it is an unsigned number now;"},
      {"a record that fills the page", {}, 506, 512, 1024, "pages of 1024 bytes in place of 512;"},
      {"a counter, and its number in another key",
       {{.flags = 0x102, .type = 15},
        {.flags = 0x112, .type = 15},
        {.position = 9, .flags = 0x102}},
       100,
       512,
       512,
       "key 1: AutoInc is not possible there today; it is an unsigned number now;"},
      {"flags that differ in a key",
       {{.flags = 0x112}, {.position = 5, .flags = 0x103}},
       100,
       512,
       512,
       ""},
  };
  for (const SpecCase& row : kCases) {
    btrieve::FileSpec old;
    old.recordLength = row.recordLength;
    old.pageSize = row.pageSize;
    bool begins = true;
    for (const auto& segment : row.segments) {
      if (begins) old.keys.push_back({static_cast<uint8_t>(old.keys.size()), {}});
      begins = (segment.flags & btrieve::kAnotherSegment) == 0;
      old.keys.back().segments.push_back({.offset = static_cast<uint16_t>(segment.position - 1),
                                          .length = segment.length,
                                          .flags = segment.flags,
                                          .givenType = segment.type});
    }
    std::vector<std::string> notes;
    const btrieve::FileSpec spec = TodaysSpec(old, notes);
    std::string text;
    for (const std::string& note : notes) text += note + ";";
    EXPECT_EQ(text, row.notes) << row.what;
    EXPECT_EQ(spec.pageSize, row.expectedPage) << row.what;
  }
}

}  // namespace
}  // namespace qrndata::test
