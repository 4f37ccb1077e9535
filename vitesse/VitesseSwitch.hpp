#pragma once

#include <ctime>
#include <map>
#include <memory>
#include <string>

#include "model/ManagedSwitch.hpp"
#include "vitesse/VitesseManagementCommunications.hpp"

struct _xmlNode;

/// A Vitesse VSC7390: detection, set-up, and the VLAN, MAC, multicast and aggregation tables.
///
/// The VLAN table and the MAC table have one command register each; every operation waits for the
/// command before its own. Everything that touches the chip is meant for the management thread. What
/// the bus throws (see VitesseParallelCommunication) passes through every operation here.
class VitesseSwitch : public ManagedSwitch {
public:
    /// The VLAN table command register: a command, the ports of an entry, and its flags.
    struct VlanTableCommand {
        unsigned int word = 0;
    };

    /// The chip's name in the document.
    static char const* const _xmlDescriptionString;

    /// Builds the switch of that id with its trunk groups, and ports for all port elements of the
    /// document, whatever their switch; then sets the chip up.
    /// \param noHardwareAccess true: the chip is not accessed.
    ///
    /// Throws std::runtime_error when the document has several switches of that id.
    VitesseSwitch(Application& application, unsigned int id, unsigned char const* macAddress, Xml& document,
                  bool noHardwareAccess);

    /// Builds a switch with external, forwarding ports 0 to numberOfPorts - 1 and sets the chip up.
    VitesseSwitch(Application& application, unsigned int id, unsigned short numberOfPorts,
                  bool noHardwareAccess);

    ~VitesseSwitch() override;

    /// Whether a VSC7390 answers on the parallel bus. Reads one register.
    static bool detectSwitch(Application& application, bool noHardwareAccess);

    /// The settings of the whole chip, once.
    /// \return the result of the last register write.
    bool initialiseSetup();

    /// Empties the VLAN table and closes every port's source mask. Does not wait for the table.
    bool clearVlanTable() override;

    /// Closes the source mask of every port that the switch counts.
    bool cleanPortBaseVlans();

    /// Waits for the VLAN table.
    /// \return false, after a message, when it stayed busy for a second.
    bool waitforVlanTableReady();

    /// false also when the register could not be read.
    bool isVlanTableIdle();

    /// Stores an entry of the VLAN table; does not wait for it to be stored.
    bool writeVlanTableCommand(unsigned short vid, VlanTableCommand command);

    /// Reads an entry of the VLAN table.
    bool readVlanTableCommand(unsigned short vid, VlanTableCommand& command);

    /// The ports of a VLAN, bit p for port p.
    /// \return false when all 24 front ports or the processor's port are among them: such an entry has
    ///         never been written.
    bool readVlanMask(unsigned short vid, unsigned int& mask);

    /// Runs a command on the MAC table and waits for its end.
    /// \return whether the entry is valid; false also when an access failed.
    bool macTableCommand(MacAddressCommand command) override;

    /// Waits for the MAC table.
    /// \return false, after a message, when it stayed busy for a second.
    bool waitForMacTableReady();

    /// false also when the register could not be read.
    bool isMacTableIdle();

    /// The row of the MAC table for an address and a VLAN, in the low 11 bits.
    /// \param mac six bytes, the last one on the wire first.
    unsigned int calculateHashKeyForMacIndex(unsigned char const* mac, unsigned int vid);

    /// Searches the four buckets of a row for a group, told by its three low bytes, and leaves the
    /// table's index on it.
    bool findMulticastGroup(unsigned char const* mac, unsigned short vid);

    /// Leaves the table's index on the group's bucket or, when it has none, on the first free one.
    /// \return false when there is neither; the index is then on the last bucket.
    bool findMulticastGroupUseableBucket(unsigned char const* mac, unsigned short vid);

    /// Writes a group with exactly these members. In a row without a free bucket it replaces the last.
    bool writeMulticastGroup(std::string ipAddress, unsigned short vid,
                             std::map<unsigned int, ManagedSwitchPort*> ports) override;

    /// A member port without a port object is in the map with null.
    bool readMulticastGroup(std::string ipAddress, unsigned short vid,
                            std::map<unsigned int, ManagedSwitchPort*>& ports) override;

    /// Makes the ports one trunk: shares the sixteen hash classes out among them in turn, has traffic
    /// for one of them reach them all, and keeps frames from going back into the trunk.
    bool writeAggregationGroup(std::map<unsigned int const, ManagedSwitchPort*> ports) override;

    bool phyReadRegister(unsigned short phy, unsigned short reg, unsigned short& value) override;
    bool phyWriteRegister(unsigned short phy, unsigned short reg, unsigned short value) override;

    /// The MAC address of an IPv4 multicast group (RFC 1112, 6.4), the last byte on the wire first.
    /// \param ipAddress dotted decimal. Numbers that are missing give 0, larger ones are cut to 8 bits.
    /// \param mac six bytes.
    void ipMulticastStringtoMacAddress(std::string ipAddress, unsigned char* mac);

    /// The time from `start` to `end`.
    static timespec clock_timediff(timespec start, timespec end);

private:
    void insertNewPort(unsigned int portId, std::string const& connectedTo, std::string const& portStatus,
                       _xmlNode* node);

    bool readAnalyser(unsigned int address, unsigned int& value);
    bool writeAnalyser(unsigned int address, unsigned int value);
    bool runMacTableCommand(unsigned int command);
    bool isGroupInBucket(unsigned char const* mac, bool& found);
    bool dealAggregationMasks(std::map<unsigned int const, ManagedSwitchPort*> const& ports,
                              unsigned int trunkMask);
    bool joinTrunk(unsigned int port, unsigned int trunkMask);

    std::unique_ptr<VitesseManagementCommunications> _communications;
    double _vlanTimeout = 1.0;
    double _macTableTimeout = 1.0;
    [[maybe_unused]] unsigned short _reserved20 = 20;
    unsigned short _multicastBuckets = 4; // of a row of the MAC table
    unsigned short _aggregationMasks = 16;
};
