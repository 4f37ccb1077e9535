#include <iostream>

#include "switchctl/Program.hpp"
#include "switchctl/terminal/StandardStreams.hpp"

int main(int argc, char** argv) {
    switchctl::StandardStreams::keepClosed();
    return static_cast<int>(switchctl::Program().run({argv + 1, argv + argc}, std::cout, std::cerr));
}
