#include "tool/output/Excerpt.h"

#include <algorithm>
#include <utility>

#include "bounce/PhraseTables.h"
#include "text/Search.h"
#include "text/Utf8.h"
#include "tool/RuleHelp.h"

namespace bouncecheck {
namespace {

constexpr std::size_t linesAround = 2;
constexpr std::size_t firstLines = 12;

std::string_view phraseIn(std::string_view text, const RuleHelp& rule) {
    for (const std::string_view name : rule.tables) {
        for (const PhraseTable& table : phraseTables()) {
            if (table.name != name) continue;
            for (const char* phrase : table.phrases) {
                if (containsNoCase(text, phrase)) return phrase;
            }
        }
    }
    return {};
}

/// Part of a text, from byte to byte.
struct Span {
    std::size_t begin = 0;
    std::size_t end = 0;

    bool isEmpty() const noexcept { return begin == end; }
};

Span firstIn(std::string_view text, std::string_view wanted) {
    const std::size_t at = wanted.empty() ? npos : findBytesNoCase(text, wanted);
    return at == npos ? Span{} : Span{at, at + wanted.size()};
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

Mark markWithin(Span line, Span found) noexcept {
    const std::size_t begin = std::max(line.begin, found.begin);
    const std::size_t end = std::min(line.end, found.end);
    return begin < end ? Mark{begin - line.begin, end - begin} : Mark{};
}

ExcerptLine lineOf(std::string_view text, Span line, Span phrase, Span address) {
    while (line.end > line.begin && (text[line.end - 1] == '\n' || text[line.end - 1] == '\r')) {
        --line.end;
    }
    ExcerptLine result = {.text = text.substr(line.begin, line.end - line.begin)};
    auto& [first, second] = result.marks;
    first = markWithin(line, phrase);
    second = markWithin(line, address);
    if (first.size > 0 && second.size > 0) {
        const bool areApart =
            first.begin + first.size <= second.begin || second.begin + second.size <= first.begin;
        if (!areApart) second = {};
    }
    const bool isSwapped = second.size > 0 && (first.size == 0 || second.begin < first.begin);
    if (isSwapped) std::swap(first, second);
    return result;
}

Mark shifted(Mark mark, std::size_t start, std::size_t size) noexcept {
    return markWithin({start, start + size}, {mark.begin, mark.begin + mark.size});
}

}  // namespace

std::string_view phraseBehind(const Classified& message) {
    const RuleHelp* rule = helpForLabel(message.label);
    if (!message.phrase.empty() || !rule) return message.phrase;
    const std::string_view inText = phraseIn(message.data, *rule);
    return inText.empty() ? phraseIn(message.subject, *rule) : inText;
}

std::vector<ExcerptLine> excerptOf(const Classified& message, std::string_view phrase) {
    const std::string_view text = message.data;
    const Span phraseFound = firstIn(text, phrase);
    const Span addressFound = firstIn(text, message.address);
    Span shown = withLinesAround(text, phraseFound);
    Span next = withLinesAround(text, addressFound);
    if (shown.isEmpty() || (!next.isEmpty() && next.begin < shown.begin)) std::swap(shown, next);
    if (shown.isEmpty()) {
        for (std::size_t i = 0; i < firstLines && shown.end < text.size(); ++i) {
            shown.end = lineEnd(text, shown.end);
        }
    }

    std::vector<ExcerptLine> lines;
    std::size_t end = 0;
    for (const Span span : {shown, next}) {
        if (span.isEmpty()) continue;
        if (span.begin > end) lines.push_back({.isGap = true});
        for (std::size_t at = std::max(span.begin, end); at < span.end; at = lineEnd(text, at)) {
            lines.push_back(lineOf(text, {at, lineEnd(text, at)}, phraseFound, addressFound));
        }
        end = std::max(end, span.end);
    }
    if (end < text.size()) lines.push_back({.isGap = true});
    return lines;
}

ExcerptLine cutLine(ExcerptLine line, std::size_t mostBytes) {
    if (line.text.size() <= mostBytes) return line;
    constexpr std::size_t inFront = 20;
    const Mark first = line.marks.front();
    std::size_t start =
        first.begin + first.size > mostBytes ? first.begin - std::min(first.begin, inFront) : 0;
    while (start > 0 && continuesCharacter(line.text[start])) --start;
    line.text = wholeCharacters(line.text.substr(start), mostBytes);
    for (Mark& mark : line.marks) mark = shifted(mark, start, line.text.size());
    return line;
}

}  // namespace bouncecheck
