#pragma once

#include "reasons/AdviceFor.h"

namespace bouncecheck {

/// In the order of the enumeration.
inline constexpr AdviceMeaning adviceMeanings[] = {
    {Advice::none, "none", "Nothing to do."},
    {Advice::suppress, "suppress",
     "Stop mailing the address: its mailbox or domain does not exist, or the mailbox was closed."},
    {Advice::unsubscribe, "unsubscribe", "Take the address off the list: its owner complained, or asked for it."},
    {Advice::retry, "retry", "It may work later; stop when it keeps failing."},
    {Advice::fix, "fix", "Keep the address: what was sent, or who sent it, was refused."},
};

}  // namespace bouncecheck
