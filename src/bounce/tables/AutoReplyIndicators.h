#pragma once

#include "bounce/tables/providers.h"

namespace bouncecheck {

/// Phrases of automatic replies, in the text. They are compared with letter
/// case: in capitals or small letters they also stand in people's mail.
inline constexpr const char* const AutoReplyIndicators[] = {
    "THIS IS AN AUTO-REPLY TO YOUR MESSAGE",
    "out of the office",
    "Please leave me a message and I will respond when I return",
    "This is an automatic reply to your email message to",
    "Thank you for you email.  You shall receive a response from me shortly.",
    "Response to your inquiry",
    "Your e-mail has been received.",
    providers::verificationPage,
    providers::challengeUrl,
    "Thank you for your message",
    "This is an automated response",
    "Autoreply ",
    "Automated reply from",
    "[Mensagem Automatica]",
    "Resposta Automática",
    "Je serai absent(e) du",
    "risposta automatica",
    "Automatyczna odpowied",
    "Automatisch antwoord",
    "Autosvar",
    "Risposta Non",
    "This is an automatic reply",
    "I am away from the office",
    "will contact you shortly",
    "will reply to you soon",
    "will be contacting you",
    "This e-mail is to confirm",
    "reply to you as soon as possible",
    "automatic reply to your email",
    "e will get back to you within",
    "ies ist eine automatische",
    "Out of office",
    "not in office",
    "away from the office",
    "rånvaro",
    "raværende",
    "ikke til stede",
    "",
};

}  // namespace bouncecheck
