#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <utility>

#include "simulation/ChipTestSide.hpp"

namespace simulation {

class Vsc7390;

namespace vitesse {
class Phy;
class Port;
} // namespace vitesse

/// What a test may do with a VSC7390 besides what it may do with every chip.
///
/// Units: "port 0" to "port 23", "analyser", "arbiter", "mii 0", "mii 1", "memory", "capture 0" to
/// "capture 15", "system", "phy 0" to "phy 23". Port, PHY and counter numbers, VIDs, rows and
/// buckets that do not exist throw std::out_of_range.
class Vsc7390TestSide : public ChipTestSide {
public:
    /// `chip` owns this object.
    explicit Vsc7390TestSide(Vsc7390& chip);

    void failAccess(unsigned nth) override;
    ChipForwarding* getForwarding() override;

    /// Where the chip answers, and how many bytes there.
    static constexpr unsigned physicalAddress = 0xF3000000;
    static constexpr unsigned windowSize = 0x01000000;

    static constexpr unsigned numberOfPorts = 24;
    static constexpr unsigned numberOfPhys = 24;
    static constexpr unsigned numberOfPhyRegisters = 32;
    static constexpr unsigned numberOfVids = 4096;
    static constexpr unsigned numberOfRows = 2048;
    static constexpr unsigned numberOfBuckets = 4;
    /// Bit of the port masks that stands for the processor's port.
    static constexpr unsigned cpuPort = 24;
    /// The counters of a port are its registers from the first to the last of these.
    static constexpr unsigned firstCounter = 0x50;
    static constexpr unsigned lastCounter = 0x5B;

    /// A VLAN as the chip has it.
    struct VlanEntry {
        /// Bit n: port n is a member.
        std::uint32_t ports = 0;
        bool sourceCheck = false;
        bool mirror = false;
        bool learnDisabled = false;
    };

    /// A valid entry of the MAC table.
    struct MacEntry {
        /// First byte on the wire highest. In a multicast entry the three high bytes are a port mask.
        std::uint64_t mac = 0;
        unsigned vid = 0;
        /// Number of the destination mask.
        unsigned destination = 0;
        bool locked = false;
        bool aged = false;
        bool ignoreVlan = false;
        bool forwardKill = false;
        bool cpuCopy = false;

        /// Whether the chip takes it for a forwarded IP multicast group.
        bool isMulticast() const { return locked && aged; }
        /// Of a multicast entry: the ports of the group.
        std::uint32_t getPorts() const { return static_cast<std::uint32_t>(mac >> 24); }
        /// Of a multicast entry: the low three bytes of the group's address.
        std::uint32_t getGroup() const { return static_cast<std::uint32_t>(mac & 0xFFFFFF); }
    };

    /// Row and bucket.
    using MacPlace = std::pair<unsigned, unsigned>;

    /// What MAC_CFG makes of a port.
    struct PortMac {
        bool receives = false;
        bool sends = false;
        /// 10, 100 or 1000; 0 while the clock is another one.
        unsigned megabits = 0;
        bool fullDuplex = false;
    };

    /// \name Ports
    /// @{

    /// Sets one of the counters of a port, as if that much had been counted.
    /// \param counter its register, firstCounter to lastCounter.
    void setCounter(unsigned number, unsigned counter, std::uint32_t value);
    std::uint32_t getCounter(unsigned number, unsigned counter) const;

    PortMac getPortMac(unsigned number) const;

    /// Frames of the port are waiting in the arbiter until it discards them, which it cannot finish
    /// while the port still receives.
    void queueFrames(unsigned number);
    /// @}

    /// \name PHYs: all on MII controller 1, each at its port's number
    /// @{

    /// Whether the PHY answers. All do at first; one that is unplugged keeps its registers.
    void plugPhy(unsigned number);
    void unplugPhy(unsigned number);

    /// The PHY's status shows the link at once, and its loss until it is read. Until one of them is called,
    /// it shows none; Vsc7390Options::untoldLink says whether the port works.
    void plugLink(unsigned number, unsigned megabits = 100, bool fullDuplex = true) override;
    void unplugLink(unsigned number) override;
    /// @}

    /// \name Tables
    /// @{
    VlanEntry getVlanEntry(unsigned vid) const;
    /// The entries that are not as the clear command leaves them, by VID.
    std::map<unsigned, VlanEntry> getVlans() const;
    /// Puts an entry there as if it had been written.
    void setVlanEntry(unsigned vid, VlanEntry const& entry);

    /// Nothing when the bucket is empty.
    std::optional<MacEntry> getMacEntry(unsigned row, unsigned bucket) const;
    std::map<MacPlace, MacEntry> getMacTable() const;
    void setMacEntry(unsigned row, unsigned bucket, MacEntry const& entry);
    void removeMacEntry(unsigned row, unsigned bucket);

    /// Row of an address, first byte on the wire highest, in a VLAN.
    unsigned getRow(std::uint64_t mac, unsigned vid) const;

    /// As if a frame from that address had come from the port of that number.
    /// \return false when the row has no bucket to spare.
    bool learn(std::uint64_t mac, unsigned vid, unsigned number);

    /// Ports of the multicast entry that frames to that address in that VLAN meet; nothing when there
    /// is none.
    std::optional<std::uint32_t> getMulticastPorts(std::uint64_t mac, unsigned vid) const;

    /// The ports that the tables and masks of the analyser send a frame to which port `ingress` got: part of
    /// what forwarding does. Whether ports are up, drop tags or fill in VIDs is not looked at.
    /// \param destination and `source`: addresses, first byte on the wire highest.
    std::uint32_t getEgressPorts(unsigned ingress, std::uint64_t destination, std::uint64_t source,
                                 unsigned vid) const;
    /// @}

    /// \name Faults
    /// @{

    /// The nth 32-bit access over the bus from now on (1 = the next, 0 = none) fails: the accessor
    /// returns false and nothing happens. Unlike failAccess(), polls of the ready bit count.
    void failBusAccess(unsigned nth);

    /// The chip leaves its socket, or comes back: reads then give all ones, writes go nowhere.
    void unplug() override;
    void plug() override;

    /// The four bytes of each word, read or written, come in the opposite order: the bus is not set up for
    /// the processor, or wired the other way round.
    void turnBytes();

    /// The next indirect reads never get ready, as many as `count`; those after them do.
    void loseReads(unsigned count);
    /// @}

private:
    vitesse::Port& port(unsigned number) const;
    vitesse::Phy& phy(unsigned number) const;

    Vsc7390& _chip;
};

} // namespace simulation
