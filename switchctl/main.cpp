#include <iostream>

#include "switchctl/Program.hpp"

int main(int argc, char** argv) {
    return static_cast<int>(switchctl::Program().run({argv + 1, argv + argc}, std::cout, std::cerr));
}
