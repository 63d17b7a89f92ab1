#include <fstream>
#include <iostream>
#include <string>
#include <utility>

#include "pages/Completions.h"
#include "pages/LabelsPage.h"
#include "pages/ReasonsPage.h"

// Writes the pages that are made from the code's tables.
int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "usage: " << argv[0] << " FOLDER\n";
        return 2;
    }
    const std::pair<const char*, std::string (*)()> pages[] = {
        {"labels.md", bouncecheck::labelsPage},
        {"reasons.md", bouncecheck::reasonsPage},
        {"completions/bouncecheck.bash", bouncecheck::bashCompletion},
        {"completions/_bouncecheck", bouncecheck::zshCompletion},
        {"completions/bouncecheck.fish", bouncecheck::fishCompletion},
    };
    for (const auto& [name, write] : pages) {
        const std::string file = std::string(argv[1]) + "/" + name;
        std::ofstream page(file, std::ios::binary);
        if (!(page << write() << std::flush)) {
            std::cerr << argv[0] << ": " << file << " could not be written\n";
            return 1;
        }
    }
    return 0;
}
