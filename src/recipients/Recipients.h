#pragma once

#include <bouncecheck/Recipient.h>

#include <span>
#include <vector>

namespace bouncecheck {

class Entity;

/// See <bouncecheck/Recipient.h>.
std::vector<Recipient> recipientsOf(const Entity& message, std::span<const VerpPattern> verp = {});

}  // namespace bouncecheck
