#include "reasons/UnknownHost.h"

#include <algorithm>
#include <array>
#include <utility>

#include "text/Ascii.h"
#include "text/Search.h"

namespace bouncecheck {

std::string_view unknownHostIn(std::string_view text) {
    static constexpr auto marks =
        std::to_array<std::string_view>({"name=", "name server: ", "look up host "});
    for (const std::string_view mark : marks) {
        const std::size_t at = findBytesNoCase(text, mark);
        if (at == npos) continue;
        std::string_view host = text.substr(at + mark.size());
        const auto isHostByte = [](char c) { return ascii::isAlnum(c) || c == '-' || c == '.'; };
        const auto end = std::ranges::find_if_not(host, isHostByte);
        host = host.substr(0, static_cast<std::size_t>(end - host.begin()));
        while (host.ends_with('.')) host.remove_suffix(1);
        if (host.find('.') != npos) return host;
    }
    return {};
}

bool isOfDomain(std::string_view host, std::string_view domain) {
    if (host.size() < domain.size()) std::swap(host, domain);
    if (domain.empty()) return false;
    const std::size_t rest = host.size() - domain.size();
    return ascii::equalsNoCase(host.substr(rest), domain) && (rest == 0 || host[rest - 1] == '.');
}

}  // namespace bouncecheck
