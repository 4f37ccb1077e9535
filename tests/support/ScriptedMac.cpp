#include "tests/support/ScriptedMac.hpp"

#include <gtest/gtest.h>

#include <cstdint>

#include "simulation/VirtualClock.hpp"

namespace test_support {

namespace {

constexpr unsigned int macCommand = 0x10;
constexpr unsigned int macData = 0x14;
constexpr unsigned int macStatus = 0x18;
constexpr unsigned int macControl = 0x20;
constexpr unsigned int readOpcode = 0x8000;
constexpr unsigned int writeOpcode = 0x4000;
constexpr std::uint64_t oneSecond = 1'000'000'000;

} // namespace

bool ScriptedMac::read(unsigned int offset, unsigned int& value) {
    ++_wordAccesses;
    switch (offset) {
    case macData:
        value = _data;
        return true;
    case macStatus:
        value = readStatus();
        return true;
    case macControl:
        value = _control;
        return true;
    default:
        ADD_FAILURE() << "the MAC was read at offset " << offset;
        return false;
    }
}

bool ScriptedMac::write(unsigned int offset, unsigned int value) {
    ++_wordAccesses;
    switch (offset) {
    case macCommand:
        runCommand(value);
        return true;
    case macData:
        _data = value;
        return true;
    case macControl:
        _control = value;
        return true;
    default:
        ADD_FAILURE() << "the MAC was written at offset " << offset;
        return false;
    }
}

unsigned int ScriptedMac::readStatus() {
    if (!_stuck) {
        return 0;
    }
    _stuck = false;
    if (auto* const clock = simulation::VirtualClock::adopted()) {
        clock->advanceNanoseconds(oneSecond);
    }
    return 1;
}

void ScriptedMac::runCommand(unsigned int command) {
    unsigned int const address = command >> 5 & 0x1F;
    unsigned int const registerNumber = command & 0x1F;
    EXPECT_EQ(command & 0xFFFF'3C00, 0U) << "stray bits in the MDIO command word";
    if ((command & 0xC000) == readOpcode) {
        unsigned short value = 0;
        _stuck = !frameRead(address, registerNumber, value);
        _data = value;
    } else if ((command & 0xC000) == writeOpcode) {
        _stuck = !frameWrite(address, registerNumber, static_cast<unsigned short>(_data));
    } else {
        ADD_FAILURE() << "neither a read nor a write: " << command;
    }
}

} // namespace test_support
