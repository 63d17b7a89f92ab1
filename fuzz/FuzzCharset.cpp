// Charsets: what a known one yields is UTF-8, however its name is written, and does not
// depend on the texts before. The first two bytes choose the charset; 0 takes its name from
// the first line. The next one says where the text is divided in two.

#include <future>
#include <iterator>

#include "fuzz/Input.h"
#include "fuzz/Require.h"
#include "mime/Charset.h"
#include "mime/CharsetNames.h"
#include "text/Ascii.h"
#include "text/Utf8.h"

namespace bouncecheck::fuzz {
namespace {

/// One of the names that the table has for a charset, or "".
std::string_view knownName(Input& input) {
    const std::size_t choice = 256 * input.number(256) + input.number(256);
    if (choice == 0) return {};
    std::string_view names = charsets[choice % std::size(charsets)].names;
    for (std::size_t skipped = input.number(4); skipped > 0; --skipped) {
        const std::size_t end = names.find(' ');
        if (end != std::string_view::npos) names.remove_prefix(end + 1);
    }
    return names.substr(0, names.find(' '));
}

std::string decorated(std::string_view name) {
    std::string written = " (";
    for (const char c : ascii::trim(name)) written.append(1, ascii::toUpper(c)).append("+)");
    return written;
}

}  // namespace
}  // namespace bouncecheck::fuzz

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace bouncecheck;
    using namespace bouncecheck::fuzz;
    Input input(data, size);
    const std::string_view known = knownName(input);
    const ExactBytes name(known.empty() ? input.line() : known);
    const std::size_t division = input.number(256);
    const ExactBytes bytes(input.rest().substr(std::min(division, input.rest().size())));
    const ExactBytes before(input.rest().substr(0, division));

    const auto converted = convertedToUtf8(bytes.view(), name.view());
    const bool isKnown = charsetOf(canonicalCharsetName(name.view())) != nullptr;
    require(known.empty() || isKnown, "the names of the table are known");
    const std::string_view text = converted ? std::string_view(*converted) : bytes.view();
    require(!converted || isUtf8(text), "what is converted is UTF-8");
    convertedToUtf8(before.view(), name.view());
    require(converted == convertedToUtf8(bytes.view(), name.view()), "no text changes the next");
    require(converted == convertedToUtf8(bytes.view(), decorated(name.view())),
            "a name reads the same however it is written");
    // A thread of its own has none of the conversions.
    const auto afresh = std::async(std::launch::async, [&] {
                            return convertedToUtf8(bytes.view(), name.view());
                        }).get();
    require(converted == afresh, "the texts before do not matter");

    const std::string undeclared = undeclaredToUtf8(std::string(bytes.view()));
    require(!isUtf8(bytes.view()) || undeclared == bytes.view(), "UTF-8 stays as it is");
    require(isUtf8(undeclared), "an unknown charset is made UTF-8");
    return 0;
}
