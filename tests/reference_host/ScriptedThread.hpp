#pragma once

#include <functional>
#include <string>
#include <utility>

#include "host/Thread.hpp"

/// A thread that does what the test says. Waits for itself before its script goes away.
class ScriptedThread : public Thread {
public:
    explicit ScriptedThread(Threads& threads, std::string const& name = "scripted") : Thread(threads, name) {}

    ~ScriptedThread() override { wait(); }

    void* run(void* argument) override {
        body(argument);
        return exitThread();
    }

    void abort() override {}

    void processEvent(Event const* event) override { onEvent(event); }

    /// What run() does; the event loop unless the test says otherwise.
    std::function<void(void*)> body = [this](void*) { processEvents(); };
    std::function<void(Event const*)> onEvent = [](Event const*) {};
};
