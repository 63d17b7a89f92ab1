#include "recipients/Paragraph.h"

#include <cstddef>

#include "reasons/ReasonFinder.h"
#include "recipients/CueSearch.h"
#include "recipients/Sentence.h"
#include "text/Ascii.h"

namespace bouncecheck {

Paragraph::Paragraph(std::span<const NoticeLine> lines) {
    const char* const begin = lines.front().text.data();
    const char* end = begin;
    for (const NoticeLine& line : lines) {
        if (line.isBlank()) break;
        cues_.join(line.cues);
        end = line.text.data() + line.text.size();
    }
    text_ = std::string_view(begin, static_cast<std::size_t>(end - begin));
}

std::string_view Paragraph::from(const NoticeLine& line) const {
    return text_.substr(static_cast<std::size_t>(line.text.data() - text_.data()));
}

bool Paragraph::reportsFailure() const {
    if (cues_.haveTrouble()) return true;
    if (!isExplained_) isExplained_ = explains(text_);
    return *isExplained_;
}

bool Paragraph::isAside(std::string_view sentence, Cues cues, std::string_view line,
                        std::string_view lineBefore) const {
    const bool isNext = !naming_.empty() && sentence.data() != naming_.data();
    if (!isNext || cues.haveTrouble()) return false;
    // Long sentences, which are cut near each address, end here; so time stays linear.
    const auto begin = static_cast<std::size_t>(sentence.data() - line.data());
    const std::string_view inLine = ascii::trimRight(line.substr(0, begin));
    if (!endsSentence(inLine.empty() ? lineBefore : inLine)) return false;
    if (!isTroubleNamed_) isTroubleNamed_ = cuesIn(naming_).haveTrouble() || explains(naming_);
    return *isTroubleNamed_ && !explains(sentence);
}

}  // namespace bouncecheck
