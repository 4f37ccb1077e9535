// Every way in which start-up can end, and the host that is told of it: once, on the management thread.

#include <atomic>
#include <cstring>
#include <optional>
#include <ostream>
#include <stdexcept>
#include <thread>

#include "simulation/SimulatedBoard.hpp"
#include "tests/manager/BoardRun.hpp"
#include "tests/manager/Gate.hpp"
#include "tests/manager/ManagerTest.hpp"

using simulation::SimulatedBoard;
using simulation::Vsc7390TestSide;

namespace {

/// An application whose messages cannot be written from a certain one on.
class FailingApplication : public reference_host::HostApplication {
public:
    using HostApplication::HostApplication;

    void logError(char const* format, ...) override { failAt(format); }
    void logInfo(char const* format, ...) override { failAt(format); }
    void logDebug(char const* format, ...) override { failAt(format); }
    void log(unsigned int /*level*/, char const* format, ...) override { failAt(format); }

    /// Its first words, and what is thrown then.
    std::string first;
    std::function<void()> fail = [] {};
    /// Whether all messages after it fail, too.
    bool staysBroken = false;

    /// No message fails from now on.
    void repair() { _isRepaired = true; }

private:
    void failAt(char const* format) {
        bool const isFirst = !first.empty() && std::strncmp(format, first.c_str(), first.size()) == 0;
        if (!_isRepaired && ((isFirst && !_isBroken.exchange(true)) || (_isBroken && staysBroken))) {
            fail();
        }
    }

    std::atomic<bool> _isBroken{false};
    std::atomic<bool> _isRepaired{false};
};

/// What a host was told.
struct Told {
    std::function<void(char const*)> callback() {
        return [this](char const* failure) {
            ++times;
            thread = std::this_thread::get_id();
            reason = failure == nullptr ? std::nullopt : std::optional<std::string>(failure);
            gate.open();
        };
    }

    Gate gate;
    int times = 0;
    std::thread::id thread;
    /// Nothing when populated.
    std::optional<std::string> reason = "not told";
};

/// One way to an end: the document, what goes wrong, and the reason that the host is told.
struct Ending {
    char const* name;
    std::string document;
    /// Thrown by a populated callback; may be empty.
    std::function<void()> inCallback;
    /// The message whose writing fails, and how; may be empty.
    std::string message;
    std::function<void()> inMessage;
    bool staysBroken;
    std::optional<std::string> reason;
};

void PrintTo(Ending const& ending, std::ostream* out) { // NOLINT: GoogleTest's name
    *out << ending.name;
}

constexpr char const* nothing = "<switches/>";
constexpr char const* unknown = "an exception that is neither std::exception nor text";

std::function<void()> throwsRuntimeError() {
    return [] { throw std::runtime_error("no runtime"); };
}

std::function<void()> throwsLogicError() {
    return [] { throw std::logic_error("no logic"); };
}

std::function<void()> throwsText() {
    return [] { throw "a text"; };
}

std::function<void()> throwsNoText() {
    return [] { throw static_cast<char const*>(nullptr); }; // NOLINT: as a host may
}

std::function<void()> throwsNumber() {
    return [] { throw 7; };
}

std::vector<Ending> endings() {
    std::vector<Ending> all{
        {"Populated", nothing, {}, "", {}, false, std::nullopt},
        {"PopulatedWithCallback", nothing, [] {}, "", {}, false, std::nullopt},
        {"TwoElementsOfOneId",
         "<switches><switch id='1' switchModel='88e6096'/><x><switch id='1'/></x></switches>",
         {},
         "",
         {},
         false,
         "Roting xml or other catastrophic error"},
        {"TwoModelsOfOneId",
         "<switches><switch id='1' switchModel='88e6096'/><switch id='65537' "
         "switchModel='vsc7390'/></switches>",
         {},
         "",
         {},
         false,
         "SwitchManager::createVitesseManagedSwitch Duplicate switch response"},
        {"CallbackRuntimeError", nothing, throwsRuntimeError(), "", {}, false, "no runtime"},
        {"CallbackLogicError", nothing, throwsLogicError(), "", {}, false, "no logic"},
        {"CallbackText", nothing, throwsText(), "", {}, false, "a text"},
        {"CallbackNoText", nothing, throwsNoText(), "", {}, false, unknown},
        {"CallbackNumber", nothing, throwsNumber(), "", {}, false, unknown},
        {"BrokenWhenCaught", nothing, throwsRuntimeError(), "SwitchManagementThread::processEvent. Caught",
         throwsLogicError(), true, "no logic"},
        {"BrokenWhenEnding", nothing, throwsLogicError(), "SwitchManagementThread::run [%08x] caught",
         throwsNumber(), true, unknown},
    };
    for (char const* const message :
         {"SwitchManagementThread::run [", "SwitchManager::switchManagerThreadHasStarted",
          "SwitchManager::processEvent event", "SwitchManager::getNewState",
          "SwitchManager::processEvent state", "SwitchManager::State::doAction",
          "SwitchManager::waitingForPhyInterfacesToBePopulatedAction", "SwitchManager::initialisingAction",
          "SwitchManager::detectSwitches", "SwitchManager::configureSwitchSettings",
          "SwitchManager::configureVlans", "SwitchManager::configureTrunks",
          "SwitchManager::configurePorts"}) {
        all.push_back({"RuntimeErrorIn", nothing, {}, message, throwsRuntimeError(), false, "no runtime"});
        all.push_back({"LogicErrorIn", nothing, {}, message, throwsLogicError(), false, "no logic"});
        all.push_back({"NumberIn", nothing, {}, message, throwsNumber(), true, unknown});
    }
    return all;
}

/// A manager on a thread of its own, without hardware, and what its host is told.
class Host {
public:
    explicit Host(std::string const& text) : _document(text) {
        manager = std::make_unique<TestManager>(application, _document, false, true);
        manager->setStartUpEndedCallback(told.callback());
    }

