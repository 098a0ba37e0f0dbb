// Pictures and long texts beside the form's file.
#include <gtest/gtest.h>

#include "host/designer/document/Companion.h"
#include "host/designer/model/PropertyList.h"
#include "host/form/FrxFile.h"
#include "tests/designer/kit/Actions.h"
#include "tests/designer/kit/Forms.h"

namespace qrn::test {
namespace {

using namespace designer;

TEST(Companion, HoldsRecordsAsTheRunnerReadsThem) {
  Companion companion("f.frx", "12345");
  const auto picture = companion.AddPicture("BM-image", false);
  const auto owned = companion.AddPicture("GIF", true);
  EXPECT_EQ(picture.offset, 5u);
  EXPECT_EQ(form::PictureAt(companion.bytes(), picture.offset), "BM-image");
  EXPECT_EQ(form::PictureAt(companion.bytes(), owned.offset), "GIF");
  for (const size_t size : {0, 1, 0xFD, 0xFE, 0xFF, 0x100, 0xFFFF}) {
    const auto text = companion.AddText(std::string(size, 'x'), true);
    ASSERT_TRUE(text) << size;
    EXPECT_EQ(form::TextAt(companion.bytes(), text->offset), std::string(size, 'x')) << size;
  }
  EXPECT_FALSE(companion.AddText(std::string(0x10000, 'x'), true));
}

struct Kept {
  const char* what;
  std::set<uint32_t> offsets;
  const char* bytes;
  bool shrinks;
};

TEST(Companion, WritesWhatIsReferredToAndKeepsPlaces) {
  Companion companion("f.frx", "12");
  companion.AddRecord("aa", false);   // at 2
  companion.AddRecord("bbb", false);  // at 4
  companion.AddRecord("c", false);    // at 7
  const Kept steps[] = {
      {"nothing was added that is meant", {0}, "12", false},
      {"the last alone", {7}, "12c", false},
      {"a second behind it, though it was added before", {7, 4}, "12cbbb", false},
      {"the first is meant no more, but something lies behind it", {4}, "12cbbb", false},
      {"another is added and the gap stays", {4, 2}, "12cbbbaa", false},
      {"what lies at the end is given back", {7}, "12c", true},
      {"all of it", {}, "12", true},
  };
  for (const Kept& step : steps) {
    const CompanionImage image = companion.Image(step.offsets);
    EXPECT_EQ(image.bytes, step.bytes) << step.what;
    EXPECT_EQ(image.shrinks, step.shrinks) << step.what;
    companion.Saved(image);
  }
}

std::string SavedText(const Design& design, const std::string& name, const char* property) {
  const FormImages images = Actions::Images(design);
  const auto again = Designed(images.form, images.companion.bytes);
  return again->TextValue(IdOf(*again, name), property);
}

TEST(DesignedCompanion, TakesTextsThatFitOnNoLine) {
  const auto design = Designed(FormCases()[0].bytes, FormCases()[0].companion);
  design->Select({IdOf(*design, "txtMany")});
  PropertyList list(*design);
  const std::string before = Actions::Images(*design).companion.bytes;
  for (const std::string& text : {std::string("two\r\nlines"), std::string(901, 'x'),
                                  std::string("表\r\nソ"), std::string("short")}) {
    EXPECT_FALSE(list.Enter("Text", text));
    EXPECT_EQ(SavedText(*design, "txtMany", "Text"), text);
    EXPECT_EQ(Actions::Images(*design).companion.bytes.substr(0, before.size()), before);
  }
  EXPECT_EQ(Actions::Images(*design).companion.bytes, before);
  EXPECT_EQ(list.Enter("Text", "\xE2\x82\xAC\r\n")->text, TextId::NotWritable);
  EXPECT_EQ(list.Enter("Text", std::string(70'000, '\n'))->text, TextId::TextTooLong);
}

TEST(DesignedCompanion, TakesNothingWhileTheFileIsMissing) {
  const auto design = Designed(FormCases()[0].bytes);
  design->Select({design->form()});
  PropertyList list(*design);
  EXPECT_EQ(list.EnterPicture("Icon", "BM")->text, TextId::CompanionMissing);
  EXPECT_EQ(Actions::Saved(*design), FormCases()[0].bytes);
}

}  // namespace
}  // namespace qrn::test
