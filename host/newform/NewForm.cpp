#include "host/newform/NewForm.h"

#include <algorithm>

#include "host/newform/FormCode.h"
#include "host/newform/FormSheet.h"
#include "platform/CodePage.h"

namespace qrn::newform {
namespace {

// The form's own library: its type library's identifier is the same on every machine.
constexpr char kHead[] =
    "VERSION 5.00\r\n"
    "Object = \"{0899ACE4-82FE-42E6-A344-54FA80006796}#1.0#0\"; \"qrnbt350.ocx\"\r\n";

std::string Attributes(const std::string& formName) {
  return "Attribute VB_Name = \"" + formName +
         "\"\r\n"
         "Attribute VB_GlobalNameSpace = False\r\n"
         "Attribute VB_Creatable = False\r\n"
         "Attribute VB_PredeclaredId = True\r\n"
         "Attribute VB_Exposed = False\r\n";
}

void ListSpecial(const FormPlan& plan, NewForm& made) {
  for (const CardControl& control : plan.card) {
    if (control.fit.control != Control::Display) continue;
    made.displayed.push_back(plan.table.fields[control.field].name);
  }
  for (size_t i = 0; i < plan.table.fields.size(); ++i) {
    if (FitOf(plan.table, i).control == Control::None)
      made.left.push_back(plan.table.fields[i].name);
  }
}

}  // namespace

NewForm MakeForm(const Dictionary& dictionary, const FormChoice& choice) {
  const FormPlan plan(dictionary, choice);
  const FormLayout layout(plan);
  std::string text = kHead;
  DrawForm(plan, layout).Write(text, 0);
  text += Attributes(plan.formName) + FormCode(plan, layout);
  NewForm made{Utf8ToCodePage(text), plan.formName, {}, {}};
  ListSpecial(plan, made);
  return made;
}

}  // namespace qrn::newform
