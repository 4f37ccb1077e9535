#pragma once

#include <array>
#include <iosfwd>
#include <list>
#include <string>

#include "model/ManagedSwitchPort.hpp"
#include "vitesse/EgressMaxWatermarks.hpp"
#include "vitesse/FlowControlWatermarks.hpp"
#include "vitesse/MiscellaneousPoolControl.hpp"
#include "vitesse/VitesseManagementCommunications.hpp"
#include "vitesse/VitesseSwitch.hpp"

/// One port of a VSC7390: MAC, link, flow control, VLAN tagging and membership, forwarding,
/// multicast, statistics.
///
/// The chip has the ports 0 to 23; the operations of a port beyond them return false without an
/// access. Everything here accesses the chip, is meant for the management thread, and lets through
/// what the bus throws (see VitesseParallelCommunication). Unless said otherwise, an operation returns
/// false when a register could not be written.
class VitessePort : public ManagedSwitchPort {
public:
    enum class MacResetMode : unsigned int { intoReset = 0, outOfReset = 1 };

    /// Any value but `allow` blocks.
    enum class FrameForwardingSourceMask : unsigned int { allow = 0, block = 1 };

    /// \param access the switch's register access; outlives the port.
    /// \param connectedTo see ManagedSwitchPort; likewise `portStatus` and `node`.
    VitessePort(ManagedSwitch& owner, VitesseManagementCommunications& access, unsigned int id,
                std::string connectedTo, std::string portStatus, _xmlNode* node);

    /// Has the chip check that frames from here come from a member of their VLAN.
    bool initialise() override;

    /// Stops the port, drains it, takes its MAC through reset with the new settings, starts it again
    /// if it is to be linked, and reopens all source masks of the switch. Goes on after a failure; the
    /// result is false when any step failed. Waits without limit for the arbiter to drain.
    bool setPort(SpeedSetting speed, DuplexSetting duplex, FlowControlSetting flowControl,
                 LinkSetting link) override;

    /// Starts or stops the port and reopens all source masks of the switch.
    bool setPort(LinkSetting link) override;

    /// 1 when the port both receives and transmits, otherwise 0.
    unsigned short portStatus() override;

    /// Nothing to do on this chip: true.
    bool setMdix(MdixSetting setting) override;

    bool setReceiveEnable(bool enable);
    bool setTransmitEnable(bool enable);

    /// Has the arbiter drop what is queued from this port.
    bool setArbiterDiscardEnable(bool enable);

    /// Whether nothing is queued from this port.
    bool isArbiterEmpty();

    /// An unknown mode is reported and takes the MAC out of reset.
    bool setMacConfigurationReset(MacResetMode mode);

    /// Sets the MAC's clock and the gap between frames. An unknown speed is reported, sets the clock
    /// of 1000 Mbit/s, and gives false.
    bool setMacSpeed(SpeedSetting speed);
    bool setMacDuplex(DuplexSetting duplex);

    /// \param gap 0 to 31.
    bool setInterframeGap(unsigned short gap);

    /// Loads the port's number as the seed of its back-off (IEEE 802.3, 4.2.3.2.5).
    bool setSeed();

    bool setPortLearningEnable(bool enable) override;

    /// Lets frames from here go to a port, or not.
    bool setFrameForwardingtoPort(unsigned short port, FrameForwardingSourceMask mode);

    /// Sets the pause frames' address, the watermarks for the port's longest frame, and whether pause
    /// frames are used. True whatever the writes gave.
    bool setFlowControl(FlowControlSetting flowControl, SpeedSetting speed);

    /// The port's address: the base address plus the port's number.
    void getMacAddress(unsigned char (&mac)[6]);

    /// Lets frames from here go to every other port that is up, but not to where its own trunk's
    /// traffic goes.
    bool updateSourceMasks();

    bool addPortToVlan(unsigned short vid, IngressTagSetting ingress, EgressTagSetting egress) override;

