#pragma once

#include <string>
#include <string_view>

namespace bouncecheck {

/// The descriptor of this process that `path` names, such as 1 for /dev/stdout or
/// /dev/fd/1; -1 when it names none.
int descriptorIn(std::string_view path) noexcept;

/// The path that `path` leads to by symbolic links, when nothing is there yet as well.
/// `path` itself when they go round in circles.
std::string withoutLinks(const std::string& path);

/// Makes a rename or a new file in the folder of `path` last.
void syncFolderOf(std::string_view path) noexcept;

}  // namespace bouncecheck
