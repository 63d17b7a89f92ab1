// Compressed files and archives, whole and damaged: however they are read, they hold
// the same.

#include <memory>
#include <string>
#include <string_view>

#include "fuzz/Input.h"
#include "fuzz/Require.h"
#include "fuzz/StepStream.h"
#include "tool/sources/FileReader.h"

namespace bouncecheck::fuzz {
namespace {

constexpr std::size_t mostBytes = 1 << 20;

/// Everything that reading `text` hands out and reports, but for the reasons: those of
/// libarchive name sizes of its buffers.
std::string reportOf(std::string_view text, std::size_t step) {
    std::string all;
    const SourceOptions options{.maxMessageSize = mostBytes};
    const OnMessage onMessage = [&](SourceMessage message) {
        all += message.place.text() + message.bytes + '\n';
    };
    const OnProblem onProblem = [&](std::string_view source, std::string_view reason) {
        require(!reason.empty(), "a problem has a reason");
        all.append("!").append(source).append("\n");
    };
    FileReader reader(options, onMessage, onProblem);
    reportingProblems(onProblem, "x", [&] {
        reader.read({.name = "x"}, std::make_unique<StepStream>(text, step));
    });
    return all;
}

}  // namespace
}  // namespace bouncecheck::fuzz

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace bouncecheck::fuzz;
    Input input(data, size);
    const std::size_t step = input.number(64) + 1;
    const ExactBytes text(input.rest());
    require(reportOf(text.view(), step) == reportOf(text.view(), size + 1),
            "read in other pieces, a file holds the same");
    return 0;
}
