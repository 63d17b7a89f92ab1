#pragma once

#include <optional>
#include <span>
#include <string_view>

#include <bouncecheck/Export.h>

namespace bouncecheck {

/// What a sender should do about a recipient.
enum class Advice {
    /// Nothing.
    none,
    /// Stop mailing the address: the mailbox or the domain does not exist, or the mailbox was
    /// closed.
    suppress,
    /// Take the address off the list: its owner complained, or asked for it.
    unsubscribe,
    /// It may work later. Stop when it keeps failing.
    retry,
    /// The mailbox works: what was sent, or who sent it, was refused.
    fix,
};

/// What an advice means to the sender.
struct AdviceMeaning {
    Advice advice;
    /// The name in results: "suppress".
    std::string_view name;
    std::string_view meaning;
};

/// All advices, in the order of the enumeration. Static storage, as are all texts here.
BOUNCECHECK_EXPORT std::span<const AdviceMeaning> allAdvices() noexcept;
/// The name in results: "suppress"; "" for a value that is no advice.
BOUNCECHECK_EXPORT std::string_view nameOf(Advice advice) noexcept;
/// The advice of that name, letter case ignored; nothing for any other text.
BOUNCECHECK_EXPORT std::optional<Advice> adviceNamed(std::string_view name) noexcept;

}  // namespace bouncecheck
