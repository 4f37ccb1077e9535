#include "switchctl/statistics/LibraryText.hpp"

#include <sstream>

#include "chips/ToolError.hpp"
#include "marvell/MarvellMultiMdioManagementCommunications.hpp"
#include "marvell/MarvellPort.hpp"
#include "marvell/MarvellSwitch.hpp"
#include "vitesse/VitesseParallelCommunication.hpp"
#include "vitesse/VitessePort.hpp"
#include "vitesse/VitesseSwitch.hpp"

namespace switchctl::statistics {

namespace {

/// The switch that a port needs to belong to has no ports and accesses no chip: setting up a chip is the
/// first thing that a VitesseSwitch does.
constexpr unsigned short noPorts = 0;
constexpr bool noHardwareAccess = true;

/// Whatever they are, counters do not depend on them.
constexpr char const* portType = "external";
constexpr char const* portState = "forwarding";

} // namespace

LibraryText::LibraryText(board::BoardAccess& board) : _board(board) {}

void LibraryText::write(PortSelection::Port const& port, std::ostream& out) {
    // The table leaves its stream in hexadecimal.
    std::ostringstream table;
    std::string thrown;
    bool isRead = false;
    try {
        isRead =
            port.model == "vsc7390" ? dumpVitesse(port.address, table) : dumpMarvell(port.address, table);
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

bool LibraryText::dumpMarvell(chips::PortAddress const& port, std::ostream& out) {
    Application& application = _board.getApplication();
    MarvellSwitch owner(application, port.switchId, noPorts, noHardwareAccess);
    MarvellMultiMdioManagementCommunications communications(
        application, static_cast<unsigned short>(port.switchId), false);
    return MarvellPort(owner, communications, port.portId, portType, portState, nullptr).dumpStatistics(out);
}

bool LibraryText::dumpVitesse(chips::PortAddress const& port, std::ostream& out) {
    Application& application = _board.getApplication();
    VitesseSwitch owner(application, port.switchId, noPorts, noHardwareAccess);
    // It complains that it could not set the chip up, as it was not meant to.
    _board.getErrors().take();
    VitesseParallelCommunication communications(application, false);
    return VitessePort(owner, communications, port.portId, portType, portState, nullptr).dumpStatistics(out);
}

} // namespace switchctl::statistics
