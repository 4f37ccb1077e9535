#include "simulation/Arm920tMac.hpp"

namespace simulation {

namespace {

enum Offset : unsigned { miiCommand = 0x10, miiData = 0x14, miiStatus = 0x18, macControl = 0x20 };

constexpr Field opcode{"Opcode", 15, 14};
constexpr Field phyAddress{"PhyAddress", 9, 5};
constexpr Field registerAddress{"RegisterAddress", 4, 0};
constexpr Field busy{"Busy", 0};
constexpr unsigned writeOpcode = 1;
constexpr unsigned readOpcode = 2;

} // namespace

Arm920tMac::Arm920tMac(Services& services, MdioBus& bus, Options const& options)
    : RegisterFile(services, {"mac", "mdio"}, {}, Logging::off),
      _services(services),
      _bus(bus),
      _timer(services.clock, options.busyNanoseconds) {
    define(table(options));
}

RegisterTable Arm920tMac::table(Options const& options) {
    return {
        Register(miiCommand, "MiiCommand")
            .field(opcode)
            .field(phyAddress)
            .field(registerAddress)
            .onWrite([this](std::uint32_t value) { startFrame(value); }),
        Register(miiData, "MiiData").field("Data", 15, 0),
        Register(miiStatus, "MiiStatus").readOnly(busy).onRead([this](std::uint32_t value) {
            return value | busy.placed(_timer.isBusy());
        }),
        Register(macControl, "MacControl", options.controlReset).field("Control", 31, 0),
    };
}

bool Arm920tMac::read(unsigned offset, unsigned& value) {
    std::lock_guard<std::recursive_mutex> const lock(_services.mutex);
    if (failsNow()) {
        return false;
    }
    value = RegisterFile::read(offset, 0);
    return true;
}

bool Arm920tMac::write(unsigned offset, unsigned value) {
    std::lock_guard<std::recursive_mutex> const lock(_services.mutex);
    if (failsNow()) {
        return false;
    }
    RegisterFile::write(offset, value, 0);
    return true;
}

void Arm920tMac::failAccess(unsigned nth) {
    std::lock_guard<std::recursive_mutex> const lock(_services.mutex);
    _accessesToFailure = nth;
}

void Arm920tMac::setBusyTime(std::uint64_t nanoseconds) {
    std::lock_guard<std::recursive_mutex> const lock(_services.mutex);
    _timer.setBusyTime(nanoseconds);
}

void Arm920tMac::hang(unsigned nthFrame) {
    std::lock_guard<std::recursive_mutex> const lock(_services.mutex);
    _timer.hang(nthFrame);
}

void Arm920tMac::release() {
    std::lock_guard<std::recursive_mutex> const lock(_services.mutex);
    _timer.release();
}

bool Arm920tMac::failsNow() {
    _services.log.countBusAccess();
    if (_accessesToFailure == 0) {
        return false;
    }
    --_accessesToFailure;
    return _accessesToFailure == 0;
}

void Arm920tMac::startFrame(std::uint32_t command) {
    bool const isRead = opcode.get(command) == readOpcode;
    if (!isRead && opcode.get(command) != writeOpcode) {
        report(MisuseReport::Kind::meaninglessCommand, miiCommand, "neither read nor write");
        return;
    }
    if (_timer.isBusy()) {
        report(MisuseReport::Kind::commandWhileBusy, miiCommand, "a frame is on its way");
    }
    unsigned const phy = phyAddress.get(command);
    unsigned const reg = registerAddress.get(command);
    if (isRead) {
        store(miiData, _bus.read(phy, reg));
    } else {
        _bus.write(phy, reg, static_cast<std::uint16_t>(getStored(miiData)));
    }
    _timer.start();
}

} // namespace simulation
