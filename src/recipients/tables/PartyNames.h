#pragma once

#include <string_view>

namespace bouncecheck {

/// What replies call a domain in front of its name.
inline constexpr std::string_view domainNames[] = {
    "domain",
    "host",
};

/// What they call a mailbox, or who has it, in front of the name.
inline constexpr std::string_view mailboxNames[] = {
    "user",
    "username",
    "mailbox",
    "account",
    "recipient",
    "alias",
    "name",
    // the same in other languages
    "benutzer",
    "konto",
    "postfach",
    "empfänger",
    "utilisateur",
    "compte",
    "destinataire",
    "usuario",
    "usuário",
    "cuenta",
    "conta",
    "destinatario",
    "destinatário",
    "utente",
    "gebruiker",
    "użytkownik",
    "пользователь",
};

}  // namespace bouncecheck
