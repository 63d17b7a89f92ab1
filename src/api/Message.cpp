#include <bouncecheck/Message.h>

#include <utility>

#include "mime/Entity.h"
#include "text/Ascii.h"

namespace bouncecheck {

Message::Message(std::string_view bytes) : entity_(std::make_unique<const Entity>(bytes)) {}
Message::Message(std::string&& bytes) : entity_(std::make_unique<const Entity>(std::move(bytes))) {}
Message::Message(const char* bytes) : Message(ascii::viewOf(bytes)) {}
Message::Message(Message&& other) noexcept = default;
Message& Message::operator=(Message&& other) noexcept = default;
Message::~Message() = default;

const Entity& entityOf(const Message& message) noexcept { return *message.entity_; }

std::string Message::field(std::string_view name) const { return entity_->field(name); }

}  // namespace bouncecheck
