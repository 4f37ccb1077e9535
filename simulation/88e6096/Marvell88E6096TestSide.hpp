#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <optional>

#include "simulation/ChipTestSide.hpp"

namespace simulation {

/// What a test may do with an 88E6096 besides what it may do with every chip.
///
/// Units: "port 0" to "port 10", "global 1", "global 2", "phy 0" to "phy 7". Port and PHY numbers
/// that do not exist throw std::out_of_range.
class Marvell88E6096TestSide : public ChipTestSide {
public:
    static constexpr unsigned numberOfPorts = 11;
    static constexpr unsigned numberOfPhys = 8;
    static constexpr unsigned numberOfCounters = 32;

    /// The parts of the chip that take commands and show busy.
    enum class CommandUnit { smi, smiPhy, vtu, atu, statistics };

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
    virtual void setCounter(unsigned port, unsigned counter, std::uint32_t value) = 0;
    virtual std::uint32_t getCounter(unsigned port, unsigned counter) const = 0;

    /// Sets the port registers InDiscards (0x10 and 0x11), InFiltered (0x12), OutFiltered (0x13).
    virtual void setInDiscards(unsigned port, std::uint32_t value) = 0;
    virtual void setInFiltered(unsigned port, std::uint16_t value) = 0;
    virtual void setOutFiltered(unsigned port, std::uint16_t value) = 0;

    /// Connects a partner to the port. Ports with a PHY have link through the PHY unless it is
    /// powered down; the others get their link level set.
    /// \param megabits 10, 100 or 1000.
    virtual void plugLink(unsigned port, unsigned megabits = 100, bool fullDuplex = true) = 0;
    virtual void unplugLink(unsigned port) = 0;

    /// The link level that counts while the port does not follow a PHY and nothing is forced.
    virtual void setLinkLevel(unsigned port, bool up) = 0;

    /// Whether the port has link, by force, PHY or level; bit 11 of its status.
    virtual bool hasLink(unsigned port) const = 0;

    /// The VTU by VID, the STU by SID.
    virtual std::map<unsigned, VtuEntry> getVtu() const = 0;
    virtual std::map<unsigned, StuEntry> getStu() const = 0;
    virtual std::optional<VtuEntry> getVtuEntry(unsigned vid) const = 0;
    virtual std::optional<StuEntry> getStuEntry(unsigned sid) const = 0;

    /// Puts an entry there as if it had been loaded.
    virtual void setVtuEntry(unsigned vid, VtuEntry const& entry) = 0;
    virtual void setStuEntry(unsigned sid, StuEntry const& entry) = 0;

    /// A violation that the VTU's operation 7 will return.
    virtual void addVtuViolation(unsigned vid, unsigned sourcePort, VtuViolation violation) = 0;

    /// Ageing time as register 0x0A of Global 1 says, in seconds; 0 when ageing is off.
    virtual unsigned getAgeSeconds() const = 0;

    /// The chip leaves its socket, or comes back: nothing pulls its bus down, so frames read all ones and
    /// written ones are lost.
    virtual void unplug() = 0;
    virtual void plug() = 0;

    /// Every command that is started from now on shows busy for that long. Results are there at
    /// once all the same.
    virtual void setBusyTime(CommandUnit unit, std::uint64_t nanoseconds) = 0;

    /// The unit shows busy for ever.
    /// \param nthCommand from which command on, 1 = the next one; 0 = from now on, command or not.
    virtual void hang(CommandUnit unit, unsigned nthCommand = 0) = 0;

    /// Ends a hang; the unit is ready at once.
    virtual void release(CommandUnit unit) = 0;

    /// Commands that the unit has started.
    virtual unsigned getCommands(CommandUnit unit) const = 0;
};

} // namespace simulation
