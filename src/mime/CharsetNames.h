#pragma once

#include <string>
#include <string_view>

#include "mime/tables/Charsets.h"

namespace bouncecheck {

/// `name`, as mail writes it (RFC 2978, section 2.3), in the form in which charsets are
/// looked up: in lower case, trimmed, without the bytes '(', ')' and '+', which C libraries
/// ignore. So no charset has more names than its row in the table. "" for a name that is no
/// charset's: one with other bytes, or of 64 bytes and more.
std::string canonicalCharsetName(std::string_view name);

/// The charset of a canonical name, or null. It lives as long as the program.
const Charset* charsetOf(std::string_view canonicalName);

}  // namespace bouncecheck
