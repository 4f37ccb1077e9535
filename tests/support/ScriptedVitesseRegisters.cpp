#include "tests/support/ScriptedVitesseRegisters.hpp"

namespace test_support {

namespace {

unsigned int phyUnit(VitesseManagementCommunications::MiiManagementLocation controller, unsigned short phy) {
    return static_cast<unsigned int>(controller) << 16 | phy;
}

} // namespace

ScriptedVitesseRegisters::ScriptedVitesseRegisters(Application& application)
    : VitesseManagementCommunications(application, false) {}

bool ScriptedVitesseRegisters::readRegister(Bsa const& location, unsigned int& value) {
    Access const* const access = _table.take(reads(location.block, location.subBlock, location.address, 0));
    if (access == nullptr || access->fails) {
        return false;
    }
    value = access->value;
    return true;
}

bool ScriptedVitesseRegisters::writeRegister(Bsa const& location, unsigned int const& value) {
    Access const* const access =
        _table.take(writes(location.block, location.subBlock, location.address, value));
    return access != nullptr && !access->fails;
}

bool ScriptedVitesseRegisters::phyReadRegister(MiiManagementLocation controller, unsigned short phyAddress,
                                               unsigned short registerAddress, unsigned short& value) {
    Access const* const access = _table.take(phyReads(phyUnit(controller, phyAddress), registerAddress, 0));
    if (access == nullptr || access->fails) {
        return false;
    }
    value = static_cast<unsigned short>(access->value);
    return true;
}

bool ScriptedVitesseRegisters::phyWriteRegister(MiiManagementLocation controller, unsigned short phyAddress,
                                                unsigned short registerAddress, unsigned short value) {
    Access const* const access =
        _table.take(phyWrites(phyUnit(controller, phyAddress), registerAddress, value));
    return access != nullptr && !access->fails;
}

} // namespace test_support
