#pragma once

#include <atomic>
#include <mutex>
#include <string>
#include <thread>
#include <utility>

#include "host/Thread.hpp"
#include "reference_host/EventQueue.hpp"

/// What a Thread consists of on this host; its registry and its events reach into the queue.
struct Thread::Implementation {
    Implementation(Threads& registry, std::string threadName)
        : threads(registry), name(std::move(threadName)) {}

    Threads& threads;
    std::string name;
    std::atomic<RunState> state{notStarted};
    reference_host::EventQueue queue;
    /// Guards `thread`: one starts it, any number may wait for it.
    std::mutex threadMutex;
    std::thread thread;
};
