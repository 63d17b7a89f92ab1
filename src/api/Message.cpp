#include <bouncecheck/Message.h>

#include <utility>

#include "api/MessageContent.h"
#include "text/Ascii.h"

namespace bouncecheck {

Message::Message(std::string_view bytes)
    : content_(std::make_unique<const MessageContent>(bytes)) {}
Message::Message(std::string&& bytes)
    : content_(std::make_unique<const MessageContent>(std::move(bytes))) {}
Message::Message(const char* bytes) : Message(ascii::viewOf(bytes)) {}
Message::Message(Message&& other) noexcept = default;
Message& Message::operator=(Message&& other) noexcept = default;
Message::~Message() = default;

const Entity& entityOf(const Message& message) noexcept { return contentOf(message).entity; }
const MessageContent& contentOf(const Message& message) noexcept { return *message.content_; }

std::string Message::field(std::string_view name) const { return content_->entity.field(name); }

}  // namespace bouncecheck
