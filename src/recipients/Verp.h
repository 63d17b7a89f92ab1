#pragma once

#include <bouncecheck/VerpPattern.h>

#include <optional>
#include <span>
#include <string_view>

namespace bouncecheck {

class Entity;

/// What the first pattern that fits carries, of the addresses to which `message` came back:
/// Delivered-To, X-Original-To, Envelope-To, X-Envelope-To and To, in this order, and then
/// `returnPath`, the field of the message inside.
std::optional<VerpPattern::Match> matchVerp(const Entity& message, std::string_view returnPath,
                                            std::span<const VerpPattern> patterns);

}  // namespace bouncecheck
