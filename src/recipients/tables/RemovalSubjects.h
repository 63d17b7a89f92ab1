#pragma once

#include <array>
#include <string_view>

namespace bouncecheck {

/// Subjects by which people ask not to be written to again, in small letters: the whole subject,
/// or its first word with one more behind it, by which list servers know the reader.
inline constexpr auto removalSubjects = std::to_array<std::string_view>({
    // English
    "unsubscribe",
    "unsubscribe me",
    "unsubscribe request",
    "please unsubscribe",
    "please unsubscribe me",
    "remove",
    "remove me",
    "please remove me",
    "signoff",
    "opt out",
    "opt-out",
    "optout",
    // German
    "abbestellen",
    "abmelden",
    "abmeldung",
    "austragen",
    "bitte austragen",
    "newsletter abbestellen",
    // French
    "désabonnement",
    "desabonnement",
    "désinscription",
    "desinscription",
    "me désinscrire",
    "se désabonner",
    // Spanish, Portuguese and Italian
    "baja",
    "darse de baja",
    "cancelar suscripción",
    "cancelar inscrição",
    "descadastrar",
    "cancellami",
    "cancella iscrizione",
    "disiscrizione",
    // Dutch and Nordic
    "afmelden",
    "uitschrijven",
    "afmeld",
    "afmelding",
    "avmeld",
    "avregistrera",
    "avprenumerera",
    // Polish and Russian
    "wypisz",
    "wypisz mnie",
    "отписаться",
    "Отписаться",
    "отписка",
    "Отписка",
    // Chinese and Japanese
    "退订",
    "取消订阅",
    "退訂",
    "配信停止",
    "登録解除",
});

/// What the names of mailboxes begin or end with to which such requests are sent, as
/// List-Unsubscribe gives them (RFC 2369, section 3.2), in small letters.
inline constexpr auto removalMailboxes = std::to_array<std::string_view>({
    "leave",
    "signoff",
    "unsub",
    "unsubscribe",
});

}  // namespace bouncecheck
