#pragma once

#include <array>
#include <string_view>

namespace bouncecheck {

/// What a label in front of an address ("Recipient: <a@b.example>") makes of it.
enum class LabelKind {
    /// The recipient that the notice is about.
    recipient,
    /// A recipient of the returned message, who need not be the one who failed.
    addressee,
    /// Anybody else.
    other,
    /// A label that is not in the table.
    unlisted,
};

struct NoticeLabel {
    LabelKind kind;
    /// In lower case (ASCII; other letters as they are written), without the colon.
    std::string_view label;
};

/// Marks that are not ASCII and may stand around an address that is alone on a line: bullets,
/// blanks, quotation marks, and the colon that Chinese and Japanese texts have.
inline constexpr std::string_view wideColon = "：";
inline constexpr std::string_view wideStop = "。";
inline constexpr auto wideMarks = std::to_array<std::string_view>({"•", "·", "　", "\u00A0", "«", "»", "“", "”", "„", wideColon});

/// Words in front of the address of a sender, or of whom a text greets.
inline constexpr auto senderWords = std::to_array<std::string_view>(
    {"from", "by", "sender", "hello", "hi", "dear", "contact", "ask", "write", "at", "cc", "von", "de", "par",
     "l'expéditeur", "por", "da", "van", "od", "från", "fra", "от"});

/// What stands between the last two addresses of a list.
inline constexpr auto joiningWords = std::to_array<std::string_view>(
    {"and", "und", "et", "y", "e", "en", "och", "og", "и", "i"});

/// Labels that are not here are judged by what they say.
inline constexpr auto noticeLabels = std::to_array<NoticeLabel>({
    {LabelKind::recipient, "address"},
    {LabelKind::recipient, "addressee"},
    {LabelKind::recipient, "adresat"},
    {LabelKind::recipient, "adresse"},
    {LabelKind::recipient, "destinatário"},
    {LabelKind::recipient, "destinatario"},
    {LabelKind::recipient, "destinatari"},
    {LabelKind::recipient, "destinataire"},
    {LabelKind::recipient, "destinataire(s)"},
    {LabelKind::recipient, "destination"},
    {LabelKind::recipient, "destination address"},
    {LabelKind::recipient, "dirección"},
    {LabelKind::recipient, "e-mail"},
    {LabelKind::recipient, "e-mail address"},
    {LabelKind::recipient, "email"},
    {LabelKind::recipient, "email address"},
    {LabelKind::recipient, "empfänger"},
    {LabelKind::recipient, "endereço"},
    {LabelKind::recipient, "envelope recipient"},
    {LabelKind::recipient, "envelope to"},
    {LabelKind::recipient, "envelope-to"},
    {LabelKind::recipient, "failed address"},
    {LabelKind::recipient, "failed recipient"},
    {LabelKind::recipient, "failed recipients"},
    {LabelKind::recipient, "failed to"},
    {LabelKind::recipient, "final-recipient"},
    {LabelKind::recipient, "indirizzo"},
    {LabelKind::recipient, "intended recipient"},
    {LabelKind::recipient, "intended recipients"},
    {LabelKind::recipient, "invalid address"},
    {LabelKind::recipient, "mail to"},
    {LabelKind::recipient, "mailbox"},
    {LabelKind::recipient, "modtager"},
    {LabelKind::recipient, "mottagare"},
    {LabelKind::recipient, "mottaker"},
    {LabelKind::recipient, "odbiorca"},
    {LabelKind::recipient, "ontvanger"},
    {LabelKind::recipient, "original recipient"},
    {LabelKind::recipient, "original-recipient"},
    {LabelKind::recipient, "rcpt"},
    {LabelKind::recipient, "rcpt to"},
    {LabelKind::recipient, "rcptto"},
    {LabelKind::recipient, "recipient"},
    {LabelKind::recipient, "recipient address"},
    {LabelKind::recipient, "recipient(s)"},
    {LabelKind::recipient, "recipients"},
    {LabelKind::recipient, "undeliverable address"},
    {LabelKind::recipient, "undeliverable to"},
    {LabelKind::recipient, "unknown user"},
    {LabelKind::recipient, "user"},
    {LabelKind::recipient, "user unknown"},
    {LabelKind::recipient, "vastaanottaja"},
    {LabelKind::recipient, "x-failed-recipients"},
    {LabelKind::recipient, "адрес"},
    {LabelKind::recipient, "Адрес"},
    {LabelKind::recipient, "получатель"},
    {LabelKind::recipient, "Получатель"},
    {LabelKind::recipient, "受信者"},
    {LabelKind::recipient, "宛先"},
    {LabelKind::recipient, "送信先"},
    {LabelKind::recipient, "받는사람"},
    {LabelKind::recipient, "받는 사람"},
    {LabelKind::recipient, "수신자"},
    {LabelKind::recipient, "收信人"},
    {LabelKind::recipient, "メールアドレス"},
    {LabelKind::recipient, "收件人"},
    {LabelKind::recipient, "收件人邮件地址"},
    {LabelKind::recipient, "收件者"},
    {LabelKind::addressee, "a"},
    {LabelKind::addressee, "aan"},
    {LabelKind::addressee, "an"},
    {LabelKind::addressee, "do"},
    {LabelKind::addressee, "original to"},
    {LabelKind::addressee, "para"},
    {LabelKind::addressee, "sent to"},
    {LabelKind::addressee, "til"},
    {LabelKind::addressee, "till"},
    {LabelKind::addressee, "to"},
    {LabelKind::addressee, "to address"},
    {LabelKind::addressee, "à"},
    {LabelKind::addressee, "кому"},
    {LabelKind::addressee, "Кому"},
    {LabelKind::other, "absender"},
    {LabelKind::other, "bcc"},
    {LabelKind::other, "cc"},
    {LabelKind::other, "content-id"},
    {LabelKind::other, "de"},
    {LabelKind::other, "delivered-to"},
    {LabelKind::other, "envelope from"},
    {LabelKind::other, "envelope sender"},
    {LabelKind::other, "envelope-from"},
    {LabelKind::other, "errors-to"},
    {LabelKind::other, "expéditeur"},
    {LabelKind::other, "from"},
    {LabelKind::other, "from address"},
    {LabelKind::other, "id"},
    {LabelKind::other, "in-reply-to"},
    {LabelKind::other, "mail from"},
    {LabelKind::other, "mailfrom"},
    {LabelKind::other, "message id"},
    {LabelKind::other, "message-id"},
    {LabelKind::other, "messageid"},
    {LabelKind::other, "mittente"},
    {LabelKind::other, "nadawca"},
    {LabelKind::other, "original sender"},
    {LabelKind::other, "references"},
    {LabelKind::other, "remetente"},
    {LabelKind::other, "remitente"},
    {LabelKind::other, "reply-to"},
    {LabelKind::other, "reporting-mta"},
    {LabelKind::other, "return path"},
    {LabelKind::other, "return-path"},
    {LabelKind::other, "sender"},
    {LabelKind::other, "sender address"},
    {LabelKind::other, "von"},
    {LabelKind::other, "x-postfix-sender"},
    {LabelKind::other, "отправитель"},
    {LabelKind::other, "Отправитель"},
    {LabelKind::other, "差出人"},
    {LabelKind::other, "送信者"},
    {LabelKind::other, "发件人"},
    {LabelKind::other, "寄件者"},
});

}  // namespace bouncecheck
