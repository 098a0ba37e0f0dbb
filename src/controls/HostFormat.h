// The host's format service: `Format` properties are in the host's own language, unexamined.
#pragma once

#include <optional>
#include <string>

#include "com/Bstr.h"
#include "ole/ClientSite.h"

namespace qrn {

// What the service is told of the language: the locale, or the bare language as grids have it.
inline constexpr int32_t kJapaneseLocale = 1041;
inline constexpr int32_t kJapaneseLanguage = 0x11;

// `text` (code page 932) dressed by the host after `format`, in Japanese. Nothing for an empty text
// or format, without a site, on a host without the service, and when the service fails: the text
// then stays as it is, with no message.
std::optional<std::string> FormatThroughHost(const ole::ClientSite& site, const std::string& text,
                                             const com::Bstr& format,
                                             int32_t locale = kJapaneseLocale);

}  // namespace qrn
