#include "tool/sources/FileKind.h"

#include <algorithm>
#include <array>

#include "text/Ascii.h"

namespace bouncecheck {
namespace {

bool endsWithNoCase(std::string_view name, std::string_view ending) noexcept {
    return name.size() >= ending.size() &&
           ascii::equalsNoCase(name.substr(name.size() - ending.size()), ending);
}

}  // namespace

FileKind kindOfName(std::string_view path) noexcept {
    constexpr std::array<std::string_view, 4> packedEndings = {".gz", ".xz", ".zst", ".bz2"};
    std::string_view name = path.substr(path.find_last_of('/') + 1);
    const auto packed = std::ranges::find_if(
        packedEndings, [&](std::string_view ending) { return endsWithNoCase(name, ending); });
    if (packed != packedEndings.end()) name.remove_suffix(packed->size());
    if (endsWithNoCase(name, ".eml")) return FileKind::message;
    const bool isMailbox = endsWithNoCase(name, ".mbox") || ascii::startsWithNoCase(name, "mbox");
    return isMailbox ? FileKind::mailbox : FileKind::byContent;
}

FileKind kindOfMember(std::string_view path) noexcept {
    const std::string_view folder = path.substr(0, path.find_last_of('/') + 1);
    constexpr std::array<std::string_view, 2> parts = {"/cur/", "/new/"};
    const bool isInMaildir = std::ranges::any_of(parts, [&](std::string_view part) {
        return folder.ends_with(part) || folder == part.substr(1);
    });
    return isInMaildir ? FileKind::message : kindOfName(path);
}

}  // namespace bouncecheck
