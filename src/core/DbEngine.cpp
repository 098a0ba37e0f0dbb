#include "core/DbEngine.h"

#include "platform/Profile.h"

namespace qrn {
namespace {

constexpr char kSection[] = "quorin350";
constexpr char kFile[] = "quorin.ini";

struct LoadedSettings : QuorinSettings {
  LoadedSettings() { Load(); }
};

constinit QuorinSettings* chosen = nullptr;

}  // namespace

char* FormattedTarget = nullptr;

DbEngine::DbEngine(QuorinSettings& settings)
    : Settings(settings),
      NullKeyValue(static_cast<uint8_t>(ReadProfileInt(kSection, "null_key", 0, kFile))),
      FileFlag(static_cast<uint16_t>(ReadProfileInt(kSection, "file_flag", 130, kFile))) {}

QuorinSettings& TheSettings() {
  if (chosen == nullptr) {
    static LoadedSettings settings;
    chosen = &settings;
  }
  return *chosen;
}

DbEngine& TheEngine() {
  static DbEngine engine(TheSettings());
  return engine;
}

void UseSettings(QuorinSettings& settings) noexcept { chosen = &settings; }

}  // namespace qrn
