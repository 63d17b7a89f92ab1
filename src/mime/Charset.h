#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace bouncecheck {

/// `bytes`, which are text in `charset` (a name as in MIME, any case), as
/// UTF-8.
///
/// An empty or unknown name leaves the bytes as they are. So does text that is
/// UTF-8 already, 8-bit characters included, whatever its name says (UTF-16 and
/// UTF-32 aside): mailers mislabel it often, and text in another charset is not
/// UTF-8 by chance. Bytes that cannot be decoded become U+FFFD. Ends where it
/// becomes longer than `bytes` by more than `limits::charsetGrowth`. Linear in the
/// size of `bytes`.
std::string toUtf8(std::string bytes, std::string_view charset);
/// The same; nothing when the bytes stay as they are.
std::optional<std::string> convertedToUtf8(std::string_view bytes, std::string_view charset);

/// Header text whose bytes should be ASCII but are not: kept when it is UTF-8,
/// else read as Windows-1252, what mailers without a charset mostly meant.
std::string undeclaredToUtf8(std::string bytes);

}  // namespace bouncecheck
