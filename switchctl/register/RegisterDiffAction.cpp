#include "switchctl/register/RegisterDiffAction.hpp"

#include <nlohmann/json.hpp>

#include "chips/ToolError.hpp"
#include "switchctl/register/RegisterDifference.hpp"
#include "switchctl/register/RegisterDump.hpp"

namespace switchctl::registers {

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
    RegisterDump const first = RegisterDump::fromFile(_first);
    RegisterDump const second = RegisterDump::fromFile(_second);
    std::string const chip = first.catalogue->getModel();
    if (second.catalogue->getModel() != chip) {
        throw ToolError(ExitStatus::badDocument, _second + ": a dump of a " + second.catalogue->getModel() +
                                                     ", but " + _first + " is one of a " + chip);
    }
    std::vector<RegisterDifference> const differences = RegisterDifference::between(first, second);
    nlohmann::ordered_json array = nlohmann::ordered_json::array();
    for (RegisterDifference const& difference : differences) {
        if (isJson()) {
            array.push_back(difference.toJson());
        } else {
            difference.print(out);
        }
    }
    if (isJson()) {
        Command::print(out, {{"differences", array}});
    }
    return differences.empty() ? ExitStatus::success : ExitStatus::registersDiffer;
}

} // namespace switchctl::registers
