#pragma once

#include <string_view>

namespace bouncecheck {

class Entity;

/// Whether the header of `message` says that a mail system wrote it, or that it is about mail
/// that was not delivered.
bool isWrittenBySystem(const Entity& message);

/// Whether a person passes on, or answers, what somebody else wrote: "Fwd: ...".
bool isPassedOn(std::string_view subject);

/// Whether `subject` says that mail was not delivered, or not yet.
bool saysTrouble(std::string_view subject);

}  // namespace bouncecheck
