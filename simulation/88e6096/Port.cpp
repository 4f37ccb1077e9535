#include "simulation/88e6096/Port.hpp"

#include "simulation/88e6096/Marvell88E6096TestSide.hpp"
#include "simulation/88e6096/Registers.hpp"

namespace simulation::marvell {

namespace {

constexpr std::uint32_t physicalControlReset = 0x0003;
constexpr std::uint32_t allFloodsReset = 0x007C;
constexpr std::uint32_t portControl2Reset = 0x0080;
constexpr Field vlanTable{"VLANTable", Marvell88E6096TestSide::numberOfPorts - 1, 0};

std::uint32_t vlanTableReset(Context const& context, unsigned number) {
    return context.options.vlanTableReset == Marvell88E6096Options::VlanTableReset::none
               ? 0
               : vlanTable.getMask() & ~bit(number);
}

} // namespace

Port::Port(Context& context, unsigned number, Phy const* phy)
    : RegisterFile(
          context.services,
          {context.chip, UnitKind::port, number, {UnitPlace::Space::device, 0, firstPortDevice + number}}),
      _context(context),
      _phy(phy) {
    define(table(number));
}

RegisterTable Port::table(unsigned number) {
    Marvell88E6096Options const& options = _context.options;
    return {
        Register(port::status, "PortStatus", _phy != nullptr ? port::phyDetect.getMask() : 0)
            .readOnly("PauseEn", 15)
            .readOnly("MyPause", 14)
            .readOnly("HdFlow", 13)
            .field(port::phyDetect)
            .readOnly(port::link)
            .readOnly(port::duplex)
            .readOnly(port::speed)
            .readOnly("TxPaused", 5)
            .readOnly("FlowCtrl", 4)
            .readOnly("C_Mode", 3, 0)
            .onRead([this](std::uint32_t stored) { return status(stored); }),
        Register(port::physicalControl, "PhysicalControl", physicalControlReset)
            .field("FCValue", 7)
            .field("ForcedFC", 6)
            .field(port::linkValue)
            .field(port::forcedLink)
            .field(port::duplexValue)
            .field(port::forcedDuplex)
            .field(port::forceSpeed),
        Register(port::switchIdentifier, "SwitchIdentifier",
                 port::product.placed(port::productNumber) | port::revision.placed(options.revision))
            .readOnly(port::product)
            .readOnly(port::revision),
        Register(port::portControl, "PortControl",
                 allFloodsReset | static_cast<unsigned>(options.portStateReset))
            .field("EgressMode", 13, 12)
            .field("FrameMode", 9, 8)
            .field("TagIfBoth", 6)
            .field("UseIP", 5)
            .field("UseTag", 4)
            .field("EgressFloods", 3, 2)
            .field("PortState", 1, 0),
        Register(port::portControl1, "PortControl1")
            .field("MessagePort", 15)
            .field("TrunkPort", 14)
            .field("TrunkID", 11, 8)
            .field("FIDHigh", 7, 0),
        Register(port::portBasedVlanMap, "PortBasedVLANMap", vlanTableReset(_context, number))
            .field("FIDLow", 15, 12)
            .field(vlanTable),
        Register(port::defaultVlan, "DefaultVLAN", port::defaultVid.placed(options.defaultVidReset))
            .field("DefaultPriority", 15, 13)
            .field("ForceDefaultVID", 12)
            .field(port::defaultVid),
        Register(port::portControl2, "PortControl2", portControl2Reset)
            .field("IgnoreFCS", 15)
            .field("VTUPriOverride", 14)
            .field("802.1QMode", 11, 10)
            .field("DiscardTagged", 9)
            .field("DiscardUntagged", 8)
            .field("MapDA", 7)
            .field("EgressMonitor", 5)
            .field("IngressMonitor", 4),
        Register(port::associationVector, "PortAssociationVector", bit(number))
            .field("LockedPort", 13)
            .field(vlanTable.called("PAV")),
        Register(port::inDiscardsLow, "InDiscardsLow").counter().readOnly("Frames", 15, 0),
        Register(port::inDiscardsHigh, "InDiscardsHigh").counter().readOnly("Frames", 15, 0),
        Register(port::inFiltered, "InFiltered").counter().readOnly("Frames", 15, 0),
        Register(port::outFiltered, "OutFiltered").counter().readOnly("Frames", 15, 0),
    };
}

bool Port::hasLink() const {
    std::uint32_t const forced = getStored(port::physicalControl);
    if (port::forcedLink.isSet(forced)) {
        return port::linkValue.isSet(forced);
    }
    return followsPhy() ? _phy->hasLink() : _level;
}

void Port::setLevelSpeed(unsigned megabits, bool fullDuplex) {
    _levelMegabits = megabits;
    _levelFullDuplex = fullDuplex;
}

bool Port::followsPhy() const {
    return _phy != nullptr && port::phyDetect.isSet(getStored(port::status));
}

bool Port::isFullDuplex() const {
    std::uint32_t const forced = getStored(port::physicalControl);
    if (port::forcedDuplex.isSet(forced)) {
        return port::duplexValue.isSet(forced);
    }
    return followsPhy() ? _phy->hasLink() && _phy->isFullDuplex() : _level && _levelFullDuplex;
}

unsigned Port::speedCode() const {
    std::uint32_t const forced = getStored(port::physicalControl);
    unsigned const code = port::forceSpeed.get(forced);
    if (code != port::speedNotForced) {
        return code;
    }
    bool const up = followsPhy() ? _phy->hasLink() : _level;
    unsigned const megabits = followsPhy() ? _phy->getMegabits() : _levelMegabits;
    if (!up || megabits < 100) {
        return 0;
    }
    return megabits < 1000 ? 1 : 2;
}

std::uint32_t Port::status(std::uint32_t stored) const {
    return stored | port::link.placed(hasLink()) | port::duplex.placed(isFullDuplex()) |
           port::speed.placed(speedCode());
}

} // namespace simulation::marvell
