#include "tests/support/SmiScript.hpp"

#include <gtest/gtest.h>

namespace test_support {

namespace {

constexpr unsigned int commandRegister = 0;
constexpr unsigned int dataRegister = 1;

constexpr unsigned int readCommand = 0x9800;
constexpr unsigned int writeCommand = 0x9400;
constexpr unsigned int withoutAddress = 0xFC00;

} // namespace

bool SmiScript::frameRead(unsigned int address, unsigned int registerNumber, unsigned short& value) {
    value = 0xFFFF;
    EXPECT_EQ(address, chipAddress) << "nothing else is on this bus";
    if (address == chipAddress && registerNumber == commandRegister) {
        value = _command & 0x7FFF;
    } else if (address == chipAddress && registerNumber == dataRegister) {
        value = _data;
    } else {
        ADD_FAILURE() << "an unknown register was read: " << address << "." << registerNumber;
    }
    return true;
}

bool SmiScript::frameWrite(unsigned int address, unsigned int registerNumber, unsigned short value) {
    EXPECT_EQ(address, chipAddress) << "nothing else is on this bus";
    if (address == chipAddress && registerNumber == commandRegister) {
        _command = value;
        return runSmiCommand(value);
    }
    if (address == chipAddress && registerNumber == dataRegister) {
        _data = value;
    } else {
        ADD_FAILURE() << "an unknown register was written: " << address << "." << registerNumber;
    }
    return true;
}

bool SmiScript::runSmiCommand(unsigned int command) {
    unsigned int const device = command >> 5 & 0x1F;
    unsigned int const registerNumber = command & 0x1F;
    Access const* access = nullptr;
    if ((command & withoutAddress) == readCommand) {
        access = _table.take(reads(device, registerNumber, 0));
        _data = static_cast<unsigned short>(access != nullptr ? access->value : 0);
    } else if ((command & withoutAddress) == writeCommand) {
        access = _table.take(writes(device, registerNumber, _data));
    } else {
        ADD_FAILURE() << "not an access to an internal register: " << command;
    }
    return access != nullptr && !access->fails;
}

} // namespace test_support
