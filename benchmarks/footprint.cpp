// Brings the board of a document up and prints what that took of heap and stack, counted in bytes:
// footprint BOARD.xml [no-hardware]. With "no-hardware" no chip is accessed, and what the process allocates
// is the library and its host, not the chip models; otherwise the models answer.

#include <functional>
#include <future>
#include <iostream>
#include <string_view>
#include <vector>

#include "benchmarks/CountedHeap.hpp"
#include "benchmarks/PaintedStack.hpp"
#include "board/ClockAdoption.hpp"
#include "board/SimulatedMemory.hpp"
#include "host/Threads.hpp"
#include "manager/SwitchManager.hpp"
#include "reference_host/HostApplication.hpp"
#include "reference_host/LogSink.hpp"
#include "reference_host/XmlDocument.hpp"
#include "simulation/SimulatedBoard.hpp"

namespace {

using footprint::CountedHeap;
using footprint::PaintedStack;
using Owner = CountedHeap::Owner;

class NoLog : public reference_host::LogSink {
public:
    void write(reference_host::LogMessage const& /*message*/) override {}
};

void print(char const* what, std::size_t bytes) {
    std::cout << what << ' ' << bytes << '\n';
}

/// What a start-up took, up to the moment at which the host is told that the switches are ready.
struct Effort {
    std::size_t process = 0;
    std::size_t library = 0;
    std::size_t allocations = 0;
    std::size_t managementStack = 0;

    void count(PaintedStack const& stack) {
        process = CountedHeap::peakBytes(Owner::anyone);
        library = CountedHeap::peakBytes(Owner::library);
        allocations = CountedHeap::allocations(Owner::library);
        managementStack = stack.depth();
    }
};

/// Brings the switches up in the order of a host. The management thread begins when this thread has nothing
/// left to do but wait, so that every run allocates in the same order.
Effort bringUp(SwitchManager& manager, reference_host::HostApplication& application,
               simulation::VirtualClock& clock) {
    std::promise<void> reported;
    std::promise<void> populated;
    PaintedStack stack;
    Effort effort;
    application.getThreads().setStartHook([&](Thread&) {
        simulation::VirtualClock::adopt(&clock);
        stack.paint();
        reported.get_future().wait();
    });
    std::vector<std::function<void()>> phyInterfacesReady;
    manager.phyInterfaceParsedCallbackfunctions(phyInterfacesReady);
    std::vector<std::function<void()>> callbacks = {[&] {
        effort.count(stack);
        populated.set_value();
    }};
    manager.start(callbacks);
    for (auto const& report : phyInterfacesReady) {
        report();
    }
    reported.set_value();
    populated.get_future().wait();
    return effort;
}

void measure(char const* path, bool noHardwareAccess) {
    auto const document = reference_host::XmlDocument::fromFile(path);
    simulation::SimulatedBoard board(*document);
    board::ClockAdoption const adoption(board.getClock());
    board::SimulatedMemory memory(board);
    NoLog log;

    PaintedStack stack;
    stack.paint();
    CountedHeap::mark();
    reference_host::HostApplication application(log, memory);
    SwitchManager manager(application, *document, false, noHardwareAccess);
    Effort const effort = bringUp(manager, application, board.getClock());
    std::size_t const hostStack = stack.depth();

    print("switches", manager.getManagedSwitchesCount());
    print("heap-process", effort.process);
    print("heap-library", effort.library);
    print("allocations-library", effort.allocations);
    print("stack-management-thread", effort.managementStack);
    print("stack-host-thread", hostStack);
    application.getThreads().endEventLoops();
}

} // namespace

int main(int argc, char** argv) try {
    if (argc < 2) {
        std::cerr << "footprint BOARD.xml [no-hardware]\n";
        return 1;
    }
    measure(argv[1], argc > 2 && std::string_view(argv[2]) == "no-hardware");
} catch (std::exception const& error) {
    std::cerr << "footprint: " << error.what() << '\n';
    return 1;
}
