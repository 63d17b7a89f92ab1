#include "recipients/DialogueLine.h"

#include <algorithm>
#include <array>
#include <span>

#include "text/Ascii.h"

namespace bouncecheck {
namespace {

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
    const std::optional<std::string_view> command = behindMark(line, commandMarks);
    return command && (command->empty() || beginsWith(*command, verbs));
}

bool isSenderCommand(std::string_view line) {
    static constexpr auto verbs =
        std::to_array<std::string_view>({"MAIL", "EHLO", "HELO", "LHLO", "AUTH"});
    const std::optional<std::string_view> command = behindMark(line, commandMarks);
    return command && beginsWith(*command, verbs);
}

std::optional<std::string_view> dialogueReply(std::string_view line) {
    static constexpr auto marks = std::to_array<std::string_view>({"<<<", "<--", "S: "});
    const std::optional<std::string_view> reply = behindMark(line, marks);
    const bool isReply =
        reply && (line.starts_with("<<<") || (!reply->empty() && ascii::isDigit(reply->front())));
    return isReply ? reply : std::nullopt;
}

}  // namespace bouncecheck
