#pragma once

#include <functional>

#include "model/XmlNodes.hpp"
#include "model/XmlText.hpp"

class ManagedSwitch;
class Xml;

/// What the configuration document says about one switch: the queries that both chip families make.
class SwitchDocument {
public:
    /// A "port" element of a switch.
    struct PortElement {
        explicit PortElement(xmlNodePtr element);

        xmlNodePtr node;
        XmlText idText;
        /// -1 when the element does not tell.
        int id = -1;
        bool hasId;
        XmlText connectedTo;
        XmlText portStatus;
    };

    /// `document` must outlive this object.
    SwitchDocument(Xml& document, unsigned int switchId);

    /// The switch's own elements; exactly one in a sound document.
    XmlNodes switches() const;

    /// The switch's ports.
    XmlNodes ports() const;

    /// The ports of all switches of the document.
    XmlNodes portsOfAllSwitches() const;

    /// Builds the switch's trunk groups, keyed by their position in the document, and fills them with
    /// the ports of every trunk element of that id.
    /// \param reportTrunkWithoutId called for a trunk element without an id, which becomes -1.
    /// \param reportPortWithoutId called with the trunk's id for a member without an id, which is
    ///        looked up as -1.
    void createTrunkGroups(ManagedSwitch& owner, std::function<void()> const& reportTrunkWithoutId,
                           std::function<void(int)> const& reportPortWithoutId) const;

private:
    XmlNodes trunks() const;
    XmlNodes trunkMembers(int trunkId) const;

    Xml& _document;
    unsigned int _switchId;
};
