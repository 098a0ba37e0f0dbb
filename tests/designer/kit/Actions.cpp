#include "tests/designer/kit/Actions.h"

#include <iterator>

#include "host/designer/model/Arrange.h"
#include "host/designer/model/Clipboard.h"
#include "host/designer/model/CodePart.h"
#include "host/designer/model/Controls.h"
#include "host/designer/model/Drag.h"
#include "host/designer/model/PropertyList.h"
#include "host/designer/model/TabOrder.h"

namespace qrn::test {

using namespace designer;

struct Actions::Row {
  const char* name;
  void (Actions::*act)();
};

const Actions::Row Actions::kRows[] = {
    {"select", &Actions::Select},
    {"select", &Actions::Select},
    {"add", &Actions::Add},
    {"add", &Actions::Add},
    {"delete", &Actions::Delete},
    {"drag", &Actions::Drag},
    {"drag", &Actions::Drag},
    {"nudge", &Actions::Nudge},
    {"align", &Actions::Align},
    {"make alike", &Actions::MakeAlike},
    {"restack", &Actions::Restack},
    {"move into", &Actions::MoveInto},
    {"copy", &Actions::Copy},
    {"paste", &Actions::Paste},
    {"cut", &Actions::Cut},
    {"tab order", &Actions::TabOrder},
    {"enter property", &Actions::EnterProperty},
    {"enter property", &Actions::EnterProperty},
    {"enter picture", &Actions::EnterPicture},
    {"enter font", &Actions::EnterFont},
    {"reset property", &Actions::ResetProperty},
    {"type code", &Actions::TypeCode},
    {"make procedure", &Actions::MakeProcedure},
    {"seal", &Actions::Seal},
};

namespace {

constexpr Grid kGrid;

// What is typed into property lists and code: values that fit some property, and bad ones.
constexpr const char* kTexts[] = {
    "",
    "0",
    "1",
    "-1",
    "True",
    "f",
    "&H00FF00FF&",
    "12.5",
    "32768",
    "Command1",
    "cmdGo",
    "opt",
    "表示ソ",
    "a \"quoted\" text",
    "two\r\nlines",
    "\xE2\x82\xAC",
    "1 - On",
    "2",
    "a long text that goes on and on, as titles and remarks of people do",
    "F",
    "Sub",
    "1e400",
    "x y",
    "&",
    "15"};

constexpr const char* kClasses[][2] = {
    {"VB", "Label"}, {"VB", "Frame"},   {"VB", "TextBox"}, {"VB", "CommandButton"},
    {"LIB", "Box"},  {"LIB", "Source"}, {"VB", "Frame"},   {"ODD", "Unknown"}};

}  // namespace

FormImages Actions::Images(const Design& design) {
  return ImagesOf(design.document(), design.companion(), design.companion().name());
}

const char* Actions::DoOne() {
  const Row& row = kRows[choose_(static_cast<uint32_t>(std::size(kRows)))];
  (this->*row.act)();
  return row.name;
}

ControlId Actions::AnyControl() {
  const auto all = design_.All();
  if (all.empty() || choose_(10) == 0) return design_.form();
  return all[choose_(static_cast<uint32_t>(all.size()))];
}

ControlId Actions::AnyContainer() {
  const ControlId id = AnyControl();
  return design_.HoldsOthers(id) ? id : design_.form();
}

Ids Actions::Some() {
  Ids ids;
  for (uint32_t count = 1 + choose_(4); count > 0; --count) ids.push_back(AnyControl());
  return ids;
}

int32_t Actions::AnyLength() { return static_cast<int32_t>(choose_(700)) * 15 - 1500; }

std::string Actions::AnyText() { return kTexts[choose_(static_cast<uint32_t>(std::size(kTexts)))]; }

void Actions::Select() {
  if (choose_(3) == 0) return design_.Select(Some());
  if (choose_(3) == 0) return SelectNext(design_, choose_(2) == 0);
  Click(design_, AnyControl(), choose_(2) == 0);
}

void Actions::Add() {
  const auto& name = kClasses[choose_(static_cast<uint32_t>(std::size(kClasses)))];
  const Place place{AnyLength(), AnyLength(), AnyLength(), AnyLength()};
  AddControl(design_, {name[0], name[1], AnyContainer(), place});
}

void Actions::Delete() { DeleteControls(design_, {AnyControl()}); }

void Actions::Drag() {
  const Point start{AnyLength(), AnyLength()};
  const bool sizes = choose_(2) == 0;
  const auto handle = static_cast<Handle>(choose_(kHandleCount));
  designer::Drag drag = sizes ? designer::Drag::Size(design_, handle, start, kGrid)
                              : designer::Drag::Move(design_, start, kGrid);
  drag.To({AnyLength(), AnyLength()}, choose_(4) == 0);
  drag.Drop(design_, choose_(4) == 0 ? AnyContainer() : 0);
}

void Actions::Nudge() {
  const int across = static_cast<int>(choose_(3)) - 1;
  const int down = static_cast<int>(choose_(3)) - 1;
  if (choose_(2) == 0) {
    designer::Nudge(design_, design_.selection(), across, down, kGrid);
  } else {
    Stretch(design_, design_.selection(), across, down, kGrid);
  }
}

void Actions::Align() {
  if (choose_(4) == 0) {
    SpaceEvenly(design_, Some(), static_cast<Direction>(choose_(2)));
  } else if (choose_(4) == 0) {
    CentreInContainer(design_, Some(), static_cast<Direction>(choose_(2)));
  } else {
    designer::Align(design_, Some(), static_cast<Edge>(choose_(6)));
  }
}

void Actions::MakeAlike() { MakeSameSize(design_, Some(), static_cast<Alike>(choose_(3))); }

void Actions::Restack() {
  if (choose_(2) == 0) {
    BringToFront(design_, Some());
  } else {
    SendToBack(design_, Some());
  }
}

void Actions::MoveInto() { designer::MoveInto(design_, Some(), AnyContainer()); }

void Actions::Copy() { clipboard_ = CopyText(design_, Some()); }

void Actions::Paste() {
  // Forms double with every paste of most of themselves.
  if (design_.All().size() < 60) designer::Paste(design_, clipboard_, kGrid);
}

void Actions::Cut() { designer::Cut(design_, {AnyControl()}, &clipboard_); }

void Actions::TabOrder() { PutTabOrder(design_, Some()); }

void Actions::EnterProperty() {
  PropertyList list(design_);
  const auto rows = list.Rows();
  if (rows.empty()) return;
  const std::string name = rows[choose_(static_cast<uint32_t>(rows.size()))].info->name;
  const auto choices = list.Choices(name);
  const bool picks = !choices.empty() && choose_(2) == 0;
  list.Enter(name, picks ? choices[choose_(static_cast<uint32_t>(choices.size()))] : AnyText());
}

void Actions::EnterPicture() {
  PropertyList(design_).EnterPicture("Picture", choose_(3) == 0 ? "" : "BM" + AnyText());
}

void Actions::EnterFont() {
  form::Property font{"Font", 0, {}, true, "{0BE35203-8F91-11CE-9DE3-00AA004BB851}", {}};
  font.group.push_back({"Name", 0, std::string("ＭＳ 明朝"), false, {}, {}});
  font.group.push_back({"Size", 0, 9.75, false, {}, {}});
  font.group.push_back({"Italic", 0, int32_t{choose_(2) == 0 ? 0 : -1}, false, {}, {}});
  PropertyList(design_).EnterFont(font);
}

void Actions::ResetProperty() {
  PropertyList list(design_);
  const auto rows = list.Rows();
  if (!rows.empty()) list.Reset(rows[choose_(static_cast<uint32_t>(rows.size()))].info->name);
}

void Actions::TypeCode() {
  CodePart code(design_);
  std::string text = code.Text();
  const size_t at = choose_(static_cast<uint32_t>(text.size()) + 1);
  const size_t count = choose_(3) == 0 ? choose_(40) : 0;
  text.replace(at, std::min(count, text.size() - at), choose_(3) == 0 ? "\n" : AnyText());
  code.PutText(text);
}

void Actions::MakeProcedure() {
  CodePart code(design_);
  const auto objects = code.Objects();
  const std::string object = objects[choose_(static_cast<uint32_t>(objects.size()))];
  const auto events = code.Events(object);
  if (events.empty()) return;
  int line = 0;
  code.FindOrMake(object, events[choose_(static_cast<uint32_t>(events.size()))], &line);
}

void Actions::Seal() { design_.Seal(); }

}  // namespace qrn::test
