#include "tool/sources/PathList.h"

#include <array>
#include <climits>
#include <cstddef>
#include <string_view>

#include "tool/sources/InputStream.h"

namespace bouncecheck {

void forEachPath(InputStream& list, char end,
                 const std::function<void(const std::string& path)>& onPath) {
    std::array<char, 4096> piece;
    std::string path;
    const auto handOn = [&] {
        if (!path.empty()) onPath(path);
        path.clear();
    };
    while (const std::size_t size = list.read(piece)) {
        for (const char c : std::string_view(piece.data(), size)) {
            if (c == end) {
                handOn();
            } else if (path.size() <= PATH_MAX) {
                path += c;
            }
        }
    }
    handOn();
}

}  // namespace bouncecheck
