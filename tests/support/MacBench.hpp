#pragma once

#include "reference_host/HostApplication.hpp"
#include "simulation/SimulatedWindow.hpp"
#include "simulation/VirtualClock.hpp"
#include "tests/support/RecordingLog.hpp"
#include "tests/support/TestMemory.hpp"

namespace test_support {

/// An application on a board whose only hardware is a scripted Ethernet MAC at its physical address.
/// The thread that builds the bench lives by its clock.
///
/// \tparam Script MacScript, MdioScript or SmiScript.
template <typename Script> class MacBench {
public:
    static constexpr unsigned int macAddress = 0x8001'0000;
    static constexpr unsigned int macSize = 0x30;

    MacBench() : window(script, macSize), application(log, memory) {
        simulation::VirtualClock::adopt(&clock);
        memory.place(macAddress, macSize, window.getBaseAddress());
    }
    ~MacBench() { simulation::VirtualClock::adopt(nullptr); }
    MacBench(MacBench const&) = delete;
    MacBench& operator=(MacBench const&) = delete;

    simulation::VirtualClock clock;
    RecordingLog log;
    Script script;
    simulation::SimulatedWindow window;
    TestMemory memory;
    reference_host::HostApplication application;
};

} // namespace test_support
