#include "simulation/vsc7390/Port.hpp"

#include <array>
#include <utility>

#include "simulation/vsc7390/Registers.hpp"

namespace simulation::vitesse {

namespace {

constexpr unsigned megabits1000 = 1000;
constexpr unsigned megabits100 = 100;
constexpr unsigned megabits10 = 10;

constexpr Field length{"Length", 15, 0};

constexpr std::array<char const*, Port::numberOfCounters> counterNames = {
    "C_RX_OCTETS", "C_TX_OCTETS",  "C_RX_PACKETS",     "C_RX_BROAD_MULTI", "C_RX_ERRORS", "C_RX_DROPS",
    "C_RX_CLASS3", "C_TX_PACKETS", "C_TX_BROAD_MULTI", "C_TX_ERRORS",      "C_TX_DROPS",  "C_TX_CLASS3"};

enum Clock : unsigned { clock1000 = 1, clock100 = 2, clock10 = 3 };

unsigned megabitsOf(unsigned clock) {
    switch (clock) {
    case clock1000:
        return megabits1000;
    case clock100:
        return megabits100;
    case clock10:
        return megabits10;
    default:
        return 0;
    }
}

Register macConfig() {
    return Register(port::macConfig, "MAC_CFG")
        .field("WEXC_DIS", 31)
        .field(port::reset)
        .field(port::transmitEnable)
        .field("SEED_LOAD", 27)
        .field("SEED", 26, 19)
        .field(port::fullDuplex)
        .field("GIGA_MODE", 17)
        .field(port::receiveEnable)
        .field(port::doubleTagAware)
        .field(port::tagAware)
        .field("100_BASE_T", 13)
        .field("WithReset11", 11)
        .field("TX_IPG", 10, 6)
        .field(port::receiveReset)
        .field(port::transmitReset)
        .field("WithReset3", 3)
        .field("CLK_EXTERNAL", 2)
        .field(port::clock);
}

UnitPlace placeOf(unsigned number) {
    bool const isLow = number < block::portsInLow;
    return {UnitPlace::Space::block, isLow ? block::lowPorts : block::highPorts,
            isLow ? number : number - block::portsInLow};
}

} // namespace

Port::Port(Context& context, unsigned number)
    : RegisterFile(context.services, {context.chip, UnitKind::port, number, placeOf(number)}),
      _context(context) {
    define(table());
}

RegisterTable Port::table() {
    RegisterTable table = {
        macConfig(),
        Register(port::flowControl, "FCCONF")
            .field("ZERO_PAUSE_EN", 17)
            .field("FLOW_CTRL_OBEY", 16)
            .field("PAUSE_VAL", 15, 0),
        Register(port::flowControlMacHigh, "FCMACHI").field("Other", 31, 24).field("Mac", 23, 0),
        Register(port::flowControlMacLow, "FCMACLO").field("Other", 31, 24).field("Mac", 23, 0),
        Register(port::maximumLength, "MAXLEN", length.placed(_context.options.maximumLengthReset))
            .field(length),
        Register(port::transmitUpdate, "TXUPDCFG")
            .field("DSCP_REWR_MODE", 20, 19)
            .field(port::rewriteDscp)
            .field(port::rewritePriority)
            .field(port::untaggedVid)
            .field(port::untaggedVidEnable)
            .field("TX_UPDATE_CRC", 1)
            .field(port::insertTag),
    };
    addClassifier(table);
    addNamedOnly(table);
    addWatermarks(table);
    addCounters(table);
    return table;
}

void Port::addClassifier(RegisterTable& table) const {
    table.add(Register(port::classifierDrop, "CAT_DROP")
                  .field(port::dropGroupSource)
                  .field(port::forwardControl)
                  .field(port::forwardPause)
                  .field(port::dropUntagged)
                  .field(port::dropTagged)
                  .field(port::dropNullAddress));
    table.add(Register(port::classifierVlan, "CAT_VLAN_MISC").field(port::ignoreTag).field(port::keepTag));
    table.add(Register(port::classifierPortVlan, "CAT_PORT_VLAN",
                       port::portVid.placed(_context.options.portVidReset))
                  .field(port::cfi)
                  .field(port::userPriority)
                  .field(port::portVid));
}

// Drivers of the family use these, but not in a way that tells what is in them.
void Port::addNamedOnly(RegisterTable& table) {
    table.add(Register(port::halfDuplexGap, "MACHDXGAP").unknownReset().field("Data", 31, 0));
    table.add(Register(port::advancedMode, "ADVPORTM").unknownReset().field("Data", 31, 0));
    table.add(Register(port::transmitQueue, "TXQ_SELECT_CFG").unknownReset().field("Data", 31, 0));
    table.add(Register(port::classifierLayer2, "CAT_PR_MISC_L2").unknownReset().field("Data", 31, 0));
    table.add(Register(port::classifierUserPriority, "CAT_PR_USR_PRIO").unknownReset().field("Data", 31, 0));
}

void Port::addWatermarks(RegisterTable& table) {
    table.add(Register(port::flowControlWatermarks, "FC_WATERMARKS").field("Watermarks", 31, 0));
    table.add(Register(port::poolControl, "POOL_CONTROL").field("Pool", 31, 0));
    table.add(Register(port::egressWatermarks, "EGRESS_WATERMARKS").field("Watermarks", 31, 0));
}

// What frames have moved goes to where the registers are when somebody looks. Writing 0 to the counter of
// received packets clears all of them.
void Port::addCounters(RegisterTable& table) {
    for (unsigned index = 0; index < counterNames.size(); ++index) {
        unsigned const address = Vsc7390TestSide::firstCounter + index;
        Register row(address, counterNames[index]);
        row.counter().readOnly("Count", 31, 0).onRead([this, index](std::uint32_t stored) {
            return settle(index, stored);
        });
        if (address == port::packetsIn) {
            row.onAttempt([this](std::uint32_t value) {
                if (value == 0) {
                    clearCounters();
                }
            });
        }
        table.add(row);
    }
}

std::uint32_t Port::settle(unsigned index, std::uint32_t stored) {
    if (_counted[index] != 0) {
        stored += std::exchange(_counted[index], 0);
        store(Vsc7390TestSide::firstCounter + index, stored);
    }
    return stored;
}

void Port::clearCounters() {
    for (unsigned index = 0; index < counterNames.size(); ++index) {
        setCounter(Vsc7390TestSide::firstCounter + index, 0);
    }
}

void Port::setCounter(unsigned address, std::uint32_t value) {
    _counted[address - Vsc7390TestSide::firstCounter] = 0;
    store(address, value);
}

Vsc7390TestSide::PortMac Port::getMac() const {
    std::uint32_t const config = getStored(port::macConfig);
    bool const runs = !port::reset.isSet(config);
    Vsc7390TestSide::PortMac mac;
    mac.receives = runs && port::receiveEnable.isSet(config) && !port::receiveReset.isSet(config);
    mac.sends = runs && port::transmitEnable.isSet(config) && !port::transmitReset.isSet(config);
    mac.megabits = megabitsOf(port::clock.get(config));
    mac.fullDuplex = port::fullDuplex.isSet(config);
    return mac;
}

} // namespace simulation::vitesse
