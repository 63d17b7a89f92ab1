// HTML as text.

#include "fuzz/Input.h"
#include "fuzz/Require.h"
#include "mime/Charset.h"
#include "mime/HtmlText.h"
#include "text/Utf8.h"

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace bouncecheck;
    using namespace bouncecheck::fuzz;
    const ExactBytes html(undeclaredToUtf8(std::string(Input(data, size).rest())));
    const std::string text = htmlToText(html.view());
    require(isUtf8(text), "the text of HTML is UTF-8");
    require(text.size() <= 2 * html.view().size() + 2, "the text is not much longer than the HTML");
    return 0;
}
