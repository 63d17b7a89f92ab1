#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <span>
#include <string>
#include <string_view>

#include "bench/support/Clocks.h"
#include "bench/worst/Families.h"
#include "bench/worst/MessageWriter.h"
#include "tool/sources/MboxReader.h"

namespace bouncecheck::bench {
namespace {

constexpr std::string_view envelope = "From a@b.example Thu Sep 18 17:54:04 2008\n";

/// A text as a file would hold it.
class TextStream final : public InputStream {
public:
    explicit TextStream(std::string_view text) : rest_(text) {}
    std::size_t read(std::span<char> room) override {
        const std::size_t count = rest_.copy(room.data(), room.size());
        rest_.remove_prefix(count);
        return count;
    }
    std::optional<std::uint64_t> sizeLeft() const override { return rest_.size(); }

private:
    std::string_view rest_;
};

double secondsToDivide(std::string mailbox, const Form* /*form*/) {
    const Stopwatch watch;
    TextStream stream(mailbox);
    MboxReader reader(stream, std::size_t{64} << 20);
    while (reader.next()) continue;
    return watch.seconds();
}

/// A message whose length is `length`; all have the same size.
std::string messageOfLength(std::size_t length) {
    char field[40];
    std::snprintf(field, sizeof field, "Content-Length: %012zu\n\n\n", length);
    return std::string(envelope) + field;
}

/// Messages in half of the mailbox, each with a length that ends before one long line,
/// behind one with a length that has nearly all of it read.
std::string lengthsToALongLine(std::size_t bytes) {
    MessageWriter writer(bytes);
    writer.add(messageOfLength(bytes - bytes / 8));
    const std::size_t size = messageOfLength(0).size();
    for (std::size_t left = bytes / 2 / size; left-- > 0;) {
        writer.add(messageOfLength(left * size + 1));
    }
    return writer.fill("xxxxxxxxxxxxxxxx").add("\n").take();
}

/// Messages whose length ends `distance` bytes behind them, in front of no envelope.
std::string lyingLengths(std::size_t bytes, std::size_t distance) {
    const std::string message = messageOfLength(distance);
    return MessageWriter(bytes).fill(message).take();
}

std::string mailboxOf(std::size_t bytes, std::string_view piece) {
    return MessageWriter(bytes).add(envelope).add("S: 1\n\n").fill(piece).take();
}

constexpr Family families[] = {
    {"lengths-to-a-long-line", lengthsToALongLine, secondsToDivide},
    {"lying-lengths", [](std::size_t n) { return lyingLengths(n, n / 2); }, secondsToDivide},
    {"small-lying-lengths", [](std::size_t n) { return lyingLengths(n, 99); }, secondsToDivide},
    {"many-lengths",
     [](std::size_t n) {
         return MessageWriter(n).add(envelope).fill("Content-Length: 7\n").take();
     },
     secondsToDivide},
    {"near-envelopes",
     [](std::size_t n) { return mailboxOf(n, "\nFrom 1 1 1 1 1 1 1 1 Thu Sep 18 2008\n"); },
     secondsToDivide},
    {"lines-of-f", [](std::size_t n) { return mailboxOf(n, "F\n"); }, secondsToDivide},
    {"quoted-froms", [](std::size_t n) { return mailboxOf(n, ">>>>>>>>From \n"); },
     secondsToDivide},
    {"empty-messages",
     [](std::size_t n) { return MessageWriter(n).fill("From a Thu Sep 18 17:54 2008\n\n").take(); },
     secondsToDivide},
};

}  // namespace

std::span<const Family> mailboxFamilies() noexcept { return families; }

}  // namespace bouncecheck::bench
