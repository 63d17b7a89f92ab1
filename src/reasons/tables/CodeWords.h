#pragma once

#include <array>
#include <string_view>

namespace bouncecheck {

/// The words in front of a number that make it a version.
inline constexpr auto versionWords = std::to_array<std::string_view>(
    {"version", "ver", "v", "release", "exim", "postfix", "build", "esmtp", "mail", "server",
     "sendmail", "qmail"});

/// Those that make it a reply code.
inline constexpr auto replyWords = std::to_array<std::string_view>(
    {"error", "code", "smtp", "said", "status", "reply", "replied", "response", "answered",
     "answer", "server", "returned", "got", "with", "failed", "rejected", "failure", "fehler",
     "erreur", "codigo"});

/// Those behind a number that make it an amount.
inline constexpr auto units = std::to_array<std::string_view>(
    {"kb", "mb", "gb", "k", "m", "kib", "mib", "byte", "bytes", "ms", "second", "seconds", "secs",
     "hours", "days", "messages", "recipients", "connections", "percent", "minutes"});

}  // namespace bouncecheck
