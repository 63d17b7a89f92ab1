#pragma once

#include <string_view>

namespace bouncecheck {

/// A line as it may stand in an SMTP dialogue that a notice quotes: ">>> RCPT TO:<a@b.example>",
/// "<<< 550 no such user". A log puts the time in front. Refers to the line.
class DialogueLine {
public:
    /// `line` has no white space around it.
    explicit DialogueLine(std::string_view line);

    /// Whether the client said it.
    bool isCommand() const noexcept { return isCommand_; }
    /// Whether the client said it before it named any recipient: "EHLO", "MAIL FROM:".
    bool isSenderCommand() const;
    /// Whether the client named a recipient: "RCPT TO:".
    bool isRecipientCommand() const;
    /// Whether the server said it.
    bool isReply() const noexcept { return isReply_; }
    /// What either said: "550 no such user". Empty where nobody did.
    std::string_view said() const noexcept { return said_; }

private:
    std::string_view said_;
    bool isCommand_ = false;
    bool isReply_ = false;
};

}  // namespace bouncecheck
