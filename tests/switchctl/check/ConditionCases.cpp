#include "tests/switchctl/check/CheckCase.hpp"
#include "tests/switchctl/check/Documents.hpp"

namespace {

std::string markedMarvell(std::string const& portsOfIt) {
    return "<switch id='0' switchModel='88e6096'>" + std::string(here) + portsOfIt + "</switch>\n";
}

std::string markedVitesse(std::string const& more = "") {
    return "<switch id='3' switchModel='vsc7390'>" + std::string(here) + ports(0, 23) + more + "</switch>\n";
}

std::string trunkOfTwo() {
    return "<trunk id='1'><port id='1'/><port id='2'/></trunk>";
}

std::string twoVlans(std::string const& switchId) {
    return tagBased("5", member(switchId, "1")) + tagBased("6", member(switchId, "2"));
}

} // namespace

std::vector<CheckCase> conditionCases() {
    return {
        {"88e6096-open-while-starting", boardOf(markedMarvell(ports(0, 10)), twoVlans("0")),
         boardOf(marvell("0") + marvell("1"), tagBased("5", member("0", "1")) +
                                                  tagBased("6", member("1", "2")) +
                                                  portBased("7", member("0", "1")))},
        {"88e6096-silent-while-restarting",
         boardOf(markedMarvell(ports(0, 10)), tagBased("5", member("0", "1"))),
         boardOf(marvell("0"), portBased("5", member("0", "1")))},
        {"88e6096-ports-by-strap", boardOf(markedMarvell(port("0", "cpu") + port("1", "smac"))),
         boardOf("<switch id='0' switchModel='88e6096'>" + ports(0, 8, "smac") +
                 port("9", "external", "disabled") + port("11") + "</switch>")},
        {"88e6096-states-shared",
         boardOf(marvell("0") + marvell("1"), tagBased("5", member("0", "1")) +
                                                  "<vlan id='45' typeOfVlan='tagBasedVlan'>" + here +
                                                  member("0", "2") + "</vlan>"),
         boardOf(marvell("0") + marvell("1"), tagBased("5", member("0", "1")) +
                                                  tagBased("45", member("1", "2")) +
                                                  tagBased("46", member("0", "3")))},
        {"vsc7390-open-while-restarting", boardOf(markedVitesse(), tagBased("5", member("3", "1"))),
         boardOf(vitesse("3", trunkOfTwo()) + marvell("0"),
                 twoVlans("0") + portBased("9", member("3", "1") + member("3", "2")))},
        {"vsc7390-trunk-loops-while-restarting",
         boardOf(markedVitesse(trunkOfTwo()), portBased("6", member("3", "1") + member("3", "2"))),
         boardOf(vitesse("3", trunkOfTwo()), portBased("6", member("3", "1") + member("3", "3")) +
                                                 portBased("7", member("3", "2") + member("3", "3")))},
        {"vsc7390-never-forgets", boardOf(markedVitesse()), boardOf(marvell("0"), twoVlans("0"))},
    };
}
