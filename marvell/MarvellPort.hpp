#pragma once

#include <array>
#include <iosfwd>
#include <list>
#include <string>

#include "marvell/MarvellManagementCommunications.hpp"
#include "marvell/MarvellSwitch.hpp"
#include "model/ManagedSwitchPort.hpp"

/// One port of an 88E6096: link, 802.1Q, VLAN membership, port-based routes, statistics.
///
/// Port n's registers are in the chip's internal device 0x10 + n, its PHY has the address n. A port
/// whose number the document did not tell touches no register: its operations return false.
///
/// Everything here accesses the chip and is meant for the management thread.
class MarvellPort : public ManagedSwitchPort {
public:
    /// Any other value: the link is not forced.
    enum class ForceLinkSetting : unsigned int { down = 0, up = 1 };

    /// The chip's port states. All but `disabled` power the PHY up; each of them resets it.
    enum class PortForwardingSeting : unsigned int {
        disabled = 0,
        blocking = 1,
        learning = 2,
        forwarding = 3
    };

    /// What the port does with frames whose VLAN it does not belong to (IEEE 802.1Q).
    enum class Ieee802_1QModeVal : unsigned int { disabled = 0, fallback = 1, check = 2, secure = 3 };

    /// Commands to the chip's statistics unit.
    enum class StatsOperationCommand : unsigned int { flushPort = 2, readCounter = 4, capturePort = 5 };

    /// \param communications the switch's register access; outlives the port.
    /// \param connectedTo see ManagedSwitchPort; likewise `portStatus` and `node`.
    MarvellPort(ManagedSwitch& owner, MarvellManagementCommunications& communications, unsigned int portId,
                std::string connectedTo, std::string portStatus, _xmlNode* node);

    /// Puts the port into secure mode: frames of VLANs that it does not belong to are dropped.
    bool initialise() override;

    /// Takes the link down, forces speed, duplex and flow control, then sets link and state. Goes on
    /// after a failure; the result is false when any step failed.
    bool setPort(SpeedSetting speed, DuplexSetting duplex, FlowControlSetting flowControl,
                 LinkSetting link) override;

    /// Forces the link up or down, and forwards or disables the port.
    bool setPort(LinkSetting link) override;

    /// The chip's port state, 0 to 3 as in PortForwardingSeting; 0 also when it could not be read.
    unsigned short portStatus() override;

    /// Stops the PHY polling unit from following this port's PHY.
    bool disablePPUPort();

    bool setForceLink(ForceLinkSetting setting);
    bool setFlowControl(FlowControlSetting setting);

    /// Sets duplex in switch and PHY. A value other than full and forcedHalf is reported, and both
    /// registers are written back as they were.
    bool setDuplex(DuplexSetting setting);

    /// Sets the speed in switch and PHY; an unknown value as in setDuplex.
    bool setSpeed(SpeedSetting setting);

    /// Sets the port state; powers the PHY up or down and resets it.
    bool setEnabled(PortForwardingSeting setting);

    /// Sets the PHY's crossover mode; an unknown value is reported and changes nothing.
    bool setMdix(MdixSetting setting) override;

    /// Nothing to do on this chip: true.
    bool setPortLearningEnable(bool enable) override;

    bool addPortToVlan(unsigned short vlanId, IngressTagSetting ingress, EgressTagSetting egress) override;

    /// Every frame that comes in belongs to this VLAN.
    bool ingressAddTag(unsigned short vlanId);

    /// Frames that come in without a tag belong to this VLAN.
    bool ingressAddTagIfUntagged(unsigned short vlanId);

    /// Frames that come in belong to the VLAN of their tag; the default VLAN stays as it is.
    bool ingressValidateTag();

    bool ieee802_1QMode(Ieee802_1QModeVal mode);

    /// Makes the port a member of a VLAN table entry, which is created when there is none.
    bool addPortToVlanTable(unsigned short vlanId, EgressTagSetting egress);

    /// Takes the port out of a VLAN table entry. The entry must be the one that the last table
    /// operation on this switch read or wrote: what is staged is what gets loaded.
    bool removePortFromVlanTable(unsigned short vlanId);

    bool addPortToSpanningTree(unsigned short spanningTreeId, PortEnabledStatus state) override;

    /// Adds one route; routes are never taken away. A port number of 32 and above adds none.
    bool portBasedVlanRouteToPort(ManagedSwitchPort& target) override;
    bool portBasedVlanRouteToPort(std::list<ManagedSwitchPort*> targets) override;

    /// Not supported on this chip: reported, false.
    bool addPortToMulticastGroup(std::string address, unsigned short vlanId) override;

    /// Not supported on this chip: reported, false.
    bool removePortFromMulticastGroup(std::string address, unsigned short vlanId) override;

    /// Gives the statistics unit one command and waits until it is done.
    /// \param bank 0 to 15.
    /// \param pointer a port or a counter, 0 to 63.
    bool statsCommand(StatsOperationCommand operation, unsigned short bank, unsigned short pointer);

    /// Waits for the statistics unit.
    /// \return false when the register could not be read or, after a message, when the unit was not
    ///         free by the change of the clock's second.
    bool waitForStatsCommand();

    bool clearStatistics() override;

    /// Captures and reads all counters, keeps them, and writes them as twelve lines of hexadecimal
    /// numbers. The stream stays hexadecimal. Nothing is written when the counters could not be read.
    bool dumpStatistics(std::ostream& out) override;

private:
    using Registers = MarvellManagementCommunications::MarvelRegisterValues;
    static constexpr std::size_t numberOfChipCounters = 32;

    /// What dumpStatistics read last.
    struct Snapshot {
        std::array<unsigned int, numberOfChipCounters> counters{};
        unsigned int inDiscards = 0;
        unsigned short inFiltered = 0;
        unsigned short outFiltered = 0;
    };

    bool hasRegisters() const;
    unsigned short portNumber() const;
    unsigned short device() const;
    MarvellSwitch* marvellSwitch() const;

    bool readPort(unsigned short registerNumber, unsigned short& value);
    template <typename Change> bool modifyPort(unsigned short registerNumber, Change change) {
        return hasRegisters() && _communications.modifyRegister(device(), registerNumber, change);
    }
    template <typename Change> bool modifyPortAndPhy(unsigned short registerNumber, Change change);
    bool changeMembership(MarvellSwitch& owner, unsigned short vlanId, MarvellSwitch::VtuEgressState state);

    bool readCounters(std::array<unsigned int, numberOfChipCounters>& counters);
    bool readCounter(unsigned short number, unsigned int& counter);
    unsigned short readPortCounter(unsigned short registerNumber);
    void print(std::ostream& out) const;

    MarvellManagementCommunications& _communications;
    unsigned short _portDeviceBase;
    unsigned short _statsTimeout;
    unsigned short _numberOfCounters;
    Snapshot _snapshot;
};
