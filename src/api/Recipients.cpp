#include "recipients/Recipients.h"

#include "api/MessageContent.h"

namespace bouncecheck {

std::vector<Recipient> recipientsOf(const Message& message, std::span<const VerpPattern> verp) {
    return recipientsOf(contentOf(message).reading, verp);
}

}  // namespace bouncecheck
