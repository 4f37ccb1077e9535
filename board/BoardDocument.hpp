#pragma once

#include <string>
#include <vector>

#include "host/Xml.hpp"

namespace board {

/// What a configuration document asks for, as far as a host cannot ask the switch manager: the
/// switches that should be there, the VLANs and the multicast groups. Read by the library's rules.
class BoardDocument {
public:
    struct Switch {
        unsigned int id = 0;
        /// The attribute's text; empty when it is absent.
        std::string model;
    };

    /// A port that the document names, whether or not the board has it.
    struct Member {
        int switchId = -1;
        int portId = -1;
        /// How the member treats tags, as the document writes it; empty when absent.
        std::string ingress;
        std::string egress;
    };

    struct Vlan {
        unsigned int id = 0;
        bool tagBased = false;
        std::vector<Member> members;
    };

    struct MulticastGroup {
        std::string address;
        unsigned int vlanId = 0;
        std::vector<Member> members;
    };

    explicit BoardDocument(Xml& document);

    /// In document order.
    std::vector<Switch> const& getSwitches() const;

    /// By ascending id, each id once.
    std::vector<Vlan> const& getVlans() const;

    /// In document order, each pair of address and VLAN once.
    std::vector<MulticastGroup> const& getMulticastGroups() const;

private:
    void readSwitches(Xml& document);
    void readVlans(Xml& document);
    void readMulticastGroups(Xml& document);
    MulticastGroup& groupFor(std::string const& address, unsigned int vlanId);

    std::vector<Switch> _switches;
    std::vector<Vlan> _vlans;
    std::vector<MulticastGroup> _multicastGroups;
};

} // namespace board
