// What property pages offer, from dictionaries of every shape.

#include "PlayedControls.h"
#include "binding/pages/Choices.h"
#include "binding/pages/DictionaryFolder.h"
#include "binding/pages/FieldPicker.h"

namespace qrn::test {
namespace {

// "a|b|", in UTF-8.
std::string Lines(const NameList& names) {
  std::string lines;
  for (const std::string& name : names) lines += CodePageToUtf8(name) + "|";
  return lines;
}

struct PageChoices : ::testing::Test {
  std::unique_ptr<PlayedBtr> Start(const char* name, TextWindow& at, const char* directory = "d") {
    auto btr = std::make_unique<PlayedBtr>(name, &at, directory);
    btr->userMode = false;
    btr->DbControlStart();
    return btr;
  }

  TextWindow form;
  TextWindow panel{"", &form};
  TextWindow other;
  ShownMessages messages;
  FakeLexbase files;
};

TEST_F(PageChoices, SourcesAreTheDatabaseControlsOfTheForm) {
  const auto second = Start("later", form);
  const auto first = Start("early", form);
  const auto elsewhere = Start("other", other);
  const auto inPanel = Start("inside", panel);
  EXPECT_EQ(Lines(FillSources(&form)), "later|early|") << "in the order of registration";
  EXPECT_EQ(Lines(FillSources(&panel)), "later|early|inside|") << "the panel lies on the form";
  EXPECT_EQ(Lines(FillSources(nullptr)), "");
}

TEST_F(PageChoices, WithoutADirectoryThereIsNothingToChoose) {
  files.File(4, "T", "t.dat").Field({1, 4, "F", 0, 0, 4}).Index(4, 1, 0, 0);
  const auto btr = Start("db", form);
  EXPECT_EQ(Lines(FillTables(&form, "db")), "T|");
  btr->DDFDir.SetNarrow("");
  btr->DirectoryWasPut();
  EXPECT_EQ(Lines(FillSources(&form)), "db|");
  EXPECT_EQ(Lines(FillTables(&form, "db")), "");
  EXPECT_EQ(Lines(FillFields(&form, "db", "T")), "");
  EXPECT_EQ(Lines(FillIndexes(&form, "db", "T")), "");
}

TEST_F(PageChoices, NamesThatLeadNowhereOfferNothing) {
  files.File(4, "T", "t.dat").Field({1, 4, "F", 0, 0, 4});
  const auto btr = Start("db", form);
  EXPECT_EQ(Lines(FillTables(&other, "db")) + Lines(FillTables(&form, "DB")), "");
  EXPECT_EQ(Lines(FillFields(&form, "db", "t")) + Lines(FillFields(&form, "", "T")), "");
  EXPECT_EQ(Lines(FillIndexes(&form, "db", "")) + Lines(FillIndexes(&form, "db", "T")), "");
}

TEST_F(PageChoices, ADictionaryMayHaveNoTableOrAsManyAsThereAre) {
  const auto none = Start("none", form);
  EXPECT_EQ(Lines(FillTables(&form, "none")), "");
  for (int16_t i = 0; i < kMaxTables; ++i) {
    files.File(static_cast<int16_t>(4 + i), ("T" + std::to_string(i)).c_str(), "t.dat");
  }
  const auto full = Start("full", form, "e");
  const NameList names = FillTables(&form, "full");
  ASSERT_EQ(names.size(), size_t{kMaxTables});
  EXPECT_EQ(names.front() + names.back(), "T0T255");
}

struct KeyRow {
  int16_t fieldId, part, flags;
};
struct KeysCase {
  const char* what;
  std::vector<KeyRow> segments;
  std::vector<std::pair<const char*, int16_t>> named;  // name, key number
  const char* offered;
};

const KeysCase kKeys[] = {
    {"no keys", {}, {}, ""},
    {"a name", {{1, 0, 0}}, {{"ByA", 0}}, "ByA|"},
    {"no name", {{1, 0, 0}}, {}, "A|"},
    {"named keys come first", {{1, 0, 0}, {2, 0, 0}, {3, 0, 0}}, {{"ByC", 2}}, "ByC|A|B|"},
    {"one of two segments, named", {{1, 0, 16}, {2, 1, 0}, {3, 0, 0}}, {{"ByAB", 0}}, "ByAB|C|"},
    {"one of two segments, nameless", {{1, 0, 16}, {2, 1, 0}, {3, 0, 0}}, {}, "A|C|"},
    {"its name is that of the second key", {{1, 0, 16}, {2, 1, 0}, {3, 0, 0}}, {{"X", 1}}, "X|A|"},
    {"names of no key stay", {{1, 0, 0}}, {{"Lost", 7}}, "Lost|A|"},
    {"a key of a field that is gone", {{9, 0, 0}, {2, 0, 0}}, {}, "B|"},
    {"two keys of one field", {{1, 0, 0}, {1, 0, 0}}, {}, "A|A|"},
};

TEST_F(PageChoices, KeysGoByTheirNamesOrTheirFirstFields) {
  int directory = 0;
  for (const KeysCase& row : kKeys) {
    FakeLexbase rows;
    rows.File(4, "T", "t.dat");
    rows.Field({1, 4, "A", 0, 0, 4}).Field({2, 4, "B", 0, 4, 4}).Field({3, 4, "C", 0, 8, 4});
    for (const auto& [name, key] : row.named) rows.Field({90, 4, name, kIndexName, key, 0});
    for (const KeyRow& key : row.segments) rows.Index(4, key.fieldId, key.part, key.flags);
    const auto btr = Start("db", form, std::to_string(++directory).c_str());
    EXPECT_EQ(Lines(FillIndexes(&form, "db", "T")), row.offered) << row.what;
    EXPECT_EQ(Lines(FillFields(&form, "db", "T")), "A|B|C|") << row.what;
  }
}

TEST_F(PageChoices, NamesInKanjiGoThroughTheCascade) {
  const std::string table = Utf8ToCodePage("得意先表");
  const std::string field = Utf8ToCodePage("能ソ");
  files.File(4, table.c_str(), "t.dat").Field({1, 4, field.c_str(), 0, 0, 4}).Index(4, 1, 0, 0);
  const auto btr = Start(Utf8ToCodePage("表").c_str(), form);
  const std::string source = FillSources(&form).at(0);
  EXPECT_EQ(Lines(FillTables(&form, source)), "得意先表|");
  EXPECT_EQ(Lines(FillFields(&form, source, table)), "能ソ|");
  EXPECT_EQ(Lines(FillIndexes(&form, source, table)), "能ソ|");
}

// Each step is a button: ">A" chooses A, "<0" gives the first chosen one back.
struct PickCase {
  const char *what, *list;
  std::vector<const char*> steps;
  const char* state;  // the text; what is offered; what is chosen
};

const PickCase kPicks[] = {
    {"nothing chosen", "", {}, ";A|B|C|;"},
    {"the list's order is kept", "C,A", {}, "C,A;B|;C|A|"},
    {"blanks round names", " C , A", {}, " C , A;B|;C|A|"},
    {"names of no field stay in the text alone", "A,Gone", {}, "A,Gone;B|C|;A|"},
    {"until something moves", "A,Gone", {">B"}, "A,B;C|;A|B|"},
    {"a name twice counts once", "A,A", {}, "A,A;B|C|;A|"},
    {"commas alone", ",,", {}, ",,;A|B|C|;"},
    {"the order of choosing is kept", "", {">B", ">A"}, "B,A;C|;B|A|"},
    {"what is not there does not move", "", {">Z", "<0"}, ";A|B|C|;"},
    {"all, in the order shown", "B", {">>"}, "B,C,A;;B|C|A|"},
    {"one back", "C,B,A", {"<1"}, "C,A;B|;C|A|"},
    {"past the end", "A", {"<1"}, "A;B|C|;A|"},
    {"all back", "C,B", {"<<"}, ";A|C|B|;"},
    {"and chosen again", "C,B", {"<<", ">C"}, "C;A|B|;C|"},
};

TEST(FieldPicker, KeepsTheOrderOfChoosing) {
  for (const PickCase& row : kPicks) {
    FieldPicker picker;
    picker.Start({"A", "B", "C"}, row.list);
    for (const std::string step : row.steps) {
      if (step == ">>") {
        picker.ChooseAll({"C", "A"});
      } else if (step == "<<") {
        picker.GiveBackAll();
      } else if (step[0] == '>') {
        picker.Choose(step.substr(1));
      } else {
        picker.GiveBack(static_cast<size_t>(step[1] - '0'));
      }
    }
    EXPECT_EQ(picker.text() + ";" + Lines(picker.offered()) + ";" + Lines(picker.chosen()),
              row.state)
        << row.what;
  }
}

TEST(FieldPicker, ListsAreCutWhereTheyAreWrittenAndNoCharacterIsHalved) {
  const std::string long640(640, 'x');
  EXPECT_EQ(CutToBytes(long640, FieldPicker::kAppliedBytes), long640);
  EXPECT_EQ(CutToBytes(long640 + "y", FieldPicker::kAppliedBytes), long640);
  const std::string kanji = Utf8ToCodePage("表");
  EXPECT_EQ(CutToBytes(long640.substr(1) + kanji, FieldPicker::kAppliedBytes), long640.substr(1));
  EXPECT_EQ(CutToBytes("", FieldPicker::kAppliedBytes), "");
}

TEST(DictionaryFolder, IsThatOfTheThreeFilesAlone) {
  const struct {
    const char *path, *folder;
  } cases[] = {
      {"C:\\data\\file.ddf", "C:\\data"},
      {"C:\\data\\INDEX.DDF", "C:\\data"},
      {"C:\\data\\Field.Ddf", "C:\\data"},
      {"C:\\data\\files.ddf", "C:\\data\\files.ddf"},
      {"C:\\data\\file.dd", "C:\\data\\file.dd"},
      {"C:\\表\\file.ddf", "C:\\表"},
      {"C:\\表", "C:\\表"},
      {"file.ddf", "file.ddf"},
      {"\\\\s\\r\\file.ddf", "\\\\s\\r"},
      {"", ""},
  };
  for (const auto& row : cases) {
    EXPECT_EQ(CodePageToUtf8(DictionaryFolder(Utf8ToCodePage(row.path))), row.folder) << row.path;
  }
}

}  // namespace
}  // namespace qrn::test
