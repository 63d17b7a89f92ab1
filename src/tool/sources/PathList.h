#pragma once

#include <functional>
#include <string>

namespace bouncecheck {

class InputStream;

/// Hands on the paths that `list` holds, each with `end` behind it; the last may lack it. Empty
/// ones are skipped, and a longer one than files have is cut, so that no such file is found.
void forEachPath(InputStream& list, char end,
                 const std::function<void(const std::string& path)>& onPath);

}  // namespace bouncecheck
