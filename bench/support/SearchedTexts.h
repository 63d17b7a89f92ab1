#pragma once

#include <string>
#include <vector>

#include "bench/support/MessageFolder.h"

namespace bouncecheck::bench {

/// What the classifier searches for phrases: for each message its bounce data
/// and its subject, in this order.
std::vector<std::string> searchedTexts(const std::vector<StoredMessage>& messages);

}  // namespace bouncecheck::bench
