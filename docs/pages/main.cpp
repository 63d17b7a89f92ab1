#include <fstream>
#include <iostream>
#include <string>

#include "pages/MadePages.h"

// Writes the pages that are made from the code's tables.
int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "usage: " << argv[0] << " FOLDER\n";
        return 2;
    }
    for (const bouncecheck::MadePage& made : bouncecheck::madePages()) {
        const std::string file = std::string(argv[1]) + "/" + made.file;
        std::ofstream page(file, std::ios::binary);
        if (!(page << made.text << std::flush)) {
            std::cerr << argv[0] << ": " << file << " could not be written\n";
            return 1;
        }
    }
    return 0;
}
