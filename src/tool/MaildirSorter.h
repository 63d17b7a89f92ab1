#pragma once

#include <cstdint>
#include <set>
#include <string>

#include "tool/Classify.h"

namespace bouncecheck {

/// Delivers copies of messages into one Maildir per verdict below a folder:
/// `hard`, `soft` and so on. A copy is written to `tmp`, made to last, and moved to
/// `new`, so that no reader ever sees half of one.
class MaildirSorter {
public:
    /// Makes the folder, so that it is known before messages are looked for. Throws
    /// std::runtime_error.
    explicit MaildirSorter(std::string folder);

    /// `message` has its bytes. Throws std::runtime_error.
    void deliver(const Classified& message);
    /// Makes the names of all copies last.
    void finish();

private:
    void makeMaildir(const std::string& maildir);
    std::string nextName();

    std::string folder_;
    std::set<std::string> maildirs_;
    std::uint64_t count_ = 0;
};

}  // namespace bouncecheck
