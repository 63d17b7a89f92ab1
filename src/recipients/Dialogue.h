#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

#include "recipients/Bystanders.h"
#include "recipients/DialogueLine.h"
#include "recipients/NamedRecipients.h"

namespace bouncecheck {

/// Reads an SMTP dialogue that a notice quotes: whom its commands name, and whom its replies are
/// about.
class Dialogue {
public:
    /// Those whom it names are added to `named`; both outlive it.
    Dialogue(NamedRecipients& named, const Bystanders& others) noexcept
        : named_(named), others_(others) {}

    /// Reads a line without white space around it; false for one that is none of a dialogue, or a
    /// reply about nobody.
    bool read(std::string_view line);

private:
    void readCommand(const DialogueLine& command);
    bool readReply(std::string_view reply);
    bool isInOwnWords(std::string_view line) const;

    NamedRecipients& named_;
    const Bystanders& others_;
    /// Whom the last command named.
    std::optional<std::size_t> recipient_;
    /// Whether the last command was about the mail to all of them.
    bool isOfAll_ = false;
    /// Whether the last line ended a reply.
    bool endsReply_ = false;
};

}  // namespace bouncecheck
