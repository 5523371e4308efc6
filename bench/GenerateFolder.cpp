#include <cstdlib>
#include <iostream>

#include "LargeFolder.h"

// larder-large-folder FOLDER [STOCK [OWN]]: writes a made-up cook-book for measurements.
int main(int argc, char** argv) {
    if (argc < 2 || argc > 4) {
        std::cerr << "usage: larder-large-folder FOLDER [STOCK [OWN]]\n";
        return 2;
    }
    larder::bench::Size size;
    if (argc > 2) size.Stock = std::atoi(argv[2]);
    if (argc > 3) size.Own = std::atoi(argv[3]);
    try {
        larder::bench::WriteLargeFolder(argv[1], size);
    } catch (const std::exception& e) {
        std::cerr << "larder-large-folder: " << e.what() << '\n';
        return 1;
    }
    return 0;
}
