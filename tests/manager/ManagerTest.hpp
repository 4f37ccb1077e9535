#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "manager/PhyInterfacesHaveBeenPopulatedEvent.hpp"
#include "manager/SwitchManager.hpp"
#include "manager/SwitchManagerThreadHasStartedEvent.hpp"
#include "manager/SwitchManagerTransition.hpp"
#include "reference_host/HostApplication.hpp"
#include "tests/support/NullMemory.hpp"
#include "tests/support/RecordingLog.hpp"
#include "tests/support/TestDocument.hpp"

/// A manager whose state a test can set, and whose transition table it can extend.
class TestManager : public SwitchManager {
public:
    using SwitchManager::SwitchManager;

    void setState(unsigned int state) { setCurrentState(state); }
    void addRow(Transition* transition) { addTransaction(transition); }
};

/// A thread that only lends its name to events.
class IdleThread : public Thread {
public:
    explicit IdleThread(Threads& threads) : Thread(threads, "idle") {}
    ~IdleThread() override = default;
    void* run(void*) override { return exitThread(); }
    void abort() override {}
    void processEvent(Event const*) override {}
};

/// Ends all event loops when a manager that is destroyed says that it waits for its thread.
class LoopEndingLog : public test_support::RecordingLog {
public:
    void write(reference_host::LogMessage const& message) override {
        RecordingLog::write(message);
        if (threads != nullptr &&
            message.text == "SwitchManager::~SwitchManager waiting for _switchManagementThread \n") {
            threads->endEventLoops();
        }
    }

    /// Whose loops; null: those of nobody.
    Threads* threads = nullptr;
};

/// A manager without hardware, driven step by step on the test's own thread.
class ManagerTest : public testing::Test {
protected:
    /// Builds the manager for a document.
    TestManager& manage(std::string const& text, bool noHardwareAccess = true);

    /// Delivers the event, as the management thread would.
    void deliverThreadHasStarted();
    void deliverPhyInterfacesPopulated();

    /// All messages since the last call; the number that stands for the object type's name in the
    /// lines about events, which differs from run to run, becomes '#'.
    test_support::Lines takeLines();

    /// The messages of one operation or level.
    test_support::Lines takeLines(std::string const& origin) { return log.take(origin); }

    LoopEndingLog log;
    test_support::NullMemory memory;
    reference_host::HostApplication application{log, memory};
    std::unique_ptr<test_support::TestDocument> document;
    std::unique_ptr<TestManager> manager;
};
