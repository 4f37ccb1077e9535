#include "simulation/88e6096/Port.hpp"

#include "simulation/88e6096/Registers.hpp"

namespace simulation::marvell {

namespace {

constexpr std::uint32_t physicalControlReset = 0x0003;
constexpr std::uint32_t allFloodsReset = 0x007C;
constexpr std::uint32_t portControl2Reset = 0x0080;

std::uint32_t vlanTableReset(Context const& context, unsigned number) {
    return context.options.vlanTableReset == Marvell88E6096Options::VlanTableReset::none
               ? 0
               : port::vlanTable.getMask() & ~bit(number);
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
    RegisterTable table{
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
            .field("RGMIIRxDelay", 15)
            .field("RGMIITxDelay", 14)
            .field("FCValue", 7)
            .field("ForcedFC", 6)
            .field(port::linkValue)
            .field(port::forcedLink)
            .field(port::duplexValue)
            .field(port::forcedDuplex)
            .field(port::forceSpeed)
            .field("Other", 13, 8),
        Register(port::switchIdentifier, "SwitchIdentifier",
                 port::product.placed(port::productNumber) | port::revision.placed(options.revision))
            .readOnly(port::product)
            .readOnly(port::revision),
        Register(port::portControl, "PortControl",
                 allFloodsReset | static_cast<unsigned>(options.portStateReset))
            .field(port::saFiltering)
            .field(port::egressMode)
            .field(port::header)
            .field("IGMPSnooping", 10)
            .field(port::frameMode)
            .field(port::vlanTunnel)
            .field("TagIfBoth", 6)
            .field("UseIP", 5)
            .field("UseTag", 4)
            .field(port::egressFloods)
            .field(port::state),
        Register(port::portControl1, "PortControl1")
            .field("MessagePort", 15)
            .field(port::trunkPort)
            .field(port::trunkId)
            .field(port::fidHigh),
        Register(port::portBasedVlanMap, "PortBasedVLANMap", vlanTableReset(_context, number))
            .field(port::fidLow)
            .field(port::vlanTable),
        Register(port::defaultVlan, "DefaultVLAN", port::defaultVid.placed(options.defaultVidReset))
            .field(port::defaultPriority)
            .field(port::forceDefaultVid)
            .field(port::defaultVid),
        Register(port::portControl2, "PortControl2", portControl2Reset)
            .field(port::ignoreFcs)
            .field("VTUPriOverride", 14)
            .field("SAPriOverride", 13)
            .field("DAPriOverride", 12)
            .field(port::mode8021Q)
            .field(port::discardTagged)
            .field(port::discardUntagged)
            .field(port::mapDa)
            .field("ARPMirror", 6)
            .field("EgressMonitor", 5)
            .field("IngressMonitor", 4)
            .field("DefaultQueue", 3, 0),
        Register(port::associationVector, "PortAssociationVector", bit(number))
            .field("HoldAt1", 15)
            .field("IntOnAgeOut", 14)
            .field(port::lockedPort)
            .field("IgnoreWrong", 12)
            .field("RefreshLocked", 11)
            .field(port::vlanTable.called("PAV")),
        Register(port::inDiscardsLow, "InDiscardsLow").counter().readOnly("Frames", 15, 0),
        Register(port::inDiscardsHigh, "InDiscardsHigh").counter().readOnly("Frames", 15, 0),
        Register(port::inFiltered, "InFiltered").counter().readOnly("Frames", 15, 0),
        Register(port::outFiltered, "OutFiltered").counter().readOnly("Frames", 15, 0),
    };
    addStorage(table);
    return table;
}

// Flow control limits, rates, priorities and policies: nothing in the model depends on them.
void Port::addStorage(RegisterTable& table) const {
    bool const asFamily = _context.options.storageReset == Marvell88E6096Options::StorageReset::asFamily;
    struct Storage {
        unsigned address;
        char const* name;
        std::uint32_t reset;
    };
    for (Storage const& row : {Storage{port::jamControl, "JamControl", 0xFF00},
                               {port::egressRateControl1, "EgressRateControl1", 0x0001},
                               {port::egressRateControl2, "EgressRateControl2", 0x8000},
                               {port::atuControl, "PortATUControl", 0},
                               {port::priorityOverride, "PriorityOverride", 0},
                               {port::policyControl, "PolicyControl", 0},
                               {port::etherType, "EtherType", 0x9100},
                               {port::priorityMapLow, "PriorityMap0-3", 0x3210},
                               {port::priorityMapHigh, "PriorityMap4-7", 0x7654}}) {
        table.add(Register(row.address, row.name, asFamily ? row.reset : 0).field("Value", 15, 0));
    }
}

bool Port::hasLink() const {
    std::uint32_t const forced = getStored(port::physicalControl);
    if (port::forcedLink.isSet(forced)) {
        return port::linkValue.isSet(forced);
    }
    return followsPhy() ? _phy->hasLink() : _level;
}

unsigned Port::getMegabits() const {
    static constexpr unsigned megabits[] = {10, 100, 1000};
    return hasLink() ? megabits[speedCode()] : 0;
}

void Port::countFiltered(unsigned address) {
    store(address, static_cast<std::uint16_t>(getStored(address) + 1));
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
