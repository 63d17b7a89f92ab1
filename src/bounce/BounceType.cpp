#include "bounce/BounceType.h"

namespace bouncecheck {

const char* bounceTypeName(int type) noexcept {
    switch (type) {
        case BOUNCE_NONE: return "none";
        case BOUNCE_HARD: return "hard";
        case BOUNCE_SOFT: return "soft";
        case BOUNCE_NO_RECIPIENT: return "no-recipient";
        case BOUNCE_BLOCKED: return "blocked";
        case BOUNCE_AUTO_REPLY: return "auto-reply";
        case BOUNCE_TRANSIENT: return "transient";
        case BOUNCE_UNSUBSCRIBE: return "unsubscribe";
        case BOUNCE_VIRUS: return "virus";
        case BOUNCE_UNCLASSIFIED: return "unclassified";
        case BOUNCE_CHALLENGE: return "challenge";
        case BOUNCE_DISPOSITION: return "disposition";
        case BOUNCE_ABUSE: return "abuse";
        default: return "";
    }
}

}  // namespace bouncecheck
