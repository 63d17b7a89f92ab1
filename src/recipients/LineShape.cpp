#include "recipients/LineShape.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <utility>

#include "reasons/CodeShapes.h"
#include "recipients/tables/LineMarks.h"
#include "text/Ascii.h"
#include "text/ByteSet.h"
#include "text/Search.h"

namespace bouncecheck {
namespace {

/// The labels of the table by their last bytes, in which most differ.
class LabelsByEnd {
public:
    constexpr LabelsByEnd() {
        for (const NoticeLabel& known : noticeLabels) ++starts_[slotOf(known.label) + 1];
        for (std::size_t i = 1; i < starts_.size(); ++i) {
            starts_[i] = static_cast<std::uint16_t>(starts_[i] + starts_[i - 1]);
        }
        std::array<std::uint16_t, 257> next = starts_;
        for (std::size_t i = 0; i < noticeLabels.size(); ++i) {
            numbers_[next[slotOf(noticeLabels[i].label)]++] = static_cast<std::uint16_t>(i);
        }
    }

    /// Those that `text` may end with, in the order of the table.
    constexpr std::span<const std::uint16_t> of(std::string_view text) const noexcept {
        if (text.empty()) return {};
        const std::size_t slot = slotOf(text);
        return std::span(numbers_).subspan(starts_[slot], starts_[slot + 1] - starts_[slot]);
    }

private:
    static constexpr std::size_t slotOf(std::string_view text) noexcept {
        return static_cast<unsigned char>(text.back());
    }

