#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <optional>

#include "simulation/ChipTestSide.hpp"

namespace simulation {

class Marvell88E6096;

namespace marvell {
class Port;
}

/// What a test may do with an 88E6096 besides what it may do with every chip.
///
/// Units: "port 0" to "port 10", "global 1", "global 2", "phy 0" to "phy 7". Port and PHY numbers
/// that do not exist throw std::out_of_range.
class Marvell88E6096TestSide : public ChipTestSide {
public:
    /// `chip` owns this object.
    explicit Marvell88E6096TestSide(Marvell88E6096& chip);

    void failAccess(unsigned nth) override;
    ChipForwarding* getForwarding() override;

    static constexpr unsigned numberOfPorts = 11;
    static constexpr unsigned numberOfPhys = 8;
    static constexpr unsigned numberOfCounters = 32;

    /// A VLAN as the chip has it.
    struct VtuEntry {
        unsigned fid = 0;
        unsigned sid = 0;
        /// For each port 0 member, 1 member untagged, 2 member tagged, 3 not a member.
        std::array<unsigned, numberOfPorts> memberTags{};
        /// The top nibble of data register 0x09: bit 3 override, bits 2:0 priority.
        unsigned priorityOverride = 0;
    };

    /// The spanning-tree states of one SID, for each port: 0 the port's own state, 1 blocking,
    /// 2 learning, 3 forwarding.
    struct StuEntry {
        std::array<unsigned, numberOfPorts> portStates{};
    };

    enum class VtuViolation { miss, member };

    /// Sets one of the 32 counters of a port, as if that much had been counted.
    void setCounter(unsigned port, unsigned counter, std::uint32_t value);
    std::uint32_t getCounter(unsigned port, unsigned counter) const;

    /// Connects a partner to the port. Ports with a PHY have link through the PHY unless it is
    /// powered down; the others get their link level set.
    /// \param megabits 10, 100 or 1000.
    void plugLink(unsigned number, unsigned megabits = 100, bool fullDuplex = true) override;
    void unplugLink(unsigned number) override;

    /// The link level that counts while the port does not follow a PHY and nothing is forced.
    void setLinkLevel(unsigned number, bool up);

    /// Whether the port has link, by force, PHY or level; bit 11 of its status.
    bool hasLink(unsigned number) const;

    /// The VTU by VID, the STU by SID.
    std::map<unsigned, VtuEntry> getVtu() const;
    std::map<unsigned, StuEntry> getStu() const;
    std::optional<VtuEntry> getVtuEntry(unsigned vid) const;
    std::optional<StuEntry> getStuEntry(unsigned sid) const;

    /// Puts an entry there as if it had been loaded.
    void setVtuEntry(unsigned vid, VtuEntry const& entry);
    void setStuEntry(unsigned sid, StuEntry const& entry);

    /// The ATU's entry for an address, first byte on the wire highest, as its data register has it; 0 when
    /// there is none.
    std::uint32_t getAtuEntry(unsigned fid, std::uint64_t mac) const;
    /// Puts an entry there as if it had been loaded; removes it when the data has no state.
    void setAtuEntry(unsigned fid, std::uint64_t mac, std::uint32_t data);

    /// A violation that the VTU's operation 7 will return.
    void addVtuViolation(unsigned vid, unsigned sourcePort, VtuViolation violation);

    /// Ageing time as register 0x0A of Global 1 says, in seconds; 0 when ageing is off.
    unsigned getAgeSeconds() const;

    /// The chip leaves its socket, or comes back: nothing pulls its bus down, so frames read all ones and
    /// written ones are lost.
    void unplug() override;
    void plug() override;

    /// The address straps say another MDIO address, 0 to 31; throws std::out_of_range where one answers
    /// already.
    void moveTo(unsigned address);

    /// The straps select single-chip mode: ports and global registers answer at MDIO addresses of their own,
    /// 0x10 to 0x1C, the PHYs at 0 to 7, and the chip at its own no more. Where another chip answers, that
    /// one goes on to.
    void strapSingleChip();

private:
    marvell::Port& port(unsigned number) const;

    Marvell88E6096& _chip;
};

} // namespace simulation
