#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "host/Event.hpp"
#include "host/MappedSection.hpp"
#include "host/Threads.hpp"
#include "reference_host/HostApplication.hpp"
#include "reference_host/XmlDocument.hpp"
#include "tests/reference_host/ScriptedThread.hpp"
#include "tests/support/RecordingLog.hpp"

using reference_host::HostApplication;
using reference_host::PhysicalMemory;

using test_support::RecordingLog;

namespace {

class OneWord : public PhysicalMemory {
public:
    bool map(unsigned int, unsigned int, Mapping& mapping, std::string&) override {
        mapping.baseAddress = reinterpret_cast<std::uintptr_t>(&word);
        mapping.length = sizeof word;
        return true;
    }
    void unmap(Mapping const&) noexcept override {}

    std::uint32_t word = 0;
};

/// A small host: everything that one application has, and a thread that uses all of it.
class SmallHost {
public:
    explicit SmallHost(unsigned int number)
        : _number(number),
          _application(_log, _memory),
          _section("section", _application, false),
          _document(reference_host::XmlDocument::fromText("<switch id='" + std::to_string(number) + "'/>",
                                                          "board.xml")),
          _thread(_application.getThreads()),
          _event(_thread, 3, TypeOfActiveObject("SmallHost"), number, 0, "event") {
        _thread.onEvent = [this](Event const* event) { handle(*event); };
    }

    void run() {
        _section.map(0x80010000, 4);
        _thread.start(nullptr);
        for (int i = 0; i < 100; ++i) {
            _event.post(0);
        }
        _application.getThreads().endEventLoops();
        _thread.wait();
    }

    void expectOnlyItsOwn() const {
        EXPECT_EQ(_memory.word, _number);
        EXPECT_EQ(_log.lines(),
                  std::vector<std::string>(100, "info|event of " + std::to_string(_number) + "\n"));
    }

private:
    void handle(Event const& event) {
        _section.set(0, event.getId());
        if (_document->find("//switch[@id=" + std::to_string(_number) + "]")->nodeNr == 1) {
            _application.logInfo("event of %u\n", event.getId());
        }
    }

    unsigned int _number;
    RecordingLog _log;
    OneWord _memory;
    HostApplication _application;
    MappedSection _section;
    std::unique_ptr<reference_host::XmlDocument> _document;
    ScriptedThread _thread;
    Event _event;
};

TEST(SeveralApplicationsTest, OneAfterTheOther) {
    for (unsigned int number = 1; number <= 5; ++number) {
        SmallHost host(number);
        host.run();
        host.expectOnlyItsOwn();
    }
}

TEST(SeveralApplicationsTest, SideBySide) {
    std::vector<std::unique_ptr<SmallHost>> hosts;
    std::vector<std::thread> runners;
    for (unsigned int number = 1; number <= 4; ++number) {
        hosts.push_back(std::make_unique<SmallHost>(number));
        runners.emplace_back([&host = *hosts.back()] { host.run(); });
    }
    for (std::thread& runner : runners) {
        runner.join();
    }
    for (auto const& host : hosts) {
        host->expectOnlyItsOwn();
    }
}

TEST(SeveralApplicationsTest, EndingTheLoopsOfOneLeavesTheOthersAlone) {
    RecordingLog log;
    OneWord memory;
    HostApplication first(log, memory);
    HostApplication second(log, memory);
    ScriptedThread firstThread(first.getThreads());
    ScriptedThread secondThread(second.getThreads());
    firstThread.start(nullptr);
    secondThread.start(nullptr);
    first.getThreads().endEventLoops();
    firstThread.wait();
    EXPECT_EQ(secondThread.getState(), Thread::running);
    second.getThreads().endEventLoops();
}

} // namespace
