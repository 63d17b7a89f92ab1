#include "tool/sources/RenamedMessages.h"

namespace bouncecheck {

void RenamedMessages::add(const std::string& path, Folder folder) {
    const std::string name = path.substr(path.find_last_of('/') + 1);
    Message& message = messages_[name.substr(0, name.find(':'))];
    message.path = path;
    if (folder == Folder::cur) ++message.missedInCur;
}

void RenamedMessages::readAgain(const std::string& cur, const std::optional<FolderListing>& before,
                                const Reading& reading) {
    // Renamed while the folders were listed, it stands there under both names.
    std::erase_if(messages_, [&](const auto& one) {
        return before && before->countNames(one.first) > one.second.missedInCur;
    });
    // It may be renamed once more meanwhile.
    constexpr int mostRounds = 5;
    for (int round = 0; round < mostRounds && !messages_.empty(); ++round) {
        const std::optional<FolderListing> now = reading.list();
        bool isAnyThere = false;
        std::erase_if(messages_, [&](const auto& one) {
            const auto name = now ? now->findMessage(one.first) : std::nullopt;
            isAnyThere |= name.has_value();
            return name && reading.read(cur + '/' + std::string(*name));
        });
        if (!isAnyThere) break;
    }
    for (const auto& [uniqueName, message] : messages_) reading.miss(message.path);
    messages_.clear();
}

}  // namespace bouncecheck
