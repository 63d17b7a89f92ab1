#include "recipients/Recipients.h"

#include <bouncecheck/Message.h>

namespace bouncecheck {

std::vector<Recipient> recipientsOf(const Message& message, std::span<const VerpPattern> verp) {
    return recipientsOf(entityOf(message), verp);
}

}  // namespace bouncecheck
