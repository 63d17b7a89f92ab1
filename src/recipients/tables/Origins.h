#pragma once

#include <array>
#include <string_view>

namespace bouncecheck {

/// What the addresses of mail systems and list servers begin with, in any letter case.
inline constexpr auto systemSenders = std::to_array<std::string_view>({
    "bounce",
    "bounces",
    "delivery",
    "listserv",
    "mail-daemon",
    "mail-delivery",
    "maildaemon",
    "maildelivery",
    "mailer-daemon",
    "mailerdaemon",
    "mailman",
    "majordomo",
    "mdaemon",
    "mmdf",
    "owner-",
    "post_master",
    "posta-certificata",
    "postmaster",
    "sympa",
    "system",
});

/// Words of the subjects that mail systems give to their notices, in any letter case.
inline constexpr auto noticeSubjects = std::to_array<std::string_view>({
    "could not be delivered",
    "delayed mail",
    "delivery delayed",
    "delivery error",
    "delivery fail",
    "delivery has failed",
    "delivery notification",
    "delivery problem",
    "delivery report",
    "delivery status",
    "failure delivery",
    "failure notice",
    "mail delivery",
    "mail failure",
    "mail system error",
    "message could not",
    "message delayed",
    "non delivery",
    "non remis",
    "non-delivery",
    "nondeliver",
    "not delivered",
    "returned mail",
    "returned to sender",
    "returning message",
    "unable to deliver",
    "undeliver",
    "unzustellbar",
    "warning: message",
    // other languages; not the words for parcels
    "échec de la remise",
    "échec de remise",
    "配信不能",
    "配信エラー",
    "送信エラー",
    "退信",
});

/// What subjects begin with when a person passes mail on or answers it, in any letter case (for
/// ASCII), in the words of the languages that mail programs have.
inline constexpr auto passedOnSubjects = std::to_array<std::string_view>({
    "(fwd)",
    "*** re:",
    "ang:",
    "antw:",
    "antwort:",
    "aw:",
    "doorst:",
    "enc:",
    "external: re:",
    "fs:",
    "fw :",
    "fw:",
    "fwd ",
    "fwd :",
    "fwd:",
    "i:",
    "inoltra:",
    "odg:",
    "odp:",
    "pd:",
    "r:",
    "re :",
    "re:",
    "re[",
    "re^",
    "res:",
    "rif:",
    "rv:",
    "sv:",
    "tr :",
    "tr:",
    "trs:",
    "vb:",
    "vl:",
    "vs:",
    "vá:",
    "weitergeleitet:",
    "wg:",
    "ynt:",
    "на:",
    "ответ:",
    "回复:",
    "回复：",
    "回覆:",
    "回覆：",
    "答复:",
    "答复：",
    "転送:",
    "轉寄:",
    "轉寄：",
    "转发:",
    "转发：",
    "返信:",
});

/// Header fields that name recipients who failed.
inline constexpr auto failedRecipientFields =
    std::to_array<std::string_view>({"X-Failed-Recipients", "X-Failed-Recipient"});

}  // namespace bouncecheck
