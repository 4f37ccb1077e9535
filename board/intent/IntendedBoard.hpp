#pragma once

#include <libxml/tree.h>

#include <array>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "board/Labels.hpp"
#include "board/intent/FrameKind.hpp"
#include "host/Xml.hpp"

namespace board {

/// What a document says of ports, VLANs, groups and trunks, as people read it: each switch has the ports
/// under its own element, each VLAN the members under its own. BoardReading has what the library makes of
/// the same text; nothing of that is here, so that the two can be compared.
class IntendedBoard {
public:
    enum class Ingress { addTag, validateTag, addTagIfUntagged };

    /// Of a port in a tag-based VLAN.
    struct Membership {
        Ingress ingress = Ingress::validateTag;
        bool stripsTag = false;
        /// Of the member in the document.
        int line = 0;
    };

    struct Port {
        /// The document lists it, in that line.
        bool isListed = false;
        int line = 0;
        /// The text of portStatus.
        std::string status;
        /// The text of connectsTo: the port of the board at the other end of its cable.
        std::string connectsTo;
        /// By VLAN id.
        std::map<unsigned, Membership> memberships;
        /// The other members, on this switch, of its port-based VLANs.
        PortSet partners = 0;
        /// The other members of its trunks.
        PortSet trunk = 0;
    };

    /// The members that a tag-based VLAN has on a switch.
    struct Members {
        PortSet all = 0;
        PortSet stripping = 0;
    };

    struct Switch {
        unsigned id = 0;
        /// Of the element.
        int line = 0;
        /// The text of switchModel.
        std::string model;
        /// Sends a group to the ports that are listed for it only.
        bool filtersGroups = false;
        std::array<Port, 32> ports;
        /// May carry frames.
        PortSet open = 0;
        /// Are in port-based VLANs.
        PortSet inPortVlans = 0;
        /// By VLAN id.
        std::map<unsigned, Members> vlans;
        /// Those of two members and more.
        std::vector<PortSet> trunks;
    };

    struct Vlan {
        unsigned id = 0;
        /// How the document writes the id, and where.
        std::string written;
        int line = 0;
    };

    struct Group {
        /// As the document writes it.
        std::string address;
        std::uint64_t hardwareAddress = 0;
        /// None for a group that is listed at ports of switches.
        std::optional<unsigned> vlan;
        /// By switch.
        std::map<unsigned, PortSet> members;
    };

    /// The document says two things of which one can hold, or one that nothing can do.
    struct Contradiction {
        int line = 0;
        std::string text;
    };

    /// The document is not needed afterwards.
    explicit IntendedBoard(Xml& document);

    /// By id; those whose model a driver knows. Of two elements with one id, the first.
    std::map<unsigned, Switch> const& getSwitches() const { return _switches; }
    /// Tag-based ones, by id.
    std::map<unsigned, Vlan> const& getVlans() const { return _vlans; }
    std::vector<Group> const& getGroups() const { return _groups; }
    std::vector<Contradiction> const& getContradictions() const { return _contradictions; }
    Labels const& getLabels() const { return _labels; }

    /// The hardware address of an IPv4 group (RFC 1112); nothing for other texts.
    static std::optional<std::uint64_t> hardwareAddressOf(std::string const& group);

private:
    void readSwitch(xmlNodePtr element);
    static void readTrunk(Switch& owner, xmlNodePtr element);
    void readTagVlan(xmlNodePtr element);
    void readMember(unsigned vlan, xmlNodePtr element);
    void readPortVlan(xmlNodePtr element);
    void readGroup(xmlNodePtr element);
    void findContradictions();
    void findContradictions(Switch const& owner, unsigned port, Ingress ingress, char const* word);

    Switch* findSwitch(xmlNodePtr element, char const* attributeName);

    Labels _labels;
    std::map<unsigned, Switch> _switches;
    std::map<unsigned, Vlan> _vlans;
    std::vector<Group> _groups;
    std::vector<Contradiction> _contradictions;
};

} // namespace board
