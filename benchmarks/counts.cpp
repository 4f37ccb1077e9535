// Counts what the library does on the simulated board of a document, operation by operation, beside what is
// required, and prints both as JSON: counts BOARD.xml. The exit status is 1 when they differ.

#include <algorithm>
#include <cstdio>
#include <iostream>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "benchmarks/LibraryRun.hpp"
#include "benchmarks/OperationCounts.hpp"
#include "benchmarks/RequiredRun.hpp"
#include "reference_host/XmlDocument.hpp"

namespace {

using benchmarks::AccessRecorder;
using benchmarks::OperationCounts;
using nlohmann::ordered_json;

template <typename Run> std::vector<OperationCounts> countsOf(std::string const& path) {
    auto const document = reference_host::XmlDocument::fromFile(path);
    Run run(*document);
    return OperationCounts::of(run);
}

ordered_json toJson(OperationCounts const& counts) {
    return {{"accesses", counts.accesses.size()},
            {"chipRegisters", counts.chipRegisters},
            {"mdioFrames", counts.mdioFrames},
            {"busCycles", counts.busCycles()},
            {"busNanoseconds", counts.busNanoseconds},
            {"elapsedNanoseconds", counts.elapsedNanoseconds},
            {"idleLoops", counts.idleLoops}};
}

std::string textOf(AccessRecorder::Access const& access) {
    constexpr int longest = 48;
    char text[longest];
    std::snprintf(text, sizeof text, "%s 0x%08x 0x%08x", access.isWrite ? "write" : "read",
                  access.physicalAddress, static_cast<unsigned>(access.value));
    return text;
}

/// The first access of two sequences that is not the same, or null.
ordered_json differenceOf(OperationCounts const& made, OperationCounts const& required) {
    auto const [ours, theirs] = std::mismatch(made.accesses.begin(), made.accesses.end(),
                                              required.accesses.begin(), required.accesses.end());
    if (ours == made.accesses.end() && theirs == required.accesses.end()) {
        return nullptr;
    }
    return {{"number", ours - made.accesses.begin() + 1},
            {"made", ours == made.accesses.end() ? "none" : textOf(*ours)},
            {"required", theirs == required.accesses.end() ? "none" : textOf(*theirs)}};
}

} // namespace

int main(int argc, char** argv) try {
    if (argc != 2) {
        std::cerr << "counts BOARD.xml\n";
        return 2;
    }
    auto const made = countsOf<benchmarks::LibraryRun>(argv[1]);
    auto const required = countsOf<benchmarks::RequiredRun>(argv[1]);
    ordered_json operations = ordered_json::array();
    bool isEqual = made.size() == required.size();
    for (std::size_t i = 0; i < std::min(made.size(), required.size()); ++i) {
        ordered_json const difference = differenceOf(made[i], required[i]);
        isEqual = isEqual && difference.is_null() && made[i].name == required[i].name;
        operations.push_back({{"name", made[i].name},
                              {"made", toJson(made[i])},
                              {"required", toJson(required[i])},
                              {"firstDifference", difference}});
    }
    std::cout << ordered_json{{"operations", operations}}.dump(2) << '\n';
    return isEqual ? 0 : 1;
} catch (std::exception const& error) {
    std::cerr << "counts: " << error.what() << '\n';
    return 2;
}
