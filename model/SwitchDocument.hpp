#pragma once

#include <functional>
#include <string>

#include "model/XmlNodes.hpp"
#include "model/XmlText.hpp"

class ManagedSwitch;
class Xml;

/// What the configuration document says about one switch, made into the switch's ports and trunk groups.
class SwitchDocument {
public:
    /// What one chip family's messages say differently from the other's.
    struct Wording {
        char const* speaker; ///< what they begin with
        bool showsInvalidId; ///< a port id that is not a number is quoted
        char const* toState; ///< what leads to a port's state
    };

    /// Makes a port and inserts it into its switch.
    using InsertPort = std::function<void(unsigned int id, std::string const& connectedTo,
                                          std::string const& portStatus, xmlNodePtr node)>;

    /// `document` and `owner` must outlive this object.
    SwitchDocument(Xml& document, ManagedSwitch& owner, Wording const& wording);

    /// Whether the document has the switch. Throws std::runtime_error, after a message, when it has
    /// several of that id.
    bool hasSwitch() const;

    /// The switch's ports.
    XmlNodes ports() const;

    /// The ports of all switches of the document.
    XmlNodes portsOfAllSwitches() const;

    /// Has a port inserted for each element. One without a number has the id
    /// ManagedSwitch::noNumber.
    void createPorts(XmlNodes const& elements, InsertPort const& insertPort) const;

    /// Builds the switch's trunk groups, keyed by their position in the document, and fills them with
    /// the ports of every trunk element of that id. Ids that are missing are
    /// ManagedSwitch::noNumber.
    void createTrunkGroups() const;

private:
    Xml& _document;
    ManagedSwitch& _owner;
    Wording _wording;
};
