#include "model/TagBasedVlan.hpp"

#include "model/ManagedSwitchPort.hpp"
#include "model/OwnedMap.hpp"
#include "model/TagBasedVlanPort.hpp"

TagBasedVlan::TagBasedVlan(Application& application, unsigned int id)
    : Vlan(application, id, Type::tagBased) {}

void TagBasedVlan::addPort(ManagedSwitchPort& port, _xmlNode* node) {
    // GCOVR_EXCL_BR_START: memory
    owned_map::makeOnce(members(), port.getId(), [&] { return new TagBasedVlanPort(*this, port, node); });
    // GCOVR_EXCL_BR_STOP
}
