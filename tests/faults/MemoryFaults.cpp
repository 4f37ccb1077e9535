#include "tests/faults/MemoryFaults.hpp"

#include <algorithm>
#include <atomic>
#include <functional>
#include <limits>
#include <mutex>
#include <new>
#include <sstream>
#include <thread>

#include "board/ClockAdoption.hpp"
#include "board/SimulatedMemory.hpp"
#include "manager/SwitchManager.hpp"
#include "reference_host/HostApplication.hpp"
#include "tests/faults/AllocationFaults.hpp"
#include "tests/faults/SimulatedSession.hpp"
#include "tests/support/RecordingLog.hpp"

namespace fault_test {

namespace {

using Exemption = AllocationFaults::Exemption;
using simulation::SimulatedBoard;
using simulation::VirtualClock;

constexpr std::uint64_t all = std::numeric_limits<std::uint64_t>::max();

/// Has all the memory that it wants.
class ExemptLog : public test_support::RecordingLog {
public:
    void write(reference_host::LogMessage const& message) override {
        Exemption const exemption;
        RecordingLog::write(message);
    }
};

/// A host that keeps a manager for the time of one start-up.
class Host {
public:
    Host(Xml& document, SimulatedBoard& board, reference_host::LogSink& log)
        : _memory(board), _application(log, _memory), _manager(_application, document, false, false) {
        VirtualClock& clock = board.getClock();
        _application.getThreads().setStartHook([this, &clock](Thread& thread) {
            VirtualClock::adopt(&clock);
            _thread = &thread;
        });
    }

    ~Host() { endLoop(); }

    Host(Host const&) = delete;
    Host& operator=(Host const&) = delete;

    void startUp() {
        std::vector<std::function<void()>> populated = {[this] { _populated = true; }};
        _manager.start(populated);
        _manager.phyInterfacesHaveNowBeenSetup();
    }

    /// The loop delivers what has been posted, and all of start-up comes of that.
    void endLoop() { _application.getThreads().endEventLoops(); }

    /// Waits until the thread that startUp() has started is over.
    void waitForThread() {
        while (_thread == nullptr) {
            std::this_thread::yield();
        }
        _thread.load()->wait();
    }

    bool isPopulated() const { return _populated; }

    bool collectDiagnostics(unsigned switchId, unsigned portId) {
        std::timespec time{};
        std::string text;
        std::ostringstream out;
        return _manager.collectSwitchPortDiagnostics(switchId, portId, out, time, text) && out;
    }

private:
    board::SimulatedMemory _memory;
    reference_host::HostApplication _application;
    std::atomic<bool> _populated{false};
    std::atomic<Thread*> _thread{nullptr};
    SwitchManager _manager;
};

bool isCaught(std::string const& message) {
    return message.find("] caught std::bad_alloc") != std::string::npos;
}

} // namespace

MemoryFaults::MemoryFaults(std::string const& documentPath, unsigned switchId, unsigned portId)
    : _document(reference_host::XmlDocument::fromFile(documentPath)), _switchId(switchId), _portId(portId) {
    _undisturbed = live(0, 0);
}

std::uint64_t MemoryFaults::getAllocations() const {
    return _undisturbed.allocations;
}

MemoryFaults::Life MemoryFaults::live(std::uint64_t first, std::uint64_t count) {
    Life life;
    ExemptLog log;
    SimulatedBoard board(*_document, simulatedSession(log).board);
    board::ClockAdoption const adoption(board.getClock());
    bool populated = false;
    bool isTold = false;
    {
        AllocationFaults const faults(first, count);
        try {
            Host host(*_document, board, log);
            host.startUp();
            host.endLoop();
            host.waitForThread();
            populated = host.isPopulated();
            life.hasDiagnostics = populated && host.collectDiagnostics(_switchId, _portId);
        } catch (std::bad_alloc const&) {
            // Nothing that needs memory yet.
            isTold = true;
        }
        life.allocations = faults.getAllocations();
    }
    life.messages = comparable(log.lines());
    if (isTold || std::any_of(life.messages.begin(), life.messages.end(), isCaught)) {
        life.end = "told";
    } else {
        life.end = populated ? "populated" : "nobody was told";
    }
    life.image = imageOf(board);
    life.run.accesses = board.getFaults().getAccesses();
    life.run.nanoseconds = board.getClock().getNanoseconds();
    return life;
}

void MemoryFaults::sweep(Selection const& selection, FaultTable& table) {
    for (std::uint64_t number = selection.first; number <= getAllocations(); number += selection.stride) {
        Life const one = live(number, 1);
        table["one allocation fails"].add(judge(one, "allocation " + std::to_string(number)), one.run);
        Life const rest = live(number, all);
        table["all allocations fail"].add(judge(rest, "allocations from " + std::to_string(number) + " on"),
                                          rest.run);
    }
}

Verdict MemoryFaults::judge(Life const& life, std::string const& fault) const {
    if (life.end == "nobody was told") {
        return {Outcome::wrong, fault + " failed: nobody was told that start-up did not end"};
    }
    if (life.end != "populated") {
        return {Outcome::noticed, ""};
    }
    if (life.image != _undisturbed.image) {
        return {Outcome::wrong, fault + " failed: populated, but the chips are not as they are without"};
    }
    if (life.messages != _undisturbed.messages) {
        return {Outcome::noticed, ""};
    }
    return {life.hasDiagnostics ? Outcome::harmless : Outcome::noticed, ""};
}

} // namespace fault_test
