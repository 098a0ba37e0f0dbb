#include "host/designer/model/CodeCheck.h"

#include <algorithm>

#include "host/form/SourceText.h"
#include "host/form/VbCode.h"

namespace qrn::designer {
namespace {

using form::SameWord;

std::vector<std::string> CodeLines(const Design& design) {
  std::vector<std::string> lines;
  for (const Item& item : design.document().code()->items()) {
    lines.push_back(design.document().text().Decode(WithoutEnd(item.bytes)));
  }
  return lines;
}

// The words before and behind the bar at `at`; both may hold further bars.
struct HandlerName {
  HandlerName(std::string_view name, size_t at)
      : object(name.substr(0, at)), event(name.substr(at + 1)) {}
  std::string_view object;
  std::string_view event;
};

// Parameters of the control's event, with the index of an array's element; -1 if it has no such
// event.
int ParametersOf(const Design& design, ControlId id, std::string_view event) {
  const ClassInfo* known = design.Class(id);
  const EventInfo* info = known ? known->Event(event) : nullptr;
  if (!info) return -1;
  const bool isElement = id != design.form() && design.Index(id);
  return static_cast<int>(info->parameters.size()) + (isElement ? 1 : 0);
}

void CheckHandler(const Design& design, const form::Procedure& procedure,
                  form::Mistakes& mistakes) {
  const std::string& name = procedure.name;
  for (size_t at = name.find('_'); at != std::string::npos; at = name.find('_', at + 1)) {
    const HandlerName handler(name, at);
    const std::vector<ControlId> all = design.All();
    const auto control = std::find_if(all.begin(), all.end(), [&](ControlId id) {
      return SameWord(design.Name(id), handler.object);
    });
    const bool isForm = SameWord(handler.object, "Form");
    if (!isForm && control == all.end()) continue;
    const int expected = ParametersOf(design, isForm ? design.form() : *control, handler.event);
    if (expected >= 0) form::CheckParameters(procedure, expected, mistakes);
  }
}

}  // namespace

std::vector<form::Mistake> CheckCode(const Design& design) {
  form::Mistakes mistakes;
  const form::ScriptCode code =
      form::RewriteCode(CodeLines(design), design.document().CodeLine(), mistakes);
  for (const form::Procedure& procedure : code.procedures) {
    CheckHandler(design, procedure, mistakes);
  }
  std::vector<form::Mistake> list = mistakes.List();
  std::stable_sort(
      list.begin(), list.end(),
      [](const form::Mistake& one, const form::Mistake& other) { return one.line < other.line; });
  return list;
}

}  // namespace qrn::designer
