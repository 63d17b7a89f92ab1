#pragma once

#include <cstddef>
#include <string_view>

namespace bouncecheck {

/// Whether a sentence of a reply ends at the byte `at`, or goes on with no more than "here".
bool endsClause(std::string_view text, std::size_t at);

/// Whether the words that end at `at` go on in a way that makes them less: "at the moment".
bool goesOnOtherwise(std::string_view text, std::size_t at);

/// Whether `name` is the next word behind `at`, and ends the sentence: "No user ann", "No mailbox
/// <ann@x.example>".
bool isFollowedBy(std::string_view text, std::size_t at, std::string_view name);

}  // namespace bouncecheck
