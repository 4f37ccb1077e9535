#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "marvell/MarvellManagementCommunications.hpp"
#include "model/ManagedSwitch.hpp"
#include "model/ManagedSwitchPort.hpp"

struct _xmlNode;

/// A Marvell 88E6096: detection, set-up, address ageing, and the VLAN and spanning-tree tables.
///
/// The tables share one set of staging registers per chip: a search leaves the entry that it found
/// there, a load stores what is there. Everything that touches a chip is meant for the management
/// thread.
class MarvellSwitch : public ManagedSwitch {
public:
    /// How a port belongs to a VLAN, as the VLAN table codes it.
    enum class VtuEgressState : unsigned short {
        untagged = 1, ///< member, frames leave without a tag
        tagged = 2,   ///< member, frames leave with a tag
        notMember = 3,
    };

    /// The chip's name in the document.
    static char const* const _xmlDescriptionString;

    /// Builds the switch of that id with its ports and trunk groups from the document.
    /// \param noHardwareAccess true: no register of the chip is accessed.
    ///
    /// Throws std::runtime_error when the document has several switches of that id.
    MarvellSwitch(Application& application, unsigned int switchId, std::uint8_t const* macAddress,
                  Xml& document, bool noHardwareAccess);

    /// Builds a switch with external, forwarding ports 0 to numberOfPorts - 1.
    MarvellSwitch(Application& application, unsigned int switchId, unsigned short numberOfPorts,
                  bool noHardwareAccess);

    ~MarvellSwitch() override;

    /// Whether an 88E6096 answers at the MDIO address that equals the switch id. Reads one register.
    static bool detectSwitch(Application& application, unsigned short switchId, bool noHardwareAccess);

    /// Sets how long the chip remembers an address that it no longer sees, in steps of 15 seconds.
    /// \param seconds 0 turns ageing off; 15 to 3825 are rounded to the nearest step; everything else
    ///        becomes the nearest of these, with a warning.
    /// \return false, after a message, when the register could not be read or written.
    bool setATUAgeTime(unsigned short seconds);

    /// \return success, after a message when it is false, and the age time in seconds.
    std::pair<bool, unsigned short> getATUAgeTime();

    /// Whether the table unit works on a command; false also when the register could not be read.
    bool isVlanTableBusy();

    /// Waits for the table unit to be free.
    /// \return false, after a message, when it was not by the change of the clock's second. The unit
    ///         must be free at the poll before that.
    bool waitVlanTableReady();

    /// Stages the VLAN membership of some ports, leaving the others as they are.
    /// \return false when an access failed, or the first port is above 11. A later port above 11 is
    ///         reported and goes into the register of the port before it.
    bool writeVlanTable(std::map<unsigned short, VtuEgressState> states);

    /// Reads the staged membership of as many ports as the switch counts.
    bool readVlanTable(std::map<unsigned short, VtuEgressState>& states);

    /// Loads the staged membership as the entry of a VLAN. Does not wait for the load to end.
    bool writeVlanTableCommand(unsigned short vlanId);

    /// Searches the entry of a VLAN and stages what the search found.
    /// \return whether that is a valid entry of this VLAN.
    bool readVlanTableCommand(unsigned short vlanId);

    /// Empties the VLAN table, and with it the spanning-tree table.
    bool clearVlanTable() override;

    /// Empties both tables. Does not wait.
    bool clearVlanAndSpanningTreeTable();

    /// Loads an entry for a VLAN of which no port is a member.
    bool initialiseVlan(unsigned short vlanId);

    /// Loads an entry for a spanning tree in which every port's own state counts.
    bool initialiseSpanningTree(unsigned short spanningTreeId);

    /// Stages the spanning-tree state of some ports. The chip keeps states that were staged before:
    /// the bits are added, and the port's membership bits are cleared.
    /// \return as for writeVlanTable.
    bool writeSpanningTreeTable(std::map<unsigned short, ManagedSwitchPort::PortEnabledStatus> states);

    /// Loads the staged states as the entry of a spanning tree. Does not wait for the load to end.
    bool writeSpanningTreeTableCommand(unsigned short spanningTreeId);

    /// Searches the entry of a spanning tree and stages what the search found.
    /// \return whether that is a valid entry of this spanning tree.
    bool readSpanningTreeTableCommand(unsigned short spanningTreeId);

    bool phyReadRegister(unsigned short phyAddress, unsigned short phyRegister,
                         unsigned short& value) override;
    bool phyWriteRegister(unsigned short phyAddress, unsigned short phyRegister,
                          unsigned short value) override;

    /// Does nothing: the library never edits this chip's address table.
    bool macTableCommand(MacAddressCommand command) override;

    /// Not supported on this chip: reported, false.
    bool readMulticastGroup(std::string ip, unsigned short vlanId,
                            std::map<unsigned int, ManagedSwitchPort*>& ports) override;

    /// Not supported on this chip: reported, false.
    bool writeMulticastGroup(std::string ip, unsigned short vlanId,
                             std::map<unsigned int, ManagedSwitchPort*> ports) override;

    /// Not supported on this chip: reported, false.
    bool writeAggregationGroup(std::map<unsigned int const, ManagedSwitchPort*> ports) override;

private:
    void insertNewPort(unsigned int portId, std::string const& connectedTo, std::string const& portStatus,
                       _xmlNode* node);

    bool readGlobal1(unsigned short registerNumber, unsigned short& value);
    bool writeGlobal1(unsigned short registerNumber, unsigned short value);
    bool startTableOperation(unsigned short code);
    bool chooseDataRegister(unsigned short port, char const* outOfBounds,
                            std::optional<unsigned short>& dataRegister);
    template <typename States, typename Place>
    bool stageStates(States const& states, char const* outOfBounds, Place place);
    template <typename State> std::map<unsigned short, State> everyPort(State state) const;

    std::unique_ptr<MarvellManagementCommunications> _communications;
    double _vlanTableTimeout = 1.0;
};
