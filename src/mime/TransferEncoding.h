#pragma once

#include <string>
#include <string_view>

namespace bouncecheck {

/// How a body was made fit for transport (RFC 2045, section 6).
enum class TransferEncoding { identity, quotedPrintable, base64, uuencode };

/// The encoding that a Content-Transfer-Encoding value names, in any case;
/// 7bit, 8bit, binary and all that is unknown are `identity`.
TransferEncoding transferEncoding(std::string_view fieldValue) noexcept;

/// `text`, with CRLF line ends, decoded. Nothing is refused: in base64 bytes
/// outside the alphabet are passed over and padding may be missing or stand
/// anywhere; in quoted-printable an '=' that begins no escape stays text; in
/// uuencode lines outside begin and end are dropped. Linear.
std::string decodeTransfer(std::string_view text, TransferEncoding encoding);

/// The bytes of `text` in base64 (RFC 4648), as lenient as `decodeTransfer`.
std::string decodeBase64(std::string_view text);

/// The value of a base64 digit, or -1.
int base64Value(char c) noexcept;

}  // namespace bouncecheck
