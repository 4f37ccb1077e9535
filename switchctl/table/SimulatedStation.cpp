#include "switchctl/table/SimulatedStation.hpp"

#include <stdexcept>

#include "board/HardwareAddress.hpp"
#include "chips/NumberText.hpp"
#include "chips/ToolError.hpp"
#include "simulation/network/SimulatedNetwork.hpp"

namespace switchctl::table {

using simulation::EthernetFrame;

namespace {

constexpr unsigned highestVid = 4095;
constexpr std::uint64_t groupBit = 0x010000000000;
/// For experiments (IEEE 802, 9.2.3).
constexpr unsigned etherType = 0x88B5;

} // namespace

SimulatedStation::SimulatedStation(std::string const& text) : _text(text) {
    std::size_t const equals = text.find('=');
    std::size_t const slash = text.find('/');
    auto const port = chips::PortAddress::fromText(text.substr(0, equals));
    // A group sends nothing.
    _address = board::HardwareAddress::fromText(
                   equals == std::string::npos ? "" : text.substr(equals + 1, slash - equals - 1))
                   .value_or(groupBit);
    if (slash != std::string::npos) {
        _vid = chips::NumberText::parse(text.substr(slash + 1));
    }
    bool const isVid = slash == std::string::npos || (_vid && *_vid <= highestVid);
    if (!port || !isVid || (_address & groupBit) != 0) {
        throw std::invalid_argument("\"" + text + "\": not of the form SWITCH.PORT=MAC[/VID]");
    }
    _port = *port;
}

void SimulatedStation::send(board::ModelBringUp& models) const {
    simulation::SimulatedNetwork network(models.getBoard());
    simulation::SimulatedNetwork::End const end{_port.switchId, _port.portId};
    auto const frame = EthernetFrame::make(EthernetFrame::broadcastAddress, _address, etherType);
    try {
        network.attach(end, [](EthernetFrame const&) {});
        network.inject(end, _vid ? frame.withTagPushed({*_vid}) : frame);
    } catch (std::out_of_range const&) {
        throw chips::ToolError(chips::ExitStatus::usage,
                               "--station " + _text + ": the simulated board has no port " + _port.getText());
    }
    network.run();
}

} // namespace switchctl::table
