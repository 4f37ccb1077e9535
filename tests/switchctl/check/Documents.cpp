#include "tests/switchctl/check/Documents.hpp"

std::string port(std::string const& id, std::string const& connectedTo, std::string const& portStatus) {
    return "<port id=\"" + id + "\" connectedTo=\"" + connectedTo + "\" portStatus=\"" + portStatus + "\"/>";
}

std::string ports(unsigned int first, unsigned int last, std::string const& connectedTo) {
    std::string text;
    for (unsigned int id = first; id <= last; ++id) {
        text += port(std::to_string(id), connectedTo) + "\n";
    }
    return text;
}

std::string marvell(std::string const& id, std::string const& more) {
    return "<switch id=\"" + id + "\" switchModel=\"88e6096\">\n" + port("0", "cpu") + "\n" + ports(1, 10) +
           more + "</switch>\n";
}

std::string vitesse(std::string const& id, std::string const& more) {
    return "<switch id=\"" + id + "\" switchModel=\"vsc7390\">\n" + port("0", "cpu") + "\n" + ports(1, 23) +
           more + "</switch>\n";
}

std::string tagBased(std::string const& id, std::string const& members) {
    return "<vlan id=\"" + id + R"(" typeOfVlan="tagBasedVlan">)" + members + "</vlan>\n";
}

std::string portBased(std::string const& id, std::string const& members) {
    return "<vlan id=\"" + id + R"(" typeOfVlan="portBasedVlan">)" + members + "</vlan>\n";
}

std::string member(std::string const& switchId, std::string const& portId, std::string const& groups) {
    return "<port switchId=\"" + switchId + "\" portId=\"" + portId +
           R"(" ingress="validateTag" egress="validateTag">)" + groups + "</port>";
}

std::string group(std::string const& address) {
    return "<forwardedMulticastGroup>" + address + "</forwardedMulticastGroup>";
}

std::string boardOf(std::string const& switches, std::string const& more) {
    return "<board>\n<switches>\n" + switches + "</switches>\n" + more + "</board>\n";
}
