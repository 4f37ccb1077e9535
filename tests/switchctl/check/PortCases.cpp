#include "tests/switchctl/check/CheckCase.hpp"
#include "tests/switchctl/check/Documents.hpp"

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
        {"port-id-not-a-number", boardOf(marvell0() + "\n" + port("one") + here + end()),
         boardOf(marvell("0"))},
        {"port-id-not-a-number", boardOf(marvell0() + "\n" + port("0x1") + here + end()),
         boardOf(marvell("0"))},
        {"port-id-not-a-number", boardOf(marvell0() + "\n" + port("-1") + here + end()),
         boardOf(marvell("0"))},
        {"port-id-duplicate", boardOf(marvell("0", port("7") + here)), boardOf(marvell("0") + marvell("1"))},
        {"port-id-duplicate", boardOf(vitesse("3", port("07") + here)), boardOf(vitesse("3") + marvell("1"))},
        {"port-beyond-chip", boardOf(marvell("0", port("11") + here)), boardOf(marvell("0"))},
        {"port-beyond-chip", boardOf(marvell("0", port("-2") + here)), boardOf(marvell("0", port("-1")))},
        {"port-beyond-chip", boardOf(vitesse("3", port("24") + here)), boardOf(vitesse("3", port("11")))},
        {"port-type-unknown", boardOf(marvell0() + "\n" + port("0", "ethernet") + here + end()),
         boardOf(marvell("0"))},
        {"port-type-unknown", boardOf(marvell0() + "\n<port id='0' portStatus='forwarding'/>" + here + end()),
         boardOf(marvell0() + port("0", "dsp") + end())},
        {"port-status-unknown", boardOf(marvell0() + "\n" + port("0", "cpu", "up") + here + end()),
         boardOf(marvell("0"))},
        {"port-status-unknown", boardOf(marvell0() + "\n<port id='0' connectedTo='cpu'/>" + here + end()),
         boardOf(marvell0() + port("0", "cpu", "learning") + end())},
        {"port-status-without-link",
         boardOf(marvell0() + "\n" + port("0", "smac", "learning") + here + end()),
         boardOf(marvell0() + port("0", "smac") + port("1", "hmac", "disabled") +
                 port("2", "external", "learning") + end())},
        {"port-disabled-in-vlans",
         boardOf(marvell0() + "\n" + port("0", "smac", "disabled") + here + port("1") + end(),
                 tagBased("5", member("0", "0") + member("0", "1"))),
         boardOf(marvell0() + port("0", "smac", "disabled") + port("1", "external", "disabled") +
                     port("2", "hmac") + end(),
                 tagBased("5", member("0", "1") + member("0", "2")))},
        {"port-status-without-effect", boardOf(marvell0() + here + port("0", "external", "disabled") + end()),
         boardOf(marvell0() + port("0", "smac", "disabled") + port("1", "external") + end())},
        {"ports-beyond-count", boardOf(marvell0() + here + ports(0, 9) + end()), boardOf(marvell("0"))},
        {"ports-beyond-count", boardOf(vitesse3() + here + port("0") + port("20") + end()),
         boardOf(vitesse("3"))},
        {"88e6096-status-does-not-hold",
         boardOf(marvell0() + "\n" + port("0", "cpu", "disabled") + here + port("1", "external", "learning") +
                     here + port("2", "dsp", "listening") + here + ports(3, 10) + end(),
                 tagBased("5", member("0", "0") + member("0", "1") + member("0", "2"))),
         boardOf(marvell0() + port("0", "cpu") + port("1", "smac", "disabled") +
                     port("2", "external", "disabled") + ports(3, 10) + end(),
                 tagBased("5", member("0", "0") + member("0", "1")) + portBased("6", member("0", "2")))},
        {"88e6096-status-does-not-hold",
         boardOf(marvell0() + "\n" + port("0", "cpu", "up") + here + end(), tagBased("5", member("0", "0"))),
         boardOf(vitesse3() + port("0", "cpu", "disabled") + end(), tagBased("5", member("3", "0")))},
        {"88e6096-port-unlisted", boardOf(marvell0() + here + ports(0, 4) + ports(6, 11) + end()),
         boardOf(marvell("0") + vitesse3() + port("1") + end())},
        {"88e6096-port-unlisted",
         boardOf(marvell("0") + "<switch id='1' switchModel='88e6096'>" + here + end()),
         boardOf(marvell("0", port("11")))},
        {"cpu-port-none", boardOf(marvell0() + here + ports(0, 10) + end()), boardOf(marvell("0"))},
        {"cpu-port-several",
         boardOf(marvell0() + "\n" + port("0", "cpu") + "\n" + port("1", "cpu") + here + end()),
         boardOf(marvell("0"))},
        {"cpu-port-several",
         boardOf(marvell0() + "\n" + port("0", "cpu") + here + end() +
                 "<switch id='1' switchModel='88e6096'>\n" + port("1", "cpu") + "\n" + end()),
         boardOf(marvell0() + port("0", "cpu") + port("1") + end())},
        {"vsc7390-beside-other-ports", boardOf(vitesse3() + here + ports(0, 23) + end() + marvell("0")),
         boardOf(vitesse("3"))},
        {"vsc7390-own-port-displaced",
         boardOf(marvell0() + "\n" + port("5", "dsp") + end() + vitesse3() + "\n" + port("5", "smac") + here +
                 end()),
         boardOf(vitesse("3") + marvell("0"))},
        {"vsc7390-foreign-port-added",
         boardOf(vitesse3() + "\n" + port("5") + end() + marvell0() + "\n" + port("6") + here + port("5") +
                 end()),
         boardOf(vitesse("3") + marvell("0"))},
        {"vsc7390-masks-overrun", boardOf(vitesse3() + here + ports(0, 23) + "<trunk id='1'/>" + end()),
         boardOf(vitesse("3"))},
    };
}
