// The designer on forms of any bytes and with actions of any kind: what is read is written back
// byte for byte; what was done and saved is read the same; what was done is undone to the file that
// was opened and redone to the file as it was.
#include <string_view>

#include "tests/designer/kit/Actions.h"
#include "tests/designer/kit/Forms.h"
#include "tests/fuzz/FuzzInput.h"

namespace {

using namespace qrn;
using namespace qrn::designer;
using namespace qrn::fuzz;

constexpr size_t kMostActions = 60;

// One of the good forms with a piece of it taken out or put in from the input: most stay forms.
std::string Mangled(Input& bytes, std::string* companion) {
  const auto& cases = test::FormCases();
  const test::FormCase& chosen = cases[bytes.Index(cases.size())];
  *companion = chosen.companion;
  std::string form = chosen.bytes;
  for (int changes = bytes.Byte() % 4; changes > 0; --changes) {
    const size_t at = bytes.Index(form.size() + 1);
    if (bytes.Byte() % 2 == 0) {
      form.erase(at, bytes.Byte() % 20);
    } else {
      form.insert(at, 1, static_cast<char>(bytes.Byte()));
    }
  }
  return form;
}

void Edit(const std::string& form, const std::string& companion, Input& bytes) {
  const auto design = test::Designed(form, companion);
  Require(test::Actions::Saved(*design) == form, "a form was not written back as it was read");
  test::Actions actions(*design, [&](uint32_t limit) {
    return static_cast<uint32_t>(limit > 256 ? bytes.Index(limit) : bytes.Byte() % limit);
  });
  for (size_t count = 0; count < kMostActions && !bytes.IsOver(); ++count) actions.DoOne();
  const FormImages saved = test::Actions::Images(*design);
  const auto again = test::Designed(saved.form, saved.companion.bytes);
  Require(test::Actions::Saved(*again) == saved.form, "what was saved was not read the same");
  Require(test::Tree(*again) == test::Tree(*design), "what was saved has other controls");
  while (design->CanUndo()) design->Undo();
  Require(test::Actions::Saved(*design) == form, "what was done was not undone");
  while (design->CanRedo()) design->Redo();
  Require(test::Actions::Saved(*design) == saved.form, "what was undone was not redone");
}

void TryForm(const std::string& form, const std::string& companion, Input& bytes) {
  form::Mistakes mistakes;
  if (FormDocument::Read(form, mistakes)) {
    Edit(form, companion, bytes);
  } else {
    Require(mistakes.Any(), "a form was refused without a reason");
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string_view input(reinterpret_cast<const char*>(data), size);
  Input bytes(data, std::min<size_t>(size, 2000));
  std::string companion;
  const std::string form = Mangled(bytes, &companion);
  TryForm(form, companion, bytes);
  TryForm("VERSION 5.00\nBegin VB.Form F\n" + std::string(input) + "\nEnd\n", {}, bytes);
  TryForm(std::string(input), {}, bytes);
  return 0;
}
