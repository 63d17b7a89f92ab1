#pragma once

#include <array>
#include <string_view>

namespace bouncecheck {

/// What begins the words of a rule that is drawn in front of the returned message, letter case
/// ignored (for ASCII).
inline constexpr auto ruleWords = std::to_array<std::string_view>({
    // English
    "begin message", "below this line", "content of", "contents of", "copy of", "cut", "header of",
    "headers of", "message body", "message content", "message header", "message text",
    "original content", "original e-mail", "original email", "original header", "original mail",
    "original message", "original text", "returned mail", "returned message", "snip",
    "start of message", "the original", "unsent", "your e-mail", "your email", "your letter",
    "your mail", "your message", "your original",
    // German, Dutch, Scandinavian
    "ihre nachricht", "inhalt", "kopi", "nachrichtentext", "oorspronkelijk", "opprinnelig",
    "original-mail", "original-nachricht", "originalnachricht", "originalt", "oprindelig", "schnapp", "schnipp",
    "ursprungligt", "ursprüngliche",
    // Romance
    "abaixo desta linha", "copia", "copie", "cópia", "cuerpo del mensaje", "debajo de esta",
    "en dessous", "mensagem original", "mensaje original", "message d'origine",
    "message original", "messaggio originale", "votre message",
    // Slavic, Hungarian, Finnish, Turkish, Greek
    "alkuperäinen", "eredeti", "niżej", "oryginaln", "orijinal", "poniżej", "původní", "pôvodn",
    "αρχικό", "Αρχικό", "исходн", "Исходн", "копия", "Копия", "оригинал", "Оригинал", "текст письма",
    "Текст письма",
    // Japanese, Chinese, Korean
    "元の", "元メール", "原メール", "原文", "原信", "原始", "原邮件", "オリジナル",
    "送信メール", "원본",
});

}  // namespace bouncecheck
