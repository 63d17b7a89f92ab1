#include "recipients/Notice.h"

#include <algorithm>

#include <bouncecheck/Limits.h>
#include "mime/Entity.h"
#include "mime/HtmlText.h"
#include "mime/LineEnds.h"
#include "mime/ReportTypes.h"
#include "reasons/CodeShapes.h"
#include "recipients/CueSearch.h"
#include "recipients/DrawnRule.h"
#include "recipients/HeaderRun.h"
#include "text/Ascii.h"
#include "text/Search.h"
#include "text/Utf8.h"

namespace bouncecheck {
namespace {

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

Notice::Notice(const Entity& message) {
    appendTexts(message, whole_);
    if (ascii::trim(whole_).empty()) {
        whole_.clear();
        const Entity* html = message.findType("text/html");
        if (html) append(whole_, htmlToText(wholeWords(html->body().view(), 4 * limits::notice)));
    }
    const std::size_t header = divide();
    if (!lines_.empty()) findCues(lines_);
    cut(std::min(header, announced()));
    for (const NoticeLine& line : lines_) cues_.join(line.cues);
}

std::string_view Notice::quotedReply() const {
    std::string_view quoted;
    for (std::size_t i = 0; i < lines_.size(); ++i) {
        const char* const begin = lines_[i].text.data();
        const char* end = begin;
        bool isReply = false;
        for (; i < lines_.size() && !lines_[i].isBlank(); ++i) {
            isReply = isReply || beginsWithFailure(ascii::trimLeft(lines_[i].text));
            end = lines_[i].text.data() + lines_[i].text.size();
        }
        if (!isReply) continue;
        const std::string_view paragraph(begin, static_cast<std::size_t>(end - begin));
        if (!quoted.empty() && paragraph != quoted) return {};
        quoted = paragraph;
    }
    return ascii::trim(quoted);
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

/// The line that announces the returned message behind words about a failure; the number of
/// lines without one.
std::size_t Notice::announced() const {
    bool hasWords = false;
    for (std::size_t i = 0; i < lines_.size(); ++i) {
        const NoticeLine& line = lines_[i];
        if (hasWords && announces(i)) return i;
        hasWords = hasWords || line.cues.haveTrouble();
    }
    return lines_.size();
}

/// Whether line number `i` announces the returned message.
bool Notice::announces(std::size_t i) const {
    const NoticeLine& line = lines_[i];
    if (line.has(Cue::returned)) return beginsReturned(i);
    return !line.cues.haveTrouble() && isRuleOfReturned(ascii::trimLeft(line.text));
}

/// Whether line number `i`, which has words that announce the returned message, does so: it is
/// drawn as a rule or stands alone as a heading, or a header follows.
bool Notice::beginsReturned(std::size_t i) const {
    const std::string_view line = ascii::trim(lines_[i].text);
    if (isRule(line)) return true;
    const bool isBeforeBlank = i + 1 < lines_.size() && lines_[i + 1].isBlank();
    // Not "Those who did not receive a copy of your message:"
    if (line.ends_with(':') && isBeforeBlank && !lines_[i].has(Cue::failure)) return true;
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

}  // namespace bouncecheck
