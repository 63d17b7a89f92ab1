#pragma once

#include "bounce/SinglePhrase.h"
#include "bounce/tables/providers.h"

namespace bouncecheck {

/// The single phrases of checks. Those with the same purpose stand together, and any one
/// of them is enough.
inline constexpr SinglePhrase singlePhrases[] = {
    // Special cases
    {"6.15", TextOf::senderName, LetterCase::ignored, "Autoresponder"},
    {"challenge service", TextOf::senderAddress, LetterCase::ignored, providers::challengeServiceSender},
    {"12.8", TextOf::subject, LetterCase::exact, "(verification)"},
    {"12.11", TextOf::senderName, LetterCase::exact, "Bluebottle Verification System"},
    {"12.11", TextOf::data, LetterCase::exact, "protected by Bluebottle"},
    {"12.11", TextOf::subject, LetterCase::exact, "My spam filter requires"},
    {"12.11", TextOf::senderName, LetterCase::exact, "Challenge Response"},
    {"12.11", TextOf::senderAddress, LetterCase::exact, "rfxnoreply"},
    {"12.11", TextOf::data, LetterCase::exact, "one-time request to confirm"},
    {"12.11", TextOf::data, LetterCase::exact, "To authenticate your email, go to"},
    {"12.11", TextOf::data, LetterCase::exact, "antispam", "captcha.jsp"},
    {"12.11", TextOf::data, LetterCase::exact, "MailInBlack"},
    {"6.13", TextOf::senderName, LetterCase::ignored, "Auto-reply"},
    {"6.13", TextOf::data, LetterCase::exact, "We will get back to you within"},
    {"12.1", TextOf::subject, LetterCase::ignored, "confirmation"},
    {"6.3", TextOf::body, LetterCase::ignored, "this is an auto response"},
    {"6.3", TextOf::body, LetterCase::ignored, "This is an automatic reply"},
    {"12.12", TextOf::body, LetterCase::ignored, providers::challengeWebHost},
    {"12.9", TextOf::data, LetterCase::exact, "one-time inconvenience"},
    {"6.7", TextOf::senderAddress, LetterCase::ignored, "Autoresponder"},
    // Senders
    {"postmaster", TextOf::senderAddress, LetterCase::ignored, "postmaster"},
    {"invoice", TextOf::subject, LetterCase::ignored, "invoice"},
    // The text
    {"6.8a", TextOf::data, LetterCase::exact, "is no longer a valid email address"},
    {"12.10", TextOf::subject, LetterCase::exact, "Please confirm"},
    {"2.1", TextOf::data, LetterCase::ignored, "Temporary local problem"},
    {"2.1", TextOf::data, LetterCase::ignored, "please try later"},
    {"2.1", TextOf::data, LetterCase::ignored, "451 Temporary"},
    {"2.1", TextOf::data, LetterCase::ignored, "Status: 4.4.1"},
    {"12.7", TextOf::data, LetterCase::exact, "Sender Address Verification"},
    {"1.9049", TextOf::data, LetterCase::exact, "account is inactive"},
    {"2.14", TextOf::data, LetterCase::ignored, "452 4.1.1"},
    // Automatic replies, by the subject as it came
    {"auto reply", TextOf::subject, LetterCase::ignored, "Auto reply"},
    {"new address", TextOf::subject, LetterCase::ignored, "Email changed"},
    // When no check has decided
    {"6.481", TextOf::data, LetterCase::exact, "I am out of the office"},
    {"6.481", TextOf::data, LetterCase::exact, "I will be out of the office"},
};

}  // namespace bouncecheck
