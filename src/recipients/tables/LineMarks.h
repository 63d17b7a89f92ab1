#pragma once

#include <array>
#include <string_view>

namespace bouncecheck {

/// What Chinese and Japanese texts have for a colon and a stop.
inline constexpr std::string_view wideColon = "：";
inline constexpr std::string_view wideStop = "。";
/// Chinese sentences go on behind it as others do behind a stop.
inline constexpr std::string_view wideComma = "，";
/// Marks that are not ASCII and may stand around an address that is alone on a line: bullets,
/// blanks, quotation marks.
inline constexpr auto wideMarks = std::to_array<std::string_view>({"•", "·", "　", "\u00A0", "«", "»", "“", "”", "„", wideColon});

/// Words in front of the address of a sender, or of whom a text greets.
inline constexpr auto senderWords = std::to_array<std::string_view>({
    // English
    "from", "by", "message", "message-id", "sender", "hello", "hi", "dear", "contact", "ask",
    "write", "at", "cc",
    // German, Dutch, Scandinavian
    "von", "van", "från", "fra",
    // Romance
    "de", "par", "l'expéditeur", "por", "da",
    // Slavic
    "od", "от",
});

/// Words in front of one of those, in small letters, that make the address a recipient's: "la
/// cuenta de a@b.example".
inline constexpr auto ownedWords = std::to_array<std::string_view>({
    // English
    "destination", "mailbox", "account",
    // German, Dutch
    "postfach", "konto", "postvak", "brievenbus",
    // French
    "boîte", "boite", "lettres", "messagerie", "adresse", "compte",
    // Spanish, Portuguese
    "cuenta", "buzón", "buzon", "dirección", "direccion", "conta", "caixa", "postal", "endereço",
    "endereco",
});

/// Words that begin a sentence which supposes something, and begin no other.
inline constexpr auto conditionWords = std::to_array<std::string_view>(
    {"if", "wenn", "falls", "sofern", "indien", "jeśli", "если", "Если"});

/// What stands between the last two addresses of a list.
inline constexpr auto joiningWords = std::to_array<std::string_view>(
    {"and", "und", "et", "y", "e", "en", "och", "og", "и", "i"});

}  // namespace bouncecheck
