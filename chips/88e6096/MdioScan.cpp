#include "chips/88e6096/MdioScan.hpp"

#include <unistd.h>

#include <algorithm>

#include "marvell/Arm920tMacRegisters.hpp"
#include "simulation/88e6096/Registers.hpp"
#include "simulation/PhyControl.hpp"

namespace chips {

namespace {

constexpr std::uint16_t idle = simulation::marvell::absent;
constexpr useconds_t pauseMicroseconds = 1000;
constexpr int mostLooks = 100;

} // namespace

bool MdioScan::Address::operator==(Address const& other) const {
    return identifier1 == other.identifier1 && identifier2 == other.identifier2 && command == other.command &&
           isCommandRead == other.isCommandRead && isSteady == other.isSteady;
}

bool MdioScan::Access::set(unsigned int offset, unsigned int value) {
    bool const succeeded = Arm920tMdioAccess::set(offset, value);
    hasFailed = hasFailed || !succeeded;
    return succeeded;
}

bool MdioScan::Access::get(unsigned int offset, unsigned int& value) const {
    bool const succeeded = Arm920tMdioAccess::get(offset, value);
    hasFailed = hasFailed || !succeeded;
    if (succeeded && offset == arm920t_mac::miiStatusOffset) {
        status = value;
    }
    return succeeded;
}

MdioScan::MdioScan(Application& application) : _mdio(application) {}

MdioScan::End MdioScan::run() {
    std::time_t const start = std::time(nullptr);
    for (_done = 0; _done < numberOfAddresses; ++_done) {
        bool const isRead = look(_done);
        if (_mdio.hasFailed) {
            return End::accessFailed;
        }
        if (!isRead) {
            return End::masterBusy;
        }
        if (std::difftime(std::time(nullptr), start) > mostSeconds) {
            ++_done;
            return _done == numberOfAddresses ? End::complete : End::tooSlow;
        }
    }
    return End::complete;
}

bool MdioScan::look(unsigned address) {
    Address& found = _addresses.at(address);
    if (!readTwice(address, simulation::phy::identifier1, found.identifier1, found.isSteady) ||
        !readTwice(address, simulation::phy::identifier2, found.identifier2, found.isSteady)) {
        return false;
    }
    auto const saysNothing = [](std::uint16_t value) { return value == 0 || value == idle; };
    found.isCommandRead = saysNothing(found.identifier1) && saysNothing(found.identifier2);
    return !found.isCommandRead ||
           readTwice(address, simulation::marvell::smi::command, found.command, found.isSteady);
}

bool MdioScan::readTwice(unsigned address, unsigned reg, std::uint16_t& value, bool& isSteady) {
    unsigned short first = 0;
    unsigned short second = 0;
    auto const where = static_cast<unsigned short>(address);
    auto const number = static_cast<unsigned short>(reg);
    if (!_mdio.mdioReadRegister(where, number, first) || !_mdio.mdioReadRegister(where, number, second)) {
        return false;
    }
    value = second;
    isSteady = isSteady && first == second;
    return true;
}

bool MdioScan::isEverywhere(std::uint16_t value) const {
    return std::all_of(_addresses.begin(), _addresses.end(),
                       [value](Address const& address) { return address.isAll(value); });
}

bool MdioScan::hasUnsteady() const {
    return std::any_of(_addresses.begin(), _addresses.begin() + _done,
                       [](Address const& address) { return !address.isSteady; });
}

std::optional<std::uint32_t> MdioScan::readControl() {
    unsigned value = 0;
    return _mdio.get(arm920t_mac::macControlOffset, value) ? std::optional<std::uint32_t>(value)
                                                           : std::nullopt;
}

bool MdioScan::becomesFree(unsigned address) {
    unsigned short command = 0;
    for (int looks = 0; looks < mostLooks; ++looks) {
        if (!_mdio.mdioReadRegister(static_cast<unsigned short>(address), simulation::marvell::smi::command,
                                    command)) {
            return false;
        }
        if (!simulation::marvell::busy.isSet(command)) {
            return true;
        }
        usleep(pauseMicroseconds);
    }
    return false;
}

} // namespace chips
