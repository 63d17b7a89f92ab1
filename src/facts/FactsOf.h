#pragma once

#include <bouncecheck/Facts.h>

namespace bouncecheck {

class Entity;

/// See <bouncecheck/Facts.h>.
Facts factsOf(const Entity& message);

}  // namespace bouncecheck
