#pragma once

#include <string>

namespace board_test {

/// A switch of which all ports are forwarding. Those from the sixth on are external: a VSC7390 leaves them
/// off.
inline std::string allPorts(char const* id, char const* model, unsigned ports) {
    std::string text = std::string("<switch id='") + id + "' switchModel='" + model + "'>\n";
    for (unsigned port = 0; port < ports; ++port) {
        text += "<port id='" + std::to_string(port) + "' connectedTo='" +
                (std::string(model) == "vsc7390" && port < 5 ? "switchInterlink" : "external") +
                "' portStatus='forwarding'/>\n";
    }
    return text + "</switch>\n";
}

/// A VLAN of two ports, without tags on either.
inline std::string pairVlan(char const* id, char const* switchId, unsigned one, unsigned other) {
    std::string text = std::string("<vlan id='") + id + "' typeOfVlan='tagBasedVlan'>";
    for (unsigned const port : {one, other}) {
        text += std::string("<port switchId='") + switchId + "' portId='" + std::to_string(port) +
                "' ingress='addTag' egress='stripTag'/>";
    }
    return text + "</vlan>\n";
}

/// Ports 0 and 1 in VLAN 5, ports 2 and 3 in VLAN 6.
inline std::string twoVlans(char const* switchId) {
    return pairVlan("5", switchId, 0, 1) + pairVlan("6", switchId, 2, 3);
}

inline std::string boardOf(std::string const& switches, std::string const& vlans) {
    return "<board><switches>\n" + switches + "</switches>\n" + vlans + "</board>\n";
}

inline std::string marvellBoard() {
    return boardOf(allPorts("0", "88e6096", 11), twoVlans("0"));
}

inline std::string vitesseBoard() {
    return boardOf(allPorts("3", "vsc7390", 24), twoVlans("3"));
}

} // namespace board_test
