#pragma once

#include <optional>
#include <string_view>

#include "mime/Mailbox.h"

namespace bouncecheck {

/// The mailbox of a field that is written as most are, without anything that has to be undone:
/// "a@b.example", "a@b.example (Name)", "Name <a@b.example>" or "Name" in quotes there; in brackets
/// there may also be one word, or nothing. Nothing for any other. `parseMailboxes` finds the same
/// in such a field, in more time. `field` is unfolded.
std::optional<Mailbox> plainMailbox(std::string_view field);

}  // namespace bouncecheck
