#include "recipients/Notice.h"

#include <algorithm>
#include <array>
#include <span>

#include <bouncecheck/Limits.h>
#include "mime/Entity.h"
#include "mime/HtmlText.h"
#include "mime/LineEnds.h"
#include "mime/ReportTypes.h"
#include "phrases/CompiledMatcher.h"
#include "recipients/HeaderRun.h"
#include "recipients/LineShape.h"
#include "recipients/tables/NoticeCues.h"
#include "text/Ascii.h"
#include "text/Search.h"
#include "text/Utf8.h"

namespace bouncecheck {
namespace {

constexpr const phrases::Matcher& cueMatcher =
    phrases::CompiledMatcher<noticeCues, &NoticeCue::phrase>::matcher;

constexpr auto cues = [] {
    std::array<Cue, noticeCues.size()> all{};
    std::ranges::transform(noticeCues, all.begin(), &NoticeCue::cue);
    return all;
}();

/// Receives the phrases that a pass over lines finds.
class CueCollector {
public:
    /// `lines` are in the order in which they stand in the text, which begins at `begin`.
    CueCollector(std::span<Notice::Line> lines, const char* begin) : lines_(lines), begin_(begin) {}

    bool wants(std::size_t phrase, std::size_t at) {
        return !lineAt(begin_ + at).has(cues[phrase]);
    }
    void onFound(std::size_t phrase, std::size_t at) { lineAt(begin_ + at).cues.add(cues[phrase]); }

private:
    /// Places come nearly in their order, so the line is seldom far from the last one.
    Notice::Line& lineAt(const char* place) {
        while (last_ + 1 < lines_.size() && lines_[last_ + 1].text.data() <= place) ++last_;
        while (lines_[last_].text.data() > place) --last_;
        return lines_[last_];
    }

    std::span<Notice::Line> lines_;
    const char* begin_;
    std::size_t last_ = 0;
};

bool isOwnType(std::string_view type) {
    return !isOfKind(type, ReportKind::delivery, ReportKind::complaint, ReportKind::receipt,
                     ReportKind::message, ReportKind::header);
}

/// The start of `text`, `most` bytes at most. What is cut loses its last word: the rest of an
/// address may be another one.
std::string_view wholeWords(std::string_view text, std::size_t most) {
    if (text.size() <= most) return text;
    text = text.substr(0, most);
    return text.substr(0, text.find_last_of(" \t\r\n") + 1);
}

/// Appends the text of `part` as a paragraph.
void append(std::string& text, std::string_view part) {
    if (text.size() >= limits::notice) return;
    const std::size_t room = limits::notice - text.size();
    part = wholeWords(part, room);
    // Of one part there is no second copy.
    if (text.empty()) text.reserve(part.size() + 2 * crLf.size());
    // Text of an unknown charset may be no UTF-8.
    if (isUtf8(part)) {
        text += part;
    } else {
        appendWellFormed(text, part, room - part.size());
    }
    text.append(crLf).append(crLf);
}

void appendTexts(const Entity& entity, std::string& text) {
    if (!entity.isLeaf()) {
        for (std::size_t i = 0; i < entity.partCount(); ++i) appendTexts(*entity.part(i), text);
    } else if (entity.is("text/plain") && !entity.isAttachment()) {
        append(text, entity.body().view());
    } else if (entity.type().starts_with("multipart/") && isOwnType(entity.type())) {
        // Its boundary is missing or never comes: the parts stand in it as text.
        append(text, entity.rawBody().view());
    }
}

}  // namespace

bool Notice::Line::isBlank() const noexcept { return ascii::trim(text).empty(); }

Notice::Notice(const Entity& message) {
    appendTexts(message, whole_);
    if (ascii::trim(whole_).empty()) {
        whole_.clear();
        const Entity* html = message.findType("text/html");
        if (html) append(whole_, htmlToText(wholeWords(html->body().view(), 4 * limits::notice)));
    }
    const std::size_t header = divide();
    findCues();
    cut(std::min(header, announced()));
    for (const Line& line : lines_) cues_.join(line.cues);
}

/// Divides the text into lines, up to where the third field of a returned message's header is
/// known; the line of the first one, or the number of lines.
std::size_t Notice::divide() {
    const std::string_view text = whole_;
    lines_.reserve(64);
    HeaderRun run;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t end = std::min(text.find('\n', at), text.size());
        std::string_view line = text.substr(at, end - at);
        if (line.ends_with('\r')) line.remove_suffix(1);
        const bool isOfHeader = run.take(line);
        lines_.push_back({.text = line, .isOfHeader = isOfHeader});
        if (run.isMessage()) return lines_.size() - run.lines();
        at = end + 1;
    }
    return lines_.size();
}

void Notice::findCues() {
    if (lines_.empty()) return;
    const std::string_view last = lines_.back().text;
    const char* const begin = whole_.data();
    CueCollector collector(lines_, begin);
    const auto length = static_cast<std::size_t>(last.data() + last.size() - begin);
    cueMatcher.scan(std::string_view(begin, length), collector);
}

/// The line that announces the returned message behind words about a failure; the number of
/// lines without one.
std::size_t Notice::announced() const {
    bool hasWords = false;
    for (std::size_t i = 0; i < lines_.size(); ++i) {
        const Line& line = lines_[i];
        if (hasWords && announces(i)) return i;
        hasWords = hasWords || line.cues.haveTrouble();
    }
    return lines_.size();
}

/// Whether line number `i` announces the returned message.
bool Notice::announces(std::size_t i) const {
    const Line& line = lines_[i];
    if (line.has(Cue::returned)) return beginsReturned(i);
    return !line.cues.haveTrouble() && isRuleOfReturned(ascii::trimLeft(line.text));
}

/// Whether line number `i`, which has words that announce the returned message, does so: it is
/// drawn as a rule or stands alone as a heading, or a header follows.
bool Notice::beginsReturned(std::size_t i) const {
    const std::string_view line = ascii::trim(lines_[i].text);
    if (isRule(line)) return true;
    const bool isBeforeBlank = i + 1 < lines_.size() && lines_[i + 1].isBlank();
    if (line.ends_with(':') && isBeforeBlank) return true;
    if (lines_[i].isOfHeader) return false;
    while (++i < lines_.size() && lines_[i].isBlank()) {
    }
    return i < lines_.size() && (!fieldName(ascii::trimLeft(lines_[i].text)).empty() ||
                                 lines_[i].text.starts_with("From "));
}

/// Takes off the returned message, which line number `line` begins or announces.
void Notice::cut(std::size_t line) {
    text_ = whole_;
    if (line == lines_.size()) return;
    const auto placeOf = [&](std::size_t i) {
        return static_cast<std::size_t>(lines_[i].text.data() - whole_.data());
    };
    std::size_t begin = line;
    while (begin < lines_.size() && fieldName(lines_[begin].text).empty()) ++begin;
    if (begin < lines_.size()) returned_ = text_.substr(placeOf(begin));
    text_ = text_.substr(0, placeOf(line));
    lines_.resize(line);
}

Cues cuesIn(std::string_view text) {
    Notice::Line line{.text = text};
    CueCollector collector({&line, 1}, text.data());
    cueMatcher.scan(text, collector);
    return line.cues;
}

}  // namespace bouncecheck
