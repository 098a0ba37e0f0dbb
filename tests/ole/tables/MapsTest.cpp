// Forms that are stored hold the controls' properties by position alone: a map that changes makes
// them unreadable.

#include "binding/tables/AllTables.h"
#include "ole/tables/MemberChecks.h"
#include "tests/support/Test.h"

namespace qrn {
namespace {

constexpr const char* kExConditions =
    "DbListSource DbListTable DbListField DbSource DbTable DbField DbUpdateOption DbConditions "
    "DbLeaveResults DbLocks DbExOperation DbListIndex DbDelimitChar DbCompareCase DbSkipRecords "
    "DbMaxRecords DbSavePosition ";

const struct {
  const char* control;
  std::string entries;
} kMaps[] = {
    {"QRNBtr", "DDFDir OwnerName OpenMode AllOpen DistName CacheDDF "},
    {"QRNEdit",
     "_cx _cy DbSource DbTable DbField MaxLength PasswordChar Format MultiLine Alignment ReadOnly "
     "UpperCase IMEMode NumericMask FormatOption Appearance BorderStyle BackColor ForeColor Font "
     "MouseIcon MousePointer TabStop Text Enabled "},
    {"QRNBtn",
     "DbSource DbTable DbIndex DbOperation Abort ConfirmMsg Cancel Default DbLocks "
     "ClearControlData Style Appearance BackColor Font Caption MouseIcon MousePointer Picture "
     "TabStop Enabled "},
    {"QRNComboBox",
     "Style IntegralHeight Sort DbSource DbTable DbField DbListSource DbListTable DbListField "
     "DbListIndex ImeMode DbUpdateOption Appearance BackColor ForeColor Font MouseIcon "
     "MousePointer TabStop Text Enabled "},
    {"QRNListBox",
     "Sort IntegralHeight DbSource DbTable DbField DbListSource DbListTable DbListField "
     "DbListIndex DbUpdateOption Appearance BorderStyle BackColor ForeColor Font MouseIcon "
     "MousePointer TabStop Text Enabled "},
    {"QRNHScroll",
     "DbSource DbTable DbIndex LargeChange SmallChange Max Min MouseIcon MousePointer TabStop "
     "Enabled "},
    {"QRNVScroll",
     "DbSource DbTable DbIndex LargeChange SmallChange Max Min MouseIcon MousePointer TabStop "
     "Enabled "},
    {"QRNCheck",
     "DbSource DbTable DbField DbValueTrue DbValueFalse Alignment DbValueIndeterminate Appearance "
     "BackColor Caption ForeColor Font MouseIcon MousePointer TabStop Enabled "},
    {"QRNOptBtn",
     "DbSource DbTable DbField DbValueTrue DbValueFalse Alignment Appearance BackColor Caption "
     "ForeColor Font MouseIcon MousePointer TabStop Enabled "},
    {"QRNGrid",
     "DbListSource DbListTable DbListFields DbConditions Cols Rows FixedCols FixedRows "
     "DbCompareCase DbExOperation DbLeaveResults DbLocks DbMaxRecords DbSkipRecords "
     "DbUpdateOption GridLines HighLight FillStyle GridLineWidth SetColNames SetRecordNumbers "
     "DbListIndex ScrollBars AllowUpdate AllowDelete AlignFixedCells SetColWidth "
     "AllowUserResizing Appearance BackColor BorderStyle ForeColor Font MouseIcon MousePointer "
     "TabStop Enabled "},
    {"QRNPic",
     "DbSource DbTable DbField Stretch BlobPath Appearance BackColor BorderStyle Enabled ForeColor "
     "Font MouseIcon MousePointer Picture "},
    {"QRNExComboBox",
     kExConditions + std::string("Sort IntegralHeight Style ImeMode Appearance BackColor ForeColor "
                                 "Font MouseIcon MousePointer TabStop Text Enabled ")},
    {"QRNExListBox",
     kExConditions + std::string("Sort IntegralHeight DbTabStops Appearance BackColor BorderStyle "
                                 "ForeColor Font MouseIcon MousePointer TabStop Text Enabled ")},
};

TEST(ControlMaps, StoredFormsKeepTheirLayout) {
  ASSERT_EQ(std::size(kMaps), std::size(kControls));
  for (size_t i = 0; i < std::size(kMaps); ++i) {
    EXPECT_STREQ(kControls[i]->className, kMaps[i].control);
    std::string entries;
    for (const ole::PersistRow& row : kControls[i]->persisted) {
      entries += std::string(row.name) + " ";
    }
    EXPECT_EQ(entries, "_cx _cy " + kMaps[i].entries) << kMaps[i].control;
  }
}

TEST(ControlMaps, PagesEditWhatTheyCan) {
  for (const ole::ControlTable* table : kControls) {
    for (const ole::PersistRow& row : table->persisted) {
      const std::string name = row.name;
      const bool color = name == "BackColor" || name == "ForeColor";
      EXPECT_EQ(row.page == ole::Page::Color, color) << table->className << " " << name;
      EXPECT_EQ(row.page == ole::Page::Font, name == "Font") << table->className << " " << name;
      EXPECT_EQ(row.page == ole::Page::Picture,
                name == "Picture" && std::string(table->className) == "QRNBtn")
          << table->className << " " << name;
    }
  }
}

TEST(ControlTables, NoIdStandsForTwoThings) {
  std::set<std::string> seen;
  const auto isNew = [&](const ole::Guid& id) { return seen.insert(ole::GuidText(id)).second; };
  EXPECT_TRUE(isNew(kLibrary.id));
  EXPECT_TRUE(isNew(kApplicationId));
  for (const ole::ControlTable* table : kControls) {
    EXPECT_TRUE(isNew(table->classId)) << table->className;
    EXPECT_TRUE(isNew(table->interfaceId)) << table->interfaceName;
    EXPECT_TRUE(isNew(table->eventsId)) << table->eventsName;
  }
  for (const ole::EnumTable* table : kEnumerations) EXPECT_TRUE(isNew(table->id)) << table->name;
  for (const PageRow& page : kPages) EXPECT_TRUE(isNew(page.classId)) << page.className;
  EXPECT_TRUE(isNew(kCQRNBtrPpg));
}

}  // namespace
}  // namespace qrn
