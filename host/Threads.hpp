#pragma once

#include <functional>
#include <memory>

class Thread;

/// The host's registry of threads.
///
/// Every Thread registers itself on construction and leaves on destruction; the registry is how a
/// host reaches threads that it did not create itself, for example to end their event loops before
/// it destroys the objects that own them.
class Threads {
public:
    Threads();
    ~Threads();
    Threads(Threads const&) = delete;
    Threads& operator=(Threads const&) = delete;

    /// Ends the event loop of every registered thread: each loop delivers what is already queued
    /// and then returns from Thread::processEvents. Returns at once; any thread may call it.
    void endEventLoops();

    /// Has `hook` called on each thread that is started from now on, as the first thing it does.
    /// Set it before the first thread starts.
    void setStartHook(std::function<void(Thread&)> hook);

private:
    friend class Thread;
    struct Implementation;
    std::unique_ptr<Implementation> _implementation;
};
