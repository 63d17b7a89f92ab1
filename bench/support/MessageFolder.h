#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <vector>

namespace bouncecheck::bench {

struct StoredMessage {
    std::string name;
    std::string bytes;
};

/// The files that stand in `folder`, one message each, in the order of their
/// names (by bytes); what stands in folders inside it is left out.
/// Throws std::runtime_error with a line for the user when the folder cannot be
/// read or holds no file.
std::vector<StoredMessage> readMessages(const std::filesystem::path& folder);

/// The size of all messages in bytes.
std::size_t totalBytes(const std::vector<StoredMessage>& messages) noexcept;

}  // namespace bouncecheck::bench
