// The wizard on the screen, answered by the keyboard.
#include <gtest/gtest.h>
#include <ole2.h>
#include <windows.h>

#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <thread>

#include "com/Text.h"
#include "host/designer/wizard/FormWizard.h"
#include "host/form/KeyNames.h"
#include "host/newform/FormOrder.h"
#include "host/user/Dialogs.h"
#include "host/user/UserInput.h"
#include "tests/support/TempFolder.h"
#include "tools/qrndata/Builder.h"
#include "tools/qrndata/Dictionary.h"

namespace qrn::test {
namespace {

namespace fs = std::filesystem;
constexpr DWORD kStep = 200;

std::string FileBytes(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

void Press(const char* chord) {
  host::PressKey(*form::KeyChordOf(chord));
  Sleep(kStep);
}

void Write(const std::string& text) {
  host::TypeText(com::Wide(text));
  Sleep(kStep);
}

class FormWizardTest : public testing::Test {
 protected:
  FormWizardTest() {
    OleInitialize(nullptr);
    const auto schema = qrndata::ReadSchemaFile(fs::path(QRN_COMPANY) / "company.toml");
    qrndata::WriteDictionary(folder_.Root(), schema.tables, true);
  }
  ~FormWizardTest() override { OleUninitialize(); }

  // Runs the wizard before somebody who does this once it stands.
  std::optional<designer::WizardOutcome> Run(const std::function<void()>& act) {
    std::thread user([&] {
      for (int tries = 0; !host::FrontBox() && tries < 100; ++tries) Sleep(50);
      Sleep(kStep);
      act();
    });
    auto outcome = designer::RunFormWizard(nullptr, form::Language::Japanese);
    user.join();
    return outcome;
  }
  size_t FileCount() const {
    return static_cast<size_t>(std::distance(fs::directory_iterator(folder_.Root()), {}));
  }

  TempFolder folder_;
};

TEST_F(FormWizardTest, MakesWhatTheCommandMakes) {
  const auto outcome = Run([&] {
    Write(folder_.Path("nowhere"));
    Press("Enter");
    EXPECT_NE(host::BoxText(host::FrontMessage()).find(L"辞書がありません"), std::wstring::npos);
    Press("Enter");
    Write(folder_.Text());
    Press("Enter");
    Write("Or");  // Orders
    Press("Enter");
    Press("Enter");
    Press("Alt+G");
    Press("Alt+M");
    Write("O");  // OrderLines
    Press("Enter");
    Press("Enter");
  });
  ASSERT_TRUE(outcome);
  newform::FormOrder order;
  order.directory = folder_.Text();
  order.table = "Orders";
  order.detail = "OrderLines";
  order.grid = true;
  order.output = folder_.Path("command.frm");
  ASSERT_TRUE(newform::CarryOut(order).done);
  EXPECT_EQ(outcome->file, folder_.Path("Orders.frm"));
  EXPECT_TRUE(FileBytes(outcome->file) == FileBytes(order.output)) << FileBytes(outcome->file);
}

TEST_F(FormWizardTest, WritesNothingWhenLeft) {
  const size_t before = FileCount();
  const auto outcome = Run([&] {
    Write(folder_.Text());
    Press("Enter");
    Press("Enter");
    Press("Enter");
    Press("Enter");
    EXPECT_NE(host::ItemText(host::ItemOf(host::FrontBox(), 111)), L"");  // the file's name
    Press("Escape");
  });
  EXPECT_FALSE(outcome);
  EXPECT_EQ(FileCount(), before);
}

}  // namespace
}  // namespace qrn::test
