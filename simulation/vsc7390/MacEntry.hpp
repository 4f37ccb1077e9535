#pragma once

#include <cstdint>

#include "simulation/vsc7390/Registers.hpp"
#include "simulation/vsc7390/Vsc7390Options.hpp"
#include "simulation/vsc7390/Vsc7390TestSide.hpp"

namespace simulation::vitesse {

/// One bucket of the MAC table, as the registers show it.
class MacEntry {
public:
    /// An empty bucket.
    MacEntry() = default;

    /// \param access flags and destination where the access register has them.
    /// \param high, low as the data registers. Without VALID the bucket is empty, whatever they say.
    MacEntry(std::uint32_t access, std::uint32_t high, std::uint32_t low);
    explicit MacEntry(Vsc7390TestSide::MacEntry const& entry);

    bool isValid() const { return mac::valid.isSet(_access); }
    bool isLocked() const { return mac::locked.isSet(_access); }
    bool isAged() const { return mac::aged.isSet(_access); }
    std::uint32_t getAccess() const { return _access; }
    std::uint32_t getHigh() const { return _high; }
    std::uint32_t getLow() const { return _low; }
    Vsc7390TestSide::MacEntry decode() const;

    void setAged();

    /// Whether it is the entry of that address in that VLAN. No multicast entry is.
    bool isOf(std::uint64_t address, unsigned vid) const {
        return _low == static_cast<std::uint32_t>(address) && isValid() && _high == highOf(address, vid) &&
               !(isLocked() && isAged());
    }

    /// Whether a multicast entry may be for it: it starts with 01:00:5E.
    static bool isIpGroup(std::uint64_t address) { return address >> bitsOfGroup == groupPrefix; }

    /// Whether it is a multicast entry that frames to that address in that VLAN meet.
    bool isGroupOf(std::uint64_t address, unsigned vid, Vsc7390Options::MulticastMatch match) const;

private:
    static constexpr unsigned bitsInLow = 32;
    static constexpr std::uint64_t groupPrefix = 0x01005E;
    static constexpr unsigned bitsOfGroup = 24;

    static std::uint32_t highOf(std::uint64_t address, unsigned vid) {
        return mac::vid.placed(vid) | mac::highBytes.placed(static_cast<std::uint32_t>(address >> bitsInLow));
    }

    std::uint32_t _access = 0;
    std::uint32_t _high = 0;
    std::uint32_t _low = 0;
};

} // namespace simulation::vitesse
