// What a control offers, as rows: properties, methods, events, enumerations, the order in which it
// is persisted, and its registration. Dispatch, persistence, the type library and the registration
// scripts all read these rows, so one fact stands in one row.
//
// Names are ASCII, compared without case as automation does; texts for people are UTF-16. Nothing
// here needs a system header. Rows live as long as the program.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "ole/tables/Guid.h"

namespace qrn::ole {

// Variant types, by their published numbers.
using VarType = uint16_t;
namespace vt {
inline constexpr VarType kEmpty = 0, kI2 = 2, kI4 = 3, kR4 = 4, kBstr = 8, kDispatch = 9,
                         kBool = 11, kVariant = 12, kUI4 = 19, kVoid = 24, kByRef = 0x4000;
}

// Dispatch ids that every container knows.
namespace stock {
inline constexpr int32_t kBackColor = -501, kBorderStyle = -504, kFont = -512, kForeColor = -513,
                         kEnabled = -514, kHwnd = -515, kTabStop = -516, kText = -517,
                         kCaption = -518, kAppearance = -520, kMousePointer = -521,
                         kMouseIcon = -522, kPicture = -523, kRefresh = -550, kAbout = -552;
inline constexpr int32_t kClick = -600, kDblClick = -601, kKeyDown = -602, kKeyPress = -603,
                         kKeyUp = -604, kMouseDown = -605, kMouseMove = -606, kMouseUp = -607;
}  // namespace stock

// One constant of an enumeration. `text` is what a designer shows for it; empty: the name.
struct EnumRow {
  const char* name;
  int32_t value;
  std::u16string_view text;
};

struct EnumTable {
  const char* name;
  Guid id;
  std::span<const EnumRow> rows;
};

// Types that designers know by name: a colour gets a palette, a font its dialog.
enum class Alias : uint8_t { None, Color, Handle, Font, Picture };

// The type of a value: its variant type, and how the type library names it.
struct ValueType {
  VarType vt = vt::kEmpty;
  Alias alias = Alias::None;
  const EnumTable* enumeration = nullptr;
};

inline constexpr ValueType kNothing{};
inline constexpr ValueType kText{vt::kBstr};
inline constexpr ValueType kBool{vt::kBool};  // 16 bits, true is -1
inline constexpr ValueType kShort{vt::kI2};
inline constexpr ValueType kLong{vt::kI4};
inline constexpr ValueType kSingle{vt::kR4};
inline constexpr ValueType kAny{vt::kVariant};
inline constexpr ValueType kColor{vt::kUI4, Alias::Color};
inline constexpr ValueType kHandle{vt::kI4, Alias::Handle};
inline constexpr ValueType kFont{vt::kDispatch, Alias::Font};
inline constexpr ValueType kPicture{vt::kDispatch, Alias::Picture};
inline constexpr ValueType kShortOut{vt::kI2 | vt::kByRef};
inline constexpr ValueType kLongOut{vt::kI4 | vt::kByRef};
inline constexpr ValueType kTextOut{vt::kBstr | vt::kByRef};
constexpr ValueType Enum(const EnumTable& table) { return {vt::kI4, Alias::None, &table}; }

// What holds of a property beyond its type. Without a rule a put asks the container for leave,
// stores, marks the control dirty and tells the container, in that order.
enum Rule : uint16_t {
  kHidden = 1,        // browsers leave it out
  kGetHidden = 2,     // they leave out only the get
  kReadOnly = 4,      // no put: it fails as read-only
  kRunTime = 8,       // at design time a get is not available now and a put fails as read-only
  kStoreOnly = 16,    // a put only stores
  kRepaint = 32,      // a put also asks the view for a redraw
  kPutFails = 64,     // the put is declared and fails as read-only
  kUnlessSame = 128,  // a put of the text that is there already does nothing
};

struct ArgumentRow {
  const char* name;
  ValueType type;
  bool optional = false;
};

// One property. With `index` rows it takes these before its value, as List(Index) does. `choices`
// are what property browsers show for its values where its type is no enumeration.
struct PropertyRow {
  int32_t id = 0;
  const char* name = nullptr;
  ValueType type{};
  uint16_t rules = 0;
  std::span<const ArgumentRow> index{};
  std::span<const EnumRow> choices{};
};

// One method. Its last argument may be its result: a host may then leave it out and read the
// call's result instead, as Visual Basic does.
struct MethodRow {
  int32_t id;
  const char* name;
  std::span<const ArgumentRow> arguments{};
  bool lastIsResult = false;
  uint16_t rules = 0;
};

struct EventRow {
  int32_t id = 0;
  const char* name = nullptr;
  std::span<const ArgumentRow> arguments{};
};

// The page on which a designer edits a persisted property.
enum class Page : uint8_t { None, Own, Second, Color, Font, Picture };

inline constexpr int32_t kRawWidth = -1'000'001;  // ids of the two raw entries of a map
inline constexpr int32_t kRawHeight = -1'000'002;

// One entry of the persistence map: the name of its property bag value and the property that it
// reads and puts. The order of a map is the layout of the stream: rows never move.
struct PersistRow {
  const char* name = nullptr;
  int32_t id = 0;
  Page page = Page::None;

  constexpr bool Raw() const { return id == kRawWidth || id == kRawHeight; }
};
// The extent, 32 bits each, in HIMETRIC.
inline constexpr PersistRow kCx{"_cx", kRawWidth};
inline constexpr PersistRow kCy{"_cy", kRawHeight};

// The verb that shows the properties, as registered for every control.
inline constexpr std::u16string_view kPropertiesVerb = u"ﾌﾟﾛﾊﾟﾃｨ(&P)..";

// What the registry says of a class.
struct Registration {
  uint16_t script;  // resource id of its script
  uint16_t bitmap;  // toolbox picture's number in the module
  const char* version;
  uint32_t miscStatus;  // OLEMISC flags
};

// One control.
struct ControlTable {
  const char* className;    // "QRNEdit": stem of the ProgID
  const char* coclassName;  // as the type library calls it
  const char* interfaceName;
  const char* eventsName;
  Guid classId;
  Guid interfaceId;
  Guid eventsId;
  Registration registration;
  std::span<const Guid> pages;  // class ids of its property pages, its own first
  std::span<const PropertyRow> properties;
  std::span<const MethodRow> methods;
  std::span<const EventRow> events;
  std::span<const PersistRow> persisted;
  int32_t widthPx;  // size of a new control
  int32_t heightPx;
};

// What the type library holds.
struct LibraryTable {
  const char* name;
  Guid id;
  uint16_t major;
  uint16_t minor;
  std::u16string_view description;
  std::u16string_view helpFile;
  std::span<const ControlTable* const> controls;
  std::span<const EnumTable* const> enumerations;
};

}  // namespace qrn::ole
