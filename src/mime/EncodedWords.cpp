#include "mime/EncodedWords.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "mime/Charset.h"
#include "mime/TransferEncoding.h"
#include "text/Ascii.h"
#include "text/HexEscapes.h"
#include "text/Search.h"

namespace bouncecheck {
namespace {

struct EncodedWord {
    std::string_view charset;
    std::string bytes;
    std::size_t length;  ///< from "=?" to "?=", both included
};

bool isCharsetChar(char c) noexcept {
    return !ascii::isSpace(c) && !ascii::isControl(c) && c != '?' && c != '=';
}

std::string decodeQ(std::string_view text) {
    std::string blanks(text);
    std::ranges::replace(blanks, '_', ' ');
    std::string bytes;
    bytes.reserve(blanks.size());
    appendHexDecoded(bytes, blanks, '=');
    return bytes;
}

/// The end of the encoded text that begins `text`, where "?=" stands, or npos.
/// Mailers leave '?' and blanks in Q words as they are; "=?" begins another
/// word, so this one is broken.
std::size_t endOfQ(std::string_view text) noexcept {
    for (std::size_t i = 0; i + 1 < text.size(); ++i) {
        if (text[i] == '?' && text[i + 1] == '=') return i;
        // "=?=" is an '=' that was left as it is, before the end.
        const bool isEnd = text.substr(i).starts_with("=?=");
        if (text[i] == '=' && text[i + 1] == '?' && !isEnd) return npos;
    }
    return npos;
}

std::size_t endOfB(std::string_view text) noexcept {
    const auto end =
        std::ranges::find_if_not(text, [](char c) { return base64Value(c) >= 0 || c == '='; });
    const auto at = static_cast<std::size_t>(end - text.begin());
    return text.substr(at).starts_with("?=") ? at : npos;
}

/// The word that begins `text`, which starts with "=?".
std::optional<EncodedWord> readWord(std::string_view text) {
    std::string_view rest = text.substr(2);
    const auto charsetEnd = std::ranges::find_if_not(rest, isCharsetChar);
    std::string_view charset = rest.substr(0, static_cast<std::size_t>(charsetEnd - rest.begin()));
    rest.remove_prefix(charset.size());
    if (charset.empty() || rest.size() < 3 || rest[0] != '?' || rest[2] != '?') return std::nullopt;
    const char encoding = ascii::toLower(rest[1]);
    rest.remove_prefix(3);

    if (encoding != 'b' && encoding != 'q') return std::nullopt;
    const std::size_t end = encoding == 'b' ? endOfB(rest) : endOfQ(rest);
    if (end == npos) return std::nullopt;
    const std::string_view encoded = rest.substr(0, end);
    charset = charset.substr(0, charset.find('*'));  // a language may follow (RFC 2231, 5)
    const std::size_t length = text.size() - rest.size() + end + 2;
    return EncodedWord{charset, encoding == 'b' ? decodeBase64(encoded) : decodeQ(encoded), length};
}

}  // namespace

std::size_t encodedWordLength(std::string_view text) {
    if (!text.starts_with("=?")) return 0;
    const std::optional<EncodedWord> word = readWord(text);
    return word ? word->length : 0;
}

std::string decodeEncodedWords(std::string_view text) {
    if (!contains(text, "=?")) return std::string(text);

    std::string out;
    std::string pendingBytes;
    std::string_view pendingCharset;
    const auto flush = [&] {
        out += undeclaredToUtf8(toUtf8(std::move(pendingBytes), pendingCharset));
        pendingBytes.clear();
        pendingCharset = {};
    };
    std::size_t plainFrom = 0;
    for (std::size_t at = 0; (at = findBytes(text, "=?", at)) != npos;) {
        std::optional<EncodedWord> word = readWord(text.substr(at));
        if (!word) {
            at += 1;  // "=?=?": the next word may begin inside
            continue;
        }
        const std::string_view between = text.substr(plainFrom, at - plainFrom);
        const bool afterWord = plainFrom > 0;
        if (!afterWord || !ascii::trim(between).empty()) {
            flush();
            out += between;
        } else if (!ascii::equalsNoCase(pendingCharset, word->charset)) {
            flush();
        }
        pendingCharset = word->charset;
        pendingBytes += word->bytes;
        at += word->length;
        plainFrom = at;
    }
    flush();
    out += text.substr(plainFrom);
    return out;
}

}  // namespace bouncecheck
