#pragma once

#include "bounce/tables/providers.h"

namespace bouncecheck {

/// Single phrases that checks ask for, with their letter case.
inline constexpr const char* const exactLiterals[] = {
    "is no longer a valid email address",
    // the text
    "protected by Bluebottle",
    "one-time request to confirm",
    "To authenticate your email, go to",
    "antispam",
    "captcha.jsp",
    "MailInBlack",
    "We will get back to you within",
    "one-time inconvenience",
    "Sender Address Verification",
    "account is inactive",
    "I am out of the office",
    "I will be out of the office",
    // the subject
    "Please confirm",
    "My spam filter requires",
    "(verification)",
    // the sender
    "Bluebottle Verification System",
    "Challenge Response",
    "rfxnoreply",
};

/// The same, letter case ignored.
inline constexpr const char* const noCaseLiterals[] = {
    // the text
    "Temporary local problem",
    "please try later",
    "451 Temporary",
    "Status: 4.4.1",
    "452 4.1.1",
    // what the reader sees
    "this is an auto response",
    "This is an automatic reply",
    providers::challengeWebHost,
    // the subject
    "invoice",
    "confirmation",
    "Auto reply",
    "Email changed",
    // the sender
    "Autoresponder",
    "Auto-reply",
    "auto response",
    "postmaster",
    "listserv@",
    providers::challengeServiceSender,
};

}  // namespace bouncecheck
