#include "controls/HostFormat.h"

#include "binding/BoundControl.h"
#include "com/VbFormat.h"
#include "platform/CodePage.h"

namespace qrn {
namespace {

constexpr size_t kBufferBytes = 2048;
constexpr USHORT kToldSize = 512;  // what the service is told: less than there is, in any unit

com::Com<com::IVBFormat> FormatServiceOf(const ole::ClientSite& site) {
  com::Com<com::IVBFormat> service;
  const auto host = site.As<com::IGetVBAObject>();
  if (host) host->GetObject(__uuidof(com::IVBFormat), service.putVoid(), 0);
  return service;
}

}  // namespace

std::optional<std::string> FormatThroughHost(const ole::ClientSite& site, const std::string& text,
                                             const com::Bstr& format, int32_t locale) {
  if (text.empty() || format.empty()) return std::nullopt;
  const auto service = FormatServiceOf(site);
  if (!service) return std::nullopt;
  com::Variant value(WidenToBstr(text));
  wchar_t buffer[kBufferBytes / sizeof(wchar_t)] = {};
  USHORT written = 0;
  const HRESULT result =
      service->Format(value.get(), format.get(), buffer, kToldSize, locale, 0, 0, &written);
  if (FAILED(result)) return std::nullopt;
  buffer[std::size(buffer) - 1] = L'\0';
  return Utf16ToCodePage(com::AsUtf16(buffer));
}

}  // namespace qrn
