#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace bouncecheck {

/// `text` (UTF-8, unfolded) with its encoded words (RFC 2047) decoded to UTF-8.
///
/// Words in one charset with only white space between them are joined before
/// the charset is converted, because mailers split characters between them;
/// the white space goes. Words are found inside quoted strings too. What is no
/// well-formed word (no end, another encoding than B and Q, base64 with foreign
/// characters) stays text. Linear in the size of `text`.
std::string decodeEncodedWords(std::string_view text);

/// The length of the well-formed encoded word that `text` begins with, or 0.
std::size_t encodedWordLength(std::string_view text);

}  // namespace bouncecheck
