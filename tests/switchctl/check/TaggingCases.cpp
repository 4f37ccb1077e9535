#include "tests/switchctl/check/CheckCase.hpp"
#include "tests/switchctl/check/Documents.hpp"

namespace {

std::string tagging(std::string const& switchId, std::string const& ingress, std::string const& egress,
                    std::string const& mark = "\n") {
    return "\n<port switchId='" + switchId + "' portId='1' ingress='" + ingress + "' egress='" + egress +
           "'/>" + mark;
}

/// Port 1 of switch 0 in the VLANs 5 and 6.
std::string both(std::string const& five, std::string const& six) {
    return boardOf(marvell("0"), tagBased("5", five) + tagBased("6", six));
}

/// The same on a VSC7390.
std::string bothOnVitesse(std::string const& five, std::string const& six) {
    return boardOf(vitesse("3"), tagBased("5", five) + tagBased("6", six));
}

std::string add() {
    return "addTag";
}

std::string addIf() {
    return "addTagIfUntagged";
}

std::string keep() {
    return "validateTag";
}

std::string strip() {
    return "stripTag";
}

/// A VSC7390 whose start tag stands on a line of its own.
std::string markedVitesse(std::string const& portStatus, std::string const& vlans,
                          std::string const& mark = here) {
    return boardOf("<switch id='3' switchModel='vsc7390'>" + mark + port("1", "smac", portStatus) +
                       port("2", "smac") + "</switch>\n",
                   vlans);
}

/// A VSC7390 with two processors, a trunk, a link that is held down, and one that the host sets up.
std::string links(std::string const& vlans) {
    return boardOf("<switch id='3' switchModel='vsc7390'>\n" + port("0", "cpu") + port("1", "smac") +
                       port("2", "hmac") + port("3", "switchInterlink") + port("4", "switchInterlink") +
                       port("5", "switchInterlink", "disabled") +
                       "<trunk id='1'><port id='3'/><port id='4'/></trunk></switch>",
                   vlans);
}

std::string routes(std::string const& first, std::string const& second) {
    return "<port switchId='3' portId='" + first + "'/><port switchId='3' portId='" + second + "'/>";
}

std::string fiveOf3() {
    return member("3", "1") + member("3", "2");
}

} // namespace

std::vector<CheckCase> taggingCases() {
    return {
        {"untagged-vlan-replaced", both(tagging("0", addIf(), keep()), tagging("0", addIf(), keep(), here)),
         both(tagging("0", addIf(), keep()), tagging("0", keep(), keep()))},
        {"tag-forced-or-undone", both(tagging("0", add(), keep(), here), tagging("0", keep(), keep())),
         both(tagging("0", addIf(), keep()), tagging("0", keep(), keep()))},
        {"tag-forced-or-undone", both(tagging("0", keep(), keep()), tagging("0", add(), keep(), here)),
         boardOf(marvell("0"), tagBased("5", tagging("0", add(), strip())))},
        {"untagged-in-several-vlans",
         both(tagging("0", addIf(), strip()), tagging("0", keep(), strip(), here)),
         both(tagging("0", addIf(), strip()), tagging("0", keep(), keep()))},
        {"vsc7390-egress-shared",
         bothOnVitesse(tagging("3", addIf(), strip()), tagging("3", keep(), keep(), here)),
         bothOnVitesse(tagging("3", addIf(), keep()), tagging("3", keep(), keep()))},
        {"vsc7390-egress-shared",
         bothOnVitesse(tagging("3", addIf(), keep()), tagging("3", keep(), strip(), here)),
         both(tagging("0", addIf(), strip()), tagging("0", keep(), keep()))},
        {"port-in-no-vlan",
         boardOf("<switch id='0' switchModel='88e6096'>\n" + port("0") + here + port("1") + "\n" +
                     port("2", "external", "disabled") + "</switch>",
                 tagBased("5", member("0", "1")) + portBased("6", "<port switchId='0' portId='0'/>")),
         boardOf("<switch id='0' switchModel='88e6096'>" + port("1") + port("2", "smac", "disabled") +
                     "</switch>",
                 tagBased("5", member("0", "1")))},
        {"vsc7390-vlan-hopping", markedVitesse("forwarding", tagBased("5", tagging("3", keep(), keep()))),
         markedVitesse("forwarding", tagBased("5", tagging("3", add(), keep())), "")},
        {"vsc7390-vlan-hopping", markedVitesse("forwarding", tagBased("5", tagging("3", addIf(), strip()))),
         markedVitesse("disabled", tagBased("5", tagging("3", keep(), keep())), "")},
        {"vsc7390-vlan-hopping",
         markedVitesse("forwarding", tagBased("5", tagging("3", add(), keep())) +
                                         tagBased("6", tagging("3", keep(), keep()))),
         markedVitesse(
             "forwarding",
             tagBased("5", tagging("3", addIf(), keep())) + tagBased("6", tagging("3", add(), keep())), "")},
        {"vsc7390-vlan-hopping", markedVitesse("forwarding", tagBased("1", tagging("3", keep(), keep()))),
         both(tagging("0", keep(), keep()), tagging("0", keep(), keep()))},
        {"vsc7390-vlan-opens-no-path", boardOf(vitesse("3"), tagBased("5", here + fiveOf3())),
         boardOf(vitesse("3"), tagBased("5", fiveOf3()) + portBased("15", routes("1", "2")))},
        {"vsc7390-vlan-opens-no-path", links(tagBased("5", here + member("3", "0") + member("3", "1"))),
         links(tagBased("5", fiveOf3()))},
        {"vsc7390-vlan-opens-no-path", links(tagBased("5", here + member("3", "3") + member("3", "4"))),
         links(tagBased("5", member("3", "3") + member("3", "4") + member("3", "1")))},
        {"vsc7390-vlan-opens-no-path", links(tagBased("5", here + member("3", "5") + member("3", "1"))),
         boardOf(marvell("0"), tagBased("5", member("0", "1") + member("0", "2")))},
        {"vsc7390-port-based-overwritten", links(portBased("15", here + routes("1", "2"))),
         boardOf(vitesse("3"), portBased("15", routes("1", "2")))},
    };
}
