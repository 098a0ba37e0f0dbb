// A control made for tests: a property of every type and rule, methods with every kind of argument.
#pragma once

#include <array>

#include "ole/tables/MemberChecks.h"
#include "ole/tables/StockEvents.h"

namespace qrn::test {

using namespace qrn::ole;

inline constexpr EnumRow kFlavourRows[] = {
    {"flavSweet", 0, u"甘い"}, {"flavSour", 1, u"酸っぱい"}, {"flavNone", 9, {}}};
inline constexpr EnumTable kFlavour{"_enumFlavour",
                                    MakeGuid("11111111-2222-3333-4444-000000000001"), kFlavourRows};
inline constexpr EnumRow kLookRows[] = {{"Flat", 0, u"平ら"}, {"3D", 1, u"立体"}};

inline constexpr ArgumentRow kIndex[] = {{"Index", kLong}};
inline constexpr ArgumentRow kTwiceArguments[] = {{"Number", kShort}, {"rc", kShortOut}};
inline constexpr ArgumentRow kSwapArguments[] = {
    {"Text", kTextOut}, {"Number", kLongOut}, {"rc", kShortOut}};
inline constexpr ArgumentRow kKindArguments[] = {
    {"Anything", kAny}, {"Perhaps", kAny, true}, {"ret", kTextOut}};
inline constexpr ArgumentRow kJoinArguments[] = {
    {"First", kText}, {"Second", kText}, {"ret", kTextOut}};

// clang-format off
inline constexpr PropertyRow kSampleProperties[] = {
    {stock::kBackColor,    "BackColor",    kColor, kRepaint},
    {stock::kForeColor,    "ForeColor",    kColor, kRepaint},
    {stock::kFont,         "Font",         kFont,  kRepaint},
    {stock::kEnabled,      "Enabled",      kBool},
    {stock::kHwnd,         "HWND",         kHandle, kReadOnly | kHidden},
    {stock::kText,         "Text",         kText},
    {stock::kAppearance,   "Appearance",   kShort, 0, {}, kLookRows},
    {stock::kMousePointer, "MousePointer", kLong},
    {stock::kMouseIcon,    "MouseIcon",    kPicture},
    {1, "Name",     kText},
    {2, "Count",    kShort},
    {3, "Total",    kLong},
    {4, "Flag",     kBool},
    {5, "Flavour",  Enum(kFlavour)},
    {6, "Checked",  kShort},                     // refuses what is above 10
    {7, "Live",     kText, kRunTime | kGetHidden},
    {8, "Fixed",    kLong, kHidden | kPutFails},
    {9, "Quiet",    kText, kStoreOnly},
    {10, "Same",    kText, kUnlessSame},
    {11, "Cell",    kText, kHidden, kIndex},
};
inline constexpr MethodRow kSampleMethods[] = {
    {20, "Twice",  kTwiceArguments, true},
    {21, "Swap",   kSwapArguments, true},
    {22, "KindOf", kKindArguments, true},
    {23, "Fail"},
    {24, "Throw"},
    {25, "Join",   kJoinArguments, true},
    {26, "Ring"},
};
inline constexpr ArgumentRow kRangArguments[] = {
    {"Text", kText}, {"Number", kShortOut}, {"Line", kTextOut}};
inline constexpr EventRow kSampleEvents[] = {
    {1, "Rang", kRangArguments},
    kKeyDownEvent, kKeyUpEvent, kKeyPressEvent, kMouseDownEvent, kMouseMoveEvent, kMouseUpEvent,
};
inline constexpr PersistRow kSamplePersisted[] = {
    kCx, kCy,
    {"Name",      1, Page::Own},
    {"Count",     2},
    {"Total",     3},
    {"Flag",      4},
    {"Flav",      5},
    {"Checked",   6},
    {"BackColor", stock::kBackColor, Page::Color},
    {"Font",      stock::kFont, Page::Font},
    {"MouseIcon", stock::kMouseIcon},
};
// clang-format on
inline constexpr Guid kSamplePages[] = {MakeGuid("11111111-2222-3333-4444-00000000000A"),
                                        MakeGuid("7EBDAAE1-8120-11CF-899F-00AA00688B10")};

inline constexpr ControlTable kSampleTable{
    .className = "Sample",
    .coclassName = "SampleClass",
    .interfaceName = "ISample",
    .eventsName = "_DSampleEvents",
    .classId = MakeGuid("11111111-2222-3333-4444-000000000002"),
    .interfaceId = MakeGuid("11111111-2222-3333-4444-000000000003"),
    .eventsId = MakeGuid("11111111-2222-3333-4444-000000000004"),
    .registration = {101, 7, "1.0", 131473},
    .pages = kSamplePages,
    .properties = kSampleProperties,
    .methods = kSampleMethods,
    .events = kSampleEvents,
    .persisted = kSamplePersisted,
    .widthPx = 96,
    .heightPx = 48,
};
static_assert(IsSound(kSampleTable));

inline constexpr const ControlTable* kSampleControls[] = {&kSampleTable};
inline constexpr const EnumTable* kSampleEnumerations[] = {&kFlavour};
inline constexpr LibraryTable kSampleLibrary{
    .name = "SampleLib",
    .id = MakeGuid("11111111-2222-3333-4444-000000000005"),
    .major = 1,
    .minor = 0,
    .description = u"見本",
    .helpFile = u"sample.hlp",
    .controls = kSampleControls,
    .enumerations = kSampleEnumerations,
};

}  // namespace qrn::test
