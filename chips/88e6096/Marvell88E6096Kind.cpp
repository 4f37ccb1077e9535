#include "chips/88e6096/Marvell88E6096Kind.hpp"

#include <utility>

#include "chips/88e6096/MarvellCounterReader.hpp"
#include "chips/88e6096/MarvellExaminer.hpp"
#include "chips/88e6096/MarvellPortStatus.hpp"
#include "chips/88e6096/MarvellTableReader.hpp"
#include "chips/88e6096/MarvellTables.hpp"
#include "chips/88e6096/MdioDecoder.hpp"
#include "chips/88e6096/SmiTransport.hpp"
#include "marvell/MarvellMultiMdioManagementCommunications.hpp"
#include "marvell/MarvellPort.hpp"
#include "marvell/MarvellSwitch.hpp"
#include "simulation/88e6096/Registers.hpp"
#include "simulation/Arm920tMac.hpp"

namespace chips {

using simulation::Arm920tMac;
using simulation::Marvell88E6096TestSide;
using simulation::UnitKind;

namespace {

using Unit = Counter::Unit;

namespace marvell = simulation::marvell;
namespace port = simulation::marvell::port;

constexpr unsigned bitsOfCaptured = 32;

/// The switch that ports need to belong to makes none itself and accesses no chip. What ports do when they
/// are asked depends neither on their type nor on their state.
constexpr unsigned short noPorts = 0;
constexpr bool noHardwareAccess = true;

Counter inUnit(char const* name, char const* metric, Unit unit, unsigned low, char const* help,
               std::optional<unsigned> high = std::nullopt) {
    return {name, metric, help, unit, Counter::Place::statisticsUnit, low, high, bitsOfCaptured};
}

Counter inPort(char const* name, char const* metric, Unit unit, unsigned low, char const* help,
               std::optional<unsigned> high = std::nullopt) {
    return {name, metric, help, unit, Counter::Place::portRegister, low, high, marvell::bitsPerRegister};
}

Counter error(Counter counter) {
    counter.isError = true;
    return counter;
}

std::vector<Counter> counters() {
    return {
        inUnit("inGoodOctets", "in_good", Unit::bytes, 0x00, "Bytes of good frames received.", 0x01),
        inUnit("inBadOctets", "in_bad", Unit::bytes, 0x02, "Bytes of bad frames received."),
        inUnit("inUnicast", "in_unicast", Unit::frames, 0x04, "Good unicast frames received."),
        inUnit("inBroadcast", "in_broadcast", Unit::frames, 0x06, "Good broadcast frames received."),
        inUnit("inMulticast", "in_multicast", Unit::frames, 0x07, "Good multicast frames received."),
        inUnit("inPause", "in_pause", Unit::frames, 0x16, "Flow control frames received."),
        error(inUnit("inUndersized", "in_undersized", Unit::frames, 0x18,
                     "Frames received that were too short.")),
        error(inUnit("inFragments", "in_fragment", Unit::frames, 0x19,
                     "Frames received that were too short and had a wrong checksum.")),
        error(
            inUnit("inOversized", "in_oversized", Unit::frames, 0x1A, "Frames received that were too long.")),
        error(inUnit("inJabber", "in_jabber", Unit::frames, 0x1B,
                     "Frames received that were too long and had a wrong checksum.")),
        error(inUnit("inRxErr", "in_receive_error", Unit::frames, 0x1C,
                     "Frames during which the receiver signalled an error.")),
        error(inUnit("inFCSErr", "in_checksum_error", Unit::frames, 0x1D,
                     "Frames received with a wrong checksum.")),
        inPort("inDiscards", "in_discarded", Unit::frames, port::inDiscardsLow,
               "Good frames received that there was no room to keep.", port::inDiscardsHigh),
        inPort("inFiltered", "in_filtered", Unit::frames, port::inFiltered,
               "Good frames received that a rule kept from being forwarded."),
        inUnit("octets64", "size_64", Unit::frames, 0x08, "Frames of 64 bytes."),
        inUnit("octets65to127", "size_65_to_127", Unit::frames, 0x09, "Frames of 65 to 127 bytes."),
        inUnit("octets128to255", "size_128_to_255", Unit::frames, 0x0A, "Frames of 128 to 255 bytes."),
        inUnit("octets256to511", "size_256_to_511", Unit::frames, 0x0B, "Frames of 256 to 511 bytes."),
        inUnit("octets512to1023", "size_512_to_1023", Unit::frames, 0x0C, "Frames of 512 to 1023 bytes."),
        inUnit("octets1024toMax", "size_1024_to_max", Unit::frames, 0x0D, "Frames of 1024 bytes and more."),
        inUnit("outOctets", "out", Unit::bytes, 0x0E, "Bytes sent.", 0x0F),
        inUnit("outUnicast", "out_unicast", Unit::frames, 0x10, "Unicast frames sent."),
        inUnit("outBroadcast", "out_broadcast", Unit::frames, 0x13, "Broadcast frames sent."),
        inUnit("outMulticast", "out_multicast", Unit::frames, 0x12, "Multicast frames sent."),
        inUnit("outPause", "out_pause", Unit::frames, 0x15, "Flow control frames sent."),
        inUnit("deferred", "deferred", Unit::frames, 0x05, "Frames that had to wait for the line."),
        inUnit("collisions", "collision", Unit::events, 0x1E, "Collisions."),
        inUnit("single", "single_collision", Unit::frames, 0x14, "Frames sent after one collision."),
        inUnit("multiple", "multiple_collision", Unit::frames, 0x17,
               "Frames sent after more than one collision."),
        error(inUnit("excessive", "excessive_collision", Unit::frames, 0x11,
                     "Frames given up after too many collisions.")),
        error(inUnit("late", "late_collision", Unit::events, 0x1F,
                     "Collisions when more than 64 bytes had been sent.")),
        error(inUnit("outFcsErr", "out_checksum_error", Unit::frames, 0x03,
                     "Frames sent with a wrong checksum.")),
        inPort("outFiltered", "out_filtered", Unit::frames, port::outFiltered,
               "Frames that a rule kept from being sent here."),
    };
}

} // namespace

Marvell88E6096Kind::Marvell88E6096Kind()
    : ChipKind({MarvellSwitch::_xmlDescriptionString,
                "88E6096",
                Marvell88E6096TestSide::numberOfPorts,
                {Transport::smi},
                UnitKind::port,
                port::switchIdentifier,
                port::product,
                port::productNumber,
                counters(),
                true,
                false,
                {{"disabled", "blocking", "learning", "forwarding"},
                 ManagedSwitchPort::DuplexSetting::forcedHalf,
                 Marvell88E6096TestSide::numberOfPhys,
                 false}}) {}

std::unique_ptr<RegisterTransport> Marvell88E6096Kind::connect(Transport /*transport*/,
                                                               Reach const& reach) const {
    return std::make_unique<SmiTransport>(reach.application, reach.errors, reach.switchId);
}

std::unique_ptr<CounterReader> Marvell88E6096Kind::makeCounterReader(ChipCatalogue const& catalogue,
                                                                     RegisterTransport& transport) const {
    return std::make_unique<MarvellCounterReader>(*this, catalogue, transport);
}

std::unique_ptr<PortStatusReader>
Marvell88E6096Kind::makePortStatusReader(ChipCatalogue const& catalogue, RegisterTransport& transport) const {
    return std::make_unique<MarvellPortStatus>(*this, catalogue, transport);
}

std::unique_ptr<TableReader> Marvell88E6096Kind::makeTableReader(ChipCatalogue const& catalogue,
                                                                 RegisterTransport& transport) const {
    return std::make_unique<MarvellTableReader>(catalogue, transport);
}

void Marvell88E6096Kind::seed(simulation::SimulatedBoard& board, PortAddress const& port,
                              Counter const& counter, std::uint64_t value) const {
    Marvell88E6096TestSide& chip = board.getMarvell(port.switchId);
    auto const set = [&](unsigned number, std::uint64_t part) {
        auto const contents = static_cast<std::uint32_t>(part);
        if (counter.place == Counter::Place::statisticsUnit) {
            chip.setCounter(port.portId, number, contents);
        } else {
            chip.getUnit(UnitKind::port, port.portId)
                .poke(number, contents & ((1U << marvell::bitsPerRegister) - 1));
        }
    };
    set(counter.low, value);
    if (counter.high) {
        set(*counter.high, value >> counter.bitsOfRegister);
    }
}

std::unique_ptr<ChipTables> Marvell88E6096Kind::makeTables(ChipCatalogue const& catalogue) const {
    return std::make_unique<MarvellTables>(catalogue);
}

void Marvell88E6096Kind::decode(unsigned switchId, TraceSink& sink, DecodedWindows& windows) const {
    DecodedWindow& window = windows[Arm920tMac::physicalAddress];
    if (window.decoder == nullptr) {
        window = {Arm920tMac::size, std::make_unique<MdioDecoder>()};
    }
    dynamic_cast<MdioDecoder&>(*window.decoder).addChip(switchId, sink);
}

bool Marvell88E6096Kind::drives(ManagedSwitch const& managedSwitch) const {
    return dynamic_cast<MarvellSwitch const*>(&managedSwitch) != nullptr;
}

Examination Marvell88E6096Kind::examine(Reach const& reach, ExaminationRequest const& request) const {
    return MarvellExaminer(*this, reach, request).run();
}

bool Marvell88E6096Kind::usePort(Reach const& reach, std::vector<unsigned> const& ports, unsigned port,
                                 std::function<bool(ManagedSwitchPort&)> const& use) const {
    MarvellMultiMdioManagementCommunications communications(
        reach.application, static_cast<unsigned short>(reach.switchId), false);
    MarvellSwitch owner(reach.application, reach.switchId, noPorts, noHardwareAccess);
    for (unsigned const id : ports) {
        std::pair<unsigned, ManagedSwitchPort*> entry(
            id, new MarvellPort(owner, communications, id, "external", "forwarding", nullptr));
        owner.insertPort(entry);
    }
    return use(*owner.getPorts().at(port));
}

} // namespace chips
