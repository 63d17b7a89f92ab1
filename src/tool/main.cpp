#include <iostream>

#include "tool/Run.h"

int main(int argc, char** argv) {
    std::ios::sync_with_stdio(false);
    return bouncecheck::runTool(argc, argv, std::cout, std::cerr, bouncecheck::standardTerminal());
}
