#pragma once

#include <cstddef>
#include <string_view>

namespace bouncecheck {

/// What the first bytes of a file show it to be.
struct FileContent {
    enum class Kind {
        /// A message or a mailbox, or nothing that is known: in doubt it is mail.
        mail,
        gzip,
        /// Compressed in another way that libarchive reads.
        compressed,
        tar,
        zip,
        /// Certainly no mail.
        foreign,
    };
    Kind kind = Kind::mail;
    /// What it is, for people: "a PDF document"; empty for mail.
    std::string_view name;
};

/// How many of its first bytes decide what a file is.
inline constexpr std::size_t decisiveBytes = 512;

/// What a file is that begins with `first`: all of it, or `decisiveBytes` of it.
/// Text whose first line could be a header field is mail, whatever signature it
/// resembles.
FileContent contentOf(std::string_view first) noexcept;

}  // namespace bouncecheck
