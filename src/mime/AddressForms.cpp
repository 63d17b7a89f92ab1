#include "mime/AddressForms.h"

#include <cstdint>
#include <optional>
#include <utility>

#include "text/Ascii.h"
#include "text/Search.h"
#include "text/Utf8.h"

namespace bouncecheck {
namespace {

/// The code point of the "\x{...}" that `text` begins with, and how long that is.
struct Escape {
    std::uint32_t codePoint = 0;
    std::size_t length = 0;
};

/// Whether it is a character, and none that controls or divides what it stands in.
constexpr bool mayBeEscaped(std::uint32_t codePoint) noexcept {
    const bool isControl = codePoint < 0x20 || (codePoint >= 0x7F && codePoint < 0xA0);
    const bool isSurrogate = codePoint >= 0xD800 && codePoint < 0xE000;
    return !isControl && !isSurrogate && codePoint <= 0x10FFFF && codePoint != '@';
}

std::optional<Escape> escapeAt(std::string_view text) {
    constexpr std::string_view prefix = "\\x{";
    constexpr std::size_t mostDigits = 6;
    if (!text.starts_with(prefix)) return std::nullopt;
    Escape escape{0, prefix.size()};
    while (escape.length < text.size() && escape.length < prefix.size() + mostDigits) {
        const int digit = ascii::hexValue(text[escape.length]);
        if (digit < 0) break;
        escape.codePoint = escape.codePoint * 16 + static_cast<std::uint32_t>(digit);
        ++escape.length;
    }
    const bool isClosed = escape.length < text.size() && text[escape.length] == '}';
    if (!isClosed || escape.length == prefix.size() || !mayBeEscaped(escape.codePoint)) {
        return std::nullopt;
    }
    ++escape.length;
    return escape;
}

/// The part of `text` in front of its first `mark`, which is taken off `text` with the mark.
std::string_view takeUpTo(std::string_view& text, std::string_view mark) {
    const std::size_t end = text.find(mark);
    if (end == npos) return {};
    const std::string_view part = text.substr(0, end);
    text.remove_prefix(end + mark.size());
    return part;
}

/// "HHH=TT=domain=local" as local@domain, or "".
std::string ofForwarded(std::string_view local) {
    const std::string_view hash = takeUpTo(local, "=");
    const std::string_view time = takeUpTo(local, "=");
    const std::string_view domain = takeUpTo(local, "=");
    if (hash.empty() || time.empty() || domain.find('.') == npos || local.empty()) return {};
    return std::string(local).append("@").append(domain);
}

}  // namespace

bool isOfDomain(std::string_view host, std::string_view domain) {
    if (host.size() < domain.size()) std::swap(host, domain);
    if (domain.empty()) return false;
    const std::size_t rest = host.size() - domain.size();
    return ascii::equalsNoCase(host.substr(rest), domain) && (rest == 0 || host[rest - 1] == '.');
}

std::string decodeXtext(std::string_view address) {
    std::string decoded(address.substr(0, address.find('+')));
    for (std::size_t i = decoded.size(); i < address.size(); ++i) {
        const std::string_view code = address.substr(i, 3);
        if (code == "+2B" || code == "+3D") {
            decoded += code == "+2B" ? '+' : '=';
            i += 2;
        } else {
            decoded += address[i];
        }
    }
    return decoded;
}

std::string decodeUtf8Address(std::string_view address) {
    std::string decoded;
    while (!address.empty()) {
        if (const std::optional<Escape> escape = escapeAt(address)) {
            appendUtf8(decoded, escape->codePoint);
            address.remove_prefix(escape->length);
        } else {
            decoded += address.front();
            address.remove_prefix(1);
        }
    }
    return decoded;
}

std::string withoutRewriting(std::string_view address) {
    const std::size_t at = address.rfind('@');
    if (at == npos) return std::string(address);
    std::string_view local = address.substr(0, at);
    if (ascii::startsWithNoCase(local, "prvs=")) {
        std::string_view rest = local.substr(5);
        if (!takeUpTo(rest, "=").empty() && !rest.empty()) {
            return std::string(rest).append(address.substr(at));
        }
    }
    const bool isSrs =
        ascii::startsWithNoCase(local, "SRS0") || ascii::startsWithNoCase(local, "SRS1");
    if (isSrs && local.size() > 5 && ascii::isOneOf(local[4], "=+-")) {
        std::string_view rest = local.substr(5);
        // SRS1=HHH=forwarder==HHH=TT=domain=local
        const std::size_t inner = local[3] == '1' ? rest.find("==") : npos;
        if (local[3] == '1') rest = inner == npos ? std::string_view() : rest.substr(inner + 2);
        if (std::string original = ofForwarded(rest); !original.empty()) return original;
    }
    return std::string(address);
}

}  // namespace bouncecheck
