#include "tests/switchctl/check/CheckCase.hpp"
#include "tests/switchctl/check/Documents.hpp"

namespace {

std::string boards() {
    return marvell("0") + marvell("1");
}

std::string vlan5(std::string const& members) {
    return boardOf(boards(), tagBased("5", "\n" + members));
}

std::string routes(std::string const& members) {
    return boardOf(boards(), portBased("5", "\n" + members));
}

} // namespace

std::vector<CheckCase> memberCases() {
    return {
        {"member-switch-unknown", vlan5(member("2", "1") + here), vlan5(member("1", "1"))},
        {"member-switch-unknown",
         vlan5("<port portId='1' ingress='addTag' egress='stripTag'/>" + std::string(here)),
         vlan5(member("0", "1"))},
        {"member-port-unknown", vlan5(member("0", "11") + here), vlan5(member("0", "10"))},
        {"member-port-unknown", vlan5(member("0", "x") + here), vlan5(member("3", "1"))},
        {"member-port-unknown",
         boardOf(marvell("0", port("-1")), tagBased("5", "\n" + member("0", "-1") + here + member("0", "") +
                                                             here + "<port switchId='0'/>" + here)),
         boardOf(marvell("0", port("-1")), tagBased("5", member("0", "1")))},
        {"member-number-taken", vlan5(member("0", "1") + "\n" + member("1", "1") + here),
         vlan5(member("0", "1") + member("1", "2"))},
        {"member-twice", vlan5(member("0", "1") + "\n" + member("0", "1") + here),
         vlan5(member("0", "1") + member("1", "1"))},
        {"port-based-across-switches",
         boardOf(boards(),
                 portBased("5", here + std::string("<port switchId='0' portId='1'/><port switchId='1' "
                                                   "portId='2'/>"))),
         routes("<port switchId='0' portId='1'/><port switchId='0' portId='2'/>")},
        {"tag-attribute-ignored",
         routes("<port switchId='0' portId='1' egress='stripTag'/>" + std::string(here)),
         vlan5(member("0", "1"))},
        {"tag-attribute-absent",
         vlan5("<port switchId='0' portId='1' egress='stripTag'/>" + std::string(here)),
         routes("<port switchId='0' portId='1'/>")},
        {"tag-attribute-absent",
         vlan5("<port switchId='0' portId='1' ingress='addTag'/>" + std::string(here)),
         vlan5(member("0", "1"))},
        {"tag-attribute-unknown",
         vlan5("<port switchId='0' portId='1' ingress='stripTag' egress='stripTag'/>" + std::string(here)),
         vlan5("<port switchId='0' portId='1' ingress='addTagIfUntagged' egress='stripTag'/>")},
        {"tag-attribute-unknown",
         vlan5("<port switchId='0' portId='1' ingress='addTag' egress='addTag'/>" + std::string(here)),
         vlan5("<port switchId='0' portId='1' ingress='addTag' egress='validateTag'/>")},
    };
}
