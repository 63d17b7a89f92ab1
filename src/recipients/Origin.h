#pragma once

#include <string_view>

namespace bouncecheck {

class Entity;

/// Who wrote a message, as its header tells.
enum class Author {
    person,
    /// Its subject is one that mail systems give to their notices, but nothing else says so; or a
    /// program wrote it that answers for its owner.
    perhapsSystem,
    system,
};

Author authorOf(const Entity& message);

/// Whether the header of `message` says that a program answers for its owner. Mail systems say so
/// of their notices, too, but they have other marks.
bool isAutomaticReply(const Entity& message);

/// Whether the header of `message` says that people talk to each other: it answers or passes on
/// what somebody else wrote ("Fwd: ..."), or a list distributes it.
bool isDiscussion(const Entity& message);

/// Whether `subject` says that mail was not delivered, or not yet.
bool saysTrouble(std::string_view subject);

}  // namespace bouncecheck
