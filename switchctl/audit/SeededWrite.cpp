#include "switchctl/audit/SeededWrite.hpp"

#include "switchctl/registers/CommandError.hpp"
#include "switchctl/registers/NumberText.hpp"
#include "switchctl/registers/RegisterAssignment.hpp"

namespace switchctl::audit {

void SeededWrite::make(std::string const& text, plan::ModelBringUp const& bringUp, AuditedBoard& board) {
    std::size_t const slash = text.find('/');
    auto const switchId = NumberText::parse(text.substr(0, slash));
    if (slash == std::string::npos || !switchId) {
        throw CommandError(ExitStatus::usage, "\"" + text + "\": not of the form SWITCH/LOCATION=VALUE");
    }
    std::string const model = bringUp.getModel(*switchId);
    if (model.empty()) {
        throw CommandError(ExitStatus::usage, "\"" + text + "\": " + bringUp.getPath() + " has no switch " +
                                                  std::to_string(*switchId));
    }
    ChipCatalogue const catalogue(model);
    auto const assignment = RegisterAssignment::parse(catalogue, text.substr(slash + 1), false);
    auto const transport = board.connect(*switchId, model);
    RegisterLocation const& location = assignment.getLocation();
    std::uint32_t const before = assignment.isPartial() ? transport->read(location) : 0;
    transport->write(location, assignment.apply(before));
}

} // namespace switchctl::audit
