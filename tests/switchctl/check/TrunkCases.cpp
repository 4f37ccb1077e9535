#include "tests/switchctl/check/CheckCase.hpp"
#include "tests/switchctl/check/Documents.hpp"

namespace {

/// A trunk whose start tag stands on a line of its own.
std::string trunkOf(std::string const& id, std::string const& ports, std::string const& mark = "\n") {
    return "<trunk" + (id.empty() ? "" : " id='" + id + "'") + ">" + mark + ports + "</trunk>\n";
}

std::string two() {
    return "<port id='1'/>\n<port id='2'/>\n";
}

std::string others() {
    return "<port id='3'/>\n<port id='4'/>\n";
}

/// A VSC7390 with two kinds of links.
std::string speeds(std::string const& trunks) {
    return boardOf("<switch id='3' switchModel='vsc7390'>\n" + port("1", "switchInterlink") +
                   port("2", "switchInterlink") + port("3", "smac") + port("4") + "\n" + trunks +
                   "</switch>\n");
}

/// Two interlinks, an external port and an interlink that is held down.
std::string interlinks(std::string const& id, std::string const& model, std::string const& vlans) {
    return boardOf("<switch id='" + id + "' switchModel='" + model + "'>" + port("1", "switchInterlink") +
                       port("2", "switchInterlink") + port("3") + port("4", "switchInterlink", "disabled") +
                       "</switch>\n",
                   vlans);
}

} // namespace

std::vector<CheckCase> trunkCases() {
    return {
        {"trunk-id-not-a-number", boardOf(vitesse("3", trunkOf("", two(), here))),
         boardOf(vitesse("3", trunkOf("1", two())))},
        {"trunk-id-not-a-number", boardOf(vitesse("3", trunkOf("up", two(), here))),
         boardOf(vitesse("3", trunkOf("0", two())))},
        {"trunk-members-lost", boardOf(vitesse("3", trunkOf("0x1", two(), here))),
         boardOf(vitesse("3", trunkOf("01", two())))},
        {"trunk-id-shared",
         boardOf(vitesse("3", trunkOf("1", two(), here)) + marvell("0", trunkOf("1", others(), here))),
         boardOf(vitesse("3", trunkOf("1", two())) + marvell("0", trunkOf("2", others())))},
        {"trunk-id-shared", boardOf(vitesse("3", trunkOf("1", two(), here) + trunkOf("1", others(), here))),
         boardOf(vitesse("3", trunkOf("1", two()) + trunkOf("2", others())))},
        {"trunk-outside-switch", boardOf(vitesse("3"), trunkOf("1", two(), here)),
         boardOf(vitesse("3", trunkOf("1", two())))},
        {"trunk-port-unknown", boardOf(vitesse("3", trunkOf("1", two() + "<port id='24'/>" + here))),
         boardOf(vitesse("3", trunkOf("1", two())))},
        {"trunk-port-unknown",
         boardOf(vitesse("3", port("one") + trunkOf("1", two() + "<port/>" + here) +
                                  trunkOf("2", "<port id='-1'/>" + std::string(here)))),
         boardOf(vitesse("3", port("one") + trunkOf("1", two())))},
        {"trunk-of-one-port", boardOf(vitesse("3", port("-1") + trunkOf("1", "<port id='1'/><port/>", here))),
         boardOf(vitesse("3", trunkOf("1", two())))},
        {"trunk-port-in-two",
         boardOf(vitesse("3", trunkOf("1", two()) + trunkOf("2", "<port id='2'/>" + std::string(here)))),
         boardOf(vitesse("3", trunkOf("1", two()) + trunkOf("2", others())))},
        {"trunk-unsupported", boardOf(marvell("0", trunkOf("1", two(), here))),
         boardOf(vitesse("3", trunkOf("1", two())))},
        {"trunk-of-one-port", boardOf(vitesse("3", trunkOf("1", "<port id='1'/>", here))),
         boardOf(vitesse("3", trunkOf("1", two())))},
        {"trunk-speeds-differ", speeds(trunkOf("1", "<port id='1'/><port id='3'/>", here)),
         speeds(trunkOf("1", two()))},
        {"trunk-speeds-differ", speeds(trunkOf("1", "<port id='1'/><port id='4'/>", here)),
         speeds(trunkOf("1", two()))},
        {"trunk-vlans-differ",
         boardOf(vitesse("3", trunkOf("1", two(), here)), tagBased("5", member("3", "1"))),
         boardOf(vitesse("3", trunkOf("1", two())), tagBased("5", member("3", "1") + member("3", "2")))},
        {"88e6096-interlinks-in-one-vlan",
         interlinks("0", "88e6096", tagBased("5", here + member("0", "1") + member("0", "2"))),
         interlinks("0", "88e6096",
                    tagBased("5", member("0", "1") + member("0", "3")) +
                        tagBased("6", member("0", "2") + member("0", "4")) +
                        portBased("7", member("0", "1") + member("0", "2")))},
        {"88e6096-interlinks-in-one-vlan",
         interlinks("0", "88e6096",
                    tagBased("5", here + member("0", "1") + member("0", "2") + member("0", "3"))),
         interlinks("3", "vsc7390", tagBased("5", member("3", "1") + member("3", "2")))},
    };
}
