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

/// The reply in `text` that begins with a code behind the byte `begin`.
InnerReply replyBehind(std::string_view text, std::size_t begin) {
    // Far more than what names the host in between.
    constexpr std::size_t most = 600;
    if (begin == npos) return {};
    const std::size_t end = std::min(text.size(), begin + most);
    for (std::size_t at = begin; at < end; ++at) {
        if (!isFailureCode(text, at)) continue;
        // "550-'5.1.1 No such user'"
        constexpr std::string_view quote = "-'";
        const std::size_t behind = at + 3;
        if (!text.substr(behind).starts_with(quote)) return {.text = text, .at = at};
        return {.text = text, .at = behind + quote.size(), .quotedCode = text.substr(at, 3)};
    }
    return {};
}

}  // namespace

InnerReply innerReplyOf(std::string_view reply, std::string_view notice) {
    const FirstIntroduction first = introductionIn(reply);
    if (first.begin == npos) return {};
    const std::string_view front = reply.substr(0, first.begin);
    InnerReply inner = replyBehind(reply, first.end);
    if (!inner.isFound()) {
        inner = replyBehind(notice, introductionIn(notice).end);
        inner.inNotice = inner.isFound();
        // What follows is no part of it.
        if (inner.inNotice) inner.text = notice.substr(0, notice.find("\r\n\r\n", inner.at));
    }
    inner.front = front;
    return inner;
}

}  // namespace bouncecheck
