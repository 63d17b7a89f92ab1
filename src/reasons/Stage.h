#pragma once

#include <string_view>

namespace bouncecheck {

/// When a reply was given, as its text says.
enum class Stage {
    unknown,
    /// Before any recipient was named.
    sender,
    /// After the recipients were accepted and the message was sent.
    data,
};

/// The stage that the text of a reply, as it stands, names first in the order of their table.
Stage stageIn(std::string_view text);

}  // namespace bouncecheck
