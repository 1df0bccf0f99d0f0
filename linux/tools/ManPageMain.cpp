// quorvane_manpage: writes quorvane(1) to standard output, for the build to install.
#include "cli/ManPage.h"

#include <iostream>

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "usage: quorvane_manpage VERSION\n";
        return 2;
    }
    std::cout << quorvane::ManPage::render(argv[1]);
    return 0;
}
