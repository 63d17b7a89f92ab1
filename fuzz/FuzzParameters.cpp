// Structured values and media types.

#include <algorithm>

#include "fuzz/Input.h"
#include "fuzz/Require.h"
#include "mime/Charset.h"
#include "mime/MediaType.h"
#include "text/Ascii.h"
#include "text/Utf8.h"

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace bouncecheck;
    using namespace bouncecheck::fuzz;
    const ExactBytes exact(undeclaredToUtf8(std::string(Input(data, size).rest())));
    const ParameterizedValue value(exact.view());
    for (const char* name : {"boundary", "charset", "filename", "report-type"}) {
        value.parameter(name);
    }

    const MediaType type(exact.view(), "x-default/y");
    const std::size_t slash = type.name().find('/');
    require(slash != std::string::npos && slash > 0 && slash + 1 < type.name().size(),
            "a media type has two names");
    require(type.isOf(type.name().substr(0, slash)), "a media type is of its type");
    require(isUtf8(type.name()), "a media type is UTF-8");
    require(type.boundary() == value.parameter("boundary"),
            "a media type has the boundary of its value");
    return 0;
}
