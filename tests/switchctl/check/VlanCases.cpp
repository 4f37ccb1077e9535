#include "tests/switchctl/check/CheckCase.hpp"
#include "tests/switchctl/check/Documents.hpp"

namespace {

std::string members() {
    return member("0", "1") + member("0", "2");
}

std::string routes() {
    return "<port switchId='0' portId='1'/><port switchId='0' portId='2'/>";
}

std::string marked() {
    return here + members();
}

std::string vlans(std::string const& text) {
    return boardOf(marvell("0"), text);
}

} // namespace

std::vector<CheckCase> vlanCases() {
    return {
        {"vlan-type-absent", vlans("<vlan id='5'>" + marked() + "</vlan>"), vlans(tagBased("5", members()))},
        {"vlan-type-unknown", vlans("<vlan id='5' typeOfVlan='tagged'>" + marked() + "</vlan>"),
         vlans(portBased("5", routes()))},
        {"vlan-id-not-a-number", vlans(tagBased("office", marked())), vlans(tagBased("face", members()))},
        {"vlan-id-not-a-number", vlans("<vlan typeOfVlan='tagBasedVlan'>" + marked() + "</vlan>"),
         vlans(tagBased("5", members()))},
        {"vlan-id-reads-differently", vlans(tagBased("10", marked())), vlans(tagBased("9", members()))},
        {"vlan-id-reads-differently", vlans(tagBased("1e", marked())), vlans(tagBased("0x5", members()))},
        {"vlan-id-reads-differently", vlans(portBased("10", here + member("0", "1", group("239.1.1.1")))),
         vlans(portBased("10", routes()))},
        {"vlan-id-reads-differently", vlans(tagBased("0x5", here + member("0", "1", group("239.1.1.1")))),
         vlans(tagBased("5", member("0", "1", group("239.1.1.1"))))},
        {"vlan-members-lost", vlans(tagBased("0x20", marked())), vlans(tagBased("20", members()))},
        {"vlan-members-lost", vlans(tagBased("1f", marked())), vlans(tagBased("1e", members()))},
        {"vlan-members-lost", vlans(tagBased("a", marked())), vlans(tagBased("05", members()))},
        {"vlan-takes-others-members",
         vlans(tagBased("1", "\n" + member("0", "1") + here) +
               tagBased("1e", "\n" + member("0", "2") + here)),
         vlans(tagBased("1", member("0", "1")) + tagBased("1f", member("0", "2")))},
        {"vlan-takes-others-members",
         vlans(tagBased("1e2", "\n" + member("0", "1") + here) +
               tagBased("100", "\n" + member("0", "2") + here)),
         vlans(tagBased("1e2", members()))},
        {"vlan-id-duplicate", vlans(tagBased("5", members()) + portBased("5", here + routes())),
         vlans(tagBased("5", members()) + portBased("15", routes()))},
        {"vlan-id-duplicate", vlans(tagBased("0x5", members()) + tagBased("05", here + members())),
         vlans(tagBased("5", members()))},
        {"vlan-id-out-of-range", vlans(tagBased("0", marked())), vlans(tagBased("1", members()))},
        {"vlan-id-out-of-range", vlans(tagBased("fff", marked())), vlans(tagBased("ffe", members()))},
        {"vlan-id-out-of-range", vlans(tagBased("1005", marked())), vlans(portBased("1005", routes()))},
        {"vlan-id-cut", vlans(tagBased("10005", marked())), vlans(tagBased("1005", members()))},
        {"group-vlan-cut", vlans(tagBased("65541", here + member("0", "1", group("239.1.1.1")))),
         vlans(tagBased("65541", members()))},
        {"vlan-without-members", vlans(tagBased("5", here)), vlans(tagBased("5", members()))},
    };
}
