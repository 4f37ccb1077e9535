#include "tests/traffic/StartingBoard.hpp"

#include "board/AccessReplay.hpp"

using simulation::AccessLog;
using simulation::EthernetFrame;
using simulation::SimulatedBoard;

StartingBoard::StartingBoard(std::string const& text, SimulatedBoard::Options const& options)
    : _document(reference_host::XmlDocument::fromText(text, "board.xml")), _board(*_document, options) {
    for (unsigned const id : _board.getSwitchIds()) {
        for (unsigned port = 0; port < _board.getChip(id).getForwarding()->getNumberOfPorts(); ++port) {
            _board.getChip(id).plugLink(port, 1000, true);
        }
    }
}

void StartingBoard::start(Watcher const& afterEachWrite) {
    board::ModelBringUp bringUp(*_document, "board.xml",
                                [this](SimulatedBoard& other) { board::AccessReplay(other).run(_past); });
    auto const accesses = bringUp.getBoard().getLog().getEntries();
    board::AccessReplay(_board).run(accesses, [&](AccessLog::Entry const&) {
        if (afterEachWrite) {
            afterEachWrite();
        }
    });
    _past.insert(_past.end(), accesses.begin(), accesses.end());
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
