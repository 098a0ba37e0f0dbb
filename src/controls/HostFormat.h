// The host's format service: `Format` properties are in the host's own language, unexamined.
#pragma once

#include <optional>
#include <string>

#include "com/Bstr.h"
#include "ole/ClientSite.h"

namespace qrn {

// `text` (code page 932) dressed by the host after `format`, in Japanese. Nothing for an empty text
// or format, without a site, on a host without the service, and when the service fails: the text
// then stays as it is, with no message.
std::optional<std::string> FormatThroughHost(const ole::ClientSite& site, const std::string& text,
                                             const com::Bstr& format);

}  // namespace qrn
