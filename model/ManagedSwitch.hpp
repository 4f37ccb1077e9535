#pragma once

#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

class Application;
class ManagedSwitchPort;
class TrunkGroup;
class Xml;

/// One switch chip of the board, whatever its family: its identity, its ports and its trunk groups.
///
/// Owns the ports and trunk groups that are inserted. Created, configured and used from the
/// management thread; the accessors may be called from any thread once start-up has finished.
class ManagedSwitch {
public:
    /// Commands to a chip's MAC address table, as the chip numbers them.
    enum class MacAddressCommand : unsigned int {
        idle = 0,
        learn = 1,
        forget = 2,
        ageTable = 3,
        flushTable = 4,
        clearTable = 5,
        readEntry = 6,
        writeEntry = 7,
    };

    /// Stands for a number that the document does not have. A port that has none is configured like the
    /// others, and found by no id.
    static constexpr int noNumber = -1;

    /// A switch that the document describes. Logs the address.
    /// \param id the switch's id in the document.
    /// \param macAddress six bytes, copied.
    /// \param configuration for the chip classes; not read here.
    /// \param noHardwareAccess for the chip classes; stored only.
    ManagedSwitch(Application& application, unsigned int id, unsigned char const* macAddress,
                  Xml& configuration, bool noHardwareAccess);

    /// A switch without a document. The address is all zeros.
    /// \param value for the chip classes; not kept here.
    ManagedSwitch(Application& application, unsigned int id, unsigned short value, bool noHardwareAccess);

    /// Deletes the ports, then the trunk groups, those kept aside after the others of their kind.
    virtual ~ManagedSwitch();
    ManagedSwitch(ManagedSwitch const&) = delete;
    ManagedSwitch& operator=(ManagedSwitch const&) = delete;

    /// Empties the chip's VLAN table (IEEE 802.1Q).
    /// \return false when the chip could not be told to.
    virtual bool clearVlanTable() = 0;

    /// Reads a register of a PHY that is attached to the chip (IEEE 802.3 clause 22).
    /// \return false when the access failed.
    virtual bool phyReadRegister(unsigned short phyAddress, unsigned short registerAddress,
                                 unsigned short& value) = 0;

    /// Writes a register of a PHY that is attached to the chip.
    /// \return false when the access failed.
    virtual bool phyWriteRegister(unsigned short phyAddress, unsigned short registerAddress,
                                  unsigned short value) = 0;

    /// Issues one command to the chip's MAC address table.
    /// \return false when the access failed.
    virtual bool macTableCommand(MacAddressCommand command) = 0;

    /// Looks a multicast group up in the chip's address table.
    /// \param ip the group's IPv4 address as text.
    /// \param ports filled with the member ports by port id.
    /// \return true when the group was found.
    virtual bool readMulticastGroup(std::string ip, unsigned short vlanId,
                                    std::map<unsigned int, ManagedSwitchPort*>& ports) = 0;

    /// Writes a multicast group with exactly these members to the chip's address table.
    /// \return false when the access failed or the chip knows no such groups.
    virtual bool writeMulticastGroup(std::string ip, unsigned short vlanId,
                                     std::map<unsigned int, ManagedSwitchPort*> ports) = 0;

    /// Programs one link-aggregation group (IEEE 802.1AX) of these ports.
    /// \return false when the access failed or the chip knows no such groups.
    virtual bool writeAggregationGroup(std::map<unsigned int const, ManagedSwitchPort*> ports) = 0;

    unsigned int getId() const { return _id; }
    Application* getApplication() const { return _application; }

    /// How many ports and trunk groups have been inserted, together.
    unsigned short getNumberOfPorts() const { return _numberOfEntries; }

    /// The port of that id, or null after a message.
    ManagedSwitchPort* getPort(unsigned int id);

    /// The trunk group of that key, or null after a message.
    TrunkGroup* getTrunkGroup(unsigned int id);

    /// Takes ownership of a port. One whose id is taken is kept aside: the first one stays, and the other
    /// is counted all the same and deleted with the switch. One that there is no memory to keep is
    /// deleted, with std::bad_alloc.
    void insertPort(std::pair<unsigned int, ManagedSwitchPort*>& port);

    /// Takes ownership of a trunk group, with the same rule for a key that is taken.
    void insertTrunkGroup(std::pair<unsigned int, TrunkGroup*>& trunkGroup);

    /// The ports by ascending id.
    std::map<unsigned int, ManagedSwitchPort*>& getPorts() { return _ports; }
    std::map<unsigned int, ManagedSwitchPort*> const& getPorts() const { return _ports; }

    /// The trunk groups by ascending key.
    std::map<unsigned int const, TrunkGroup*> const& getTrunkGroups() const { return _trunkGroups; }

    /// Clears the chip's VLAN table, then has every port push its VLANs into the chip.
    void configureVlans();

    /// Has every port set up its link.
    void configurePorts();

    /// Has every port join its multicast groups.
    void configureMulticastFilters();

    /// Hands every trunk group's ports to the chip. Members without a port object are left out.
    void configureTrunkGroups();

private:
    unsigned int _id;
    unsigned short _numberOfEntries = 0;
    std::map<unsigned int, ManagedSwitchPort*> _ports;
    std::map<unsigned int const, TrunkGroup*> _trunkGroups;
    [[maybe_unused]] bool _noHardwareAccess;
    Application* _application;
    unsigned char _macAddress[6] = {};
    std::vector<std::unique_ptr<ManagedSwitchPort>> _portsAside;
    std::vector<std::unique_ptr<TrunkGroup>> _trunkGroupsAside;
};
