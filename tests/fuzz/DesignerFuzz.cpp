// The designer on forms of any bytes and with actions of any kind: what is read is written back
// byte for byte; what was done and saved is read the same; what was done is undone to the file that
// was opened and redone to the file as it was.
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

#include "tests/designer/kit/Actions.h"
#include "tests/designer/kit/Forms.h"

namespace {

using namespace qrn;
using namespace qrn::designer;

constexpr size_t kMostActions = 60;

void Require(bool holds, const char* what) {
  if (holds) return;
  std::fprintf(stderr, "%s\n", what);
  std::abort();
}

// Numbers from the input's bytes, 0 behind its end.
class Bytes {
 public:
  explicit Bytes(std::string_view bytes) : rest_(bytes) {}

  bool More() const { return !rest_.empty(); }
  uint32_t operator()(uint32_t limit) {
    uint32_t number = Next();
    if (limit > 256) number = number << 8 | Next();
    return number % limit;
  }

 private:
  uint32_t Next() {
    if (rest_.empty()) return 0;
    const auto byte = static_cast<uint8_t>(rest_.front());
    rest_.remove_prefix(1);
    return byte;
  }

  std::string_view rest_;
};

// One of the good forms with a piece of it taken out or put in from the input: most stay forms.
std::string Mangled(Bytes& bytes, std::string* companion) {
  const auto& cases = test::FormCases();
  const test::FormCase& chosen = cases[bytes(static_cast<uint32_t>(cases.size()))];
  *companion = chosen.companion;
  std::string form = chosen.bytes;
  for (uint32_t changes = bytes(4); changes > 0; --changes) {
    const size_t at = bytes(static_cast<uint32_t>(form.size()) + 1);
    if (bytes(2) == 0) {
      form.erase(at, bytes(20));
    } else {
      form.insert(at, 1, static_cast<char>(bytes(256)));
    }
  }
  return form;
}

void Edit(const std::string& form, const std::string& companion, Bytes& bytes) {
  const auto design = test::Designed(form, companion);
  Require(test::Actions::Saved(*design) == form, "a form was not written back as it was read");
  test::Actions actions(*design, [&](uint32_t limit) { return bytes(limit); });
  for (size_t count = 0; count < kMostActions && bytes.More(); ++count) actions.DoOne();
  const FormImages saved = test::Actions::Images(*design);
  const auto again = test::Designed(saved.form, saved.companion.bytes);
  Require(test::Actions::Saved(*again) == saved.form, "what was saved was not read the same");
  Require(test::Tree(*again) == test::Tree(*design), "what was saved has other controls");
  while (design->CanUndo()) design->Undo();
  Require(test::Actions::Saved(*design) == form, "what was done was not undone");
  while (design->CanRedo()) design->Redo();
  Require(test::Actions::Saved(*design) == saved.form, "what was undone was not redone");
}

void TryForm(const std::string& form, const std::string& companion, Bytes& bytes) {
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
  Bytes bytes(input.substr(0, 2000));
  std::string companion;
  const std::string form = Mangled(bytes, &companion);
  TryForm(form, companion, bytes);
  TryForm("VERSION 5.00\nBegin VB.Form F\n" + std::string(input) + "\nEnd\n", {}, bytes);
  TryForm(std::string(input), {}, bytes);
  return 0;
}
