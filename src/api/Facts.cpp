#include "facts/FactsOf.h"

#include "api/MessageContent.h"

namespace bouncecheck {

Facts factsOf(const Message& message) { return factsOf(contentOf(message).reading); }

}  // namespace bouncecheck
