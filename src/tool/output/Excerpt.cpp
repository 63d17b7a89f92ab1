#include "tool/output/Excerpt.h"

#include <algorithm>

#include "text/Ascii.h"
#include "text/Search.h"
#include "text/Utf8.h"

namespace bouncecheck {
namespace {

constexpr std::size_t linesAround = 2;
constexpr std::size_t firstLines = 12;

/// Part of a text, from byte to byte.
struct Span {
    std::size_t begin = 0;
    std::size_t end = 0;

    bool isEmpty() const noexcept { return begin == end; }
};

/// `size` bytes at a place; none where that is npos.
Span spanAt(std::size_t place, std::size_t size) noexcept {
    return place == npos ? Span{} : Span{place, place + size};
}

std::size_t lineBegin(std::string_view text, std::size_t at) noexcept {
    const std::size_t end = at == 0 ? npos : text.rfind('\n', at - 1);
    return end == npos ? 0 : end + 1;
}

/// Behind the line end of the line that `at` is in.
std::size_t lineEnd(std::string_view text, std::size_t at) noexcept {
    const std::size_t end = text.find('\n', at);
    return end == npos ? text.size() : end + 1;
}

/// The lines of `found` and those around them.
Span withLinesAround(std::string_view text, Span found) noexcept {
    if (found.isEmpty()) return {};
    Span lines = {lineBegin(text, found.begin), lineEnd(text, found.end - 1)};
    for (std::size_t i = 0; i < linesAround; ++i) {
        if (lines.begin > 0) lines.begin = lineBegin(text, lines.begin - 1);
        if (lines.end < text.size()) lines.end = lineEnd(text, lines.end);
    }
    return lines;
}

/// Something to mark, where it was found.
struct Found {
    Span at;
    Marked what = 0;
};

/// The first place of `sought` from `from` on; none of an empty one.
Span firstIn(std::string_view text, std::string_view sought, std::size_t from = 0,
             LetterCase letters = LetterCase::ignored) {
    return sought.empty() ? Span{} : spanAt(findBytes(text, sought, from, letters), sought.size());
}

/// Where the address of a recipient stands, not as the end or the beginning of a longer one.
Span wholeAddressIn(std::string_view text, std::string_view address) {
    constexpr std::string_view signs = "._+-=";
    const auto isLetter = [&](std::size_t at) {
        return ascii::isAlnum(text[at]) || ascii::isOneOf(text[at], signs);
    };
    for (std::size_t from = 0;;) {
        const Span found = firstIn(text, address, from);
        if (found.isEmpty()) return found;
        // A full stop may end the sentence.
        const bool hasBehind =
            found.end < text.size() && isLetter(found.end) &&
            (text[found.end] != '.' || (found.end + 1 < text.size() && isLetter(found.end + 1)));
        if (!hasBehind && (found.begin == 0 || !isLetter(found.begin - 1))) return found;
        from = found.end;
    }
}

/// All that is marked in `text`.
std::vector<Found> evidenceIn(std::string_view text, const Classified& message) {
    std::vector<Found> all;
    const auto add = [&](Span at, Marked what) {
        if (!at.isEmpty()) all.push_back({at, what});
    };
    const Span address = spanAt(message.addressPlace(), message.address.size());
    const std::string_view phrase = message.match.phrase;
    add(spanAt(message.phrasePlace(), phrase.size()), markedPhrase);
    add(address, markedAddress);
    const std::size_t count = std::min(message.recipients.size(), mostMarkedRecipients);
    for (std::size_t i = 0; i < count; ++i) {
        const Recipient& recipient = message.recipients[i];
        const bool isVerdicts = ascii::equalsNoCase(recipient.address, message.address);
        Span named = isVerdicts ? address : wholeAddressIn(text, recipient.address);
        if (named.isEmpty()) named = wholeAddressIn(text, recipient.finalAddress);
        add(named, markedRecipient(i));
        // Several recipients may have failed in the same words, each behind its address.
        Span quote = firstIn(text, recipient.quote, named.end, LetterCase::exact);
        if (quote.isEmpty()) quote = firstIn(text, recipient.quote, 0, LetterCase::exact);
        add(quote, markedQuote(i));
    }
    return all;
}

Span within(Span outer, Span inner) noexcept {
    const std::size_t begin = std::max(outer.begin, inner.begin);
    const std::size_t end = std::min(outer.end, inner.end);
    return begin < end ? Span{begin - outer.begin, end - outer.begin} : Span{};
}

ExcerptLine lineOf(std::string_view text, Span line, const std::vector<Found>& evidence) {
    while (line.end > line.begin && (text[line.end - 1] == '\n' || text[line.end - 1] == '\r')) {
        --line.end;
    }
    ExcerptLine result = {.text = text.substr(line.begin, line.end - line.begin)};
    std::vector<Found> parts;
    std::vector<std::size_t> borders;
    for (const Found& found : evidence) {
        const Span part = within(line, found.at);
        if (part.isEmpty()) continue;
        parts.push_back({part, found.what});
        borders.insert(borders.end(), {part.begin, part.end});
    }
    std::ranges::sort(borders);
    for (std::size_t i = 1; i < borders.size(); ++i) {
        Mark mark = {borders[i - 1], borders[i] - borders[i - 1]};
        for (const auto& [part, what] : parts) {
            if (part.begin <= mark.begin && mark.begin < part.end) mark.what |= what;
        }
        if (mark.size > 0 && mark.what != 0) result.marks.push_back(mark);
    }
    return result;
}

}  // namespace

std::string phraseWithPlace(const Match& match) {
    switch (match.text) {
        case TextOf::subject: return std::string(match.phrase) + " (in the subject)";
        case TextOf::senderAddress:
        case TextOf::senderName: return std::string(match.phrase) + " (in the sender)";
        default: return match.phrase;
    }
}

std::vector<ExcerptLine> excerptOf(const Classified& message) {
    const std::string_view text = message.text.view();
    const std::vector<Found> evidence = evidenceIn(text, message);
    std::vector<Span> shown;
    shown.reserve(evidence.size() + 1);
    for (const Found& found : evidence) shown.push_back(withLinesAround(text, found.at));
    if (shown.empty()) {
        Span& first = shown.emplace_back();
        for (std::size_t i = 0; i < firstLines && first.end < text.size(); ++i) {
            first.end = lineEnd(text, first.end);
        }
    }
    std::ranges::sort(shown, {}, &Span::begin);

    std::vector<ExcerptLine> lines;
    std::size_t end = 0;
    for (const Span span : shown) {
        if (span.isEmpty()) continue;
        if (span.begin > end) lines.push_back({.isGap = true});
        for (std::size_t at = std::max(span.begin, end); at < span.end; at = lineEnd(text, at)) {
            lines.push_back(lineOf(text, {at, lineEnd(text, at)}, evidence));
        }
        end = std::max(end, span.end);
    }
    if (end < text.size()) lines.push_back({.isGap = true});
    return lines;
}

ExcerptLine cutLine(ExcerptLine line, std::size_t mostBytes) {
    if (line.text.size() <= mostBytes) return line;
    constexpr std::size_t inFront = 20;
    const Mark first = line.marks.empty() ? Mark{} : line.marks.front();
    std::size_t start =
        first.begin + first.size > mostBytes ? first.begin - std::min(first.begin, inFront) : 0;
    while (start > 0 && continuesCharacter(line.text[start])) --start;
    line.text = wholeCharacters(line.text.substr(start), mostBytes);
    const Span kept = {start, start + line.text.size()};
    for (Mark& mark : line.marks) {
        const Span part = within(kept, {mark.begin, mark.begin + mark.size});
        mark.begin = part.begin;
        mark.size = part.end - part.begin;
    }
    std::erase_if(line.marks, [](const Mark& mark) { return mark.size == 0; });
    return line;
}

}  // namespace bouncecheck
