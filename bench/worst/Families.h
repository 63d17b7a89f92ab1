#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>

#include "bench/worst/Measure.h"

namespace bouncecheck::bench {

/// A kind of message that is meant to cost much, at any size.
struct Family {
    std::string_view name;
    /// A message of about `bytes`, never more, in a string that was allocated
    /// once.
    std::string (*make)(std::size_t bytes);
    /// What is measured: the seconds that a message takes.
    double (*seconds)(std::string message, const Form* form) = secondsFor;
};

/// Mailbox files, which are divided and not classified.
std::span<const Family> mailboxFamilies() noexcept;
/// What headers, addresses and subjects are made of.
std::span<const Family> headerFamilies() noexcept;
/// Multiparts, enclosed messages and reports.
std::span<const Family> structureFamilies() noexcept;
/// Transfer encodings, charsets and HTML.
std::span<const Family> encodingFamilies() noexcept;
/// Texts that the phrase and marker searches have a hard time with.
std::span<const Family> textFamilies() noexcept;
/// Texts that take much room, or long, once they are printed.
std::span<const Family> outputFamilies() noexcept;
/// What recipients are looked for in.
std::span<const Family> recipientFamilies() noexcept;

}  // namespace bouncecheck::bench
