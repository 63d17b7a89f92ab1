#include "files/Paths.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <charconv>
#include <climits>
#include <filesystem>
#include <system_error>
#include <utility>

#include "files/UniqueFd.h"

namespace bouncecheck {

int descriptorIn(std::string_view path) noexcept {
    constexpr std::array<std::pair<std::string_view, int>, 3> names = {
        {{"/dev/stdin", STDIN_FILENO},
         {"/dev/stdout", STDOUT_FILENO},
         {"/dev/stderr", STDERR_FILENO}}};
    for (const auto& [name, descriptor] : names) {
        if (path == name) return descriptor;
    }
    for (const std::string_view folder : {"/dev/fd/", "/proc/self/fd/"}) {
        if (!path.starts_with(folder)) continue;
        const std::string_view number = path.substr(folder.size());
        int descriptor = -1;
        const auto [end, error] =
            std::from_chars(number.data(), number.data() + number.size(), descriptor);
        if (error == std::errc() && end == number.data() + number.size()) return descriptor;
    }
    return -1;
}

std::string withoutLinks(const std::string& path) {
    namespace fs = std::filesystem;
    constexpr int mostLinks = 40;  // as the kernel has it
    std::error_code error;
    fs::path target = path;
    for (int links = 0; links < mostLinks; ++links) {
        const fs::path next = fs::read_symlink(target, error);
        if (error) return target.string();
        target = target.parent_path() / next;  // which is `next` when that is absolute
    }
    return path;
}

void syncFolderOf(std::string_view path) noexcept {
    std::array<char, PATH_MAX> folder = {'.'};
    const std::size_t size = path.rfind('/') + 1;
    if (size >= folder.size()) return;  // what is that long cannot have been opened
    path.copy(folder.data(), size);
    const UniqueFd fd(::open(folder.data(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (fd) ::fsync(fd.get());
}

}  // namespace bouncecheck
