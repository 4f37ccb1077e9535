#include "simulation/vsc7390/MacEntry.hpp"

#include "simulation/vsc7390/Registers.hpp"

namespace simulation::vitesse {

namespace {

constexpr std::uint32_t keptAccess = maskOf(mac::cpuCopy, mac::destination.low);
constexpr std::uint32_t keptHigh = maskOf(mac::vid.high, mac::highBytes.low);
constexpr unsigned bitsInLow = 32;

/// 01:00:5E, the start of all IP multicast addresses.
constexpr std::uint64_t groupPrefix = 0x01005E;
constexpr unsigned bitsOfGroup = 24;
constexpr std::uint64_t groupMask = 0xFFFFFF;

std::uint32_t flag(bool set, unsigned number) {
    return set ? bit(number) : 0;
}

std::uint32_t accessOf(Vsc7390TestSide::MacEntry const& entry) {
    return placedAt(entry.destination, mac::destination) | bit(mac::valid) | flag(entry.locked, mac::locked) |
           flag(entry.aged, mac::aged) | flag(entry.ignoreVlan, mac::ignoreVlan) |
           flag(entry.forwardKill, mac::forwardKill) | flag(entry.cpuCopy, mac::cpuCopy);
}

std::uint32_t highOf(std::uint64_t address, unsigned vid) {
    return placedAt(vid, mac::vid) |
           placedAt(static_cast<std::uint32_t>(address >> bitsInLow), mac::highBytes);
}

} // namespace

MacEntry::MacEntry(std::uint32_t access, std::uint32_t high, std::uint32_t low) {
    if (isSet(access, mac::valid)) {
        _access = access & keptAccess;
        _high = high & keptHigh;
        _low = low;
    }
}

MacEntry::MacEntry(Vsc7390TestSide::MacEntry const& entry)
    : MacEntry(accessOf(entry), highOf(entry.mac, entry.vid), static_cast<std::uint32_t>(entry.mac)) {}

bool MacEntry::isValid() const {
    return isSet(_access, mac::valid);
}

bool MacEntry::isLocked() const {
    return isSet(_access, mac::locked);
}

bool MacEntry::isAged() const {
    return isSet(_access, mac::aged);
}

std::uint32_t MacEntry::getAccess() const {
    return _access;
}

std::uint32_t MacEntry::getHigh() const {
    return _high;
}

std::uint32_t MacEntry::getLow() const {
    return _low;
}

Vsc7390TestSide::MacEntry MacEntry::decode() const {
    Vsc7390TestSide::MacEntry entry;
    entry.mac = std::uint64_t{fieldOf(_high, mac::highBytes)} << bitsInLow | _low;
    entry.vid = fieldOf(_high, mac::vid);
    entry.destination = fieldOf(_access, mac::destination);
    entry.locked = isLocked();
    entry.aged = isAged();
    entry.ignoreVlan = isSet(_access, mac::ignoreVlan);
    entry.forwardKill = isSet(_access, mac::forwardKill);
    entry.cpuCopy = isSet(_access, mac::cpuCopy);
    return entry;
}

void MacEntry::setAged() {
    _access |= bit(mac::aged);
}

bool MacEntry::isOf(std::uint64_t address, unsigned vid) const {
    return isValid() && !decode().isMulticast() && _high == highOf(address, vid) &&
           _low == static_cast<std::uint32_t>(address);
}

bool MacEntry::isGroupOf(std::uint64_t address, unsigned vid, Vsc7390Options::MulticastMatch match) const {
    Vsc7390TestSide::MacEntry const entry = decode();
    return isValid() && entry.isMulticast() && address >> bitsOfGroup == groupPrefix &&
           (address & groupMask) == entry.getGroup() &&
           (match == Vsc7390Options::MulticastMatch::lowBytes || entry.vid == vid);
}

} // namespace simulation::vitesse
