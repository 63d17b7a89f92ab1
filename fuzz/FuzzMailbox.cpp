// Mailbox files and envelopes: however they are read, the messages are the same.

#include <string>
#include <vector>

#include "fuzz/Input.h"
#include "fuzz/Require.h"
#include "fuzz/StepStream.h"
#include "tool/sources/Envelope.h"
#include "tool/sources/MboxReader.h"

namespace bouncecheck::fuzz {
namespace {

std::vector<std::string> messagesOf(std::string_view text, std::size_t step, std::size_t limit,
                                    FileKind kind) {
    StepStream stream(text, step);
    MboxReader reader(stream, limit, kind);
    std::vector<std::string> all;
    std::size_t size = 0;
    while (auto message = reader.next()) {
        require(message->index == all.size() + 1, "messages are counted from 1");
        require(message->bytes.size() <= limit, "no message is larger than the limit");
        require(!message->tooLarge || message->bytes.empty(), "what is too large is left out");
        size += message->bytes.size();
        all.push_back(message->tooLarge ? "too large" : std::move(message->bytes));
    }
    require(size <= text.size(), "messages are no larger than their file");
    require(reader.isMailbox() || all.size() <= 1, "only a mailbox holds several messages");
    return all;
}

}  // namespace
}  // namespace bouncecheck::fuzz

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace bouncecheck;
    using namespace bouncecheck::fuzz;
    Input input(data, size);
    const auto kind = static_cast<FileKind>(input.number(4));
    const std::size_t step = input.number(64) + 1;
    const std::size_t limit = 64 * input.number(256);
    const ExactBytes text(input.rest());
    isEnvelope(text.view());
    const auto messages = messagesOf(text.view(), step, limit, kind);
    require(messagesOf(text.view(), size + 1, limit, kind) == messages,
            "read in other pieces, a file holds the same messages");
    if (kind == FileKind::message) {
        require(messages.size() == 1, "one message is one message");
        const std::string& bytes = messages.front();
        require(bytes == "too large" || text.view().ends_with(bytes), "and not changed");
    }
    return 0;
}
