// Counts what the library does on the simulated board of a document, operation by operation, and prints it as
// JSON: counts BOARD.xml [LIST.txt | --record]. With a list of accesses, also says where the library begins
// to do something else. With --record, prints a list instead.

#include <algorithm>
#include <iostream>
#include <iterator>
#include <nlohmann/json.hpp>
#include <string>

#include "benchmarks/AccessList.hpp"
#include "benchmarks/LibraryRun.hpp"
#include "benchmarks/OperationCounts.hpp"
#include "reference_host/XmlDocument.hpp"

namespace {

using benchmarks::AccessList;
using benchmarks::OperationCounts;
using nlohmann::ordered_json;

ordered_json toJson(OperationCounts const& counts) {
    return {{"name", counts.name},
            {"accesses", counts.accesses.size()},
            {"chipRegisters", counts.chipRegisters},
            {"mdioFrames", counts.mdioFrames},
            {"busCycles", counts.busCycles()},
            {"busNanoseconds", counts.busNanoseconds},
            {"elapsedNanoseconds", counts.elapsedNanoseconds},
            {"idleLoops", counts.idleLoops}};
}

} // namespace

int main(int argc, char** argv) try {
    if (argc != 2 && argc != 3) {
        std::cerr << "counts BOARD.xml [LIST.txt | --record]\n";
        return 2;
    }
    std::string const option = argc == 3 ? argv[2] : "";
    auto const document = reference_host::XmlDocument::fromFile(argv[1]);
    benchmarks::LibraryRun library(*document);
    auto const counts = OperationCounts::of(library);
    auto const made = OperationCounts::accessesOf(counts);
    if (option == "--record") {
        std::cout << AccessList::textOf(made);
        return 0;
    }
    ordered_json operations = ordered_json::array();
    std::transform(counts.begin(), counts.end(), std::back_inserter(operations), toJson);
    std::string const difference =
        option.empty() ? "" : AccessList::differenceOf(made, AccessList::readFile(option));
    std::cout << ordered_json{{"operations", operations}, {"difference", difference}}.dump(2) << '\n';
} catch (std::exception const& error) {
    std::cerr << "counts: " << error.what() << '\n';
    return 2;
}
