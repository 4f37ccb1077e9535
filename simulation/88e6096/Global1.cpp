#include "simulation/88e6096/Global1.hpp"

#include <initializer_list>
#include <utility>

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

Global1::Global1(Context& context, std::function<void()> onReset)
    : RegisterFile(context.services,
                   {context.chip, UnitKind::global, 1, {UnitPlace::Space::device, 0, global1Device}}),
      _context(context),
      _onReset(std::move(onReset)),
      _vtu(context, *this),
      _atu(context, *this),
      _statistics(context, *this) {
    define(table());
    _atu.followAgeTime();
}

void Global1::resetAll() {
    reset();
    _vtu.flush();
    _atu.clear();
    _atu.followAgeTime();
}

// A reset has ended when the write that starts it returns.
void Global1::control(std::uint32_t word) {
    store(global1::control, word & ~global1::softwareReset.getMask());
    if (global1::softwareReset.isSet(word) &&
        _context.options.softwareReset == Marvell88E6096Options::SoftwareReset::restoresDefaults) {
        _onReset();
    }
}

void Global1::clearDone() {
    if (_context.options.doneFlags == Marvell88E6096Options::DoneFlags::clearedByRead) {
        for (CommandUnit* const unit : std::initializer_list<CommandUnit*>{&_vtu, &_atu, &_statistics}) {
            unit->clearDone();
        }
    }
}

// The strap decides how ports start, so a model whose ports start disabled shows the one for that.
std::uint32_t Global1::strap() const {
    bool const isDisabled =
        _context.options.portStateReset == Marvell88E6096Options::PortStateReset::disabled;
    return global1::switchMode.placed(isDisabled ? global1::cpuAttached : global1::standAlone);
}

RegisterTable Global1::table() {
    RegisterTable table{
        Register(global1::status, "GlobalStatus", statusReset | strap())
            .unstable()
            .changedByRead()
            .readOnly("PPUPolling", 15)
            .readOnly("PPUStateLow", 14)
            .readOnly(global1::switchMode)
            .readOnly("InitReady", 11)
            .readOnly("AVBInterrupt", 8)
            .readOnly("DeviceInterrupt", 7)
            .readOnly(global1::statsDone)
            .readOnly(global1::vtuProblem)
            .readOnly(global1::vtuDone)
            .readOnly(global1::atuProblem)
            .readOnly(global1::atuDone)
            .onRead([this](std::uint32_t stored) { return status(stored); })
            .afterRead([this] { clearDone(); }),
        Register(global1::atuFid, "ATUFID").staging().field("FID", 11, 0),
        Register(global1::vtuFid, "VTUFID").staging().field("FID", 11, 0),
        vtuSidRegister(),
        Register(global1::control, "GlobalControl")
            .selfClearing(global1::softwareReset)
            .field("PPUEn", 14)
            .field("DiscardExcessive", 13)
            .field(global1::maxFrame)
            .onWrite([this](std::uint32_t word) { control(word); }),
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
                            .field(globalOperation.called("ATUOp"))
                            .readOnly(atu::fullViolation)),
        Register(global1::atuData, "ATUData")
            .staging()
            .field(atu::trunk)
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
    addStorage(table);
    return table;
}

// Priorities by IP and tag, monitors, buffers: of these only the place of the CPU matters to frames.
void Global1::addStorage(RegisterTable& table) {
    for (unsigned address = global1::ipPriority0; address < global1::ieeePriority; ++address) {
        table.add(Register(address, "IPPriority" + std::to_string(address - global1::ipPriority0))
                      .field("Value", 15, 0));
    }
    table.add(Register(global1::ieeePriority, "IEEEPriority").field("Value", 15, 0));
    table.add(Register(global1::coreTagType, "CoreTagType").field("Value", 15, 0));
    table.add(Register(global1::monitorControl, "MonitorControl")
                  .field("IngressDest", 15, 12)
                  .field("EgressDest", 11, 8)
                  .field(global1::cpuDestination)
                  .field("Other", 3, 0));
    table.add(Register(global1::totalFreeCounter, "TotalFreeCounter").field("Value", 15, 0));
    table.add(Register(global1::control2, "GlobalControl2").field("Value", 15, 0));
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
    return stored | global1::statsDone.placed(_statistics.isDone()) |
           global1::vtuProblem.placed(_vtu.hasViolation()) | global1::atuProblem.placed(_atu.hasViolation()) |
           global1::vtuDone.placed(_vtu.isDone()) | global1::atuDone.placed(_atu.isDone());
}

} // namespace simulation::marvell
