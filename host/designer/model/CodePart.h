// The code behind a form: its text, the procedures in it, and event procedures made with the right
// first line. Every change is a step of the design.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/designer/model/Design.h"

namespace qrn::designer {

struct CodeProcedure {
  std::string name;   // cmdSave_Click
  int firstLine = 0;  // of its Sub line, counted from 0 in the code
  int lastLine = 0;   // of its End line; the code's last line if that is missing
};

// Whose handler a procedure is.
struct EventPlace {
  std::string object;  // as the list of objects has it
  std::string event;   // as the class writes it

  bool operator==(const EventPlace&) const = default;
};

class CodePart {
 public:
  explicit CodePart(Design& design) : design_(design) {}

  // Lines end with LF, whatever the file has; the last one only if the file's has an end.
  std::string Text() const;
  int LineCount() const noexcept;
  // The file's number of a line of code counted from 0, as mistakes are told, and the way back (-1
  // for a line that is none of the code's).
  int FileLine(int line) const noexcept { return design_.document().CodeLine() + line; }
  int CodeLine(int fileLine) const noexcept;

  // The whole code as the user left it in the editor, with line ends of any kind: what differs is
  // changed, all other lines stay byte for byte. Changes that follow one another in the same lines
  // are one step until Design::Seal.
  Refusal PutText(std::string_view text);

  // In the order of the code; procedures of any kind.
  std::vector<CodeProcedure> Procedures() const;

  // What the list of objects shows: "Form" (whatever the form is called) and the names of the
  // controls, each once, in the alphabet's order.
  std::vector<std::string> Objects() const;
  // The object's events by name in the order of its class; empty for an object that is not there or
  // whose class is not known.
  std::vector<std::string> Events(std::string_view object) const;
  // `Form_Load`, `cmdSave_Click`.
  static std::string ProcedureName(std::string_view object, std::string_view event);
  // The object and event that a procedure of this name is called for; nothing for one of the form's
  // own, and for the handler of an object that is not there.
  std::optional<EventPlace> HandledBy(std::string_view procedureName) const;
  // The event that a double click on a control goes to, and its name in the list of objects.
  std::string UsualEvent(ControlId id) const;
  std::string ObjectOf(ControlId id) const;

  // Line of the procedure's Sub line, or -1.
  int Find(std::string_view object, std::string_view event) const;
  // Finds it, or makes it empty: before the first procedure whose name comes later in the alphabet,
  // else at the end. `*line` is its first line inside.
  Refusal FindOrMake(std::string_view object, std::string_view event, int* line);
  // `Private Sub cmd_MouseDown(Index As Integer, Button As Integer, ...)`; empty if there is no
  // such object or event.
  std::string FirstLine(std::string_view object, std::string_view event) const;

 private:
  int AboveRemarks(int line) const;
  ControlId IdOf(std::string_view object) const;
  const ClassInfo* ClassOf(std::string_view object) const;
  Refusal Encoded(std::string_view text, std::vector<Item>* lines) const;
  void Insert(size_t at, std::vector<Item> lines);

  Design& design_;
};

}  // namespace qrn::designer
