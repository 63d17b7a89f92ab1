#include <fstream>
#include <iostream>

#include "pages/LabelsPage.h"

// Writes the page that is made from the code's tables.
int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "usage: " << argv[0] << " FILE\n";
        return 2;
    }
    std::ofstream page(argv[1], std::ios::binary);
    if (!(page << bouncecheck::labelsPage() << std::flush)) {
        std::cerr << argv[0] << ": " << argv[1] << " could not be written\n";
        return 1;
    }
    return 0;
}
