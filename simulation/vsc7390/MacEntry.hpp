#pragma once

#include <cstdint>

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

    bool isValid() const;
    bool isLocked() const;
    bool isAged() const;
    std::uint32_t getAccess() const { return _access; }
    std::uint32_t getHigh() const { return _high; }
    std::uint32_t getLow() const { return _low; }
    Vsc7390TestSide::MacEntry decode() const;

    void setAged();

    /// Whether it is the entry of that address in that VLAN. No multicast entry is.
    bool isOf(std::uint64_t address, unsigned vid) const;

    /// Whether it is a multicast entry that frames to that address in that VLAN meet.
    bool isGroupOf(std::uint64_t address, unsigned vid, Vsc7390Options::MulticastMatch match) const;

private:
    std::uint32_t _access = 0;
    std::uint32_t _high = 0;
    std::uint32_t _low = 0;
};

} // namespace simulation::vitesse
