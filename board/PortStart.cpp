#include "board/PortStart.hpp"

namespace board {

using chips::PortSettings;

PortStart::PortStart(BoardReading const& document, BoardAccess& board, PortSettings::Speed speed) {
    for (auto const& [switchId, owner] : document.getSwitches()) {
        for (auto const& [portId, port] : owner.ports) {
            if (port.portStatus == "forwarding" && portId < owner.portsOfChip()) {
                start(board, owner, {switchId, portId}, speed);
            }
        }
    }
}

std::vector<unsigned> PortStart::portsOf(BoardReading::Switch const& owner) {
    std::vector<unsigned> ports;
    for (auto const& entry : owner.ports) {
        if (entry.first < owner.portsOfChip()) {
            ports.push_back(entry.first);
        }
    }
    return ports;
}

void PortStart::start(BoardAccess& board, BoardReading::Switch const& owner, chips::PortAddress const& port,
                      PortSettings::Speed speed) {
    chips::ChipKind::Settings const& settings = owner.kind->getFacts().settings;
    bool wasUp = false;
    bool isUp = false;
    std::string reason;
    try {
        isUp = owner.kind->usePort({board.getApplication(), board.getErrors(), owner.id}, portsOf(owner),
                                   port.portId, [&](ManagedSwitchPort& object) {
                                       wasUp = object.portStatus() + std::size_t{1} == settings.states.size();
                                       return wasUp || PortSettings::start(object, settings, speed);
                                   });
    } catch (char const* text) {
        reason = text;
    }
    std::string const complaint = board.getErrors().take();
    reason += (reason.empty() || complaint.empty() ? "" : "; ") + complaint;
    if (!isUp || !reason.empty()) {
        _failures.push_back({port, reason.empty() ? "a register could not be read or written" : reason});
    } else {
        (wasUp ? _upBefore : _started).push_back(port);
    }
}

} // namespace board