    /// Every frame that comes in belongs to this VLAN.
    bool ingressAddTag(unsigned short vid);

    /// Frames that come in without a tag belong to this VLAN.
    bool ingressAddTagIfUntagged(unsigned short vid);

    /// Frames that come in belong to the VLAN of their tag; the port's own VLAN stays as it is.
    bool ingressValidateTag();

    /// Frames leave without a tag.
    bool egressStripTag(unsigned short vid);

    /// Frames leave with a tag.
    bool egressValidateTag();

    /// Makes the port a member of a VLAN table entry; an entry with all ports counts as empty.
    bool addPortToVlanTable(unsigned short vid);
    bool removePortFromVlanTable(unsigned short vid);

    /// Nothing to do on this chip: true.
    bool addPortToSpanningTree(unsigned short vid, PortEnabledStatus state) override;

    /// Opens the way to one port; no way is closed.
    bool portBasedVlanRouteToPort(ManagedSwitchPort& port) override;
    bool portBasedVlanRouteToPort(std::list<ManagedSwitchPort*> ports) override;

    bool addPortToMulticastGroup(std::string ipAddress, unsigned short vid) override;

    /// A group that the port does not belong to is left alone, and that is a success.
    /// \return false also when there is no such group.
    bool removePortFromMulticastGroup(std::string ipAddress, unsigned short vid) override;

    /// Reads all counters, keeps them, has the chip clear them, and writes them as eight lines of
    /// hexadecimal numbers. The stream stays hexadecimal. Counters that could not be read show 0.
    bool dumpStatistics(std::ostream& out) override;

    /// Nothing to do: dumpStatistics clears. True.
    bool clearStatistics() override;

private:
    using Bsa = VitesseManagementCommunications::Bsa;
    using FailedRead = VitesseManagementCommunications::FailedRead;
    static constexpr std::size_t numberOfPortCounters = 12;
    static constexpr std::size_t numberOfWatermarkSets = 5;
    static constexpr std::size_t numberOfEgressRecords = 4;

    /// Which records a port gets; C and D share their egress record.
    struct WatermarkSet {
        std::size_t record;
        std::size_t egressRecord;
    };

    bool isOnChip() const;
    bool registerAt(unsigned short address, Bsa& location) const;
    unsigned int bit() const;
    VitesseSwitch* vitesseSwitch() const;
    Application& application() const;

    /// Reads registers into their values, in order, then writes them back changed, in order, as long as
    /// the writes succeed.
    struct Change {
        Bsa location;
        unsigned int value;
    };
    template <std::size_t count> void readAll(std::array<Change, count>& changes);
    template <std::size_t count> bool writeAll(std::array<Change, count> const& changes);

    template <typename Modify> bool modifyMac(unsigned short address, Modify modify);
    bool setMaskBit(Bsa const& mask, unsigned int bits, bool on,
                    FailedRead failedRead = FailedRead::countsAsZero);
    bool tagIngress(bool ignoreTag, bool setPortVid, unsigned short vid);
    WatermarkSet chooseWatermarks(FlowControlSetting flowControl, SpeedSetting speed,
                                  unsigned int frameLength) const;
    void updateSourceMasksOfSwitch();
    void readCounters(std::array<unsigned int, numberOfPortCounters>& counters);

    std::array<unsigned char, 3> _interframeGaps;
    VitesseManagementCommunications& _communications;
    [[maybe_unused]] unsigned short _numberOfCounters;
    std::array<unsigned int, numberOfPortCounters> _counters{};
    std::array<unsigned char, 6> _baseMacAddress;
    unsigned int _normalFrameLimit;
    std::array<MiscellaneousPoolControl, numberOfWatermarkSets> _poolControls;
    std::array<FlowControlWatermarks, numberOfWatermarkSets> _flowControls;
    std::array<EgressMaxWatermarks, numberOfEgressRecords> _egressLimits;
    unsigned int _pauseOn;
    unsigned int _pauseOff;
};
