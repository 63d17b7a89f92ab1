// Runs a command, with its own standard input and output, and writes to a file what
// it took: wall-clock seconds, processor seconds and peak memory in bytes.

#include <exception>
#include <fstream>
#include <iostream>

#include "bench/support/ChildProcess.h"

int main(int argc, char** argv) {
    if (argc < 3) {
        std::cerr << "usage: " << argv[0] << " FIGURES COMMAND...\n";
        return 2;
    }
    try {
        const bouncecheck::bench::ProcessUse use = bouncecheck::bench::runProcess(argv + 2);
        std::ofstream(argv[1]) << use.wall << '\t' << use.processor << '\t' << use.peakMemory
                               << '\n';
    } catch (const std::exception& error) {
        std::cerr << argv[0] << ": " << error.what() << '\n';
        return 1;
    }
    return 0;
}
