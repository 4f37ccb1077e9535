#include "switchctl/faults/FaultsCommand.hpp"

#include <fmt/format.h>

#include <nlohmann/json.hpp>

#include "board/faults/FaultKind.hpp"

namespace switchctl::faults {

using board::FaultKind;

namespace {

using Argument = FaultKind::Argument;

/// What is typed.
std::string formOf(FaultKind const& kind) {
    if (kind.argument == Argument::none) {
        return kind.name;
    }
    return kind.name + (kind.needsArgument() ? ":N" : "[:N]");
}

nlohmann::ordered_json jsonOf(FaultKind const& kind) {
    return {{"name", kind.name},
            {"effect", kind.effect},
            {"number", kind.argument == Argument::none ? nlohmann::ordered_json(nullptr)
                                                       : nlohmann::ordered_json(kind.explainArgument())},
            {"needsNumber", kind.needsArgument()},
            {"serialLine", kind.isOfSerialLine}};
}

} // namespace

FaultsCommand::FaultsCommand() : Command("faults", "List what can go wrong with a simulated board") {}

void FaultsCommand::declare(Arguments& arguments) {
    addJson(arguments);
}

std::string FaultsCommand::getHelp() const {
    return "--fault KIND[:N] goes with --simulate, and may be repeated. A board that is brought up first, as "
           "for\n"
           "audit, is well until then: the fault strikes what the command itself does. Of bring-up it "
           "strikes\n"
           "all. Accesses are those of 32 bits to the windows of the board.\n"
           "\n"
           "Examples:\n"
           "  switchctl faults\n"
           "  switchctl doctor board.xml --simulate --fault unplugged:0\n"
           "  switchctl audit board.xml --simulate --fault all-ones:500\n"
           "  switchctl bring-up board.xml --simulate --fault mdio-stuck:40\n"
           "\n";
}

std::vector<Command::StatusLine> FaultsCommand::getStatuses() const {
    return {{ExitStatus::success, "they were listed"}, ExitStatus::usage};
}

ExitStatus FaultsCommand::perform(std::ostream& out, std::ostream& /*errors*/) const {
    nlohmann::ordered_json json = nlohmann::ordered_json::array();
    std::string lines;
    for (FaultKind const& kind : FaultKind::getAll()) {
        lines += fmt::format("{:<22} {}\n", formOf(kind), kind.effect);
        if (kind.argument != Argument::none) {
            lines += fmt::format("{:<22} N: {}\n", "", kind.explainArgument());
        }
        json.push_back(jsonOf(kind));
    }
    if (isJson()) {
        print(out, {{"faults", json}});
    } else {
        out << lines;
    }
    return ExitStatus::success;
}

} // namespace switchctl::faults
