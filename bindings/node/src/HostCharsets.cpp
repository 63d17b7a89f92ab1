#include <algorithm>
#include <cstddef>
#include <cstring>
#include <string>

#include <bouncecheck/Limits.h>
#include "mime/Iconv.h"
#include "text/Utf8.h"

// What reads charsets in place of the C library, whose tables would add 130 KB to the compressed
// module: the decoder of the host (WHATWG Encoding). Text in a charset that it lacks stays as it
// is.

extern "C" {

/// Whether the host has the charset.
[[clang::import_module("host"), clang::import_name("hasCharset")]] int hostHasCharset(
    const char* name, std::size_t nameSize);
/// Decodes a text, which the host keeps as UTF-8, with U+FFFD for what it cannot decode. Returns
/// its size in bytes.
[[clang::import_module("host"), clang::import_name("decode")]] std::size_t hostDecode(
    const char* name, std::size_t nameSize, const char* bytes, std::size_t size);
/// Copies the first bytes of that text, and forgets it.
[[clang::import_module("host"), clang::import_name("takeDecoded")]] void hostTakeDecoded(
    char* out, std::size_t size);

}  // extern "C"

namespace bouncecheck {

void Iconv::Close::operator()(void*) const noexcept {}

void Iconv::open() {
    // There is nothing to keep but that the charset is there.
    static char isThere;
    handle_.reset(hostHasCharset(charset_, std::strlen(charset_)) ? &isThere : nullptr);
}

std::string Iconv::convert(std::string_view bytes, std::size_t) {
    const std::size_t decoded =
        hostDecode(charset_, std::strlen(charset_), bytes.data(), bytes.size());
    const std::size_t most = bytes.size() + limits::charsetGrowth;
    std::string out(std::min(decoded, most + 1), '\0');  // one more shows where a character ends
    hostTakeDecoded(out.data(), out.size());
    out.resize(wholeCharacters(out, most).size());
    return out;
}

std::optional<ByteMeanings> Iconv::byteMeanings() { return std::nullopt; }

}  // namespace bouncecheck
