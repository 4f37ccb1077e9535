#include "tests/faults/Fault.hpp"

#include <sstream>

namespace fault_test {

namespace {

constexpr unsigned macBlock = 0x80010000;
constexpr unsigned macBlockSize = 0x30;
constexpr unsigned bitsOfMdio = 16;
constexpr unsigned bitsOfParallelBus = 32;

} // namespace

std::string nameOf(FaultKind kind) {
    switch (kind) {
    case FaultKind::accessFails:
        return "access fails";
    case FaultKind::allZeros:
        return "all zeros";
    case FaultKind::allOnes:
        return "all ones";
    case FaultKind::bitFlipped:
        return "one bit flipped";
    case FaultKind::busBusy:
        return "bus busy for good";
    case FaultKind::chipBusy:
        return "SMI busy for good";
    case FaultKind::unitBusy:
        return "units busy for good";
    case FaultKind::arbiterBusy:
        return "arbiter busy for good";
    case FaultKind::readyLate:
        return "ready late";
    case FaultKind::chipGone:
        return "chip goes away";
    }
    return "";
}

bool Fault::isOnMdio() const {
    return access.physicalAddress >= macBlock && access.physicalAddress < macBlock + macBlockSize;
}

bool Fault::isPossible() const {
    switch (kind) {
    case FaultKind::chipBusy:
        return isOnMdio();
    case FaultKind::arbiterBusy:
        return !isOnMdio();
    default:
        return true;
    }
}

// Words of the MDIO master carry 16 bits. 7 has no factor in common with either number of bits.
unsigned Fault::bit() const {
    return static_cast<unsigned>(number * 7) % (isOnMdio() ? bitsOfMdio : bitsOfParallelBus);
}

std::string Fault::describe() const {
    std::ostringstream text;
    text << nameOf(kind) << " at access " << number << " (" << (access.isWrite ? "write" : "read") << " of 0x"
         << std::hex << access.physicalAddress << ", 0x" << access.value << std::dec << ", switch "
         << switchId << ')';
    return text.str();
}

} // namespace fault_test
