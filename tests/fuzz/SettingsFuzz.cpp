// Settings files of any bytes: every setting is read to something that the codecs can work with.
#include <cstring>
#include <fstream>
#include <memory>

#include "core/DbEngine.h"
#include "fields/FieldText.h"
#include "platform/MessageBox.h"
#include "platform/Profile.h"
#include "tests/fuzz/FuzzInput.h"
#include "tests/support/TempFolder.h"

using namespace qrn;
using namespace qrn::fuzz;

namespace {

// A directory of this process for its quorin.ini and win.ini, removed at the end.
class IniDirectory {
 public:
  IniDirectory() { setenv("QUORIN_INI_DIR", folder_.Root().c_str(), 1); }

  void Write(const char* name, const char* section, const uint8_t* data, size_t size) {
    std::ofstream file(folder_.Path(name), std::ios::binary);
    file << section;
    file.write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
  }

 private:
  qrn::test::TempFolder folder_;
};

void Convert(const QuorinSettings& settings) {
  struct {
    int32_t type, size;
    const char* text;
  } const fields[] = {{kFloat, 8, "1234.5678"}, {kDate, 4, "24/01/31"}, {kDecimal, 5, "-12.5"},
                      {kString, 6, "abc"},      {kMoney, 4, "1"},       {kNumericSTS, 5, "12-"}};
  for (const auto& row : fields) {
    DbFieldInfo field{};
    field.Type = row.type;
    field.Size = row.size;
    field.Decimals = 2;
    uint8_t bytes[8] = {};
    char text[64];
    SetFieldText(settings, bytes, row.text, field);
    GetFieldText(settings, text, bytes, field, bytes);
    Require(std::memchr(text, '\0', sizeof text) != nullptr, "a text without its end");
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static IniDirectory directory;
  ReplaceShowBox([](const char*, unsigned) { return kBoxOk; });
  // Half of the inputs begin inside the section, so that keys are met.
  const bool inside = size > 0 && data[0] % 2 == 0;
  directory.Write("quorin.ini", inside ? "[quorin350]\n" : "", data, size);
  directory.Write("win.ini", inside ? "[intl]\nsShortDate=" : "", data, size);
  QuorinSettings settings;
  settings.Load();
  Require(settings.DateStyle == kFourDigitYears || settings.DateStyle == kTwoDigitYears,
          "an unknown date style");
  const DbEngine engine(settings);
  Convert(engine.Settings);
  for (const size_t room : {0, 1, 2, 31, 300}) {
    const auto text = std::make_unique<char[]>(room);
    const size_t length =
        ReadProfileText("quorin350", "fill_space", "yes", {text.get(), room}, "quorin.ini");
    Require(room == 0 ? length == 0 : length < room && text[length] == '\0', "a text too long");
  }
  return 0;
}
