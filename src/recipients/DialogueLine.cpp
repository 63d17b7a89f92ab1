#include "recipients/DialogueLine.h"

#include <algorithm>
#include <array>
#include <cstddef>
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
    static constexpr auto arrows = std::to_array<std::string_view>({"-->", "<--"});
    constexpr std::size_t longest = 64;
    const std::string_view front = line.substr(0, longest);
    for (const std::string_view arrow : arrows) {
        const std::size_t at = front.find(arrow);
        if (at != npos && hasTime(front.substr(0, at))) return line.substr(at);
    }
    return line;
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

}  // namespace

bool isDialogueCommand(std::string_view line) {
    static constexpr auto verbs = std::to_array<std::string_view>(
        {"RCPT", "MAIL", "DATA", "EHLO", "HELO", "LHLO", "AUTH", "STARTTLS", "QUIT"});
    const std::optional<std::string_view> command = behindMark(withoutStamp(line), commandMarks);
    return command && (command->empty() || beginsWith(*command, verbs));
}

bool isSenderCommand(std::string_view line) {
    static constexpr auto verbs =
        std::to_array<std::string_view>({"MAIL", "EHLO", "HELO", "LHLO", "AUTH"});
    const std::optional<std::string_view> command = behindMark(withoutStamp(line), commandMarks);
    return command && beginsWith(*command, verbs);
}

bool isRecipientCommand(std::string_view line) {
    const std::optional<std::string_view> command = behindMark(withoutStamp(line), commandMarks);
    return command && ascii::startsWithNoCase(*command, "RCPT");
}

std::optional<std::string_view> dialogueReply(std::string_view line) {
    static constexpr auto marks = std::to_array<std::string_view>({"<<<", "<--", "S: "});
    const std::optional<std::string_view> reply = behindMark(withoutStamp(line), marks);
    const bool isReply =
        reply && (line.starts_with("<<<") || (!reply->empty() && ascii::isDigit(reply->front())));
    return isReply ? reply : std::nullopt;
}

}  // namespace bouncecheck
