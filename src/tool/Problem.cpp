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

void begin(std::ostream& err, std::string_view text) {
    err << "bouncecheck: ";
    print(err, text);
}

void finish(std::ostream& err, std::string_view problem) {
    err << ": ";
    print(err, problem);
    err << '\n';
}

}  // namespace

void reportProblem(std::ostream& err, std::string_view problem) {
    begin(err, problem);
    err << '\n';
}

void reportProblem(std::ostream& err, std::string_view source, std::string_view problem) {
    begin(err, source);
    finish(err, problem);
}

void reportProblem(std::ostream& err, const MessagePlace& place, std::string_view problem) {
    begin(err, place.source);
    if (place.inMailbox) err << ':' << place.index;
    finish(err, problem);
}

}  // namespace bouncecheck
