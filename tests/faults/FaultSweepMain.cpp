// Does to boards, chips, a serial line and a manager's memory everything that can go wrong, one thing at a
// time. scripts/reliability/fault-sweep starts it once for each subject and puts the reports together.

#include <CLI/CLI.hpp>
#include <fstream>
#include <iostream>
#include <sstream>

#include "tests/faults/BringUpFaults.hpp"
#include "tests/faults/DiagnosticsFaults.hpp"
#include "tests/faults/MemoryFaults.hpp"
#include "tests/faults/OperationFaults.hpp"
#include "tests/faults/SerialFaults.hpp"
#include "tests/faults/SweepReport.hpp"

using namespace fault_test;

namespace {

struct Arguments {
    std::string subject;
    std::string document;
    std::string port = "0.1";
    std::uint64_t first = 1;
    std::uint64_t stride = 1;
    std::string json;
    std::vector<std::string> reports;
};

std::string nameOfFile(std::string const& path) {
    return path.substr(path.rfind('/') + 1);
}

SweepReport sweepOf(FaultSubject& subject, std::string const& name, Arguments const& arguments) {
    SweepReport report{name, "bus accesses", subject.getAccesses(), arguments.stride, {}};
    sweep(subject, {arguments.first, arguments.stride}, report.table);
    return report;
}

SweepReport sweepOfOperations(OperationFaults::Family family, std::vector<ChipOperation> const& operations,
                              std::string const& name, Arguments const& arguments) {
    SweepReport report{name,
                       "bus accesses of " + std::to_string(operations.size()) + " operations",
                       0,
                       arguments.stride,
                       {}};
    for (ChipOperation const& operation : operations) {
        OperationFaults faults(family, operation);
        report.size += faults.getAccesses();
        sweep(faults, {arguments.first, arguments.stride}, report.table);
    }
    return report;
}

SweepReport sweepOfMemory(Arguments const& arguments, chips::PortAddress const& port) {
    MemoryFaults faults(arguments.document, port.switchId, port.portId);
    SweepReport report{"memory, " + nameOfFile(arguments.document),
                       "allocations",
                       faults.getAllocations(),
                       arguments.stride,
                       {}};
    faults.sweep({arguments.first, arguments.stride}, report.table);
    return report;
}

SweepReport sweepOfSerialLine(Arguments const& arguments) {
    SerialFaults faults;
    SweepReport report{"serial line", "characters", faults.getCharacters(), arguments.stride, {}};
    faults.sweep({arguments.first, arguments.stride}, report.table);
    return report;
}

SweepReport sweepOf(Arguments const& arguments) {
    chips::PortAddress const port =
        chips::PortAddress::fromText(arguments.port).value_or(chips::PortAddress());
    if (arguments.subject == "bring-up") {
        BringUpFaults faults(arguments.document);
        return sweepOf(faults, "bring-up, " + nameOfFile(arguments.document), arguments);
    }
    if (arguments.subject == "diagnostics") {
        DiagnosticsFaults faults(arguments.document, port);
        return sweepOf(faults, "diagnostics, " + nameOfFile(arguments.document), arguments);
    }
    if (arguments.subject == "memory") {
        return sweepOfMemory(arguments, port);
    }
    if (arguments.subject == "marvell") {
        return sweepOfOperations(OperationFaults::Family::marvell, marvellOperations(), "88E6096", arguments);
    }
    if (arguments.subject == "vitesse") {
        return sweepOfOperations(OperationFaults::Family::vitesse, vitesseOperations(), "VSC7390", arguments);
    }
    return sweepOfSerialLine(arguments);
}

std::vector<SweepReport> readReports(std::vector<std::string> const& paths) {
    std::vector<SweepReport> all;
    for (std::string const& path : paths) {
        std::ifstream file(path);
        std::stringstream text;
        text << file.rdbuf();
        for (SweepReport const& report : fromJson(text.str())) {
            all.push_back(report);
        }
    }
    return all;
}

int finish(std::vector<SweepReport> const& reports, std::string const& json) {
    print(std::cout, reports);
    if (!json.empty()) {
        std::ofstream file(json);
        file << asJson(reports);
        if (!file.flush()) {
            std::cerr << json << ": cannot be written\n";
            return EXIT_FAILURE;
        }
    }
    return isAnythingWrong(reports) ? EXIT_FAILURE : EXIT_SUCCESS;
}

} // namespace

int main(int argc, char** argv) {
    Arguments arguments;
    CLI::App app("Everything that can go wrong, one thing at a time");
    app.require_subcommand(1);
    auto* const run = app.add_subcommand("run", "Do it to one subject");
    run->add_option("subject", arguments.subject, "What it is done to")
        ->required()
        ->check(CLI::IsMember({"bring-up", "diagnostics", "memory", "marvell", "vitesse", "serial"}));
    run->add_option("--document", arguments.document, "Of the board that is brought up")
        ->check(CLI::ExistingFile);
    run->add_option("--port", arguments.port, "Whose diagnostics are asked for");
    run->add_option("--first", arguments.first, "The first access that is hit, from 1")
        ->check(CLI::PositiveNumber);
    run->add_option("--stride", arguments.stride, "Every so many accesses are hit")
        ->check(CLI::PositiveNumber);
    run->add_option("--json", arguments.json, "Where to write the report for other programs");
    auto* const merge = app.add_subcommand("merge", "Put reports together");
    merge->add_option("reports", arguments.reports, "JSON files of runs")
        ->required()
        ->check(CLI::ExistingFile);
    merge->add_option("--json", arguments.json, "Where to write them for other programs");
    CLI11_PARSE(app, argc, argv);
    try {
        return finish(run->parsed() ? std::vector<SweepReport>{sweepOf(arguments)}
                                    : readReports(arguments.reports),
                      arguments.json);
    } catch (std::exception const& error) {
        std::cerr << error.what() << '\n';
        return EXIT_FAILURE;
    }
}
