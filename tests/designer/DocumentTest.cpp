// Form files are read into a tree and written back.
#include <gtest/gtest.h>

#include "host/designer/document/FormDocument.h"
#include "host/form/FormFile.h"
#include "host/form/SourceText.h"
#include "tests/designer/kit/Forms.h"

namespace qrn::test {
namespace {

using namespace designer;

TEST(FormDocument, IsWrittenBackByteForByte) {
  for (const FormCase& row : FormCases()) {
    form::Mistakes mistakes;
    const auto document = FormDocument::Read(row.bytes, mistakes);
    ASSERT_TRUE(document) << row.what << "\n" << mistakes.Text("form");
    EXPECT_EQ(document->Bytes(), row.bytes) << row.what;
  }
}

TEST(FormDocument, RefusesWhatItCannotCloseOrIsNoForm) {
  struct Case {
    const char* what;
    const char* text;
    int line;
    const char* reason;
  } const cases[] = {
      {"nothing", "", 1, "VERSION"},
      {"no version", "Begin VB.Form F\nEnd\n", 1, "VERSION"},
      {"no form", "VERSION 5.00\nObject = 1\n", 3, "'Begin VB.Form Name' is expected"},
      {"a class of modules", "VERSION 5.00\nBegin LIB.Box b\nEnd\n", 2, "not LIB.Box"},
      {"no class", "VERSION 5.00\nBegin F\nEnd\n", 2, "'Begin Library.Class Name'"},
      {"no name", "VERSION 5.00\nBegin VB.Form\nEnd\n", 2, "'Begin Library.Class Name'"},
      {"cut off", "VERSION 5.00\nBegin VB.Form F\n   Caption = \"x\n", 2, "'End' is missing for F"},
      {"a control cut off", "VERSION 5.00\nBegin VB.Form F\nBegin VB.Label L\nEnd\n", 2, "for F"},
      {"a group cut off", "VERSION 5.00\nBegin VB.Form F\nBeginProperty Font\nEnd\n", 3,
       "'EndProperty' is missing for Font"},
      {"a group closed twice", "VERSION 5.00\nBegin VB.Form F\nEndProperty\nEnd\n", 2, "'End'"},
      {"a group without a name", "VERSION 5.00\nBegin VB.Form F\nBeginProperty \nEnd\n", 3,
       "'BeginProperty Name"},
  };
  for (const Case& row : cases) {
    form::Mistakes mistakes;
    EXPECT_FALSE(FormDocument::Read(row.text, mistakes)) << row.what;
    ASSERT_FALSE(mistakes.List().empty()) << row.what;
    EXPECT_EQ(mistakes.List()[0].line, row.line) << row.what;
    EXPECT_NE(mistakes.List()[0].reason.find(row.reason), std::string::npos)
        << row.what << ": " << mistakes.List()[0].reason;
  }
}

TEST(FormDocument, RefusesBlocksThatLieTooDeep) {
  std::string text = "VERSION 5.00\nBegin VB.Form F\n";
  for (int depth = 0; depth < 100'000; ++depth) text += "Begin VB.Frame f\n";
  form::Mistakes mistakes;
  EXPECT_FALSE(FormDocument::Read(text, mistakes));
  EXPECT_EQ(mistakes.List()[0].reason, "blocks lie too deep in one another");
}

}  // namespace
}  // namespace qrn::test
