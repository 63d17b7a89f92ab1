#pragma once

#include <string>

namespace bouncecheck {

class Entity;

/// Who asks by `message` not to be written to again, in UTF-8: its author, where a button of a
/// mail program or the whole subject says so, or where the message goes to a mailbox for such
/// requests. "" where nobody does, or where a program answered by itself.
std::string whoAsksForRemoval(const Entity& message);

}  // namespace bouncecheck
