#include "tool/sources/RenamedMessages.h"

namespace bouncecheck {

void RenamedMessages::add(const std::string& path, Folder folder) {
    const std::string name = path.substr(path.find_last_of('/') + 1);
    Message& message = messages_[name.substr(0, name.find(':'))];
    message.path = path;
    message.wasInCur |= folder == Folder::cur;
}

void RenamedMessages::readAgain(const std::string& cur, const std::optional<FolderListing>& before,
                                const std::optional<FolderListing>& now,
                                const std::function<void(const std::string& path)>& read) const {
    for (const auto& [uniqueName, message] : messages_) {
        // Moved between the two listings, it stood in both.
        if (!message.wasInCur && before && before->findMessage(uniqueName)) continue;
        const auto name = now ? now->findMessage(uniqueName) : std::nullopt;
        read(name ? cur + '/' + std::string(*name) : message.path);
    }
}

}  // namespace bouncecheck
