#pragma once

#include <optional>
#include <string_view>

namespace bouncecheck {

/// Whether `line`, without white space around it, is what a client said in an SMTP dialogue as
/// notices quote it: ">>> RCPT TO:<a@b.example>". A log puts the time in front.
bool isDialogueCommand(std::string_view line);

/// Whether a client said `line` there before it named any recipient: "EHLO", "MAIL FROM:".
bool isSenderCommand(std::string_view line);

/// Whether a client named a recipient there: "RCPT TO:".
bool isRecipientCommand(std::string_view line);

/// What a server said there: "<<< 550 no such user". Nothing for any other line.
std::optional<std::string_view> dialogueReply(std::string_view line);

}  // namespace bouncecheck
