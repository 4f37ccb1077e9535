#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "reference_host/HostApplication.hpp"
#include "simulation/VirtualClock.hpp"
#include "tests/support/FailingSteps.hpp"
#include "tests/support/NullMemory.hpp"
#include "tests/support/RecordingLog.hpp"
#include "tests/support/RecordingSwitch.hpp"
#include "tests/support/ScriptedVitesseRegisters.hpp"
#include "vitesse/VitessePort.hpp"

/// Ports of a switch of no chip, on the scripted registers of a VSC7390. Port 3, block 1 sub-block 3,
/// is there from the beginning.
class PortTest : public testing::Test {
protected:
    PortTest() { simulation::VirtualClock::adopt(&clock); }
    ~PortTest() override { simulation::VirtualClock::adopt(nullptr); }

    VitessePort& addPort(unsigned int id) {
        auto* const added = new VitessePort(owner, registers, id, "external", "forwarding", nullptr);
        std::pair<unsigned int, ManagedSwitchPort*> entry(id, added);
        owner.insertPort(entry);
        return *added;
    }

    simulation::VirtualClock clock;
    test_support::RecordingLog log;
    test_support::NullMemory memory;
    reference_host::HostApplication application{log, memory};
    test_support::CallLog calls;
    test_support::ScriptedVitesseRegisters registers{application};
    test_support::RecordingSwitch owner{application, 0, calls};
    VitessePort& port{addPort(3)};
};
