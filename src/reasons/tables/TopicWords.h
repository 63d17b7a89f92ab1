#pragma once

#include "reasons/ReasonRow.h"

namespace bouncecheck {

/// What a refusal is about that has no clearer words, in small letters: "denied, see SPF". They
/// are too short to be searched for as phrases, and count as words only.
inline constexpr PhraseRow topicWords[] = {
    {"dmarc", Reason::authentication},
    {"dkim", Reason::authentication},
    {"spf", Reason::authentication},
    {"dnsbl", Reason::reputation},
    {"rbl", Reason::reputation},
    {"ptr", Reason::reputation},
    {"rdns", Reason::reputation},
    {"dialup", Reason::reputation},
    {"spammer", Reason::reputation},
    {"spam", Reason::content},
    {"junk", Reason::content},
    {"scam", Reason::content},
    {"dspam", Reason::content},
    {"virus", Reason::content},
    {"macro", Reason::content},
    {"mime", Reason::content},
    {"malspam", Reason::content},
    {"phish", Reason::content},
    {"zip", Reason::content},
    {"clamav", Reason::content},
    {"bitdefender", Reason::content},
    {"kaspersky", Reason::content},
};

}  // namespace bouncecheck
