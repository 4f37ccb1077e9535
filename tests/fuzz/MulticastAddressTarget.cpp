#include "tests/fuzz/MulticastAddressTarget.hpp"

#include <map>
#include <sstream>
#include <stdexcept>

#include "board/ClockAdoption.hpp"
#include "board/SimulatedMemory.hpp"
#include "reference_host/HostApplication.hpp"
#include "reference_host/XmlDocument.hpp"
#include "simulation/SimulatedBoard.hpp"
#include "tests/support/RecordingLog.hpp"
#include "vitesse/VitesseSwitch.hpp"

namespace fuzz {

namespace {

constexpr unsigned short numberOfPorts = 8;
constexpr unsigned short vlan = 5;

class Bench {
public:
    void writeAndLookUp(std::string const& address, unsigned port) {
        std::map<unsigned int, ManagedSwitchPort*> const members{{port, _switch.getPort(port)}};
        if (!_switch.writeMulticastGroup(address, vlan, members)) {
            throw std::logic_error("a group was not written, on a chip without a fault: " + address);
        }
        std::map<unsigned int, ManagedSwitchPort*> found;
        if (!_switch.readMulticastGroup(address, vlan, found) || found != members) {
            throw std::logic_error("a group that was written is not there: " + address);
        }
    }

private:
    std::unique_ptr<reference_host::XmlDocument> _document = reference_host::XmlDocument::fromText(
        "<switches><switch id='0' switchModel='vsc7390'/></switches>", "board");
    simulation::SimulatedBoard _board{*_document};
    board::ClockAdoption _clock{_board.getClock()};
    board::SimulatedMemory _memory{_board};
    test_support::RecordingLog _log;
    reference_host::HostApplication _application{_log, _memory};
    VitesseSwitch _switch{_application, 0, numberOfPorts, false};
};

} // namespace

void MulticastAddressTarget::run(std::string const& input) {
    Bench bench;
    std::istringstream lines(input);
    std::string address;
    for (unsigned line = 0; std::getline(lines, address); ++line) {
        bench.writeAndLookUp(address, line % numberOfPorts);
    }
}

} // namespace fuzz
