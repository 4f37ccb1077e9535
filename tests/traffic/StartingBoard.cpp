#include "tests/traffic/StartingBoard.hpp"

using simulation::AccessLog;
using simulation::EthernetFrame;
using simulation::SimulatedBoard;

StartingBoard::StartingBoard(std::string const& text, SimulatedBoard::Options const& options)
    : _document(reference_host::XmlDocument::fromText(text, "board.xml")),
      _accesses(board::ModelBringUp(*_document, "board.xml").getBoard().getLog().getEntries()),
      _board(*_document, options) {
    for (unsigned const id : _board.getSwitchIds()) {
        for (unsigned port = 0; port < _board.getChip(id).getForwarding()->getNumberOfPorts(); ++port) {
            _board.getChip(id).plugLink(port, 1000, true);
        }
    }
}

void StartingBoard::start(Watcher const& afterEachWrite) {
    for (AccessLog::Entry const& access : _accesses) {
        unsigned const id = static_cast<unsigned>(std::stoul(access.chip.substr(access.chip.find(' '))));
        // The command's own write has reached what is behind a command unit already.
        if (access.identity->kind == simulation::UnitKind::phy ||
            access.identity->kind == simulation::UnitKind::unknown) {
            continue;
        }
        simulation::RegisterFile& unit = _board.getChip(id).getUnit(access.unit);
        if (access.kind == AccessLog::Kind::read) {
            unit.read(access.address, access.transfer);
        } else {
            unit.write(access.address, access.value, access.transfer);
            if (afterEachWrite) {
                afterEachWrite();
            }
        }
    }
}

std::uint32_t StartingBoard::reached(unsigned switchId, unsigned port, std::optional<unsigned> vid,
                                     EthernetFrame::Address destination) {
    constexpr EthernetFrame::Address station = 0x020000000001;
    constexpr unsigned localExperiment = 0x88B5;
    EthernetFrame const frame = EthernetFrame::make(destination, station, localExperiment);
    return _board.getChip(switchId)
        .getForwarding()
        ->decide(port, vid ? frame.withTagPushed({*vid}) : frame)
        .getPorts();
}
