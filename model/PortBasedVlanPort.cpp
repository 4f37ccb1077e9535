#include "model/PortBasedVlanPort.hpp"

#include "host/Application.hpp"
#include "model/ManagedSwitch.hpp"
#include "model/ManagedSwitchPort.hpp"
#include "model/Vlan.hpp"

PortBasedVlanPort::PortBasedVlanPort(Vlan& vlan, ManagedSwitchPort& switchPort) : VlanPort(vlan, switchPort) {
    vlan.getApplication()->log(3, "PortBasedVlanPort::PortBasedVlanPort vlan %#x switch %d port %d created\n",
                               vlan.getId(), switchPort.getSwitch().getId(), switchPort.getId());
    switchPort.addVlanPort(this);
}
