// Encoded words in a line of header text.

#include "fuzz/Input.h"
#include "fuzz/Require.h"
#include "mime/Charset.h"
#include "mime/EncodedWords.h"
#include "text/Search.h"
#include "text/Utf8.h"

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace bouncecheck;
    using namespace bouncecheck::fuzz;
    const ExactBytes exact(undeclaredToUtf8(std::string(Input(data, size).rest())));
    const std::string_view text = exact.view();
    const std::string decoded = decodeEncodedWords(text);
    require(isUtf8(decoded), "decoded words are UTF-8");
    require(contains(text, "=?") || decoded == text, "text without words stays as it is");

    const std::size_t length = encodedWordLength(text);
    require(length <= text.size(), "a word ends in its text");
    const std::string_view word = text.substr(0, length);
    require(word.empty() || (word.starts_with("=?") && word.ends_with("?=")),
            "a word has its signs");
    require(encodedWordLength(word) == length, "a word is one without what follows it");
    return 0;
}
