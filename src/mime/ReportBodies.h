#pragma once

#include <string_view>

#include "mime/Entity.h"
#include "mime/ReportTypes.h"

namespace bouncecheck {

/// The first entity of `message`, in document order, of one of these kinds; null without one.
template <class... Kinds>
const Entity* findKind(const Entity& message, Kinds... kinds) {
    return message.find([&](const Entity& entity) { return isOfKind(entity.type(), kinds...); });
}

/// Its body: the fields of a report, or the message or header that came back, decoded; ""
/// without one. Belongs to the message.
template <class... Kinds>
std::string_view bodyOf(const Entity& message, Kinds... kinds) {
    const Entity* part = findKind(message, kinds...);
    return part ? part->body().view() : std::string_view();
}

}  // namespace bouncecheck
