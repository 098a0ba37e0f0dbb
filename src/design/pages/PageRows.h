// The property pages as rows: which control of which dialog sets which property, and what it is
// there. The order of a page's rows is that in which properties are put.
#pragma once

#include <algorithm>
#include <span>
#include <string_view>

#include "binding/tables/AllTables.h"

namespace qrn::design {

enum class Role : uint8_t {
  Source,  // of drop-down lists, each filled by what is chosen in the one before
  Table,
  Field,
  Index,
  Operation,  // a drop-down list whose position is the value
  FieldList,  // the text of a field picker, whose other controls have no property
  Directory,  // a text; the button beside it looks for one
};

// The two chains of drop-down lists on a page: what a control is bound to, what its list shows.
enum class Chain : uint8_t { Bound, List };

struct PageControl {
  uint16_t id;
  const char* property;
  Role role;
  Chain chain = Chain::Bound;
};

struct PageLayout {
  uint16_t dialog;
  std::u16string_view title;
  std::span<const PageControl> controls;
};

// Controls of a page beside those that set a property.
namespace item {
inline constexpr uint16_t kBrowse = 192, kOffered = 244, kChoose = 245, kGiveBack = 246,
                          kChooseAll = 247, kGiveBackAll = 248, kChosen = 249;
}

// clang-format off
inline constexpr PageControl kDatabaseControls[] = {
    {191, "DDFDir",       Role::Directory},
};
inline constexpr PageControl kButtonControls[] = {
    {193, "DbSource",     Role::Source},
    {194, "DbTable",      Role::Table},
    {196, "DbIndex",      Role::Index},
    {195, "DbOperation",  Role::Operation},
};
inline constexpr PageControl kFieldControls[] = {
    {193, "DbSource",     Role::Source},
    {194, "DbTable",      Role::Table},
    {198, "DbField",      Role::Field},
};
inline constexpr PageControl kBarControls[] = {
    {193, "DbSource",     Role::Source},
    {194, "DbTable",      Role::Table},
    {196, "DbIndex",      Role::Index},
};
inline constexpr PageControl kListControls[] = {
    {193, "DbSource",     Role::Source},
    {194, "DbTable",      Role::Table},
    {198, "DbField",      Role::Field},
    {204, "DbListSource", Role::Source,    Chain::List},
    {205, "DbListTable",  Role::Table,     Chain::List},
    {206, "DbListField",  Role::Field,     Chain::List},
    {207, "DbListIndex",  Role::Index,     Chain::List},
};
inline constexpr PageControl kPickerControls[] = {
    {204, "DbListSource", Role::Source,    Chain::List},
    {205, "DbListTable",  Role::Table,     Chain::List},
    {243, "DbListFields", Role::FieldList, Chain::List},
    {207, "DbListIndex",  Role::Index,     Chain::List},
};

// In the order of kPages.
inline constexpr PageLayout kLayouts[] = {
    {137, u"DDF",     kDatabaseControls},
    {165, u"Btrieve", kButtonControls},
    {197, u"Btrieve", kFieldControls},
    {203, u"Btrieve", kListControls},
    {212, u"Btrieve", kListControls},
    {217, u"Btrieve", kFieldControls},
    {222, u"Btrieve", kFieldControls},
    {227, u"Btrieve", kFieldControls},
    {232, u"Btrieve", kBarControls},
    {237, u"Btrieve", kBarControls},
    {242, u"Btrieve", kPickerControls},
    {255, u"Field",   kPickerControls},
    {261, u"Field",   kPickerControls},
    {266, u"Btrieve", kFieldControls},
    {271, u"Btrieve", kFieldControls},
};
// clang-format on
static_assert(std::ranges::equal(kLayouts, kPages, {}, &PageLayout::dialog, &PageRow::dialog));

// Every property of a page is one of the controls that name the page.
constexpr bool HasAll(const ole::ControlTable& table, const PageLayout& page) {
  return std::ranges::all_of(
      page.controls,
      [&](std::string_view property) {
        return std::ranges::find(table.properties, property, &ole::PropertyRow::name) !=
               table.properties.end();
      },
      &PageControl::property);
}
constexpr bool PagesKnowTheirControls() {
  for (size_t i = 0; i < std::size(kPages); ++i) {
    for (const ole::ControlTable* table : kControls) {
      const bool named = std::ranges::find(table->pages, kPages[i].classId) != table->pages.end();
      if (named && !HasAll(*table, kLayouts[i])) return false;
    }
  }
  return true;
}
static_assert(PagesKnowTheirControls());

}  // namespace qrn::design
