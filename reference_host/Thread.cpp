#include "host/Thread.hpp"

#include <pthread.h>
#include <signal.h> // NOLINT(modernize-deprecated-headers): sigaction is not in <csignal>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <exception>
#include <functional>
#include <stdexcept>
#include <system_error>

#include "reference_host/ThreadImplementation.hpp"
#include "reference_host/ThreadsImplementation.hpp"

namespace {

/// The longest name that Linux shows for a thread.
constexpr std::size_t systemNameLength = 15;

void showNameToSystem(std::string const& name) {
    pthread_setname_np(pthread_self(), name.substr(0, systemNameLength).c_str());
}

/// An exception that a thread's body lets out ends that thread, and not the process.
template <typename Body> void contain(std::string const& name, Body body) {
    try {
        body();
    } catch (std::exception const& exception) {
        std::fprintf(stderr, "thread \"%s\" has ended: %s\n", name.c_str(), exception.what());
    } catch (...) {
        std::fprintf(stderr, "thread \"%s\" has ended: unknown exception\n", name.c_str());
    }
}

} // namespace

Thread::Thread(Threads& threads, std::string name)
    : _implementation(std::make_unique<Implementation>(threads, std::move(name))) {
    Threads::Implementation& registry = *threads._implementation;
    std::lock_guard<std::mutex> const lock(registry.mutex);
    registry.threads.push_back(this);
}

Thread::~Thread() {
    wait();
    Threads::Implementation& registry = *_implementation->threads._implementation;
    std::lock_guard<std::mutex> const lock(registry.mutex);
    registry.threads.erase(std::find(registry.threads.begin(), registry.threads.end(), this));
}

void* Thread::exitThread() {
    return nullptr;
}

void Thread::addHandler(int signal, void (*handler)(int, siginfo*, void*)) {
    struct sigaction action {};
    // Some C libraries name the structure siginfo, others only have the type siginfo_t.
    action.sa_sigaction = reinterpret_cast<void (*)(int, siginfo_t*, void*)>(handler); // NOLINT
    action.sa_flags = SA_SIGINFO;
    if (sigaction(signal, &action, nullptr) != 0) {
        throw std::system_error(errno, std::generic_category(), "Thread::addHandler");
    }
}

void Thread::start(void* argument) {
    Implementation& own = *_implementation;
    std::lock_guard<std::mutex> const lock(own.threadMutex);
    RunState expected = notStarted;
    if (!own.state.compare_exchange_strong(expected, starting)) {
        throw std::logic_error("Thread::start " + own.name + " has been started before");
    }
    try {
        std::function<void(Thread&)> hook;
        {
            Threads::Implementation& registry = *own.threads._implementation;
            std::lock_guard<std::mutex> const registryLock(registry.mutex);
            hook = registry.startHook;
        }
        own.state = running;
        own.thread = std::thread([this, argument, hook] {
            showNameToSystem(_implementation->name);
            contain(_implementation->name, [&] {
                if (hook) {
                    hook(*this);
                }
                run(argument);
            });
            _implementation->state = ending;
            _implementation->queue.close();
            _implementation->state = ended;
        });
    } catch (...) {
        own.state = notStarted;
        throw;
    }
}

void Thread::wait() {
    std::lock_guard<std::mutex> const lock(_implementation->threadMutex);
    if (_implementation->thread.joinable()) {
        _implementation->thread.join();
    }
}

void Thread::processEvents() {
    reference_host::EventQueue& queue = _implementation->queue;
    queue.begin();
    while (Event const* const event = queue.next()) {
        processEvent(event);
    }
}

Thread::RunState Thread::getState() const {
    return _implementation->state;
}

std::string const& Thread::getName() const {
    return _implementation->name;
}
