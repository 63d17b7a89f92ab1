#pragma once

#include <bouncecheck/Recipient.h>

#include <span>
#include <vector>

#include "recipients/MessageReading.h"

namespace bouncecheck {

/// The recipients of the message that is read; see <bouncecheck/Recipient.h>.
std::vector<Recipient> recipientsOf(const MessageReading& reading,
                                    std::span<const VerpPattern> verp = {});

}  // namespace bouncecheck
