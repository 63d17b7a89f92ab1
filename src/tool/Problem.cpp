#include "tool/Problem.h"

#include <new>
#include <ostream>

#include "text/Ascii.h"
#include "tool/output/TerminalText.h"

namespace bouncecheck {
namespace {

void print(std::ostream& err, std::string_view text) {
    try {
        err << printable(text);
    } catch (const std::bad_alloc&) {
        for (const char c : text) err.put(ascii::isControl(c) || !ascii::isAscii(c) ? '?' : c);
    }
}

}  // namespace

void reportProblem(std::ostream& err, std::string_view problem) {
    err << "bouncecheck: ";
    print(err, problem);
    err << '\n';
}

void reportProblem(std::ostream& err, std::string_view source, std::uint64_t index,
                   std::string_view problem) {
    err << "bouncecheck: ";
    print(err, source);
    if (index > 0) err << ':' << index;
    err << ": ";
    print(err, problem);
    err << '\n';
}

}  // namespace bouncecheck
