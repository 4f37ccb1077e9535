#include "tests/switchctl/check/CheckCase.hpp"
#include "tests/switchctl/check/Documents.hpp"

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
        {"schema", boardOf(marvell("0"), "<vlan id='0x3' typeOfVlan='portBasedVlan'/>" + std::string(here)),
         boardOf(marvell("0"), "<other><port any='1'/></other>" + portBased("3", ""))},
        {"schema", boardOf(marvell("0", "<prot id='1'/>" + std::string(here))),
         boardOf(marvell("0", "<x:prot xmlns:x='urn:x' id='1'/>"))},
        {"schema",
         boardOf(marvell("0"),
                 tagBased("3", "\n<port switchId='0' portId='1' igress='addTag' egress='stripTag'/>" +
                                   std::string(here))),
         boardOf(marvell("0"), tagBased("3", member("0", "1", group("239.1.2.3"))))},
        {"schema", boardOf(marvell("0"), "<trunk id='1'/>" + std::string(here)),
         boardOf(marvell("0", "<trunk id='1'/>"))},
        {"schema", boardOf(marvell("0"), tagBased("3", member("0", "1", "\n" + group("10.1.2.3") + here))),
         "<vlan id='3' typeOfVlan='tagBasedVlan' xmlns:x='urn:x' x:colour='red'/>"},
        {"number-does-not-fit", boardOf(marked("<switch id='4294967296' switchModel='88e6096'>")),
         boardOf(marvell("2147483647"))},
        {"number-does-not-fit", boardOf(marked(ageing("88e6096", "-2147483649"))),
         boardOf(ageing("88e6096", "-2147483648") + ports0())},
        {"number-does-not-fit",
         boardOf(marvell("0", port("2147483648") + here + "<trunk id='2147483648'>" + here +
                                  "<port id='99999999999'/>" + here + "</trunk>")),
         boardOf(marvell("0", port("2147483647") + "<trunk id='2147483647'><port id='12'/></trunk>"))},
        {"number-does-not-fit",
         boardOf(marvell("0"), tagBased("100000005", here + member("4294967296", "1") + here +
                                                         member("0", "4294967297") + here)),
         boardOf(marvell("0"), tagBased("ffffffff", member("2147483647", "2147483647")))},
        {"switch-none", "<board>" + std::string(here) + "<switch id='0' switchModel='88e6096'/></board>",
         boardOf(marvell("0"))},
        {"switch-outside-switches",
         boardOf(marvell("0"), "<switch id='1' switchModel='88e6096'>" + std::string(here) + "</switch>"),
         boardOf(marvell("0") + marvell("1"))},
        {"switch-model-absent", boardOf("<switch id='0'>" + std::string(here) + "</switch>"),
         boardOf(marvell("0"))},
        {"switch-model-unknown",
         boardOf("<switch id='0' switchModel='88E6096'>" + std::string(here) + "</switch>"),
         boardOf(marvell("0"))},
        {"switch-id-duplicate", boardOf(marvell("0") + marked("<switch id='0' switchModel='88e6096'>")),
         boardOf(marvell("0") + marvell("1"))},
        {"switch-id-duplicate", boardOf(marvell("1") + marked("<switch id='01' switchModel='vsc7390'>")),
         boardOf(marvell("1") + marvell("1x"))},
        {"switch-id-taken", boardOf(marvell("1") + marked("<switch id='1x' switchModel='88e6096'>")),
         boardOf(marvell("1") + marvell("2"))},
        {"switch-id-taken", boardOf(marvell("1") + marked("<switch id='65537' switchModel='vsc7390'>")),
         boardOf(marvell("1") + marvell("1"))},
        {"switch-id-reads-differently", boardOf(marked("<switch id='0x1' switchModel='88e6096'>")),
         boardOf(marvell("01"))},
        {"switch-id-reads-differently", boardOf(marked("<switch switchModel='88e6096'>")),
         boardOf(marvell("0"))},
        {"switch-id-reads-differently", boardOf(marked("<switch id='65537' switchModel='vsc7390'>")),
         boardOf(vitesse("65535"))},
        {"switch-id-no-mdio-address", boardOf(marked("<switch id='32' switchModel='88e6096'>")),
         boardOf(marvell("31") + vitesse("32"))},
        {"switch-second-vsc7390", boardOf(vitesse("1") + "<switch id='2' switchModel='vsc7390'/>" + here),
         boardOf(vitesse("1") + marvell("2"))},
        {"age-time-rounded", boardOf(marked(ageing("88e6096", "40"))),
         boardOf(ageing("88e6096", "45") + ports0())},
        {"age-time-out-of-range", boardOf(marked(ageing("88e6096", "14"))),
         boardOf(ageing("88e6096", "15") + ports0())},
        {"age-time-out-of-range", boardOf(marked(ageing("88e6096", "3826"))),
         boardOf(ageing("88e6096", "3825") + ports0())},
        {"age-time-cut", boardOf(marked(ageing("88e6096", "70000"))),
         boardOf(ageing("88e6096", "65534") + ports0())},
        {"age-time-cut", boardOf(marked(ageing("88e6096", "-1"))),
         boardOf(ageing("88e6096", "0") + ports0())},
        {"age-time-not-a-number", boardOf(marked(ageing("88e6096", "long"))),
         boardOf(ageing("88e6096", "0") + ports0())},
        {"age-time-not-a-number", boardOf(marked(ageing("88e6096", "300s"))),
         boardOf(ageing("88e6096", "300") + ports0())},
        {"age-time-means-default", boardOf(marked(ageing("88e6096", "65535"))),
         boardOf(ageing("88e6096", "65534") + ports0())},
        {"age-time-ignored", boardOf(marked(ageing("vsc7390", "300"))),
         boardOf(ageing("88e6096", "300") + ports0())},
    };
}
