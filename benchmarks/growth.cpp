// Assembles a document without access to any chip and prints how long that took, in milliseconds, from the
// manager's start until the switches are ready: growth DOCUMENT.xml [RUNS]. Of several runs, the fastest.

#include <algorithm>
#include <cstdlib>
#include <ctime>
#include <iostream>
#include <limits>

#include "benchmarks/LibraryRun.hpp"
#include "reference_host/XmlDocument.hpp"

namespace {

/// By a clock that no simulated board moves.
double milliseconds() {
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC_RAW, &now);
    return static_cast<double>(now.tv_sec) * 1e3 + static_cast<double>(now.tv_nsec) / 1e6;
}

double assemble(char const* path) {
    auto const document = reference_host::XmlDocument::fromFile(path);
    benchmarks::LibraryRun library(*document, benchmarks::LibraryRun::Hardware::leftAlone);
    double const start = milliseconds();
    library.bringUp();
    return milliseconds() - start;
}

} // namespace

int main(int argc, char** argv) try {
    if (argc < 2) {
        std::cerr << "growth DOCUMENT.xml [RUNS]\n";
        return 2;
    }
    double fastest = std::numeric_limits<double>::max();
    int const runs = argc > 2 ? std::atoi(argv[2]) : 1;
    for (int run = 0; run < runs; ++run) {
        fastest = std::min(fastest, assemble(argv[1]));
    }
    std::cout << fastest << '\n';
} catch (std::exception const& error) {
    std::cerr << "growth: " << error.what() << '\n';
    return 2;
}
