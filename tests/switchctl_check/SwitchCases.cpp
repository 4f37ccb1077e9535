#include "tests/switchctl_check/CheckCase.hpp"
#include "tests/switchctl_check/Documents.hpp"

namespace {

std::string ports0() {
    return "\n" + ports(0, 10) + "</switch>\n";
}

std::string ageing(std::string const& model, std::string const& seconds) {
    return "<switch id='0' switchModel='" + model + "' atuAgeTime='" + seconds + "'>";
}

std::string marked(std::string const& startTag) {
    return startTag + here + ports0();
}

} // namespace

std::vector<CheckCase> switchCases() {
    return {
        {"schema", board(marvell("0"), "<vlan id='0x3' typeOfVlan='portBasedVlan'/>" + std::string(here)),
         board(marvell("0"), "<other><port any='1'/></other>" + portBased("3", ""))},
        {"schema", board(marvell("0", "<prot id='1'/>" + std::string(here))),
         board(marvell("0", "<x:prot xmlns:x='urn:x' id='1'/>"))},
        {"schema",
         board(marvell("0"),
               tagBased("3", "\n<port switchId='0' portId='1' igress='addTag' egress='stripTag'/>" +
                                 std::string(here))),
         board(marvell("0"), tagBased("3", member("0", "1", group("239.1.2.3"))))},
        {"schema", board(marvell("0"), "<trunk id='1'/>" + std::string(here)),
         board(marvell("0", "<trunk id='1'/>"))},
        {"schema", board(marvell("0"), tagBased("3", member("0", "1", "\n" + group("10.1.2.3") + here))),
         "<vlan id='3' typeOfVlan='tagBasedVlan' xmlns:x='urn:x' x:colour='red'/>"},
        {"switch-none", "<board>" + std::string(here) + "<switch id='0' switchModel='88e6096'/></board>",
         board(marvell("0"))},
        {"switch-outside-switches",
         board(marvell("0"), "<switch id='1' switchModel='88e6096'>" + std::string(here) + "</switch>"),
         board(marvell("0") + marvell("1"))},
        {"switch-model-absent", board("<switch id='0'>" + std::string(here) + "</switch>"),
         board(marvell("0"))},
        {"switch-model-unknown",
         board("<switch id='0' switchModel='88E6096'>" + std::string(here) + "</switch>"),
         board(marvell("0"))},
        {"switch-id-duplicate", board(marvell("0") + marked("<switch id='0' switchModel='88e6096'>")),
         board(marvell("0") + marvell("1"))},
        {"switch-id-duplicate", board(marvell("1") + marked("<switch id='01' switchModel='vsc7390'>")),
         board(marvell("1") + marvell("1x"))},
        {"switch-id-taken", board(marvell("1") + marked("<switch id='1x' switchModel='88e6096'>")),
         board(marvell("1") + marvell("2"))},
        {"switch-id-taken", board(marvell("1") + marked("<switch id='65537' switchModel='vsc7390'>")),
         board(marvell("1") + marvell("1"))},
        {"switch-id-reads-differently", board(marked("<switch id='0x1' switchModel='88e6096'>")),
         board(marvell("01"))},
        {"switch-id-reads-differently", board(marked("<switch switchModel='88e6096'>")), board(marvell("0"))},
        {"switch-id-reads-differently", board(marked("<switch id='65537' switchModel='vsc7390'>")),
         board(vitesse("65535"))},
        {"switch-id-no-mdio-address", board(marked("<switch id='32' switchModel='88e6096'>")),
         board(marvell("31") + vitesse("32"))},
        {"switch-second-vsc7390", board(vitesse("1") + "<switch id='2' switchModel='vsc7390'/>" + here),
         board(vitesse("1") + marvell("2"))},
        {"age-time-rounded", board(marked(ageing("88e6096", "40"))),
         board(ageing("88e6096", "45") + ports0())},
        {"age-time-out-of-range", board(marked(ageing("88e6096", "14"))),
         board(ageing("88e6096", "15") + ports0())},
        {"age-time-out-of-range", board(marked(ageing("88e6096", "3826"))),
         board(ageing("88e6096", "3825") + ports0())},
        {"age-time-cut", board(marked(ageing("88e6096", "70000"))),
         board(ageing("88e6096", "65534") + ports0())},
        {"age-time-cut", board(marked(ageing("88e6096", "-1"))), board(ageing("88e6096", "0") + ports0())},
        {"age-time-not-a-number", board(marked(ageing("88e6096", "long"))),
         board(ageing("88e6096", "0") + ports0())},
        {"age-time-not-a-number", board(marked(ageing("88e6096", "300s"))),
         board(ageing("88e6096", "300") + ports0())},
        {"age-time-means-default", board(marked(ageing("88e6096", "65535"))),
         board(ageing("88e6096", "65534") + ports0())},
        {"age-time-ignored", board(marked(ageing("vsc7390", "300"))),
         board(ageing("88e6096", "300") + ports0())},
    };
}
