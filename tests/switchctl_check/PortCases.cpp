#include "tests/switchctl_check/CheckCase.hpp"
#include "tests/switchctl_check/Documents.hpp"

namespace {

std::string marvell0() {
    return "<switch id='0' switchModel='88e6096'>";
}

std::string vitesse3() {
    return "<switch id='3' switchModel='vsc7390'>";
}

std::string end() {
    return "</switch>\n";
}

} // namespace

std::vector<CheckCase> portCases() {
    return {
        {"port-id-not-a-number", board(marvell0() + "\n" + port("one") + here + end()), board(marvell("0"))},
        {"port-id-not-a-number", board(marvell0() + "\n" + port("0x1") + here + end()), board(marvell("0"))},
        {"port-id-duplicate", board(marvell("0", port("7") + here)), board(marvell("0") + marvell("1"))},
        {"port-id-duplicate", board(vitesse("3", port("07") + here)), board(vitesse("3") + marvell("1"))},
        {"port-beyond-chip", board(marvell("0", port("11") + here)), board(marvell("0"))},
        {"port-beyond-chip", board(vitesse("3", port("24") + here)), board(vitesse("3", port("11")))},
        {"port-type-unknown", board(marvell0() + "\n" + port("0", "ethernet") + here + end()),
         board(marvell("0"))},
        {"port-type-unknown", board(marvell0() + "\n<port id='0' portStatus='forwarding'/>" + here + end()),
         board(marvell0() + port("0", "dsp") + end())},
        {"port-status-unknown", board(marvell0() + "\n" + port("0", "cpu", "up") + here + end()),
         board(marvell("0"))},
        {"port-status-unknown", board(marvell0() + "\n<port id='0' connectedTo='cpu'/>" + here + end()),
         board(marvell0() + port("0", "cpu", "learning") + end())},
        {"port-status-without-link", board(marvell0() + "\n" + port("0", "smac", "learning") + here + end()),
         board(marvell0() + port("0", "smac") + port("1", "hmac", "disabled") +
               port("2", "external", "learning") + end())},
        {"port-status-without-effect", board(marvell0() + here + port("0", "external", "disabled") + end()),
         board(marvell0() + port("0", "smac", "disabled") + port("1", "external") + end())},
        {"ports-beyond-count", board(marvell0() + here + ports(0, 9) + end()), board(marvell("0"))},
        {"ports-beyond-count", board(vitesse3() + here + port("0") + port("20") + end()),
         board(vitesse("3"))},
        {"cpu-port-none", board(marvell0() + here + ports(0, 10) + end()), board(marvell("0"))},
        {"cpu-port-several",
         board(marvell0() + "\n" + port("0", "cpu") + "\n" + port("1", "cpu") + here + end()),
         board(marvell("0"))},
        {"cpu-port-several",
         board(marvell0() + "\n" + port("0", "cpu") + here + end() +
               "<switch id='1' switchModel='88e6096'>\n" + port("1", "cpu") + "\n" + end()),
         board(marvell0() + port("0", "cpu") + port("1") + end())},
        {"vsc7390-beside-other-ports", board(vitesse3() + here + ports(0, 23) + end() + marvell("0")),
         board(vitesse("3"))},
        {"vsc7390-own-port-displaced",
         board(marvell0() + "\n" + port("5", "dsp") + end() + vitesse3() + "\n" + port("5", "smac") + here +
               end()),
         board(vitesse("3") + marvell("0"))},
        {"vsc7390-foreign-port-added",
         board(vitesse3() + "\n" + port("5") + end() + marvell0() + "\n" + port("6") + here + port("5") +
               end()),
         board(vitesse("3") + marvell("0"))},
        {"vsc7390-masks-overrun", board(vitesse3() + here + ports(0, 23) + "<trunk id='1'/>" + end()),
         board(vitesse("3"))},
    };
}
