#include "tests/switchctl/check/CheckCase.hpp"
#include "tests/switchctl/check/Documents.hpp"

namespace {

std::string marvells() {
    return marvell("0") + marvell("1");
}

std::string groups(std::string const& text) {
    return boardOf(marvells(), tagBased("5", text));
}

/// A group under port `portId` of the VSC7390.
std::string on(std::string const& portId, std::string const& address, std::string const& mark = "") {
    return member("3", portId, "\n" + group(address) + mark);
}

std::string vitesseGroups(std::string const& five, std::string const& more = "") {
    return boardOf(vitesse("3"), tagBased("5", five) + more);
}

/// Ports 0, 5, 6 and 7, which the library takes for the first four.
std::string gaps(std::string const& text) {
    return boardOf("<switch id='3' switchModel='vsc7390'>" + port("0") + port("5") + port("6") + port("7") +
                       "</switch>",
                   tagBased("5", text));
}

// The row is the XOR of the address bits 10:0, 21:11 and 22 with what all groups share.
std::string row() {
    return on("1", "224.0.0.1") + on("1", "224.0.8.0") + on("1", "224.64.0.0");
}

} // namespace

std::vector<CheckCase> groupCases() {
    return {
        {"group-not-multicast", groups(member("0", "1", "\n" + group("192.168.1.1") + here)),
         groups(member("0", "1", group("224.0.0.0") + group("239.255.255.255")))},
        {"group-not-multicast", groups(member("0", "1", "\n" + group("239.1.2") + here)),
         groups(member("0", "1", group(" 239.1.2.3 ")))},
        {"group-not-multicast", groups(member("0", "1", "\n" + group("") + here)),
         groups(member("0", "1", group("239.1.2.3")))},
        {"group-blanks-in-address", groups(member("0", "1", "\n" + group(" 239.1.2.3 ") + here)),
         groups(member("0", "1", group("239.1.2.3")))},
        {"group-misplaced", boardOf(marvells(), group("239.1.2.3") + here),
         groups(member("0", "1", group("239.1.2.3")))},
        {"group-member-unknown", groups(member("2", "1", "\n" + group("239.1.2.3") + here)),
         groups(member("1", "1", group("239.1.2.3")))},
        {"group-member-unknown", groups(member("0", "11", "\n" + group("239.1.2.3") + here)),
         boardOf(
             "<switch id='0' switchModel='88e6096'><port id='1' connectedTo='cpu' portStatus='forwarding'>" +
             group("239.1.2.3") + "</port></switch>")},
        {"group-number-taken",
         groups(member("0", "1", group("239.1.2.3")) + "\n" + member("1", "1", group("239.1.2.3")) + here),
         groups(member("0", "1", group("239.1.2.3")) + member("1", "2", group("239.1.2.3")))},
        {"group-twice", groups(member("0", "1", group("239.1.2.3") + "\n" + group("239.1.2.3") + here)),
         groups(member("0", "1", group("239.1.2.3") + group("239.1.2.4")))},
        {"group-unsupported", groups(member("0", "1", "\n" + group("239.1.2.3") + here)),
         vitesseGroups(on("1", "239.1.2.3"))},
        {"group-without-vlan",
         boardOf("<switch id='3' switchModel='vsc7390'><port id='1' connectedTo='cpu' "
                 "portStatus='forwarding'>\n" +
                 group("239.1.2.3") + here + "</port></switch>"),
         vitesseGroups(on("1", "239.1.2.3"))},
        {"vsc7390-group-outside-vlan",
         boardOf(vitesse("3"), tagBased("10", "\n" + on("1", "239.1.1.2", here))),
         boardOf(marvell("0"), tagBased("10", member("0", "1", group("239.1.1.2"))))},
        {"vsc7390-group-outside-vlan",
         boardOf(vitesse("3"), tagBased("5", "<port switchId='3' portId='1' ingress='addTag'>\n" +
                                                 group("239.1.1.2") + here + "</port>")),
         vitesseGroups(on("1", "239.1.1.2"))},
        {"vsc7390-group-outside-vlan", boardOf(vitesse("3"), portBased("5", on("1", "239.1.1.2", here))),
         boardOf("<switch id='3' switchModel='vsc7390'><port id='1' connectedTo='cpu' "
                 "portStatus='forwarding'>" +
                 group("239.1.1.2") + "</port></switch>")},
        {"group-same-entry", vitesseGroups(on("1", "239.129.1.2") + on("2", "239.1.1.2", here)),
         vitesseGroups(on("1", "239.1.1.2") + on("2", "239.1.1.3"))},
        {"group-same-entry",
         vitesseGroups(on("1", "239.1.1.2"),
                       "<vlan id='69' typeOfVlan='tagBasedVlan'>" + on("2", "239.1.1.2", here) + "</vlan>"),
         vitesseGroups(on("1", "239.1.1.2"), tagBased("6", on("2", "239.1.1.2")))},
        {"group-row-full", vitesseGroups(row() + on("1", "224.64.8.1") + on("1", "224.0.24.2", here)),
         vitesseGroups(row() + on("1", "224.64.8.1"))},
        {"group-port-forgotten", gaps(on("5", "239.1.1.2", here) + on("6", "239.1.1.2")),
         gaps(on("0", "239.1.1.2") + on("6", "239.1.1.2"))},
    };
}
