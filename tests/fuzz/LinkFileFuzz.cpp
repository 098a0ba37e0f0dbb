// Link files from any bytes: read or refused with a line that there is; what is read says the same
// once it is written and read again, and holds no password.
#include "btrieve/server/LinkFile.h"
#include "tests/fuzz/FuzzInput.h"

using namespace btrieve::server;
using namespace qrn::fuzz;

namespace {

// Most bytes would end at the mark: half of the inputs are what stands behind it.
std::string Text(const uint8_t* data, size_t size) {
  const std::string text(data, data + size);
  return size % 2 == 0 ? std::string(kLinkMark) + "\nserver=host=h\nschema=s\n" + text : text;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string text = Text(data, size);
  LinkFault fault;
  const auto link = ReadLinkFile(btrieve::ViewOf(text), fault);
  if (!link) {
    Require(fault.line >= 1 && !fault.text.empty(), "refused without words");
    return 0;
  }
  for (const auto& [word, value] : link->server.words) Require(word != "password", "a password");
  LinkFault again;
  Require(ReadLinkFile(btrieve::ViewOf(WriteLinkFile(*link)), again) == link, again.text);
  return 0;
}
