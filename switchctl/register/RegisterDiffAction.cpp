#include "switchctl/register/RegisterDiffAction.hpp"

#include <nlohmann/json.hpp>

#include "board/dump/RegisterDump.hpp"
#include "chips/ToolError.hpp"
#include "switchctl/register/EntryDifference.hpp"
#include "switchctl/register/RegisterDifference.hpp"

namespace switchctl::registers {

namespace {

template <typename Difference> nlohmann::ordered_json arrayOf(std::vector<Difference> const& differences) {
    nlohmann::ordered_json array = nlohmann::ordered_json::array();
    for (Difference const& difference : differences) {
        array.push_back(difference.toJson());
    }
    return array;
}

template <typename Difference> void printAll(std::ostream& out, std::vector<Difference> const& differences) {
    for (Difference const& difference : differences) {
        difference.print(out);
    }
}

} // namespace

RegisterDiffAction::RegisterDiffAction()
    : RegisterAction("diff", "Compare two dumps; names registers and fields that differ") {}

void RegisterDiffAction::declare(Arguments& arguments) {
    arguments.option("A", _first, "A dump, text or JSON").required();
    arguments.option("B", _second, "Another one").required();
    addJson(arguments);
}

std::string RegisterDiffAction::getHelp() const {
    return "Example:\n"
           "  switchctl register diff fresh.txt up.txt\n"
           "\n";
}

ExitStatus RegisterDiffAction::perform(std::ostream& out, std::ostream& /*errors*/) const {
    auto const first = RegisterDump::fromFile(_first);
    auto const second = RegisterDump::fromFile(_second);
    std::string const chip = first.catalogue->getModel();
    if (second.catalogue->getModel() != chip) {
        throw ToolError(ExitStatus::badDocument, _second + ": a dump of a " + second.catalogue->getModel() +
                                                     ", but " + _first + " is one of a " + chip);
    }
    std::vector<RegisterDifference> const registers = RegisterDifference::between(first, second);
    std::vector<EntryDifference> const entries = EntryDifference::between(first, second);
    if (isJson()) {
        Command::print(out, {{"differences", arrayOf(registers)}, {"tables", arrayOf(entries)}});
    } else {
        printAll(out, registers);
        printAll(out, entries);
    }
    return registers.empty() && entries.empty() ? ExitStatus::success : ExitStatus::registersDiffer;
}

} // namespace switchctl::registers