    /// Waits for the host to be told, and for the thread.
    void finish() {
        told.gate.pass();
        end();
    }

    void end() {
        application.repair();
        application.getThreads().endEventLoops();
        manager.reset();
    }

    test_support::RecordingLog log;
    test_support::NullMemory memory;
    FailingApplication application{log, memory};
    Told told;

private:
    test_support::TestDocument _document;

public:
    std::unique_ptr<TestManager> manager;
};

class StartUpEndTest : public testing::TestWithParam<Ending> {};

TEST_P(StartUpEndTest, IsToldOnce) {
    Host host(GetParam().document);
    host.application.first = GetParam().message;
    host.application.fail = GetParam().inMessage;
    host.application.staysBroken = GetParam().staysBroken;
    host.manager->phyInterfacesHaveNowBeenSetup();
    std::vector<std::function<void()>> callbacks;
    if (GetParam().inCallback) {
        callbacks.push_back(GetParam().inCallback);
    }
    host.manager->start(callbacks);
    host.finish();
    EXPECT_EQ(host.told.times, 1);
    EXPECT_EQ(host.told.reason, GetParam().reason);
    EXPECT_NE(host.told.thread, std::this_thread::get_id());
}

std::string nameOf(testing::TestParamInfo<Ending> const& info) {
    return info.param.name + std::to_string(info.index);
}

INSTANTIATE_TEST_SUITE_P(Endings, StartUpEndTest, testing::ValuesIn(endings()), nameOf);

TEST(StartUpEnd, AStateThatIsNotThereIsTold) {
    Host host(nothing);
    Event::EventId const early(SwitchManagerEvent::eventType, host.manager->getType(),
                               SwitchManagerEvent::phyInterfacesHaveBeenPopulated);
    constexpr auto missing = static_cast<SwitchManager::StateId>(5);
    host.manager->addRow(
        new SwitchManagerTransition(SwitchManager::waitingForSwitchManagementThreadToStart, early, missing));
    std::unique_ptr<PhyInterfacesHaveBeenPopulatedEvent> event;
    host.application.getThreads().setStartHook([&](Thread& thread) {
        event = std::make_unique<PhyInterfacesHaveBeenPopulatedEvent>(thread, host.manager->getType(), 0);
        event->post(0);
    });
    host.manager->start();
    host.finish();
    EXPECT_EQ(host.told.reason, "SwitchManager::processEvent. Unknown state");
}

TEST(StartUpEnd, AnEventLoopThatTheHostEndsBeforeIsTold) {
    Host host(nothing);
    host.manager->start();
    while (host.manager->getCurrentState() != SwitchManager::waitingForPhyInterfacesToBePopulated) {
        std::this_thread::yield();
    }
    host.end();
    EXPECT_EQ(host.told.times, 1);
    EXPECT_EQ(host.told.reason, "the host has ended the event loop");
}

TEST(StartUpEnd, WhatGoesWrongWhileTheReportIsToComeIsNoEnd) {
    Host host(nothing);
    host.application.first = "SwitchManager::waitingForPhyInterfacesToBePopulatedAction";
    host.application.fail = throwsRuntimeError();
    host.manager->start();
    while (host.manager->getCurrentState() != SwitchManager::waitingForPhyInterfacesToBePopulated) {
        std::this_thread::yield();
    }
    host.manager->phyInterfacesHaveNowBeenSetup();
    host.finish();
    EXPECT_EQ(host.told.times, 1);
    EXPECT_EQ(host.told.reason, std::nullopt);
}

TEST(StartUpEnd, WithoutACallbackNobodyIsTold) {
    Host host("<switches/>");
    host.manager->setStartUpEndedCallback({});
    host.manager->phyInterfacesHaveNowBeenSetup();
    host.manager->start();
    host.end();
    EXPECT_EQ(host.told.times, 0);
}

TEST(StartUpEnd, APopulatedCallbackComesBefore) {
    Host host(nothing);
    std::vector<std::function<void()>> callbacks{[&] { EXPECT_EQ(host.told.times, 0); }};
    unsigned int state = 0;
    host.manager->setStartUpEndedCallback([&, tell = host.told.callback()](char const* failure) {
        state = host.manager->getCurrentState();
        tell(failure);
    });
    host.manager->phyInterfacesHaveNowBeenSetup();
    host.manager->start(callbacks);
    host.finish();
    EXPECT_EQ(state, SwitchManager::idleState);
}

TEST(StartUpEnd, ABusThatStaysDeadIsTold) {
    SimulatedBoard::Options options;
    options.vitesse.busAccessNanoseconds = 1'000'000; // few polls for a wait of seconds
    BoardRun run("<switches><switch id='3' switchModel='vsc7390'><port id='1' connectedTo='external' "
                 "portStatus='forwarding'/></switch></switches>",
                 options);
    run.board().getVitesse(3).hang(Vsc7390TestSide::CommandUnit::indirectRead);
    EXPECT_EQ(run.bringUp().reason, "switch timed out after attempted to read a register 5 times.");
}

} // namespace
