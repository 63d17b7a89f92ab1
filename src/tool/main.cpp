#include <fcntl.h>
#include <unistd.h>

#include <iostream>
#include <new>

#include "files/FdStream.h"
#include "tool/Run.h"

namespace {

/// Takes the place of standard streams that the caller has closed, so that no file that
/// is written gets their numbers and what is meant for them. Using them still fails.
void fillStandardStreams() {
    for (const int fd : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (::fcntl(fd, F_GETFD) < 0) ::open("/dev/null", fd == STDIN_FILENO ? O_WRONLY : O_RDONLY);
    }
}

}  // namespace

int main(int argc, char** argv) {
    fillStandardStreams();
    try {
        bouncecheck::FdStream out(STDOUT_FILENO, "standard output");
        return bouncecheck::runTool(argc, argv, out, std::cerr, bouncecheck::standardTerminal());
    } catch (const std::bad_alloc&) {
        std::cerr << "bouncecheck: not enough memory\n";
        return bouncecheck::EXIT_SOME_UNREADABLE;
    }
}
