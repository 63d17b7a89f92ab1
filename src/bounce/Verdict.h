#pragma once

#include "bounce/BounceType.h"
#include "log/LogBase.h"

namespace bouncecheck {

/// Logs the line that names the deciding rule; then the verdict is `type`.
inline int decide(LogBase& log, BounceType type, const char* line) {
    log.LogInfo(line);
    return type;
}

}  // namespace bouncecheck
