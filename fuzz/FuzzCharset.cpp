// Charsets: what a known one yields is UTF-8. The first byte chooses the charset;
// 0 takes its name from the first line.

#include <array>

#include "fuzz/Input.h"
#include "fuzz/Require.h"
#include "mime/Charset.h"
#include "text/Utf8.h"

namespace bouncecheck::fuzz {
namespace {

constexpr std::array<std::string_view, 24> known = {
    "utf-8",       "us-ascii",    "iso-8859-1",   "iso-8859-15", "windows-1252",   "iso-8859-2",
    "iso-2022-jp", "iso-2022-kr", "shift_jis",    "euc-jp",      "gb2312",         "gb18030",
    "big5",        "koi8-r",      "windows-1251", "utf-7",       "utf-16",         "utf-16be",
    "utf-16le",    "utf-32",      "ucs-2",        "x-mac-roman", "ks_c_5601-1987", "iso-8859-8-i"};

}  // namespace
}  // namespace bouncecheck::fuzz

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace bouncecheck;
    using namespace bouncecheck::fuzz;
    Input input(data, size);
    const std::size_t choice = input.number(known.size() + 1);
    const std::string_view name = choice > 0 ? known[choice - 1] : input.line();
    const ExactBytes bytes(input.rest());
    const ExactBytes charset(name);
    const auto converted = convertedToUtf8(bytes.view(), charset.view());
    const std::string_view text = converted ? std::string_view(*converted) : bytes.view();
    require(choice == 0 || isUtf8(text), "a known charset yields UTF-8");
    require(converted == convertedToUtf8(bytes.view(), charset.view()),
            "a charset yields the same twice");
    const std::string undeclared = undeclaredToUtf8(std::string(bytes.view()));
    require(!isUtf8(bytes.view()) || undeclared == bytes.view(), "UTF-8 stays as it is");
    require(isUtf8(undeclared), "an unknown charset is made UTF-8");
    return 0;
}
