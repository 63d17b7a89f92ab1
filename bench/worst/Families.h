#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>

namespace bouncecheck::bench {

/// A kind of message that is meant to cost much, at any size.
struct Family {
    std::string_view name;
    /// A message of about `bytes`, never more, in a string that was allocated
    /// once.
    std::string (*make)(std::size_t bytes);
};

/// What headers, addresses and subjects are made of.
std::span<const Family> headerFamilies() noexcept;
/// Multiparts, enclosed messages and reports.
std::span<const Family> structureFamilies() noexcept;
/// Transfer encodings, charsets and HTML.
std::span<const Family> encodingFamilies() noexcept;
/// Texts that the phrase and marker searches have a hard time with.
std::span<const Family> textFamilies() noexcept;

}  // namespace bouncecheck::bench
