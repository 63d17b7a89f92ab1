#include "tool/sources/Place.h"

namespace bouncecheck {

std::string placeOf(std::string_view source, std::uint64_t index, bool inMailbox) {
    std::string place(source);
    if (inMailbox) place.append(":").append(std::to_string(index));
    return place;
}

}  // namespace bouncecheck
