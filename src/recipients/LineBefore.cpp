#include "recipients/LineBefore.h"

#include <cstddef>

#include "reasons/ReasonFinder.h"
#include "recipients/CueSearch.h"
#include "recipients/Sentence.h"
#include "recipients/tables/LineMarks.h"
#include "text/Search.h"

namespace bouncecheck {
namespace {

bool endsWithColon(std::string_view line) noexcept {
    return line.ends_with(':') || line.ends_with(wideColon);
}

/// The sentence that begins last in `line`, behind another one; "" where none does.
std::string_view nextSentence(std::string_view line) noexcept {
    const std::size_t stop = line.rfind(". ");
    return stop == npos ? std::string_view() : line.substr(stop + 2);
}

}  // namespace

void LineBefore::replace(std::string_view text, Cues cues, bool goesOn) {
    // "Questions should be directed to the owner\nat:"
    const bool isLastWord = goesOn && endsWithColon(text) && text.find(' ') == npos;
    if (!isLastWord) cues_ = Cues();
    cues_.join(cues);
    front_ = goesOn ? text_ : std::string_view();
    text_ = text;
}

bool LineBefore::isIntroduction() const noexcept { return endsWithColon(text_); }

std::string_view LineBefore::heading() const {
    constexpr std::size_t longest = 200;
    const bool isHeading = isIntroduction() && text_.size() <= longest && saysWhy(text_);
    return isHeading ? text_ : std::string_view();
}

bool LineBefore::endsLongHeading() const {
    if (!isIntroduction() || front_.empty() || endsSentence(front_)) return false;
    // Not "Unknown user. Please\nuse:"
    const std::string_view next = nextSentence(front_);
    return explains(next.empty() ? front_ : next);
}

bool LineBefore::tellsContact() const {
    if (!cues_.has(Cue::contact) || !reportsFailure()) return cues_.has(Cue::contact);
    // "The mailbox is full. Please contact:", or, of two lines, "... Please write\nto:"
    const auto asksAtEnd = [](std::string_view line) {
        return cuesIn(nextSentence(line)).has(Cue::contact);
    };
    return asksAtEnd(text_) || (isIntroduction() && text_.find(' ') == npos && asksAtEnd(front_));
}

bool LineBefore::endsWithFrom() const noexcept {
    return text_.ends_with(" by") || text_.ends_with(" from");
}

}  // namespace bouncecheck
