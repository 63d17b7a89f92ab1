#include "reasons/UnknownHost.h"

#include <algorithm>
#include <array>

#include "reasons/CodeShapes.h"
#include "text/Ascii.h"
#include "text/Lines.h"
#include "text/Search.h"

namespace bouncecheck {
namespace {

bool isHostByte(char c) noexcept { return ascii::isAlnum(c) || c == '-' || c == '.'; }

/// The name of a host at the start of `text`, without the end of a sentence; "" for none.
std::string_view hostAt(std::string_view text) noexcept {
    const auto end = std::ranges::find_if_not(text, isHostByte);
    std::string_view host = text.substr(0, static_cast<std::size_t>(end - text.begin()));
    while (host.ends_with('.')) host.remove_suffix(1);
    return host.find('.') == npos ? std::string_view() : host;
}

/// Whether `host` is no number, and no abbreviation: "192.0.2.1", "i.e."
bool endsWithTopLevel(std::string_view host) noexcept {
    const std::string_view last = host.substr(host.rfind('.') + 1);
    return last.size() >= 2 && ascii::isAlpha(last.front());
}

/// Adds the names of hosts in `text` to `hosts`.
void addHosts(std::vector<std::string_view>& hosts, std::string_view text) {
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (!isHostByte(text[at])) continue;
        const std::string_view host = hostAt(text.substr(at));
        const bool isOther = at > 0 && ascii::isOneOf(text[at - 1], "@/");
        if (!host.empty() && !isOther && endsWithTopLevel(host)) hosts.push_back(host);
        while (at < text.size() && isHostByte(text[at])) ++at;
    }
}

/// `text` behind the last code in it.
std::string_view behindCodes(std::string_view text) noexcept {
    std::size_t begin = 0;
    for (std::size_t at = 0; at < text.size();) {
        const bool isStart = at == 0 || !isHostByte(text[at - 1]);
        const std::size_t length =
            isStart ? std::max(statusLength(text, at), replyCodeLength(text, at)) : 0;
        at += std::max<std::size_t>(length, 1);
        if (length > 0) begin = at;
    }
    return text.substr(begin);
}

}  // namespace

std::vector<std::string_view> hostsBeside(std::string_view text, std::size_t at,
                                          std::size_t length) {
    constexpr std::size_t near = 80;
    std::size_t begin = at - std::min(at, near);
    while (begin > 0 && begin < at && isHostByte(text[begin])) ++begin;
    const std::string_view around = text.substr(begin, at - begin + length + near);
    const std::string_view line = lineAt(around, at - begin);
    const auto words = static_cast<std::size_t>(around.data() + (at - begin) - line.data());
    std::vector<std::string_view> hosts;
    addHosts(hosts, behindCodes(line.substr(0, words)));
    addHosts(hosts, line.substr(std::min(words + length, line.size())));
    return hosts;
}

std::string_view unknownHostIn(std::string_view text) {
    static constexpr auto marks =
        std::to_array<std::string_view>({"name=", "name server: ", "look up host "});
    for (const std::string_view mark : marks) {
        const std::size_t at = findBytesNoCase(text, mark);
        if (at == npos) continue;
        const std::string_view host = hostAt(text.substr(at + mark.size()));
        if (!host.empty()) return host;
    }
    return {};
}

}  // namespace bouncecheck
