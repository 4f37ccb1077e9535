#pragma once

#include <functional>
#include <mutex>
#include <vector>

#include "host/Threads.hpp"

/// What a registry consists of on this host.
struct Threads::Implementation {
    std::mutex mutex;
    std::vector<Thread*> threads;
    std::function<void(Thread&)> startHook;
};
