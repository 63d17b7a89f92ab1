#include "tool/output/Address.h"

#include <algorithm>
#include <array>

#include "text/Ascii.h"
#include "text/Controls.h"
#include "text/Search.h"
#include "text/Utf8.h"

namespace bouncecheck {
namespace {

/// The letters of a dot-string besides alphanumeric ones (RFC 5322, section 3.2.3) and
/// the dot itself; mail is delivered whatever stands beside it.
constexpr std::string_view localSigns = "!#$%&'*+-/=?^_`{|}~.";

constexpr bool isLetter(char c, std::string_view signs) noexcept {
    return ascii::isAlnum(c) || !ascii::isAscii(c) || ascii::isOneOf(c, signs);
}

/// The bytes of the local part that `text` begins with; 0 when it begins with none.
std::size_t localPartSize(std::string_view text) noexcept {
    std::size_t size = 0;
    if (!text.starts_with('"')) {
        while (size < text.size() && isLetter(text[size], localSigns)) ++size;
        return size;
    }
    for (size = 1; size < text.size() && text[size] != '"'; ++size) {
        if (text[size] == '\\') ++size;
    }
    return size > 1 && size < text.size() ? size + 1 : 0;
}

bool isDomain(std::string_view text) noexcept {
    const bool isLiteral = text.starts_with('[') && text.ends_with(']') && text.size() > 2;
    if (isLiteral) text = text.substr(1, text.size() - 2);
    const std::string_view signs = isLiteral ? "-.:" : "-_.";
    return !text.empty() && text.front() != '.' && text.back() != '.' &&
           text.find("..") == std::string_view::npos &&
           std::ranges::all_of(text, [&](char c) { return isLetter(c, signs); });
}

}  // namespace

bool isAddress(std::string_view text) noexcept {
    constexpr std::size_t longestAddress = 320;  // local part and domain: RFC 5321, 4.5.3.1
    const std::size_t at = localPartSize(text);
    return at > 0 && text.size() <= longestAddress && text.substr(at).starts_with('@') &&
           isDomain(text.substr(at + 1)) && !text.starts_with('|') && !text.starts_with("\"|") &&
           isUtf8(text) && findControl(text).at == std::string_view::npos;
}

bool isSystem(std::string_view address, std::string_view from) {
    const std::string_view local = address.substr(0, address.rfind('@'));
    const bool isRole = std::ranges::any_of(
        std::array{"mailer-daemon", "mailerdaemon", "mail-daemon", "postmaster"},
        [&](std::string_view role) { return ascii::equalsNoCase(local, role); });
    return isRole && containsNoCase(from, address);
}

std::string_view bareAddress(std::string_view text) noexcept {
    text.remove_prefix(std::min(text.find_first_not_of('<'), text.size()));
    return text.substr(0, text.find_last_not_of(">,;:.") + 1);
}

std::string withLowerDomain(std::string_view address) {
    const std::size_t domain = address.rfind('@') + 1;
    return std::string(address.substr(0, domain)) + ascii::lowerCase(address.substr(domain));
}

std::string countedDomainOf(std::string_view address) {
    const std::size_t at = address.rfind('@');
    if (at == std::string_view::npos) return {};
    const std::string_view domain = address.substr(at + 1);
    return ascii::lowerCase(domain.substr(0, domain.find_first_of(" \t\r\n<>()[],;:\"'/\\")));
}

}  // namespace bouncecheck
