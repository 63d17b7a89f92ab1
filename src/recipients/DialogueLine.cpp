#include "recipients/DialogueLine.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>
#include <span>

#include "text/Ascii.h"
#include "text/Search.h"

namespace bouncecheck {
namespace {

/// Whether `text` holds a time of day: "11:13:02".
bool hasTime(std::string_view text) {
    for (std::size_t colon = text.find(':'); colon != npos; colon = text.find(':', colon + 1)) {
        if (colon > 0 && ascii::isDigit(text[colon - 1]) && colon + 1 < text.size() &&
            ascii::isDigit(text[colon + 1])) {
            return true;
        }
    }
    return false;
}

/// `line` without the time that a log puts in front of what was said: "Tue 11:13:02: [7:1] --> ".
std::string_view withoutStamp(std::string_view line) {
    constexpr std::size_t longest = 64;
    const std::size_t dashes = line.substr(0, longest).find("--");
    if (dashes == 0 || dashes == npos) return line;
    const bool isReply = line[dashes - 1] == '<';
    if (!isReply && !line.substr(dashes).starts_with("-->")) return line;
    const std::size_t at = dashes - (isReply ? 1 : 0);
    return hasTime(line.substr(0, at)) ? line.substr(at) : line;
}

/// What follows the first of `marks` that `line` begins with; nothing where none does.
std::optional<std::string_view> behindMark(std::string_view line,
                                           std::span<const std::string_view> marks) {
    if (line.empty()) return std::nullopt;
    for (const std::string_view mark : marks) {
        if (line.front() == mark.front() && line.starts_with(mark))
            return ascii::trim(line.substr(mark.size()));
    }
    return std::nullopt;
}

bool beginsWith(std::string_view command, std::span<const std::string_view> verbs) {
    return std::ranges::any_of(
        verbs, [&](std::string_view verb) { return ascii::startsWithNoCase(command, verb); });
}

constexpr auto commandMarks = std::to_array<std::string_view>({">>>", "-->", "C: "});
constexpr auto replyMarks = std::to_array<std::string_view>({"<<<", "<--", "S: "});

constexpr auto verbs = std::to_array<std::string_view>(
    {"RCPT", "MAIL", "DATA", "EHLO", "HELO", "LHLO", "AUTH", "STARTTLS", "QUIT"});
/// Those before any recipient is named.
constexpr auto senderVerbs =
    std::to_array<std::string_view>({"MAIL", "EHLO", "HELO", "LHLO", "AUTH"});

}  // namespace

DialogueLine::DialogueLine(std::string_view line) {
    line = withoutStamp(line);
    if (const auto command = behindMark(line, commandMarks)) {
        isCommand_ = command->empty() || beginsWith(*command, verbs);
        if (isCommand_) said_ = *command;
    } else if (const auto reply = behindMark(line, replyMarks)) {
        isReply_ = line.starts_with("<<<") || (!reply->empty() && ascii::isDigit(reply->front()));
        if (isReply_) said_ = *reply;
    }
}

bool DialogueLine::isSenderCommand() const { return isCommand_ && beginsWith(said_, senderVerbs); }

bool DialogueLine::isRecipientCommand() const {
    return isCommand_ && ascii::startsWithNoCase(said_, "RCPT");
}

}  // namespace bouncecheck
