#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "reasons/AdviceFor.h"
#include "reasons/ReasonFinder.h"
#include "text/Search.h"

namespace bouncecheck {
namespace {

/// Each has words for several reasons, or a code for another one.
TEST(Reply, IsAboutWhatItMeans) {
    struct Case {
        std::string_view expected;
        std::vector<std::string_view> replies;
    };
    const Case cases[] = {
        {"unknown-mailbox suppress",
         {
             "550 invalid mailbox. user@x.example is unavailable: user not found",
             "550 5.5.0 Requested action not taken: mailbox unavailable (S2017062302).",
             "550 5.4.1 Recipient address rejected: Access denied. AS(201806281)",
             "550 5.1.1 <user@x.example>: Recipient address rejected: x.example",
             "550 5.1.1 unable to deliver to <user@x.example>; recipient rejected",
             "550 Requested action not taken: mailbox unavailable",
             "550 5.1.1 <u@x.example>: Recipient address rejected: User unknown in table",
             "550 5.1.1 Address rejected: user@x.example",
             "550 #5.1.0 Address rejected.",
             "550 El buz\xC3\xB3n no existe",
             "L'adresse \xC3\xA0 laquelle vous \xC3\xA9\x63rivez : destinataire introuvable.",
             "550 5.7.1 UZYTKOWNIK NIE ISTNIEJE",
             "553 sorry, this recipient is not in my validrcptto list (#5.7.1)",
             "550 User do not exist",
             "550 bob is no longer at this company",
             "550 Diese Adresse gibt es nicht",
             "L'utente ann (a@x.example) non è elencato in Domino Directory",
             "unknown local user",
             "O endereço de email inserido não foi encontrado.",
             "Не удалось найти введенный вами адрес электронной почты.",
             "您的邮件未送达，因为系统找不到该地址或者该地址无法接收邮件。",
             "550 Cette adresse n'est plus utilisée",
             "550 A felhasználó nem létezik",
             "550 Ontvanger bestaat niet",
             "550 Địa chỉ không tồn tại",
             "550 ไม่พบผู้ใช้",
             "550 המשתמש לא נמצא",
             "550 المستلم غير موجود",
             "550 Böyle bir hesap yok",
             "550 해당 사용자가 없습니다",
             "550 Такого почтового ящика нет",
             "550 Boîte du destinataire inexistante",
             "550 Der Empfänger wurde im E-Mail-System des Empfängers nicht gefunden",
             "550 Invalid mobile number",
             "550 5.7.1 <u@x.example>... we do not have a user with that name",
         }},
        {"inactive-mailbox suppress",
         {
             "550 invalid mailbox. user@x.example is unavailable: account is disabled",
             "550 invalid mailbox. user@x.example is unavailable: user is terminated",
             "550 5.2.1 Mailbox disabled, not accepting messages",
             "550 5.2.1 Boite du destinataire desactivee.",
             "553 5.3.0 Mailbox cancelled at owner's request",
             "550 Kontot är stängt",
             "The account u@x.example was closed on 1 January",
         }},
        {"inactive-mailbox retry",
         {
             "550 5.2.1 Account expired",
         }},
        {"unknown-domain suppress",
         {
             "550 5.1.2 <u@x.example>: Recipient address rejected: Domain not found",
             "Name service error for name=x.example type=A: Host not found",
             "DNS Error: Domain name not found",
             "DNS lookup failure: host x.example not found",
             "Name service error for name=x.example: Host found but no data record of type",
             "550 Host unknown (Name server: x.example: host not found)",
             "550 5.1.10 Domain x.example does not accept mail (nullMX)",
             "550 Host or domain name not found",
             "550 Invalid domain",
             "550 5.4.4 Invalid domain name",
             "550 Alan adı bulunamadı",
             "550 Domeniul nu există",
             "550 도메인을 찾을 수 없습니다",
         }},
        {"mailbox-full retry",
         {
             "552 5.2.3 Mailbox for user@x.example is full",
             "El buz\xC3\xB3n del destinatario est\xC3\xA1 lleno y no puede aceptar mensajes",
             "552 5.2.2 <u@x.example>: Recipient address rejected: Mailbox is over quota",
             "The user(s) account is temporarily over quota.",
             "The user(s) account is temporarily limited.",
             "552 5.2.2 The email account that you tried to reach is over quota and inactive.",
             "554 5.2.2 mailbox full; STOREDRV.Deliver.Exception:QuotaExceededException",
             "552 5.2.2 Mailbox size limit exceeded",
             "550 Kotak masuk penuh",
             "Das Postfach ist unzustellbar, weil es voll ist",
             "550 Το γραμματοκιβώτιο είναι γεμάτο",
             "552 5.1.1 mailbox for bob is full",
             "552 Mailbox limit exceeded",
             "554 5.2.2 MapiExceptionShutoffQuotaExceeded; Cannot open mailbox",
             "Der Posteingang ist voll oder es gehen gerade zu viele E-Mails ein.",
             "mail.local: Disc quota exceeded. unknown mailer error 1",
         }},
        {"message-too-large fix",
         {
             "RESOLVER.RST.RecipSizeLimit; message too large for this recipient",
             "552 Mesaj çok büyük",
             "552 Thư quá lớn",
             "552 メッセージが大きすぎます",
         }},
        {"content fix",
         {
             "554 5.7.1 Mail contained a URL rejected by Spamhaus DBL",
             "552-5.7.0 blocked because its content presents a potential security issue.",
             "554 5.7.1 Message rejected as spam by Content Filtering.",
             "554 5.7.1 blocked because it contains a virus: Eicar-Test-Signature",
             "550 5.7.1 Blocked attachment type (.exe)",
             "554 5.6.0 Message contains invalid header",
             "550 Invalid recipient header: To: field does not exist",
             "550 5.7.1 The message was rejected: it contains a URL listed in SURBL",
             "554 5.7.1 Spam message rejected; If this is not spam contact abuse@x.example",
             "550 Mail content denied. http://x.example/cgi-bin/help?subtype=1&&id=20022",
             "554 Wiadomość odrzucona jako spam",
             "554 Az üzenetet spamként elutasítottuk",
             "554 스팸으로 차단되었습니다",
             "554 5.7.1 spam blocked",
             "550 5.6.0 STOREDRV.Deliver.Exception:ConversionFailedException; corrupt content",
             "550 Message body contains blacklisted words",
             "554 Message contains blacklisted links",
             "552 we don't accept email with executable content (#5.3.4)",
             "550 5.7.1 Link in message points to unknown host x.example",
         }},
        {"authentication fix",
         {
             "550 5.7.1 Recipient rejected: Please see http://openspf.example/Why",
             "550 5.7.26 Unauthenticated email is not accepted due to domain's DMARC policy.",
             "550-5.7.26 Your email has been blocked because the sender is unauthenticated.",
             "550 5.7.23 The message was rejected because of Sender Policy Framework violation",
             "550 #5.7.1 DMARC unauthenticated mail is prohibited.",
             "550 Message rejected: failed SPF check",
             "550 5.7.1 SPF unauthorized mail is prohibited.",
             "550 SPF: 192.0.2.1 is not allowed to send mail from own.example",
             "550 5.7.1 Email rejected per DMARC policy for own.example",
             "550 Unfortunately, messages from (192.0.2.1) failed due to domain owner policy",
             "550 192.0.2.1 is not allowed to send from <own.example> per it's SPF Record.",
         }},
        {"reputation fix",
         {
             "550 IP name possibly forged [192.0.2.5], host not found",
             "554 5.7.1 Service unavailable; Client host [192.0.2.1] blocked using a list",
             "550 5.7.606 Access denied, banned sending IP [192.0.2.1]. Visit https://x.example/",
             "554 5.7.1 Your message was rejected due to poor sending reputation.",
             "550 5.1.0 Your host is not allowed to connect: listed at zen.spamhaus.org.",
             "554-x.example Service not available 554-No SMTP service 554-Bad DNS PTR record.",
             "421 4.7.0 Service not available. No SMTP service. IP address is block listed.",
             "450 4.7.1 Client host rejected: cannot find your reverse hostname, [192.0.2.1]",
             "550 5.7.1 Client host rejected: cannot find your hostname, [192.0.2.1]",
             "550 5.7.1 rejected due to listing in Barracuda. See barracudacentral.org",
             "554 5.7.1 192.0.2.5 listed on RBL. Blocked for spam.",
             "421 4.7.1 <u@x.example>: Intrusion prevention active for [192.0.2.5]",
             "Attempting SMTP connection to [192.0.2.5]\n550 5.7.1 refused, see RBL list.example",
             "550 5.7.1 no valid sender domain. Fix reverse DNS for 192.0.2.5",
             "554 Gönderen IP adresi kara listede",
             "550 5.1.1 Connections from 192.0.2.5 are not accepted due to abuse",
             "554 IP=192.0.2.5 - A problem occurred. Ask your postmaster for help or to contact us",
             "550 R1: HELO should be a FQDN or address literal",
             "550 mx (192.0.2.5) blocked for spam complaints",
         }},
        {"policy fix",
         {
             "550 5.1.7 The sender address does not exist",
             "501 5.1.7 Invalid address: me@own.example",
             "550 HELO host does not exist",
             "550 5.7.1 Sender is on suppression list of recipient",
             "550-The account or domain may not exist\r\n550 Sender verify failed",
             "450 4.1.8 <me@own.example>: Sender address rejected: Domain not found",
             "553 5.7.1 <me@own.example>: Sender address rejected: not owned by user me",
             "550 5.1.8 <me@own.example>: Sender address rejected: undeliverable address",
             "550 5.1.7 <me@own.example>: invalid sender address",
             "553 5.1.8 Domain of sender address me@own.example does not exist",
             "550 5.7.1 Sender's mailbox does not exist; please verify your From address",
             "550 5.6.0 Invalid address in To: header",
             "550 5.7.1 Return path address is invalid, no such user",
             "550 Return path user unknown",
             "550 Username unknown or bad password",
             "550 Sender account suspended",
             "550 5.7.0 Mail from unknown users is not accepted",
             "550 5.7.1 Encryption key for recipient not found",
             "550 Adres nadawcy nie istnieje",
             "550 Gönderen alan adı bulunamadı",
             "541 5.4.1 Mail rejected by destination domain",
             "SASL: user not found",
             "550 5.7.1 Mail to unknown recipients from bulk senders is refused",
             "550 Verification failed for <me@own.example>. The account or domain may not exist",
             "Sie verfügen nicht über die Berechtigung, an diesen Empfänger zu senden",
             "550 5.1.1 Access denied for your country",
             "550-Requested action not taken: mailbox unavailable 550-invalid DNS MX or A record",
             "550 Your From: address is invalid",
             "550 5.7.1 The sending account has been suspended",
             "554 5.7.1 sending domain suspended",
             "550 5.7.1 u@x.example: sender user unknown - rejected",
             "550 寄件者網域不存在",
             "550 Absender unbekannt",
             "550 5.7.1 Sender not found in recipient's address book",
             "550 5.7.1 Not found in recipient's contacts",
             "550 No such domain at this location",
             "606 Not delivering to unsubscribed address",
             "550 5.2.0 STOREDRV.Submission.Exception:SendAsDeniedException",
             "SMTPUTF8 is required, but was not offered by host mx.x.example",
             "550 5.7.322 certificate-expired: the certificate is expired.",
             "450 <me@own.example>: Sender address rejected: unverified address: connect to mx",
             "da die Übermittlung an diese Adresse eingeschränkt ist",
             "la remise à cette adresse est restreinte",
         }},
        {"rate-limit retry",
         {
             "421 Too many concurrent connections from this IP address; try again later.",
             "451 4.7.650 [192.0.2.1] has been temporarily rate limited due to IP reputation.",
             "450 4.2.0 <u@x.example>: Recipient address rejected: Greylisted",
             "421 4.1.0 192.0.2.1 Throttled - try again later. See https://x.example",
             "421 4.4.5 Too many connections, try again later",
             "451 4.7.1 Please try again later (greylisted)",
             "451 Temporarily deferred - greylisted for 300 seconds",
             "450 4.7.1 Message temporarily deferred, please retry",
             "550 5.7.1 The user has exceeded the number of messages he may receive per hour",
             "451 4.7.1 Greylisting, the sender was rejected",
             "450 4.2.1 Peak SMTP relay limit exceeded for customer.",
             "554 5.7.1 Recipient address rejected: Policy Rejection- Quota Exceeded.",
             "450-mailbox unavailable 450-Mail send limit exceeded.",
             "550 You (ann) have reached your daily email limit",
             "451 192.0.2.5 is not yet authorized to deliver mail from <me@own.example>.",
             "退信原因：发送邮件数量超过限制。",
             "452 4.3.2 送信数が制限を超えました。しばらくしてから再送してください",
             "571 sorry, reached maximum number of recipients allowed in one session (#5.1.1)",
         }},
        {"unreachable retry",
         {
             "Name service error for name=x.example type=MX: Host not found, try again",
             "500 5.4.4 Unable to route due to invalid MX records",
             "550 5.4.4 unable to route: dns lookup failure (unrouteable)",
             "The recipient server did not accept our requests to connect.",
             "Temporary failure in name resolution",
             "5.1.2 - Bad destination host 'DNS Soft Error looking up x.example (MX)'",
             "450 4.1.1 <u@x.example>: unverified address: connect to mx: Connection refused",
             "No connection could be made because the target machine actively refused it",
             "451 4.7.0 SMTPSEND.SuspiciousRemoteServerError; disconnected abruptly",
             "No valid route to remote MX",
         }},
        {"expired retry",
         {
             "delivery temporarily suspended: message has been in the queue too long",
             "retry timeout exceeded",
         }},
        {"system retry",
         {
             "550 5.1.1 LDAP lookup failed",
             "Command died with status 127: \"/usr/bin/vacation\". Command output: not found",
             "Can't open mailbox for user: permission denied",
             "451 4.3.2 system not accepting network messages",
             "451 The queue is full",
         }},
    };
    for (const Case& c : cases) {
        for (const std::string_view reply : c.replies) {
            const ReasonFinding finding = reasonOf({.text = reply});
            const std::string told = std::string(nameOf(finding.reason)) + " " +
                                     std::string(nameOf(adviceFor(Outcome::failed, finding)));
            EXPECT_EQ(told, c.expected) << reply << " by " << finding.row;
        }
    }
}

/// What is in front of another system's reply is the same for any; of others, the recipient's
/// address says whom they are about.
TEST(Reply, IsAboutTheRecipientsAddress) {
    const std::pair<std::string_view, std::string_view> cases[] = {
        {"5.1.0 - Unknown address error 550-'5.7.1 listed on a block list'", "reputation fix"},
        {"5.1.0 - Unknown address error 550-'user a not found'", "unknown-mailbox suppress"},
        {"5.1.0 - Unknown address error 550-'that was it'", "other retry"},
        {"There was a SMTP communication problem with the server. <mx #5.5.0 smtp;550 El usuario "
         "a no existe>",
         "unknown-mailbox suppress"},
        {"192.0.2.1 does not like recipient.\nRemote host said: 552 that was it",
         "mailbox-full retry"},
        {"450 Unknown address error 550-'user a not found'", "unknown-mailbox retry"},
        {"Unknown address error 421-'user a not found'", "unknown-mailbox retry"},
        {"Sender verify failed: Unknown address error 550-'user unknown'", "policy fix"},
        {"If unknown user, write to us", "unknown-mailbox retry"},
        {"The email address a@x.example is not recognised by our system",
         "unknown-mailbox suppress"},
        {"The email address is not recognised by our system", "unknown-mailbox retry"},
        {"Domain name x.example does not exist", "unknown-domain suppress"},
        {"This group doesn't exist for people outside", "unknown-mailbox retry"},
        {"192.0.2.1 does not like recipient.", "unknown-mailbox retry"},
        {"Remote SMTP server has rejected address\nDiagnostic code: smtp;450 User a not found",
         "unknown-mailbox retry"},
    };
    for (const auto& [text, expected] : cases) {
        const std::string address = "a@x.example";
        const std::string_view status = text.starts_with("5.1.0") ? text.substr(0, 5) : "";
        const ReasonFinding finding =
            reasonOf({.status = status, .text = text, .address = address});
        const std::string told = std::string(nameOf(finding.reason)) + " " +
                                 std::string(nameOf(adviceFor(Outcome::failed, finding)));
        EXPECT_EQ(told, expected) << text;
        EXPECT_TRUE(finding.row.empty() || finding.length == 0 ||
                    containsNoCase(text.substr(finding.at, finding.length), finding.row))
            << text;
    }
}

}  // namespace
}  // namespace bouncecheck
