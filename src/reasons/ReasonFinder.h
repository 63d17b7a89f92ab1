#pragma once

#include <string_view>

#include "reasons/ReasonFinding.h"
#include "reasons/Reply.h"

namespace bouncecheck {

/// Why the recipient failed. `Reason::none` where the outcome is no failure and no delay, and
/// `Reason::other` where nothing says why.
///
/// `notice` is a second, weaker text: what the whole message says to people. It is asked only
/// where the reply does not explain itself.
///
/// Any bytes do; linear in their number.
ReasonFinding reasonOf(const Reply& reply, std::string_view notice = {});

/// Whether words of `text`, and not its codes alone, give a reason.
bool explains(std::string_view text);
/// Whether they leave no doubt, of `address` where it is known. "Service unavailable" is said
/// after any refusal.
bool saysWhy(std::string_view text, std::string_view address = {});

}  // namespace bouncecheck
