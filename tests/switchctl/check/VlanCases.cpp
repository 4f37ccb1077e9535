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

std::string vlansOf(std::string const& text) {
    return boardOf(marvell("0"), text);
}

} // namespace

std::vector<CheckCase> vlanCases() {
    return {
        {"vlan-type-absent", vlansOf("<vlan id='5'>" + marked() + "</vlan>"),
         vlansOf(tagBased("5", members()))},
        {"vlan-type-unknown", vlansOf("<vlan id='5' typeOfVlan='tagged'>" + marked() + "</vlan>"),
         vlansOf(portBased("5", routes()))},
        {"vlan-id-not-a-number", vlansOf(tagBased("office", marked())), vlansOf(tagBased("face", members()))},
        {"vlan-id-not-a-number", vlansOf("<vlan typeOfVlan='tagBasedVlan'>" + marked() + "</vlan>"),
         vlansOf(tagBased("5", members()))},
        {"vlan-id-reads-differently", vlansOf(tagBased("10", marked())), vlansOf(tagBased("9", members()))},
        {"vlan-id-reads-differently", vlansOf(tagBased("1e", marked())), vlansOf(tagBased("0x5", members()))},
        {"vlan-id-reads-differently", vlansOf(portBased("10", here + member("0", "1", group("239.1.1.1")))),
         vlansOf(portBased("10", routes()))},
        {"vlan-id-reads-differently", vlansOf(tagBased("0x5", here + member("0", "1", group("239.1.1.1")))),
         vlansOf(tagBased("5", member("0", "1", group("239.1.1.1"))))},
        {"vlan-members-lost", vlansOf(tagBased("0x20", marked())), vlansOf(tagBased("20", members()))},
        {"vlan-members-lost", vlansOf(tagBased("1f", marked())), vlansOf(tagBased("1e", members()))},
        {"vlan-members-lost", vlansOf(tagBased("a", marked())), vlansOf(tagBased("05", members()))},
        {"vlan-takes-others-members",
         vlansOf(tagBased("1", "\n" + member("0", "1") + here) +
                 tagBased("1e", "\n" + member("0", "2") + here)),
         vlansOf(tagBased("1", member("0", "1")) + tagBased("1f", member("0", "2")))},
        {"vlan-takes-others-members",
         vlansOf(tagBased("1e2", "\n" + member("0", "1") + here) +
                 tagBased("100", "\n" + member("0", "2") + here)),
         vlansOf(tagBased("1e2", members()))},
        {"vlan-id-duplicate", vlansOf(tagBased("5", members()) + portBased("5", here + routes())),
         vlansOf(tagBased("5", members()) + portBased("15", routes()))},
        {"vlan-id-duplicate", vlansOf(tagBased("0x5", members()) + tagBased("05", here + members())),
         vlansOf(tagBased("5", members()))},
        {"vlan-id-out-of-range", vlansOf(tagBased("0", marked())), vlansOf(tagBased("1", members()))},
        {"vlan-id-out-of-range", vlansOf(tagBased("fff", marked())), vlansOf(tagBased("ffe", members()))},
        {"vlan-id-out-of-range", vlansOf(tagBased("1005", marked())), vlansOf(portBased("1005", routes()))},
        {"vlan-id-cut", vlansOf(tagBased("10005", marked())), vlansOf(tagBased("1005", members()))},
        {"group-vlan-cut", vlansOf(tagBased("65541", here + member("0", "1", group("239.1.1.1")))),
         vlansOf(tagBased("65541", members()))},
        {"vlan-without-members", vlansOf(tagBased("5", here)), vlansOf(tagBased("5", members()))},
    };
}
