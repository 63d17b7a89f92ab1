#include "facts/FactsOf.h"

#include <bouncecheck/Message.h>

namespace bouncecheck {

Facts factsOf(const Message& message) { return factsOf(entityOf(message)); }

}  // namespace bouncecheck
