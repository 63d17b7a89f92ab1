#include "mime/PlainMailbox.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <utility>

#include <bouncecheck/Limits.h>
#include "text/Ascii.h"
#include "text/ByteSet.h"
#include "text/Search.h"

namespace bouncecheck {
namespace {

/// Bytes that mean something in a field of addresses.
constexpr ByteSet special("\"(),:;<>=@[\\] \t\r\n\v\f");

/// Whether `text` is words with nothing but blanks between them.
bool isPlainText(std::string_view text) noexcept {
    return std::ranges::all_of(text, [](char c) { return c == ' ' || !special.contains(c); });
}

/// The words that `text` consists of, with one blank between them; nothing when it is more than
/// that.
std::optional<std::string> plainWords(std::string_view text) {
    std::string words;
    for (std::size_t count = 0; !text.empty(); ++count) {
        const std::size_t length = lengthBefore(special, text);
        const bool isWord = length > 0 && (length == text.size() || text[length] == ' ');
        if (!isWord || count == limits::mailboxWords) return std::nullopt;
        words.append(count == 0 ? "" : " ").append(text, 0, length);
        text = ascii::trimLeft(text.substr(length));
    }
    return words;
}

}  // namespace

std::optional<Mailbox> plainMailbox(std::string_view field) {
    field = ascii::trim(field);
    const bool isBracketed = field.ends_with('>');
    std::string_view address = field;
    std::string_view name;
    if (isBracketed || field.ends_with(')')) {
        const std::size_t open = field.find(isBracketed ? '<' : '(');
        if (open == npos) return std::nullopt;
        address = ascii::trim(field.substr(0, open));
        name = field.substr(open + 1, field.size() - open - 2);
        if (isBracketed) std::swap(address, name);
    }
    const std::size_t sign = lengthBefore(special, address);
    const bool hasSign = sign < address.size();
    if (hasSign ? address[sign] != '@' : !isBracketed) return std::nullopt;
    if (hasSign && lengthBefore(special, address.substr(sign + 1)) < address.size() - sign - 1) {
        return std::nullopt;
    }
    const bool isQuoted =
        isBracketed && name.size() >= 2 && name.starts_with('"') && name.ends_with('"');
    if (isQuoted) name = name.substr(1, name.size() - 2);
    if (isQuoted || !isBracketed) {
        if (!isPlainText(name)) return std::nullopt;
        return Mailbox{std::string(ascii::trim(name)), std::string(address)};
    }
    std::optional<std::string> words = plainWords(name);
    if (!words) return std::nullopt;
    return Mailbox{*std::move(words), std::string(address)};
}

}  // namespace bouncecheck
