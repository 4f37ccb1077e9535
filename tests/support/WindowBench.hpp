#pragma once

#include "reference_host/HostApplication.hpp"
#include "simulation/SimulatedWindow.hpp"
#include "simulation/VirtualClock.hpp"
#include "tests/support/RecordingLog.hpp"
#include "tests/support/TestMemory.hpp"

namespace test_support {

/// An application on a board whose only hardware is one scripted window of physical addresses. The
/// thread that builds the bench lives by its clock.
template <typename Script> class WindowBench {
public:
    WindowBench(unsigned int physicalAddress, unsigned int size)
        : window(script, size), application(log, memory) {
        simulation::VirtualClock::adopt(&clock);
        memory.place(physicalAddress, size, window.getBaseAddress());
    }
    ~WindowBench() { simulation::VirtualClock::adopt(nullptr); }
    WindowBench(WindowBench const&) = delete;
    WindowBench& operator=(WindowBench const&) = delete;

    simulation::VirtualClock clock;
    RecordingLog log;
    Script script;
    simulation::SimulatedWindow window;
    TestMemory memory;
    reference_host::HostApplication application;
};

} // namespace test_support
