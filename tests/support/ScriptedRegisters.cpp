#include "tests/support/ScriptedRegisters.hpp"

namespace test_support {

ScriptedRegisters::ScriptedRegisters(Application& application)
    : MarvellManagementCommunications(application, 0, false) {}

bool ScriptedRegisters::initialise() {
    return true;
}

bool ScriptedRegisters::read(Access const& actual, unsigned short& value) {
    Access const* const access = _table.take(actual);
    if (access == nullptr || access->fails) {
        return false;
    }
    value = static_cast<unsigned short>(access->value);
    return true;
}

bool ScriptedRegisters::write(Access const& actual) {
    Access const* const access = _table.take(actual);
    return access != nullptr && !access->fails;
}

bool ScriptedRegisters::readRegister(MarvelRegisterValues& registerValues) {
    return read(reads(registerValues.deviceAddress, registerValues.registerAddress, 0), registerValues.value);
}

bool ScriptedRegisters::writeRegister(MarvelRegisterValues registerValues) {
    return write(writes(registerValues.deviceAddress, registerValues.registerAddress, registerValues.value));
}

bool ScriptedRegisters::phyReadRegister(unsigned short phyAddress, unsigned short phyRegister,
                                        unsigned short& value) {
    return read(phyReads(phyAddress, phyRegister, 0), value);
}

bool ScriptedRegisters::phyWriteRegister(unsigned short phyAddress, unsigned short phyRegister,
                                         unsigned short value) {
    return write(phyWrites(phyAddress, phyRegister, value));
}

} // namespace test_support
