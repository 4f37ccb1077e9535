#include "host/Threads.hpp"

#include <utility>

#include "reference_host/ThreadImplementation.hpp"
#include "reference_host/ThreadsImplementation.hpp"

Threads::Threads() : _implementation(std::make_unique<Implementation>()) {}

Threads::~Threads() = default;

void Threads::endEventLoops() {
    std::lock_guard<std::mutex> const lock(_implementation->mutex);
    for (Thread* const thread : _implementation->threads) {
        thread->_implementation->queue.end();
    }
}

void Threads::setStartHook(std::function<void(Thread&)> hook) {
    std::lock_guard<std::mutex> const lock(_implementation->mutex);
    _implementation->startHook = std::move(hook);
}
