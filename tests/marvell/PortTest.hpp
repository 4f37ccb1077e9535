#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "marvell/MarvellPort.hpp"
#include "reference_host/HostApplication.hpp"
#include "simulation/VirtualClock.hpp"
#include "tests/support/FailingSteps.hpp"
#include "tests/support/NullMemory.hpp"
#include "tests/support/RecordingLog.hpp"
#include "tests/support/RecordingSwitch.hpp"
#include "tests/support/ScriptedRegisters.hpp"

/// Port 3 of a switch, device 0x13 and PHY 3, on scripted registers.
class PortTest : public testing::Test {
protected:
    PortTest() { simulation::VirtualClock::adopt(&clock); }
    ~PortTest() override { simulation::VirtualClock::adopt(nullptr); }

    simulation::VirtualClock clock;
    test_support::RecordingLog log;
    test_support::NullMemory memory;
    reference_host::HostApplication application{log, memory};
    test_support::CallLog calls;
    test_support::RecordingSwitch owner{application, 0, calls};
    test_support::ScriptedRegisters registers{application};
    MarvellPort port{owner, registers, 3, "external", "forwarding", nullptr};
};
