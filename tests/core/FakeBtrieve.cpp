#include "FakeBtrieve.h"

namespace qrn::test {
namespace {

FakeBtrieve* presentManager = nullptr;

std::string KeyText(const BtrieveCall& call) {
  if (call.key == nullptr) return "-";
  return std::to_string(call.keyLength) + ":" + Hex(call.key, call.keyLength);
}

std::string LogLine(const BtrieveCall& call) {
  return std::to_string(call.operation) + (call.posBlock != nullptr ? "" : " noblock") +
         (call.data != nullptr ? "" : " nodata") +
         " len=" + (call.dataLength != nullptr ? std::to_string(*call.dataLength) : "-") +
         " key=" + KeyText(call) + " kn=" + std::to_string(call.keyNumber) + "; ";
}

}  // namespace

std::string Hex(const void* bytes, size_t count) {
  static const char kDigits[] = "0123456789ABCDEF";
  std::string text;
  for (size_t i = 0; i < count; ++i) {
    const uint8_t byte = static_cast<const uint8_t*>(bytes)[i];
    text += kDigits[byte >> 4];
    text += kDigits[byte & 15];
  }
  return text;
}

FakeBtrieve::FakeBtrieve() {
  presentManager = this;
  ReplaceBtrCall([](uint16_t operation, void* posBlock, void* data, uint32_t* dataLength, void* key,
                    uint8_t keyLength, int8_t keyNumber) {
    return presentManager->Call({operation, posBlock, static_cast<uint8_t*>(data), dataLength,
                                 static_cast<uint8_t*>(key), keyLength, keyNumber});
  });
}

FakeBtrieve::~FakeBtrieve() {
  ReplaceBtrCall(nullptr);
  presentManager = nullptr;
}

int16_t FakeBtrieve::Call(const BtrieveCall& call) {
  log_ += LogLine(call);
  const auto answer = answers_.find(call.operation);
  return answer != answers_.end() ? answer->second(call) : int16_t{0};
}

}  // namespace qrn::test
