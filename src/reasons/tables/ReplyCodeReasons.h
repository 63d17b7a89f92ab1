#pragma once

#include "reasons/ReasonRow.h"

namespace bouncecheck {

/// The reply codes of SMTP that say something without words. 550 and 554 do not: they are
/// given to any failure.
inline constexpr ReplyCodeRow replyCodeReasons[] = {
    {"420", Reason::unreachable, Trust::vague},
    {"421", Reason::system, Trust::vague},
    {"422", Reason::mailboxFull, Trust::vague},
    {"430", Reason::system, Trust::vague},
    {"431", Reason::system, Trust::vague},
    {"432", Reason::system, Trust::vague},
    {"441", Reason::unreachable, Trust::vague},
    {"442", Reason::unreachable, Trust::vague},
    {"446", Reason::system, Trust::vague},
    {"447", Reason::expired, Trust::vague},
    {"450", Reason::other, Trust::vague},
    {"451", Reason::system, Trust::vague},
    {"452", Reason::system, Trust::vague},
    {"454", Reason::system, Trust::vague},
    {"455", Reason::system, Trust::vague},
    {"471", Reason::policy, Trust::vague},
    {"500", Reason::system, Trust::vague},
    {"501", Reason::system, Trust::vague},
    {"502", Reason::system, Trust::vague},
    {"503", Reason::system, Trust::vague},
    {"504", Reason::system, Trust::vague},
    {"510", Reason::unknownMailbox, Trust::vague},
    {"511", Reason::unknownMailbox, Trust::vague},
    {"512", Reason::unknownDomain, Trust::vague},
    {"521", Reason::unknownDomain, Trust::definite},
    {"522", Reason::mailboxFull, Trust::vague},
    {"523", Reason::messageTooLarge, Trust::vague},
    {"530", Reason::policy, Trust::vague},
    {"531", Reason::mailboxFull, Trust::vague},
    {"534", Reason::policy, Trust::vague},
    {"535", Reason::policy, Trust::vague},
    {"538", Reason::policy, Trust::vague},
    {"541", Reason::content, Trust::vague},
    {"546", Reason::system, Trust::vague},
    {"551", Reason::unknownMailbox, Trust::vague},
    {"552", Reason::mailboxFull, Trust::vague},
    {"553", Reason::other, Trust::vague},
    {"555", Reason::system, Trust::vague},
    {"556", Reason::unknownDomain, Trust::definite},
    {"571", Reason::policy, Trust::vague},
};

/// A status that a report states where a reply has none.
struct RestatedCode {
    std::string_view reply;
    std::string_view status;
};

inline constexpr RestatedCode restatedCodes[] = {
    {"450", "4.2.0"},
    {"451", "4.3.0"},
    {"452", "4.3.1"},
    {"452", "4.2.2"},
    {"550", "5.1.1"},
    {"551", "5.1.6"},
    {"552", "5.2.2"},
    {"552", "5.2.3"},
    {"553", "5.1.3"},
};

}  // namespace bouncecheck
