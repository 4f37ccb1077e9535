#include "simulation/vsc7390/MacEntry.hpp"

#include "simulation/vsc7390/Registers.hpp"

namespace simulation::vitesse {

namespace {

constexpr std::uint32_t keptAccess = Field("Kept", mac::cpuCopy.high, mac::destination.low).getMask();
constexpr std::uint32_t keptHigh = mac::vid.getMask() | mac::highBytes.getMask();

constexpr std::uint64_t groupMask = 0xFFFFFF;

std::uint32_t accessOf(Vsc7390TestSide::MacEntry const& entry) {
    return mac::destination.placed(entry.destination) | mac::valid.getMask() |
           mac::locked.placed(entry.locked) | mac::aged.placed(entry.aged) |
           mac::ignoreVlan.placed(entry.ignoreVlan) | mac::forwardKill.placed(entry.forwardKill) |
           mac::cpuCopy.placed(entry.cpuCopy);
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

bool MacEntry::isGroupOf(std::uint64_t address, unsigned vid, Vsc7390Options::MulticastMatch match) const {
    return isValid() && isLocked() && isAged() && isIpGroup(address) && ((address ^ _low) & groupMask) == 0 &&
           (match == Vsc7390Options::MulticastMatch::lowBytes || mac::vid.get(_high) == vid);
}

} // namespace simulation::vitesse
