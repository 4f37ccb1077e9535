#include "switchctl/statistics/LibraryText.hpp"

#include <sstream>

#include "chips/ChipKinds.hpp"
#include "chips/ToolError.hpp"

namespace switchctl::statistics {

void LibraryText::write(board::PortSelection::Port const& port, std::ostream& out) {
    // The table leaves its stream in hexadecimal.
    std::ostringstream table;
    std::string thrown;
    bool isRead = false;
    try {
        isRead = chips::ChipKinds::get(port.model, "statistics")
                     .usePort({_board.getApplication(), _board.getErrors(), port.address.switchId},
                              {port.address.portId}, port.address.portId,
                              [&](ManagedSwitchPort& object) { return object.dumpStatistics(table); });
    } catch (char const* text) {
        thrown = text;
    }
    // Of counters that could not be read the table has zeros.
    std::string reason = _board.getErrors().take();
    if (isRead && reason.empty() && thrown.empty()) {
        out << table.str();
        return;
    }
    reason += (reason.empty() || thrown.empty() ? "" : "; ") + thrown;
    throw chips::ToolError(chips::ExitStatus::noStatistics,
                           reason.empty() ? "a register could not be read" : reason);
}

} // namespace switchctl::statistics
