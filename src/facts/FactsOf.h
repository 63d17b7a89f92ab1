#pragma once

#include <bouncecheck/Facts.h>

#include "recipients/MessageReading.h"

namespace bouncecheck {

/// The facts of the message that is read; see <bouncecheck/Facts.h>.
Facts factsOf(const MessageReading& reading);

}  // namespace bouncecheck
