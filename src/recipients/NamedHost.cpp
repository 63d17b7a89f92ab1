#include "recipients/NamedHost.h"

#include <algorithm>
#include <array>

#include "text/Ascii.h"

namespace bouncecheck {
namespace {

constexpr std::string_view quotes = " \t\r\n[](){}<>\"':;,=#-";

/// What may stand between a host and what is said of it.
constexpr auto between = std::to_array<std::string_view>(
    {"is",        "has",         "have",        "been",   "was",   "are",
     "currently", "temporarily", "permanently", "from",   "for",   "ip",
     "address",   "host",        "client",      "server", "your",  "the",
     "access",    "connection",  "foi",         "sido",   "ha",    "esta",
     "est",       "stato",       "ist",         "wird",   "wurde", "adresse"});

constexpr std::size_t longestAddress = 39;

bool isAddressByte(char c) {
    return ascii::isDigit(c) || (ascii::toLower(c) >= 'a' && ascii::toLower(c) <= 'f') ||
           c == '.' || c == ':';
}

bool isAddress(std::string_view word) {
    if (word.empty() || word.size() > longestAddress) return false;
    if (std::ranges::count(word, ':') >= 2) return std::ranges::all_of(word, isAddressByte);
    return std::ranges::count(word, '.') == 3 &&
           std::ranges::all_of(word, [](char c) { return ascii::isDigit(c) || c == '.'; });
}

bool isBetween(std::string_view word) {
    return std::ranges::any_of(
        between, [&](std::string_view known) { return ascii::equalsNoCase(word, known); });
}

std::string_view unquoted(std::string_view text) {
    const std::size_t begin = std::min(text.find_first_not_of(quotes), text.size());
    const std::size_t end = text.find_last_not_of(quotes);
    return end == std::string_view::npos ? std::string_view() : text.substr(begin, end + 1 - begin);
}

/// Whether an address ends `text`, but for words between.
bool endsWithHost(std::string_view text) {
    for (;;) {
        text = unquoted(text);
        const std::size_t blank = text.find_last_of(" \t\r\n[(<");
        const std::string_view word = text.substr(blank + 1);
        if (isAddress(word)) return true;
        if (!isBetween(word)) return false;
        text = text.substr(0, text.size() - word.size());
    }
}

bool beginsWithHost(std::string_view text) {
    for (;;) {
        text = unquoted(text);
        const std::string_view word = text.substr(0, text.find_first_of(" \t\r\n])>,;"));
        const std::size_t end = word.find_last_not_of(".:");
        if (isAddress(word.substr(0, end + 1))) return true;
        if (!isBetween(word.substr(0, end + 1))) return false;
        text = text.substr(word.size());
    }
}

}  // namespace

bool isSaidOfHost(std::string_view text, std::size_t at, std::size_t length) {
    // Far more than the words between, so that time is linear.
    constexpr std::size_t most = 128;
    const std::size_t begin = at < most ? 0 : at - most;
    return endsWithHost(text.substr(begin, at - begin)) ||
           beginsWithHost(text.substr(at + length, most));
}

}  // namespace bouncecheck
