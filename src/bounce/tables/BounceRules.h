#pragma once

#include <bouncecheck/BounceRule.h>
#include <bouncecheck/BounceType.h>

namespace bouncecheck {

/// The last word on a text that no indicator decided: subjects and senders that
/// are common to bounces and to other mail.
inline constexpr BounceRule BounceRules[] = {
    {RULE_SUBJECT, RULE_BEGINS_WITH, "NDN:", BOUNCE_HARD},
    {RULE_SUBJECT, RULE_BEGINS_WITH_NO_CASE, "Non-Delivery", BOUNCE_HARD},
    {RULE_SUBJECT, RULE_CONTAINS_NO_CASE, "Delivery Failure", BOUNCE_HARD},
    {RULE_BOUNCE_DATA, RULE_CONTAINS_NO_CASE, "account is no longer accessed", BOUNCE_HARD},
    {RULE_BOUNCE_DATA, RULE_CONTAINS_NO_CASE, "undeliverable to the following", BOUNCE_HARD},
    {RULE_BOUNCE_DATA, RULE_CONTAINS_NO_CASE, "message did not reach", BOUNCE_HARD},
    {RULE_BOUNCE_DATA, RULE_CONTAINS_NO_CASE, "no longer works at", BOUNCE_HARD},
    {RULE_BOUNCE_DATA, RULE_CONTAINS_NO_CASE, "out of office", BOUNCE_AUTO_REPLY},
    {RULE_FROM_NAME, RULE_CONTAINS_NO_CASE, "Automated", BOUNCE_AUTO_REPLY},
    {RULE_FROM_ADDR, RULE_CONTAINS_NO_CASE, "doNotReply", BOUNCE_AUTO_REPLY},
    {RULE_SUBJECT, RULE_CONTAINS_NO_CASE, "Thank you for contacting", BOUNCE_AUTO_REPLY},
    {RULE_SUBJECT, RULE_CONTAINS_NO_CASE, "Autoreply", BOUNCE_AUTO_REPLY},
    {RULE_SUBJECT, RULE_BEGINS_WITH_NO_CASE, "Microsoft Forefront Server", BOUNCE_BLOCKED},
    {RULE_SUBJECT, RULE_CONTAINS_NO_CASE, "Blocked", BOUNCE_BLOCKED},
    {RULE_FROM_ADDR, RULE_CONTAINS_NO_CASE, "Mailer-Daemon@", BOUNCE_HARD},
    {RULE_FROM_ADDR, RULE_CONTAINS_NO_CASE, "Postmaster@", BOUNCE_HARD},
    {RULE_FROM_ADDR, RULE_CONTAINS_NO_CASE, "majordomo@", BOUNCE_HARD},
    {RULE_FROM_ADDR, RULE_CONTAINS_NO_CASE, "antispam", BOUNCE_HARD},
    {RULE_END, RULE_CONTAINS_NO_CASE, "", BOUNCE_HARD},
};

}  // namespace bouncecheck
