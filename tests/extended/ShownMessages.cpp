#include "tests/extended/ShownMessages.h"

#include <utility>
#include <vector>

#include "platform/CodePage.h"
#include "platform/MessageBox.h"

namespace qrn::test {
namespace {

constexpr size_t kCodeLength = 5;

std::vector<std::string> shown;

int Remember(const char* text, unsigned) {
  shown.push_back(CodePageToUtf8(text));
  return kBoxOk;
}

std::string JoinedUpTo(size_t length) {
  std::string joined;
  for (const std::string& text : std::exchange(shown, {})) {
    if (!joined.empty()) joined += ' ';
    joined += text.substr(0, length);
  }
  return joined;
}

}  // namespace

ShownMessages::ShownMessages() {
  shown.clear();
  ReplaceShowBox(Remember);
}

ShownMessages::~ShownMessages() { ReplaceShowBox(nullptr); }

std::string ShownMessages::Take() { return JoinedUpTo(std::string::npos); }
std::string ShownMessages::TakeCodes() { return JoinedUpTo(kCodeLength); }

}  // namespace qrn::test
