// Header blocks and the addresses in their fields.

#include "fuzz/Input.h"
#include "fuzz/Require.h"
#include "mime/Charset.h"
#include "mime/HeaderFields.h"
#include "mime/LineEnds.h"
#include "mime/Mailbox.h"
#include "text/Search.h"
#include "text/Utf8.h"

namespace bouncecheck::fuzz {
namespace {

bool isInside(std::string_view part, std::string_view whole) noexcept {
    return part.data() >= whole.data() && part.data() + part.size() <= whole.data() + whole.size();
}

void tryAddresses(const HeaderField& field) {
    const std::string value = field.unfolded();
    const ExactBytes exact(value);
    const std::vector<Mailbox> all = parseMailboxes(exact.view(), npos);
    for (const Mailbox& mailbox : all) {
        require(isUtf8(mailbox.name) && isUtf8(mailbox.address), "a mailbox is UTF-8");
    }
    for (std::size_t limit = 0; limit < 3; ++limit) {
        const std::vector<Mailbox> some = parseMailboxes(exact.view(), limit);
        require(some.size() == std::min(limit, all.size()), "a limit gives as many as there are");
        for (std::size_t i = 0; i < some.size(); ++i) {
            require(some[i].name == all[i].name && some[i].address == all[i].address,
                    "a limit changes no mailbox");
        }
    }
}

void tryBlock(const HeaderFields& block, std::string_view text) {
    require(block.size() <= text.size(), "a block is no longer than its text");
    for (const HeaderField& field : block.all()) {
        require(!field.name.empty(), "a field has a name");
        require(isInside(field.name, text) && isInside(field.rawValue, text),
                "a field lies in its text");
        require(isUtf8(field.unfolded()) && isUtf8(field.decoded()), "a field is UTF-8");
        const HeaderField* found = block.find(field.name);
        require(found && found <= &field, "the first field of a name is found");
        tryAddresses(field);
    }
}

}  // namespace
}  // namespace bouncecheck::fuzz

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace bouncecheck;
    using namespace bouncecheck::fuzz;
    const ExactBytes exact(withCrLf(std::string(Input(data, size).rest())));
    const std::string_view text = exact.view();
    const std::size_t start = HeaderFields::startIn(text);
    require(start <= text.size(), "a header starts in its text");
    tryBlock(HeaderFields::ofMessage(text.substr(start)), text.substr(start));
    tryBlock(HeaderFields::ofReport(text), text);
    tryAddresses({{}, text});
    return 0;
}
