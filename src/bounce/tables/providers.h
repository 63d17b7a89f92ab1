#pragma once

/// Addresses and hosts of particular providers, which change while the rules
/// that they stand in do not. The tables and checks are composed from these.
namespace bouncecheck::providers {

/// The page where a challenge-response service verifies senders.
inline constexpr const char* verificationPage = "http://www.knowspam.net/verify.cgi";

/// Where the links in the challenges of another such service begin.
inline constexpr const char* challengeUrl = "http://www.spamarrest.com/a";

}  // namespace bouncecheck::providers
