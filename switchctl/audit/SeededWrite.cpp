#include "switchctl/audit/SeededWrite.hpp"

#include "chips/NumberText.hpp"
#include "chips/RegisterAssignment.hpp"
#include "chips/ToolError.hpp"

namespace switchctl::audit {

void SeededWrite::make(std::string const& text, board::ModelBringUp const& bringUp,
                       board::BoardAccess& board) {
    std::size_t const slash = text.find('/');
    auto const switchId = chips::NumberText::parse(text.substr(0, slash));
    if (slash == std::string::npos || !switchId) {
        throw chips::ToolError(chips::ExitStatus::usage,
                               "\"" + text + "\": not of the form SWITCH/LOCATION=VALUE");
    }
    std::string const model = bringUp.getModel(*switchId);
    if (model.empty()) {
        throw chips::ToolError(chips::ExitStatus::usage, "\"" + text + "\": " + bringUp.getPath() +
                                                             " has no switch " + std::to_string(*switchId));
    }
    chips::ChipCatalogue const catalogue(model);
    auto const assignment = chips::RegisterAssignment::parse(catalogue, text.substr(slash + 1), false);
    auto const transport = board.connect(*switchId, model);
    chips::RegisterLocation const& location = assignment.getLocation();
    std::uint32_t const before = assignment.isPartial() ? transport->read(location) : 0;
    transport->write(location, assignment.apply(before));
}

} // namespace switchctl::audit
