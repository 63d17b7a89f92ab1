#include "tool/commands/Intake.h"

#include <algorithm>
#include <array>
#include <new>
#include <string>
#include <utility>

#include "tool/sources/FileContent.h"

namespace bouncecheck {
namespace {

struct Beginning {
    std::string bytes;
    bool isWhole = true;
};

/// The first `most` bytes. The rest is read as well, since whoever writes it waits for that.
Beginning readBeginning(InputStream& stream, std::size_t most) {
    std::array<char, 65536> piece;
    Beginning beginning;
    while (const std::size_t size = stream.read(piece)) {
        const std::size_t kept = std::min(size, most - beginning.bytes.size());
        beginning.bytes.append(piece.data(), kept);
        beginning.isWhole = beginning.isWhole && kept == size;
    }
    return beginning;
}

}  // namespace

ledger::MessageEntry Intake::read(InputStream& stream, std::string place, ledger::Time now) {
    Beginning read = readBeginning(stream, maxMessageSize_);
    const std::string_view bytes = read.bytes;
    if (!read.isWhole) {
        return unreadEntry(ledger::digestOfHeader(bytes),
                           "is larger than --max-message-size allows", std::move(place), now);
    }
    const ledger::Digest digest = ledger::digestOf(bytes);
    const FileContent content = contentOf(bytes.substr(0, decisiveBytes));
    if (content.kind != FileContent::Kind::mail) {
        return unreadEntry(digest, "is " + std::string(content.name) + ", not mail",
                           std::move(place), now);
    }
    Classified message = asRead({.place = {.source = place}, .bytes = std::move(read.bytes)});
    classifier_.classify(message);
    if (!message.problem.empty()) throw std::bad_alloc();
    return entryOf(message, digest, std::move(place), now);
}

}  // namespace bouncecheck