    std::array<std::uint16_t, 257> starts_{};
    std::array<std::uint16_t, noticeLabels.size()> numbers_{};
};
constexpr LabelsByEnd labelsByEnd;

/// What may stand around an address that is alone in its line: brackets, quotes, separators and
/// the marks of a list.
bool isFrame(std::string_view text) {
    static constexpr ByteSet frame(" \t<>\"'()[]{}:;,.*-#|+=\\/");
    for (;;) {
        text.remove_prefix(lengthOf(frame, text));
        if (text.empty()) return true;
        const auto mark = std::ranges::find_if(
            wideMarks, [&](std::string_view known) { return text.starts_with(known); });
        if (mark == wideMarks.end()) return false;
        text.remove_prefix(mark->size());
    }
}

/// Whether `text`, between two addresses, joins them to a list.
bool isJoint(std::string_view text) {
    if (isFrame(text)) return true;
    text = ascii::trim(text);
    if (text.starts_with(',')) text = ascii::trimLeft(text.substr(1));
    return std::ranges::any_of(
        joiningWords, [&](std::string_view word) { return ascii::equalsNoCase(text, word); });
}

/// `text` without the word that begins a link to an address, or names its type: "SMTP <a@b>".
std::string_view withoutType(std::string_view text) {
    static constexpr auto types =
        std::to_array<std::string_view>({"mailto:", "smtp", "smtp:", "rfc822;"});
    std::string_view word = text;
    while (!word.empty() && ascii::isOneOf(word.back(), " <")) word.remove_suffix(1);
    if (word.empty() || !ascii::isOneOf(word.back(), ":;pP")) return text;
    for (const std::string_view type : types) {
        if (word.size() < type.size()) continue;
        const std::size_t begin = word.size() - type.size();
        if (ascii::equalsNoCase(word.substr(begin), type)) return word.substr(0, begin);
    }
    return text;
}

/// Whether `before` begins a list entry: nothing, a mark, or a number with a point.
bool beginsEntry(std::string_view before) {
    before = withoutType(before);
    std::string_view trimmed = ascii::trim(before);
    std::size_t digits = 0;
    while (digits < trimmed.size() && digits < 4 && ascii::isDigit(trimmed[digits])) ++digits;
    if (digits > 0 && digits < trimmed.size() && ascii::isOneOf(trimmed[digits], ".)")) {
        trimmed.remove_prefix(digits);
    }
    return isFrame(trimmed);
}

/// `line` without the mark of a dialogue: "<<< 550 no".
std::string_view withoutMark(std::string_view line) {
    line = ascii::trimLeft(line);
    return line.starts_with("<<<") ? ascii::trimLeft(line.substr(3)) : line;
}

/// Whether `line` begins with the code of an SMTP reply.
bool beginsWithReplyCode(std::string_view line) {
    line = withoutMark(line);
    return line.size() > 4 && line[0] >= '2' && line[0] <= '5' && ascii::isDigit(line[1]) &&
           ascii::isDigit(line[2]) && (ascii::isBlank(line[3]) || line[3] == '-');
}

/// The same, where what follows is no further number: "450 12 34" is that of a telephone.
bool beginsWithReply(std::string_view line) {
    return beginsWithReplyCode(line) && (statusLength(line, 4) > 0 || !ascii::isDigit(line[4]));
}

/// Whether `text` ends with `word`, in any letter case (for ASCII).
bool endsWithWord(std::string_view text, std::string_view word) {
    if (text.size() < word.size()) return false;
    const std::size_t begin = text.size() - word.size();
    return ascii::equalsNoCase(text.substr(begin), word) &&
           (begin == 0 || !ascii::isAlpha(text[begin - 1]));
}

/// Words in front of a sender's address, without a colon.
bool endsWithSenderWord(std::string_view before) {
    while (!before.empty() &&
           (ascii::isSpace(before.back()) || ascii::isOneOf(before.back(), "<\"'([:"))) {
        before.remove_suffix(1);
    }
    const auto word = std::ranges::find_if(
        senderWords, [&](std::string_view known) { return endsWithWord(before, known); });
    if (word == senderWords.end()) return false;
    const std::string_view owned = ascii::trimRight(before.substr(0, before.size() - word->size()));
    return std::ranges::none_of(ownedWords,
                                [&](std::string_view known) { return endsWithWord(owned, known); });
}

}  // namespace

LineShape::LineShape(std::string_view line, std::vector<AddressSpan> spans)
    : line_(line), spans_(std::move(spans)), kind_(kindOf()) {}

std::string_view LineShape::restBehind(const AddressSpan& span) const {
    std::string_view rest = line_.substr(span.end);
    while (!rest.empty() &&
           (ascii::isSpace(rest.front()) || ascii::isOneOf(rest.front(), ">\"':;,.)]"))) {
        rest.remove_prefix(1);
    }
    return ascii::trimRight(rest);
}

bool LineShape::beginsReply() const noexcept {
    return line_.substr(0, spans_.front().begin).find_first_not_of("0123456789.- \t<") == npos;
}

bool LineShape::isFailureReply() const noexcept {
    return ascii::isOneOf(withoutMark(line_).front(), "45");
}

std::span<const AddressSpan> LineShape::labelledSpans() const {
    std::size_t count = 1;
    while (count < spans_.size() && isJoined(count)) ++count;
    return std::span(spans_).first(count);
}

bool LineShape::isJoined(std::size_t number) const {
    const std::size_t begin = spans_[number - 1].end;
    return isJoint(line_.substr(begin, spans_[number].begin - begin));
}

bool LineShape::isOfSender(const AddressSpan& span) const {
    return endsWithSenderWord(line_.substr(0, span.begin));
}

LineShape::Kind LineShape::kindOf() {
    if (spans_.empty()) return Kind::sentence;
    const std::string_view before = line_.substr(0, spans_.front().begin);
    if (isAlone()) return Kind::alone;
    if (beginsEntry(before)) {
        std::string_view rest = line_.substr(spans_.front().end);
        while (!rest.empty() && ascii::isOneOf(rest.front(), ">\"')]")) rest.remove_prefix(1);
        const std::string_view trimmed = ascii::trimLeft(rest);
        isSeparated_ = !trimmed.empty() && (ascii::isOneOf(trimmed.front(), ":([-|;=") ||
                                            rest.starts_with("...") || rest.starts_with("\t"));
        isAnswered_ = beginsWithReply(trimmed);
        return Kind::leading;
    }
    if (beginsWithReplyCode(line_)) return Kind::reply;
    if (findLabel(before)) return Kind::labelled;
    return isNamed() ? Kind::named : Kind::sentence;
}

bool LineShape::isNamed() const {
    const AddressSpan& span = spans_.front();
    std::string_view name = line_.substr(0, span.begin);
    if (spans_.size() > 1 || !name.ends_with('<') || !isFrame(line_.substr(span.end))) return false;
    name = ascii::trim(name.substr(0, name.size() - 1));
    constexpr int mostWords = 5;
    int words = 0;
    while (!name.empty()) {
        // Beyond ASCII any letter may be a capital.
        const char first = name.front();
        const bool isName =
            !ascii::isAscii(first) || (first >= 'A' && first <= 'Z') || first == '"';
        if (!isName || ++words > mostWords) return false;
        name = ascii::trimLeft(name.substr(std::min(name.find(' '), name.size())));
    }
    return words > 0 && !endsWithSenderWord(line_.substr(0, span.begin));
}

bool LineShape::isAlone() const {
    std::size_t end = 0;
    for (const AddressSpan& span : spans_) {
        const std::string_view between = line_.substr(end, span.begin - end);
        if (end == 0 ? !beginsEntry(between) : !isFrame(withoutType(between))) return false;
        end = span.end;
    }
    return isFrame(line_.substr(end));
}

bool LineShape::findLabel(std::string_view before) {
    before = ascii::trimRight(before);
    before = ascii::trimRight(withoutType(before));
    while (!before.empty() && ascii::isOneOf(before.back(), "<\"'([")) {
        before = ascii::trimRight(before.substr(0, before.size() - 1));
    }
    // Labels of scripts without blanks may stand without a colon.
    const bool isWide = !before.empty() && !ascii::isAscii(before.back());
    if (before.ends_with(wideColon)) {
        before.remove_suffix(wideColon.size());
    } else if (before.ends_with(':') || before.ends_with('=')) {
        before.remove_suffix(1);
    } else if (!isWide) {
        return false;
    }
    before = ascii::trimRight(before);
    constexpr std::size_t longest = 64;
    const std::string label =
        ascii::lowerCase(before.substr(before.size() - std::min(before.size(), longest)));
    const NoticeLabel* best = nullptr;
    for (const std::uint16_t number : labelsByEnd.of(label)) {
        const NoticeLabel& known = noticeLabels[number];
        if (!label.ends_with(known.label)) continue;
        const std::size_t begin = label.size() - known.label.size();
        const bool isWord = begin == 0 || ascii::isOneOf(label[begin - 1], " \t([{<,;*->|\"'");
        // A single word ends many labels that are about somebody else.
        const bool isWhole = isFrame(std::string_view(label).substr(0, begin));
        const bool isPhrase = known.label.find_first_of(" -") != npos;
        if (!isWord || !(isWhole || isPhrase || known.kind == LabelKind::other)) continue;
        if (!best || known.label.size() > best->label.size()) best = &known;
    }
    if (!best) return !isWide;
    label_ = best->kind;
    const std::size_t begin = label.size() - best->label.size();
    isField_ = before.size() < longest && isFrame(std::string_view(label).substr(0, begin)) &&
               isFrame(line_.substr(spans_.back().end)) && labelledSpans().size() == spans_.size();
    isCommand_ = best->label == "rcpt to";
    return true;
}

}  // namespace bouncecheck
