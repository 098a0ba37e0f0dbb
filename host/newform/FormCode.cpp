#include "host/newform/FormCode.h"

#include "host/newform/CodeSheet.h"

namespace qrn::newform {

std::string FormCode(const FormPlan& plan, const FormLayout& layout) {
  CodeSheet sheet(plan, layout);
  WriteHead(sheet);
  WriteStart(sheet);
  if (layout.pageCount() > 1) WritePages(sheet);
  WriteCourse(sheet);
  WriteWalking(sheet);
  plan.HasKeys() ? WriteStoringButtons(sheet) : WriteStoring(sheet);
  WriteJudging(sheet);
  WriteShowing(sheet);
  if (plan.choice.detail) WriteDetails(sheet);
  if (plan.HasList()) WriteList(sheet);
  if (sheet.HasGrids()) WriteGrids(sheet);
  WriteMoments(sheet);
  sheet.code.Procedure("Sub " + std::string(kClose) + "_Click()", {"Unload Me"});
  return sheet.code.Text();
}

}  // namespace qrn::newform
