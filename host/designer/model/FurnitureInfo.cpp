#include "host/designer/model/FurnitureInfo.h"

#include <algorithm>
#include <iterator>

#include "host/form/SourceText.h"

namespace qrn::designer {
namespace {

// Pieces; they add up where several are meant.
enum Piece : unsigned { kForm = 1, kLabel = 2, kFrame = 4, kButton = 8, kText = 16 };
constexpr unsigned kPieces = kLabel | kFrame | kButton | kText;
constexpr unsigned kAll = kForm | kPieces;

struct MemberRow {
  const char* enumeration;
  int32_t value;
  const char* text;
};

// clang-format off
constexpr MemberRow kMembers[] = {
    {"Alignment", 0, "Left Justify"}, {"Alignment", 1, "Right Justify"}, {"Alignment", 2, "Center"},
    {"Appearance", 0, "Flat"}, {"Appearance", 1, "3D"},
    {"BackStyle", 0, "Transparent"}, {"BackStyle", 1, "Opaque"},
    {"Border", 0, "None"}, {"Border", 1, "Fixed Single"},
    {"FormBorder", 0, "None"}, {"FormBorder", 1, "Fixed Single"}, {"FormBorder", 2, "Sizable"},
    {"FormBorder", 3, "Fixed Dialog"}, {"FormBorder", 4, "Fixed ToolWindow"},
    {"FormBorder", 5, "Sizable ToolWindow"},
    {"ScaleMode", 1, "Twip"}, {"ScaleMode", 3, "Pixel"},
    {"ScrollBars", 0, "None"}, {"ScrollBars", 1, "Horizontal"}, {"ScrollBars", 2, "Vertical"},
    {"ScrollBars", 3, "Both"},
    {"StartUp", 0, "Manual"}, {"StartUp", 1, "CenterOwner"}, {"StartUp", 2, "CenterScreen"},
    {"StartUp", 3, "Windows Default"},
    {"WindowState", 0, "Normal"}, {"WindowState", 1, "Minimized"}, {"WindowState", 2, "Maximized"},
};

constexpr int32_t kNone = -2'000'000'000;  // no initial number: the line always stands
constexpr int32_t kTrue = -1;

struct PieceProperty {
  unsigned pieces;
  const char* name;
  PropertyKind kind;
  int32_t initial;          // of texts: 0, which stands for the empty text, or kNone
  const char* enumeration;
};
using K = PropertyKind;

// In the order of the property list.
constexpr PieceProperty kRows[] = {
    {kLabel | kText,          "Alignment",       K::Enumeration, 0,     "Alignment"},
    {kAll,                    "Appearance",      K::Enumeration, 1,     "Appearance"},
    {kLabel,                  "AutoSize",        K::Boolean,     0,     nullptr},
    {kAll & ~kText,           "BackColor",       K::Colour, static_cast<int32_t>(0x8000000F), nullptr},
    {kText,                   "BackColor",       K::Colour, static_cast<int32_t>(0x80000005), nullptr},
    {kLabel,                  "BackStyle",       K::Enumeration, 1,     "BackStyle"},
    {kLabel,                  "BorderStyle",     K::Enumeration, 0,     "Border"},
    {kFrame | kText,          "BorderStyle",     K::Enumeration, 1,     "Border"},
    {kForm,                   "BorderStyle",     K::Enumeration, 2,     "FormBorder"},
    {kButton,                 "Cancel",          K::Boolean,     0,     nullptr},
    {kAll & ~kText,           "Caption",         K::Text,        kNone, nullptr},
    {kForm,                   "ClientHeight",    K::Whole,       kNone, nullptr},
    {kForm,                   "ClientWidth",     K::Whole,       kNone, nullptr},
    {kForm,                   "ControlBox",      K::Boolean,     kTrue, nullptr},
    {kButton,                 "Default",         K::Boolean,     0,     nullptr},
    {kAll,                    "Enabled",         K::Boolean,     kTrue, nullptr},
    {kAll,                    "Font",            K::Font,        kNone, nullptr},
    {kLabel | kFrame | kForm, "ForeColor",       K::Colour, static_cast<int32_t>(0x80000012), nullptr},
    {kText,                   "ForeColor",       K::Colour, static_cast<int32_t>(0x80000008), nullptr},
    {kText,                   "HideSelection",   K::Boolean,     kTrue, nullptr},
    {kForm,                   "Icon",            K::Picture,     kNone, nullptr},
    {kForm,                   "KeyPreview",      K::Boolean,     0,     nullptr},
    {kText,                   "Locked",          K::Boolean,     0,     nullptr},
    {kForm,                   "MaxButton",       K::Boolean,     kTrue, nullptr},
    {kText,                   "MaxLength",       K::Whole,       0,     nullptr},
    {kForm,                   "MinButton",       K::Boolean,     kTrue, nullptr},
    {kText,                   "MultiLine",       K::Boolean,     0,     nullptr},
    {kText,                   "PasswordChar",    K::Text,        0,     nullptr},
    {kForm,                   "ScaleMode",       K::Enumeration, 1,     "ScaleMode"},
    {kText,                   "ScrollBars",      K::Enumeration, 0,     "ScrollBars"},
    {kForm,                   "ShowInTaskbar",   K::Boolean,     kTrue, nullptr},
    {kForm,                   "StartUpPosition", K::Enumeration, kNone, "StartUp"},
    {kForm,                   "Tag",             K::Text,        0,     nullptr},
    {kText,                   "Text",            K::Text,        kNone, nullptr},
    {kLabel,                  "UseMnemonic",     K::Boolean,     kTrue, nullptr},
    {kForm,                   "WindowState",     K::Enumeration, 0,     "WindowState"},
    {kLabel,                  "WordWrap",        K::Boolean,     0,     nullptr},
};

struct ParameterRow {
  const char* name;
  const char* type;
};
struct EventRow {
  unsigned pieces;
  const char* name;
  ParameterRow parameters[4];
};

constexpr EventRow kEvents[] = {
    {kForm,           "Activate",    {}},
    {kText,           "Change",      {}},
    {kAll,            "Click",       {}},
    {kAll & ~kButton, "DblClick",    {}},
    {kForm,           "Deactivate",  {}},
    {kButton | kText, "GotFocus",    {}},
    {kForm | kButton | kText, "KeyDown",  {{"KeyCode", "Integer"}, {"Shift", "Integer"}}},
    {kForm | kButton | kText, "KeyPress", {{"KeyAscii", "Integer"}}},
    {kForm | kButton | kText, "KeyUp",    {{"KeyCode", "Integer"}, {"Shift", "Integer"}}},
    {kForm,           "Load",        {}},
    {kButton | kText, "LostFocus",   {}},
    {kAll,            "MouseDown",   {{"Button", "Integer"}, {"Shift", "Integer"}, {"X", "Single"}, {"Y", "Single"}}},
    {kAll,            "MouseMove",   {{"Button", "Integer"}, {"Shift", "Integer"}, {"X", "Single"}, {"Y", "Single"}}},
    {kAll,            "MouseUp",     {{"Button", "Integer"}, {"Shift", "Integer"}, {"X", "Single"}, {"Y", "Single"}}},
    {kForm,           "Paint",       {}},
    {kForm,           "QueryUnload", {{"Cancel", "Integer"}, {"UnloadMode", "Integer"}}},
    {kForm,           "Resize",      {}},
    {kForm,           "Unload",      {{"Cancel", "Integer"}}},
};

struct PieceRow {
  unsigned piece;
  const char* name;
  const char* stem;
  const char* usualEvent;
  bool holdsOthers;
  int32_t width;
  int32_t height;
};
constexpr PieceRow kClasses[] = {
    {kForm,   "Form",          "Form",    "Load",   true,  4680, 3195},
    {kLabel,  "Label",         "Label",   "Click",  false, 1215, 495},
    {kFrame,  "Frame",         "Frame",   "Click",  true,  1815, 1335},
    {kButton, "CommandButton", "Command", "Click",  false, 1215, 495},
    {kText,   "TextBox",       "Text",    "Change", false, 1215, 495},
};
// clang-format on

std::vector<EnumerationMember> MembersOf(const char* enumeration) {
  std::vector<EnumerationMember> members;
  for (const MemberRow& row : kMembers) {
    if (enumeration && std::string_view(row.enumeration) == enumeration) {
      members.push_back({row.value, row.text, row.text});
    }
  }
  return members;
}

PropertyInfo InfoOf(const PieceProperty& row) {
  PropertyInfo info;
  info.name = row.name;
  info.kind = row.kind;
  info.members = MembersOf(row.enumeration);
  if (row.initial == kNone) return info;
  if (row.kind == PropertyKind::Text) {
    info.initial = std::string();
  } else {
    info.initial = row.initial;
  }
  if (std::string_view(row.name) == "MaxLength") info.least = 0, info.most = 65535;
  return info;
}

EventInfo EventOf(const EventRow& row) {
  EventInfo info{row.name, {}};
  for (const ParameterRow& parameter : row.parameters) {
    if (parameter.name) info.parameters.push_back({parameter.name, parameter.type, false});
  }
  return info;
}

bool TakesKeyboard(unsigned piece) { return (piece & (kButton | kText)) != 0; }

// Those of every control that this piece has, but the first, the name, which stays on top.
void AddExtender(unsigned piece, std::vector<PropertyInfo>* properties) {
  for (const PropertyInfo& row : ExtenderProperties()) {
    const bool isTabStop = row.name == "TabStop";
    if (piece == kForm ? row.name == "Name" : !isTabStop || TakesKeyboard(piece)) {
      properties->push_back(row);
    }
  }
  std::stable_sort(properties->begin(), properties->end(),
                   [](const PropertyInfo& a, const PropertyInfo& b) {
                     if ((a.name == "Name") != (b.name == "Name")) return a.name == "Name";
                     return form::LowerWord(a.name) < form::LowerWord(b.name);
                   });
}

ClassInfo ClassOf(const PieceRow& piece) {
  ClassInfo info;
  info.library = "VB";
  info.name = piece.name;
  info.stem = piece.stem;
  info.usualEvent = piece.usualEvent;
  info.holdsOthers = piece.holdsOthers;
  info.width = piece.width;
  info.height = piece.height;
  for (const PieceProperty& row : kRows) {
    if (row.pieces & piece.piece) info.properties.push_back(InfoOf(row));
  }
  AddExtender(piece.piece, &info.properties);
  for (const EventRow& row : kEvents) {
    if (row.pieces & piece.piece) info.events.push_back(EventOf(row));
  }
  return info;
}

}  // namespace

const ClassInfo* FurnitureInfo(std::string_view className) {
  static const std::vector<ClassInfo> classes = [] {
    std::vector<ClassInfo> list;
    for (const PieceRow& piece : kClasses) list.push_back(ClassOf(piece));
    return list;
  }();
  const auto found = std::find_if(classes.begin(), classes.end(), [&](const ClassInfo& info) {
    return form::SameWord(info.name, className);
  });
  return found == classes.end() ? nullptr : &*found;
}

const ClassInfo* FurnitureClasses::Find(std::string_view library, std::string_view name) const {
  return form::SameWord(library, "VB") ? FurnitureInfo(name) : nullptr;
}

std::optional<form::LibraryReference> FurnitureClasses::Library(std::string_view) const {
  return std::nullopt;
}

}  // namespace qrn::designer
