#pragma once

#include <cstdint>

namespace bouncecheck {

/// What a phrase says about the line of a notice that it stands in.
enum class Cue : std::uint8_t {
    /// A message, or an address, was not reached: it announces addresses or names one.
    failure,
    /// It was not reached yet.
    delay,
    /// An address beside it is that of somebody who helps, or that receives answers.
    contact,
    /// An address beside it is that of the sender.
    sender,
    /// The returned message follows.
    returned,
};

/// A set of cues.
class Cues {
public:
    constexpr bool has(Cue cue) const noexcept { return (bits_ & bitOf(cue)) != 0; }
    /// Whether something was not delivered, or not yet.
    constexpr bool haveTrouble() const noexcept { return has(Cue::failure) || has(Cue::delay); }

    constexpr void add(Cue cue) noexcept { bits_ |= bitOf(cue); }
    /// Adds those of `other`.
    constexpr void join(Cues other) noexcept { bits_ |= other.bits_; }

private:
    static constexpr unsigned bitOf(Cue cue) noexcept { return 1u << static_cast<unsigned>(cue); }

    unsigned bits_ = 0;
};

}  // namespace bouncecheck
