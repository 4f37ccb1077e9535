#include "chips/vsc7390/Vsc7390Kind.hpp"

#include <utility>

#include "chips/vsc7390/ParallelDecoder.hpp"
#include "chips/vsc7390/VitesseExaminer.hpp"
#include "chips/vsc7390/VitessePortStatus.hpp"
#include "chips/vsc7390/VitesseTableReader.hpp"
#include "chips/vsc7390/VitesseTables.hpp"
#include "chips/vsc7390/VitesseTransport.hpp"
#include "simulation/vsc7390/Registers.hpp"
#include "vitesse/VitesseParallelCommunication.hpp"
#include "vitesse/VitessePort.hpp"
#include "vitesse/VitesseSerialCommunications.hpp"
#include "vitesse/VitesseSwitch.hpp"

namespace chips {

using simulation::UnitKind;
using simulation::Vsc7390TestSide;

namespace {

using Unit = Counter::Unit;

namespace port = simulation::vitesse::port;
namespace chip = simulation::vitesse::system;

constexpr unsigned bitsOfCounter = 32;

/// The switch that ports need to belong to makes none itself and accesses no chip: setting up a chip is the
/// first thing that a VitesseSwitch does. What ports do when they are asked depends neither on their type nor
/// on their state.
constexpr unsigned short noPorts = 0;
constexpr bool noHardwareAccess = true;

Counter inMac(char const* name, char const* metric, Unit unit, unsigned address, char const* help) {
    return {name, metric, help, unit, Counter::Place::portRegister, address, std::nullopt, bitsOfCounter};
}

Counter error(Counter counter) {
    counter.isError = true;
    return counter;
}

std::vector<Counter> counters() {
    return {
        inMac("inGoodandBadOctets", "in_good_and_bad", Unit::bytes, port::octetsIn,
              "Bytes of all frames received."),
        inMac("inGoodandBadPackets", "in_good_and_bad", Unit::frames, port::packetsIn,
              "All frames received."),
        inMac("inMulticastBroadCast", "in_multicast_and_broadcast", Unit::frames, port::broadcastMulticastIn,
              "Multicast and broadcast frames received."),
        error(inMac("inErrorPackets", "in_error", Unit::frames, port::errorsIn, "Bad frames received.")),
        inMac("inTotalDrops", "in_dropped", Unit::frames, port::dropsIn,
              "Frames received that were dropped."),
        inMac("inClassifiedClass3Qos", "in_class_3", Unit::frames, port::class3In,
              "Frames received of QoS class 3."),
        inMac("outGoodandBadOctets", "out_good_and_bad", Unit::bytes, port::octetsOut,
              "Bytes of all frames sent."),
        inMac("outGoodandBadPackets", "out_good_and_bad", Unit::frames, port::packetsOut, "All frames sent."),
        inMac("outMulticastBroadCast", "out_multicast_and_broadcast", Unit::frames,
              port::broadcastMulticastOut, "Multicast and broadcast frames sent."),
        error(inMac("outErrorPackets", "out_error", Unit::frames, port::errorsOut, "Bad frames sent.")),
        inMac("outTotalDrops", "out_dropped", Unit::frames, port::dropsOut,
              "Frames to be sent that were dropped."),
        inMac("outClassifiedClass3Qos", "out_class_3", Unit::frames, port::class3Out,
              "Frames sent of QoS class 3."),
    };
}

} // namespace

Vsc7390Kind::Vsc7390Kind()
    : ChipKind({VitesseSwitch::_xmlDescriptionString,
                "VSC7390",
                Vsc7390TestSide::numberOfPorts,
                {Transport::parallel, Transport::serial},
                UnitKind::system,
                chip::chipIdentifier,
                chip::product,
                chip::productNumber,
                counters(),
                false,
                true,
                {{"stopped", "receiving and sending"},
                 ManagedSwitchPort::DuplexSetting::half,
                 0,
                 true,
                 port::macConfig,
                 port::clock,
                 "the source masks of all ports of the chip: each port that receives and sends is opened to "
                 "all others that do, whatever port-based VLANs had left there"}}) {}

std::unique_ptr<RegisterTransport> Vsc7390Kind::connect(Transport transport, Reach const& reach) const {
    std::unique_ptr<VitesseManagementCommunications> communications;
    if (transport == Transport::serial) {
        communications = std::make_unique<VitesseSerialCommunications>(reach.application, false, reach.line);
    } else {
        communications = std::make_unique<VitesseParallelCommunication>(reach.application, false);
    }
    return std::make_unique<VitesseTransport>(reach.errors, std::move(communications));
}

std::unique_ptr<PortStatusReader> Vsc7390Kind::makePortStatusReader(ChipCatalogue const& catalogue,
                                                                    RegisterTransport& transport) const {
    return std::make_unique<VitessePortStatus>(*this, catalogue, transport);
}

std::unique_ptr<TableReader> Vsc7390Kind::makeTableReader(ChipCatalogue const& catalogue,
                                                          RegisterTransport& transport) const {
    return std::make_unique<VitesseTableReader>(catalogue, transport);
}

void Vsc7390Kind::seed(simulation::SimulatedBoard& board, PortAddress const& port, Counter const& counter,
                       std::uint64_t value) const {
    board.getVitesse(port.switchId).setCounter(port.portId, counter.low, static_cast<std::uint32_t>(value));
}

std::unique_ptr<ChipTables> Vsc7390Kind::makeTables(ChipCatalogue const& catalogue) const {
    return std::make_unique<VitesseTables>(catalogue);
}

// There is room for one on the bus: the first.
void Vsc7390Kind::decode(unsigned switchId, TraceSink& sink, DecodedWindows& windows) const {
    DecodedWindow& window = windows[Vsc7390TestSide::physicalAddress];
    if (window.decoder == nullptr) {
        window = {Vsc7390TestSide::windowSize, std::make_unique<ParallelDecoder>(switchId, sink)};
    }
}

bool Vsc7390Kind::drives(ManagedSwitch const& managedSwitch) const {
    return dynamic_cast<VitesseSwitch const*>(&managedSwitch) != nullptr;
}

Examination Vsc7390Kind::examine(Reach const& reach, ExaminationRequest const& request) const {
    return VitesseExaminer(*this, reach, request).run();
}

bool Vsc7390Kind::usePort(Reach const& reach, std::vector<unsigned> const& ports, unsigned port,
                          std::function<bool(ManagedSwitchPort&)> const& use) const {
    VitesseParallelCommunication communications(reach.application, false);
    VitesseSwitch owner(reach.application, reach.switchId, noPorts, noHardwareAccess);
    // It complains that it could not set the chip up, as it was not meant to.
    reach.errors.take();
    for (unsigned const id : ports) {
        std::pair<unsigned, ManagedSwitchPort*> entry(
            id, new VitessePort(owner, communications, id, "external", "forwarding", nullptr));
        owner.insertPort(entry);
    }
    return use(*owner.getPorts().at(port));
}

} // namespace chips
