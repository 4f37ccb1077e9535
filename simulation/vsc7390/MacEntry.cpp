#include "simulation/vsc7390/MacEntry.hpp"

#include "simulation/vsc7390/Registers.hpp"

namespace simulation::vitesse {

namespace {

constexpr std::uint32_t keptAccess = Field("Kept", mac::cpuCopy.high, mac::destination.low).getMask();
constexpr std::uint32_t keptHigh = mac::vid.getMask() | mac::highBytes.getMask();
constexpr unsigned bitsInLow = 32;

/// 01:00:5E, the start of all IP multicast addresses.
constexpr std::uint64_t groupPrefix = 0x01005E;
constexpr unsigned bitsOfGroup = 24;
constexpr std::uint64_t groupMask = 0xFFFFFF;

std::uint32_t accessOf(Vsc7390TestSide::MacEntry const& entry) {
    return mac::destination.placed(entry.destination) | mac::valid.getMask() |
           mac::locked.placed(entry.locked) | mac::aged.placed(entry.aged) |
           mac::ignoreVlan.placed(entry.ignoreVlan) | mac::forwardKill.placed(entry.forwardKill) |
           mac::cpuCopy.placed(entry.cpuCopy);
}

std::uint32_t highOf(std::uint64_t address, unsigned vid) {
    return mac::vid.placed(vid) | mac::highBytes.placed(static_cast<std::uint32_t>(address >> bitsInLow));
}

} // namespace

MacEntry::MacEntry(std::uint32_t access, std::uint32_t high, std::uint32_t low) {
    if (mac::valid.isSet(access)) {
        _access = access & keptAccess;
        _high = high & keptHigh;
        _low = low;
    }
}

MacEntry::MacEntry(Vsc7390TestSide::MacEntry const& entry)
    : MacEntry(accessOf(entry), highOf(entry.mac, entry.vid), static_cast<std::uint32_t>(entry.mac)) {}

bool MacEntry::isValid() const {
    return mac::valid.isSet(_access);
}

bool MacEntry::isLocked() const {
    return mac::locked.isSet(_access);
}

bool MacEntry::isAged() const {
    return mac::aged.isSet(_access);
}

Vsc7390TestSide::MacEntry MacEntry::decode() const {
    Vsc7390TestSide::MacEntry entry;
    entry.mac = std::uint64_t{mac::highBytes.get(_high)} << bitsInLow | _low;
    entry.vid = mac::vid.get(_high);
    entry.destination = mac::destination.get(_access);
    entry.locked = isLocked();
    entry.aged = isAged();
    entry.ignoreVlan = mac::ignoreVlan.isSet(_access);
    entry.forwardKill = mac::forwardKill.isSet(_access);
    entry.cpuCopy = mac::cpuCopy.isSet(_access);
    return entry;
}

void MacEntry::setAged() {
    _access |= mac::aged.getMask();
}

bool MacEntry::isOf(std::uint64_t address, unsigned vid) const {
    return isValid() && _low == static_cast<std::uint32_t>(address) && _high == highOf(address, vid) &&
           !(isLocked() && isAged());
}

bool MacEntry::isGroupOf(std::uint64_t address, unsigned vid, Vsc7390Options::MulticastMatch match) const {
    return isValid() && isLocked() && isAged() && address >> bitsOfGroup == groupPrefix &&
           ((address ^ _low) & groupMask) == 0 &&
           (match == Vsc7390Options::MulticastMatch::lowBytes || mac::vid.get(_high) == vid);
}

} // namespace simulation::vitesse
