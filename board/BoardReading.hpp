#pragma once

#include <libxml/tree.h>

#include <map>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "board/Labels.hpp"
#include "chips/ChipKinds.hpp"
#include "host/Xml.hpp"

namespace board {

/// What the library makes of a document before it touches a chip: the switches with their ports and
/// trunks, the VLANs and groups with their members. Found by the library's own queries and number
/// formats, so that whatever these find or miss is found or missed here. All chips count as present.
class BoardReading {
public:
    enum class Chip { marvell88E6096, vitesse7390 };

    /// Stands for a number that the document does not have.
    static constexpr int noNumber = -1;

    struct Port {
        xmlNodePtr element = nullptr;
        unsigned int id = 0;
        std::string connectedTo;
        std::string portStatus;
        /// smac, hmac or switchInterlink: the library sets the link up.
        bool hasLinkSettings() const;
        /// The library starts the link itself.
        bool comesUp() const;
        /// Its number, as board::idName() has it; "without a number" when none finds it.
        std::string getName() const;
    };

    struct Trunk {
        xmlNodePtr element = nullptr;
        int id = 0;
        /// In the order of the query; may be elements of other switches.
        std::vector<xmlNodePtr> members;

        /// Its id, as board::idName() has it; of one without an id, its line in the document.
        std::string getName() const;
    };

    struct Switch {
        xmlNodePtr element = nullptr;
        unsigned int id = 0;
        Chip chip = Chip::marvell88E6096;
        chips::ChipKind const* kind = nullptr;
        /// All elements that the switch finds when it looks itself up; it needs exactly one.
        std::vector<xmlNodePtr> found;
        std::map<unsigned int, Port> ports;
        /// Elements whose number was taken already.
        std::vector<xmlNodePtr> droppedPorts;
        std::vector<Trunk> trunks;
        /// What the library takes for the number of ports: every port element and every trunk.
        unsigned int entryCount = 0;

        /// The port that the library finds by that number, or null. One without a number is found by none.
        Port const* findPort(unsigned int portId) const;

        /// Its id, as board::idName() has it.
        std::string getName() const;

        unsigned int portsOfChip() const { return kind->getFacts().ports; }
        std::string const& chipName() const { return kind->getFacts().name; }
        bool isVitesse() const { return chip == Chip::vitesse7390; }
        bool isMarvell() const { return chip == Chip::marvell88E6096; }

        /// What goes for a VSC7390 or for an 88E6096. A further family is taken for neither.
        template <typename Value> Value byChip(Value const& vitesse, Value const& marvell) const {
            switch (chip) {
            case Chip::vitesse7390:
                return vitesse;
            case Chip::marvell88E6096:
                return marvell;
            }
            throw std::logic_error(chipName() + " is a chip without a rule here");
        }
    };

    /// A switch that the document asks for, whether or not tools know its kind of chip.
    struct Wanted {
        unsigned int id = 0;
        /// The attribute's text; empty when it is absent.
        std::string model;
        /// How the document writes the id.
        std::optional<std::string> writtenId;
    };

    enum class Outcome {
        added,
        unknownSwitch,
        unknownPort,
        /// Another switch's port of that number is a member.
        numberTaken,
        /// The port itself is a member.
        twice,
    };

    struct Member {
        xmlNodePtr element = nullptr;
        int switchId = noNumber;
        int portId = noNumber;
        Outcome outcome = Outcome::added;

        /// Whether the library knows what to do with tags there: without, a tag-based VLAN does not get the
        /// port, though it is a member.
        bool hasKnownTags() const;
    };

    struct Vlan {
        /// The element that made it, the first of the id.
        xmlNodePtr element = nullptr;
        unsigned int id = 0;
        bool tagBased = false;
        std::vector<Member> members;

        /// Its id in all ways.
        std::string getName() const;
    };

    struct Group {
        std::string address;
        unsigned int vlanId = 0;
        std::vector<Member> members;

        /// Its VLAN's id in all ways.
        std::string getVlanName() const;
    };

    /// The document must outlive the reading.
    explicit BoardReading(Xml& document);

    /// In document order.
    std::vector<Wanted> const& getWanted() const { return _wanted; }
    std::map<unsigned int, Switch> const& getSwitches() const { return _switches; }
    std::map<unsigned int, Vlan> const& getVlans() const { return _vlans; }
    std::vector<Group> const& getGroups() const { return _groups; }
    /// What people call the switches and ports, at which the library does not look.
    Labels const& getLabels() const { return _labels; }

    /// What the query selects; empty when it is none that libxml2 can evaluate.
    std::vector<xmlNodePtr> find(std::string const& query) const;

    /// Null when there is none.
    Switch const* getSwitch(int id) const;

    /// How the document writes the id of a VLAN; nothing when it has none.
    std::optional<std::string> writtenVlanId(unsigned int id) const;

    /// "88e6096", "vsc7390" or nothing when no driver knows the element's model.
    static std::optional<Chip> chipOf(xmlNodePtr switchElement);

    /// The id that discovery gives a switch element.
    static unsigned int switchIdOf(xmlNodePtr switchElement);

    /// The number of the port that an element within a trunk names.
    static unsigned int trunkPortIdOf(xmlNodePtr member);

    /// The id under which the library keeps a VLAN element.
    static unsigned int vlanIdOf(xmlNodePtr vlanElement);

    /// The query for the members of a VLAN.
    static std::string memberQuery(unsigned int vlanId);

    /// The memberships of a port, by VLAN id: as it gets them.
    std::map<unsigned int, Member const*> membershipsOf(unsigned int switchId, unsigned int portId) const;

    /// Members on that switch that are one.
    static std::vector<Member const*> addedMembers(std::vector<Member> const& members, unsigned int switchId);

    /// The highest VLAN id of IEEE 802.1Q.
    static constexpr unsigned int highestVlanId = 4094;

private:
    void readSwitches();
    void readPorts(Switch& owner) const;
    void readTrunks(Switch& owner) const;
    void readVlans();
    void readGroups();
    Group& groupFor(std::string const& address, unsigned int vlanId);
    Outcome outcomeOf(Member const& candidate, std::vector<Member> const& members) const;

    Xml& _document;
    Labels _labels;
    std::vector<Wanted> _wanted;
    std::map<unsigned int, Switch> _switches;
    std::map<unsigned int, Vlan> _vlans;
    std::vector<Group> _groups;
};

} // namespace board
