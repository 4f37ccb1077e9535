#include "simulation/88e6096/Global1.hpp"

#include "simulation/88e6096/Registers.hpp"

namespace simulation::marvell {

namespace {

/// Ready, and the PHYs are being polled.
constexpr std::uint32_t statusReset = 0x8800;
/// 300 s.
constexpr std::uint32_t atuControlReset = 0x0140;
/// Histograms of both directions.
constexpr std::uint32_t statsOperationReset = 0x0C00;

} // namespace

Global1::Global1(Context& context)
    : RegisterFile(context.services,
                   {context.chip, UnitKind::global, 1, {UnitPlace::Space::device, 0, global1Device}}),
      _context(context),
      _vtu(context, *this),
      _atu(context, *this),
      _statistics(context, *this) {
    define(table());
}

RegisterTable Global1::table() {
    return {
        Register(global1::status, "GlobalStatus", statusReset)
            .unstable()
            .changedByRead()
            .readOnly("PPUPolling", 15)
            .readOnly("InitReady", 11)
            .readOnly(global1::statsDone)
            .readOnly(global1::vtuProblem)
            .readOnly(global1::vtuDone)
            .readOnly("ATUProb", 3)
            .readOnly(global1::atuDone)
            .onRead([this](std::uint32_t stored) { return status(stored); }),
        Register(global1::atuFid, "ATUFID").staging().field("FID", 11, 0),
        Register(global1::vtuFid, "VTUFID").staging().field("FID", 11, 0),
        vtuSidRegister(),
        Register(global1::control, "GlobalControl")
            .selfClearing({"SWReset", 15})
            .field("PPUEn", 14)
            .field("DiscardExcessive", 13)
            .field("MaxFrame", 10),
        _vtu.attachedTo(Register(global1::vtuOperation, "VTUOperation")
                            .field(busy.called("VTUBusy"))
                            .field(globalOperation.called("VTUOp"))
                            .readOnly(vtu::memberViolation)
                            .readOnly(vtu::missViolation)
                            .readOnly(vtu::sourcePort)),
        Register(global1::vtuVid, "VTUVID").staging().field(vtu::valid).field(vtu::vid),
        vtuDataRegister(0),
        vtuDataRegister(1),
        vtuDataRegister(2),
        Register(global1::atuControl, "ATUControl", atuControlReset)
            .field("Other", 15, 12)
            .field(global1::ageTime)
            .field("Other", 3, 0),
        _atu.attachedTo(Register(global1::atuOperation, "ATUOperation")
                            .field(busy.called("ATUBusy"))
                            .field(globalOperation.called("ATUOp"))),
        Register(global1::atuData, "ATUData")
            .staging()
            .field("Trunk", 15)
            .field(atu::portVector)
            .field(atu::entryState),
        Register(global1::atuMac01, "ATUMAC01").staging().field("Byte0", 15, 8).field("Byte1", 7, 0),
        Register(global1::atuMac23, "ATUMAC23").staging().field("Byte2", 15, 8).field("Byte3", 7, 0),
        Register(global1::atuMac45, "ATUMAC45").staging().field("Byte4", 15, 8).field("Byte5", 7, 0),
        _statistics.attachedTo(Register(global1::statsOperation, "StatsOperation", statsOperationReset)
                                   .field(busy.called("StatsBusy"))
                                   .field(globalOperation.called("StatsOp"))
                                   .field(statistics::histogramMode)
                                   .ignored({"Unused", 9, 6})
                                   .field(statistics::item)),
        Register(global1::statsHigh, "StatsCounterHigh").staging().readOnly("Count", 15, 0),
        Register(global1::statsLow, "StatsCounterLow").staging().readOnly("Count", 15, 0),
    };
}

// A driver that uses VLAN numbers as SIDs writes more bits than there are; the chip cuts them.
Register Global1::vtuSidRegister() const {
    auto const width = static_cast<unsigned>(_context.options.sidWidth);
    Register description(global1::vtuSid, "VTUSID");
    description.staging().field("SID", width - 1, 0);
    return width < 12 ? description.ignored({"Unused", 11, width}) : description;
}

Register Global1::vtuDataRegister(unsigned index) const {
    static char const* const names[] = {"VTUData0-3", "VTUData4-7", "VTUData8-11"};
    Register description(global1::vtuData0 + index, names[index]);
    description.staging();
    for (unsigned place = vtu::portsPerRegister; place-- > 0;) {
        unsigned const port = index * vtu::portsPerRegister + place;
        if (port < Marvell88E6096TestSide::numberOfPorts) {
            description.field(vtu::portStates[port]).field(vtu::memberTags[port]);
        } else {
            description.field(vtu::priorityOverride);
        }
    }
    return description;
}

std::uint32_t Global1::status(std::uint32_t stored) const {
    return stored | global1::statsDone.placed(_statistics.getTimer().isDone()) |
           global1::vtuProblem.placed(_vtu.hasViolation()) |
           global1::vtuDone.placed(_vtu.getTimer().isDone()) |
           global1::atuDone.placed(_atu.getTimer().isDone());
}

} // namespace simulation::marvell
