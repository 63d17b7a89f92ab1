#pragma once

namespace bouncecheck {

/// Phrases of delay notices: delivery is still being tried.
inline constexpr const char* const TransientIndicators[] = {
    "Delivery to the following recipients has been delayed.",
    "Your message remains in the server queue",
    "----- The following addresses had transient non-fatal errors -----",
    "MailEnable: Message delivery has been delayed.",
    "We will continue attempts to deliver the message",
    "No action is required on your part. Delivery attempts will continue",
    "YOU DO NOT NEED TO RESEND YOUR MESSAGE",
    "The server will continue to attempt to deliver",
    "server will try to send it again",
    "should not try to resend your message",
    "is a warning message only",
    "It will be retried until",
    "Delayed Mail",
    "Queued Mail Notification",
    "you do not need to re-send",
    "temporarily rejected",
    "",
};

}  // namespace bouncecheck
