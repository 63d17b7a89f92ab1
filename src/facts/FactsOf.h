#pragma once

#include <bouncecheck/Facts.h>

namespace bouncecheck {

class MessageReading;

/// The facts of the message that is read; see <bouncecheck/Facts.h>.
Facts factsOf(const MessageReading& reading);

}  // namespace bouncecheck
