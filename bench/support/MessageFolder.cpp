#include "bench/support/MessageFolder.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <system_error>

namespace bouncecheck::bench {

namespace fs = std::filesystem;

std::vector<StoredMessage> readMessages(const fs::path& folder) {
    std::vector<StoredMessage> messages;
    std::error_code error;
    for (fs::directory_iterator it(folder, error), end; !error && it != end; it.increment(error)) {
        if (!it->is_regular_file(error)) continue;
        std::ifstream file(it->path(), std::ios::binary);
        if (!file) throw std::runtime_error(it->path().string() + ": cannot be read");
        messages.push_back({it->path().filename().string(),
                            std::string(std::istreambuf_iterator<char>(file), {})});
    }
    if (error) throw std::runtime_error(folder.string() + ": " + error.message());
    if (messages.empty()) throw std::runtime_error(folder.string() + ": holds no message");
    std::ranges::sort(messages, {}, &StoredMessage::name);
    return messages;
}

std::size_t totalBytes(const std::vector<StoredMessage>& messages) noexcept {
    std::size_t total = 0;
    for (const StoredMessage& message : messages) total += message.bytes.size();
    return total;
}

}  // namespace bouncecheck::bench
