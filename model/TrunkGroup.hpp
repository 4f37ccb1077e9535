#pragma once

#include <map>
#include <utility>

class ManagedSwitchPort;

/// One link-aggregation group (IEEE 802.1AX) of ports of one switch. The switch owns the group and,
/// separately, the ports; the group only refers to them.
class TrunkGroup {
public:
    /// \param id the trunk's id in the document; an id that is missing there is ManagedSwitch::noNumber.
    explicit TrunkGroup(unsigned int id);
    virtual ~TrunkGroup();
    TrunkGroup(TrunkGroup const&) = delete;
    TrunkGroup& operator=(TrunkGroup const&) = delete;

    /// Signed, so that a missing id queries and prints as -1.
    int getId() const;

    /// Adds a member under its port id; a port id that is taken keeps its first member. The port may
    /// be null, for a member that the switch does not have.
    void insertPort(std::pair<unsigned int const, ManagedSwitchPort*> port);

    /// A copy of the members by ascending port id.
    std::map<unsigned int const, ManagedSwitchPort*> getTrunkedPorts() const;

private:
    std::map<unsigned int const, ManagedSwitchPort*> _trunkedPorts;
    unsigned int _id;
};
