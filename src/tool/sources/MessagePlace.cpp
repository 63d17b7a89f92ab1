#include "tool/sources/MessagePlace.h"

namespace bouncecheck {

std::string MessagePlace::text() const {
    return inMailbox ? source + ':' + std::to_string(index) : source;
}

}  // namespace bouncecheck
