#pragma once

/// Addresses and hosts of particular providers, which change while the rules
/// that they stand in do not. Tables and checks are composed from these, so an
/// operator who rebuilds changes them here.
namespace bouncecheck::providers {

/// The sender of AOL's bounces, and the domain of the addresses in them.
inline constexpr const char* aolMailerDaemon = "MAILER-DAEMON@aol.com";
inline constexpr const char* aolDomain = "aol.com";

/// A challenge-response service: what its senders hold (its domain without the
/// top level), the address that its own mail has errors sent to, and where the
/// links in its challenges begin.
inline constexpr const char* challengeServiceSender = "@spamarrest";
inline constexpr const char* challengeServiceNoReply = "no-reply@spamarrest.com";
inline constexpr const char* challengeUrl = "http://www.spamarrest.com/a";

/// The page where another challenge-response service verifies senders.
inline constexpr const char* verificationPage = "http://www.knowspam.net/verify.cgi";

/// The web host that the challenges of a third one point to.
inline constexpr const char* challengeWebHost = "www.boxbe.com";

/// The senders of automatic answers of two consumer internet providers.
inline constexpr const char* automaticAssistanceAddress =
    "automatic-assistance@support.earthlink.net";
inline constexpr const char* automatedResponseAddress = "automated-response@juno.com";

/// The mailer daemon of a large mail provider, as a pattern for senders.
inline constexpr const char* mailerDaemonPattern = "*MAILER-DAEMON@YAHOO.COM*";

/// Where the sender of a web-mail provider's spam notices begins.
inline constexpr const char* webMailSpamAddress = "spam@mailblocks";

/// The heading of the transcripts of a hosted service's mailer.
inline constexpr const char* hostedServiceTranscript = "The www.everyone.net program";

}  // namespace bouncecheck::providers
