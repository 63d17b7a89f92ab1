#pragma once

#include <bouncecheck/Advice.h>
#include <bouncecheck/Outcome.h>

#include "reasons/ReasonFinding.h"

namespace bouncecheck {

/// What to do about a recipient with that outcome and reason. `Advice::suppress` only where
/// the reply says that the mailbox or the domain does not exist, and says so for good, or
/// that it is closed.
Advice adviceFor(Outcome outcome, const ReasonFinding& finding) noexcept;

}  // namespace bouncecheck
