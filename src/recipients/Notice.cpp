#include "recipients/Notice.h"

#include <algorithm>
#include <array>

#include <bouncecheck/Limits.h>
#include "mime/Entity.h"
#include "mime/HtmlText.h"
#include "mime/LineEnds.h"
#include "mime/ReportTypes.h"
#include "phrases/Matcher.h"
#include "text/Ascii.h"
#include "text/Search.h"
#include "text/Utf8.h"

namespace bouncecheck {
namespace {

constexpr std::size_t cueCount = noticeCues.size();
constexpr std::array<std::string_view, cueCount> phrasesOfCues() {
    std::array<std::string_view, cueCount> phrases{};
    for (std::size_t i = 0; i < cueCount; ++i) phrases[i] = noticeCues[i].phrase;
    return phrases;
}
constexpr phrases::Tables<cueCount> cueTables{phrasesOfCues()};

constexpr unsigned bitOf(Cue cue) noexcept { return 1u << static_cast<unsigned>(cue); }

/// Receives the phrases that a pass finds.
struct CueCollector {
    std::vector<Notice::Line>& lines;
    const char* begin;

    Notice::Line& lineAt(const char* place) const {
        return *std::prev(std::ranges::upper_bound(
            lines, place, {}, [](const Notice::Line& line) { return line.text.data(); }));
    }

    bool wants(std::size_t phrase, std::size_t at) const {
        return !lineAt(begin + at).has(noticeCues[phrase].cue);
    }
    void onFound(std::size_t phrase, std::size_t at) const {
        lineAt(begin + at).cues |= bitOf(noticeCues[phrase].cue);
    }
};

bool isOwnType(const std::string& type) {
    return !isOfKind(type, ReportKind::delivery, ReportKind::complaint, ReportKind::receipt,
                     ReportKind::message, ReportKind::header);
}

/// Appends the text of `part` as a paragraph.
void append(std::string& text, std::string_view part) {
    if (text.size() >= limits::notice) return;
    const std::size_t room = limits::notice - text.size();
    part = wholeCharacters(part, room);
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
        for (const auto& part : entity.parts()) appendTexts(*part, text);
    } else if (entity.is("text/plain") && !entity.isAttachment()) {
        append(text, entity.body().view());
    } else if (entity.type().starts_with("multipart/") && isOwnType(entity.type())) {
        // Its boundary is missing or never comes: the parts stand in it as text.
        append(text, entity.rawBody().view());
    }
}

/// The name of the header field that `line` begins, or "".
std::string_view fieldName(std::string_view line) {
    std::size_t end = 0;
    while (end < line.size() && (ascii::isAlnum(line[end]) || line[end] == '-')) ++end;
    const bool isField =
        end > 1 && end < line.size() && line[end] == ':' && !line.substr(end).starts_with("://");
    return isField ? line.substr(0, end) : std::string_view();
}

/// Fields that only the header of a message has.
bool isOfMessage(std::string_view name) {
    static constexpr auto names = std::to_array<std::string_view>(
        {"Received", "Return-Path", "Message-ID", "DKIM-Signature", "MIME-Version", "X-Mailer",
         "Delivered-To", "X-Originating-IP", "X-Received", "DomainKey-Signature", "User-Agent"});
    return std::ranges::any_of(
        names, [&](std::string_view known) { return ascii::equalsNoCase(name, known); });
}

/// Those of a delivery status and of a part, which the text of a broken multipart carries too.
bool isOfPart(std::string_view name) {
    static constexpr auto names = std::to_array<std::string_view>(
        {"Reporting-MTA", "Final-Recipient", "Original-Recipient", "Action", "Diagnostic-Code"});
    return ascii::startsWithNoCase(name, "Content-") ||
           std::ranges::any_of(
               names, [&](std::string_view known) { return ascii::equalsNoCase(name, known); });
}

}  // namespace

bool Notice::Line::isBlank() const noexcept { return ascii::trim(text).empty(); }

Notice::Notice(const Entity& message) {
    appendTexts(message, whole_);
    if (ascii::trim(whole_).empty()) {
        whole_.clear();
        const Entity* html = message.findType("text/html");
        if (html) append(whole_, htmlToText(html->body().view().substr(0, 4 * limits::notice)));
    }
    divide(whole_);
    findCues();
    cutReturned();
    for (const Line& line : lines_) cues_ |= line.cues;
}

void Notice::divide(std::string_view text) {
    lines_.reserve(64);
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t end = std::min(text.find('\n', at), text.size());
        std::string_view line = text.substr(at, end - at);
        if (line.ends_with('\r')) line.remove_suffix(1);
        lines_.push_back({line});
        at = end + 1;
    }
}

void Notice::findCues() {
    if (lines_.empty()) return;
    CueCollector collector{lines_, whole_.data()};
    phrases::Matcher(cueTables).scan(whole_, collector);
}

/// Whether line number `i`, which has words that announce the returned message, does so: it is
/// drawn as a rule, or a header follows.
bool Notice::beginsReturned(std::size_t i) const {
    const std::string_view line = ascii::trim(lines_[i].text);
    if (line.starts_with("--") || line.starts_with("==") || line.starts_with("**")) return true;
    while (++i < lines_.size() && lines_[i].isBlank()) {
    }
    return i < lines_.size() && (!fieldName(ascii::trimLeft(lines_[i].text)).empty() ||
                                 lines_[i].text.starts_with("From "));
}

/// The returned message begins behind a line that announces it, or with three fields of a header
/// in a row, one of which only messages have.
void Notice::cutReturned() {
    text_ = whole_;
    std::size_t fields = 0;  // in a row
    std::size_t first = 0;   // the line of the first of them
    bool ofMessage = false;
    bool hasWords = false;  // whether anything was said before
    for (std::size_t i = 0; i < lines_.size(); ++i) {
        const std::string_view line = lines_[i].text;
        std::size_t cut = lines_.size();
        const std::string_view name = fieldName(line);
        if (!name.empty() && (fields > 0 || !isOfPart(name))) {
            if (fields++ == 0) first = i;
            ofMessage = ofMessage || isOfMessage(name);
            if (fields >= 3 && ofMessage) cut = first;
        } else if (fields == 0 || line.empty() || !ascii::isBlank(line.front())) {
            fields = 0;
            ofMessage = false;
            if (hasWords && lines_[i].has(Cue::returned) && beginsReturned(i)) cut = i;
        }
        hasWords = hasWords || lines_[i].has(Cue::failure) || lines_[i].has(Cue::delay);
        if (cut == lines_.size()) continue;
        const char* const end = lines_[cut].text.data();
        std::size_t begin = cut;
        while (begin < lines_.size() && fieldName(lines_[begin].text).empty()) ++begin;
        if (begin < lines_.size()) {
            returned_ = std::string_view(whole_).substr(
                static_cast<std::size_t>(lines_[begin].text.data() - whole_.data()));
        }
        text_ = text_.substr(0, static_cast<std::size_t>(end - whole_.data()));
        lines_.resize(cut);
        return;
    }
}

Notice::Line cuesIn(std::string_view text) {
    std::vector<Notice::Line> lines{{text}};
    CueCollector collector{lines, text.data()};
    phrases::Matcher(cueTables).scan(text, collector);
    return lines.front();
}

}  // namespace bouncecheck
