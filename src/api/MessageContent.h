#pragma once

#include <bouncecheck/Message.h>

#include <utility>

#include "mime/Entity.h"
#include "recipients/MessageReading.h"

namespace bouncecheck {

/// What a message is made of.
struct MessageContent {
    Entity entity;
    /// For recipients and facts alike, so that what both need is read once.
    MessageReading reading{entity};

    template <class Bytes>
    explicit MessageContent(Bytes&& bytes) : entity(std::forward<Bytes>(bytes)) {}
};

/// Belongs to the message.
const MessageContent& contentOf(const Message& message) noexcept;

}  // namespace bouncecheck
