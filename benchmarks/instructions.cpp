// Brings the board of a document up and does single operations on it, for what counts instructions:
// instructions library|assembly|LIST.txt BOARD.xml [bring-up]. "assembly" is the library without access to
// any chip; a list of accesses is replayed. With "bring-up", nothing else is done. Prints the operations'
// names, in the order of callgrind's dumps.

#if __has_include(<valgrind/callgrind.h>)
#include <valgrind/callgrind.h>
#else
// Counted as a whole.
#define CALLGRIND_ZERO_STATS
#define CALLGRIND_TOGGLE_COLLECT
#define CALLGRIND_DUMP_STATS_AT(name)
#endif

#include <cstdlib>
#include <fstream>
#include <iostream>
#include <memory>
#include <string>

#include "benchmarks/LibraryRun.hpp"
#include "benchmarks/OperationCounts.hpp"
#include "benchmarks/ReplayRun.hpp"
#include "reference_host/XmlDocument.hpp"

namespace {

using benchmarks::MeasuredRun;

bool isLibrary(std::string const& who) {
    return who == "library" || who == "assembly";
}

std::unique_ptr<MeasuredRun> makeRun(std::string const& who, Xml& document) {
    using benchmarks::LibraryRun;
    if (!isLibrary(who)) {
        return std::make_unique<benchmarks::ReplayRun>(document, benchmarks::AccessList::readFile(who));
    }
    return std::make_unique<LibraryRun>(document, who == "assembly" ? LibraryRun::Hardware::leftAlone
                                                                    : LibraryRun::Hardware::accessed);
}

void tell(MeasuredRun::Operation const& operation) {
    CALLGRIND_DUMP_STATS_AT(operation.name.c_str());
    std::cout << operation.name << '\n';
}

/// Has what this thread does counted.
void measure(MeasuredRun::Operation const& operation) {
    CALLGRIND_TOGGLE_COLLECT;
    operation.run();
    CALLGRIND_TOGGLE_COLLECT;
    tell(operation);
}

/// The library brings a board up on a thread of its own, and callgrind has been told the function to count.
/// What the threads have to say to each other before is not the same each time.
void bringUp(std::string const& who, MeasuredRun& run) {
    MeasuredRun::Operation const operation{benchmarks::OperationCounts::bringUp, [&run] { run.bringUp(); }};
    if (isLibrary(who)) {
        operation.run();
        tell(operation);
    } else {
        measure(operation);
    }
}

/// Where the code is that is counted, for emulators that know of addresses only.
void printPlaces() {
    std::ifstream maps("/proc/self/maps");
    for (std::string line; std::getline(maps, line);) {
        if (line.find(".so") != std::string::npos) {
            std::cout << line << '\n';
        }
    }
}

} // namespace

int main(int argc, char** argv) try {
    if (argc < 3) {
        std::cerr << "instructions library|assembly|LIST.txt BOARD.xml [bring-up]\n";
        return 2;
    }
    auto const document = reference_host::XmlDocument::fromFile(argv[2]);
    std::unique_ptr<MeasuredRun> const run = makeRun(argv[1], *document);
    CALLGRIND_ZERO_STATS;
    bringUp(argv[1], *run);
    if (argc > 3) {
        printPlaces();
        // What happens from here on is not the same each time.
        std::cout.flush();
        std::_Exit(0);
    }
    for (MeasuredRun::Operation const& operation : run->getOperations()) {
        measure(operation);
    }
} catch (std::exception const& error) {
    std::cerr << "instructions: " << error.what() << '\n';
    return 2;
}
