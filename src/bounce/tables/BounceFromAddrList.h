#pragma once

#include "bounce/tables/providers.h"

namespace bouncecheck {

/// Senders of bounces and automatic mail. A pattern with '*' is matched as a whole,
/// one without is a prefix; letter case counts in both, so some stand here in
/// several spellings.
inline constexpr const char* const BounceFromAddrList[] = {
    providers::automatedResponseAddress,
    providers::mailerDaemonPattern,
    "*Mailer-Daemon@*",
    "mailmarshal@*",
    "Mail_-_Demon@*",
    providers::automaticAssistanceAddress,
    "POSTMASTER@",
    "MicrosoftExchange*",
    providers::webMailSpamAddress,
    "Postmaster@*",
    "*antispam*",
    "*bluebottle*",
    "",
};

}  // namespace bouncecheck
