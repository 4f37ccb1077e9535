#include "switchctl/register/RegisterDiffAction.hpp"

#include "chips/ToolError.hpp"
#include "switchctl/register/RegisterDifference.hpp"
#include "switchctl/register/RegisterDump.hpp"

namespace switchctl::registers {

RegisterDiffAction::RegisterDiffAction(CLI::App& command)
    : RegisterAction(command, "diff", "Compare two dumps; names registers and fields that differ") {
    getApp().add_option("A", _first, "A dump, text or JSON")->required();
    getApp().add_option("B", _second, "Another one")->required();
    getApp().add_flag("--json", _json, "Print JSON");
    getApp().footer("Example:\n"
                    "  switchctl register diff fresh.txt up.txt\n"
                    "\n" +
                    chips::registerExitStatusHelp());
}

chips::ExitStatus RegisterDiffAction::run(std::ostream& out, std::ostream& /*errors*/) const {
    RegisterDump const first = RegisterDump::fromFile(_first);
    RegisterDump const second = RegisterDump::fromFile(_second);
    std::string const chip = first.catalogue->getModel();
    if (second.catalogue->getModel() != chip) {
        throw chips::ToolError(chips::ExitStatus::badDocument, _second + ": a dump of a " +
                                                                   second.catalogue->getModel() + ", but " +
                                                                   _first + " is one of a " + chip);
    }
    std::vector<RegisterDifference> const differences = RegisterDifference::between(first, second);
    nlohmann::ordered_json array = nlohmann::ordered_json::array();
    for (RegisterDifference const& difference : differences) {
        if (_json) {
            array.push_back(difference.toJson());
        } else {
            difference.print(out);
        }
    }
    if (_json) {
        out << array.dump(2) << '\n';
    }
    return differences.empty() ? chips::ExitStatus::success : chips::ExitStatus::registersDiffer;
}

} // namespace switchctl::registers
