#include "reasons/InnerReply.h"

#include <algorithm>
#include <functional>

#include "phrases/CompiledMatcher.h"
#include "reasons/CodeShapes.h"
#include "reasons/tables/Introductions.h"
#include "text/Ascii.h"
#include "text/Search.h"

namespace bouncecheck {
namespace {

using Introductions = phrases::CompiledMatcher<introductions, std::identity{}>;

/// Receives the introductions that a pass finds, and keeps the first in the text.
struct FirstIntroduction {
    std::size_t begin = npos;
    std::size_t end = npos;

    bool wants(std::size_t, std::size_t at) const noexcept { return at < begin; }
    void onFound(std::size_t row, std::size_t at) noexcept {
        begin = at;
        end = at + introductions[row].size();
    }
};

FirstIntroduction introductionIn(std::string_view text) {
    FirstIntroduction first;
    Introductions::matcher.scan(text, first);
    return first;
}

bool isFailureCode(std::string_view text, std::size_t at) {
    return text[at] != '2' && replyCodeLength(text, at) > 0 && !ascii::isAlnum(text[at - 1]) &&
           !ascii::isOneOf(text[at - 1], ".-/[");
}

/// Where the code of a reply stands behind the byte `begin`.
std::size_t codeBehind(std::string_view text, std::size_t begin) {
    // Far more than what names the host in between.
    constexpr std::size_t most = 600;
    if (begin == npos) return npos;
    const std::size_t end = std::min(text.size(), begin + most);
    for (std::size_t at = begin; at < end; ++at) {
        if (!isFailureCode(text, at)) continue;
        // "550-'5.1.1 No such user'"
        constexpr std::string_view quote = "-'";
        const std::size_t behind = at + 3;
        return text.substr(behind).starts_with(quote) ? behind + quote.size() : at;
    }
    return npos;
}

}  // namespace

InnerReply innerReplyOf(std::string_view reply, std::string_view notice) {
    const FirstIntroduction first = introductionIn(reply);
    if (first.begin == npos) return {};
    const std::string_view front = reply.substr(0, first.begin);
    if (const std::size_t at = codeBehind(reply, first.end); at != npos) {
        return {.text = reply, .front = front, .at = at};
    }
    const std::size_t at = codeBehind(notice, introductionIn(notice).end);
    if (at == npos) return {};
    // What follows is no part of it.
    const std::size_t end = std::min(notice.find("\r\n\r\n", at), notice.size());
    return {.text = notice.substr(0, end), .front = front, .at = at, .inNotice = true};
}

}  // namespace bouncecheck
