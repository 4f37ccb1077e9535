#pragma once

#include <memory>
#include <string>

class Event;
class Threads;
struct siginfo;

/// A named thread with an event queue.
///
/// The owner constructs it, starts it once, and waits for it before destroying it.
class Thread {
public:
    /// Where a thread is in its life. The library only asks for `running`.
    enum RunState : unsigned int {
        notStarted = 0,
        starting = 1,
        ending = 2,
        running = 3,
        ended = 4,
    };

    /// Joins the registry; nothing runs yet.
    Thread(Threads& threads, std::string name);

    /// Joins a thread that has ended and leaves the registry. A derived class must make sure that
    /// its run() has returned before its own part goes away: wait() does.
    virtual ~Thread();
    Thread(Thread const&) = delete;
    Thread& operator=(Thread const&) = delete;

    /// The thread's body, called on the new thread with the argument of start(). The library's lets no
    /// std::exception out. What else gets out of it, a host's own callback having thrown it, should end
    /// this thread and not the process.
    virtual void* run(void* argument) = 0;

    /// Called by run() as its last step; what it returns becomes the result of the thread.
    virtual void* exitThread();

    /// Asks the thread to give up what it is doing. What that means is the derived class's affair.
    virtual void abort() = 0;

    /// Installs a signal handler for this process. The library does not call it.
    virtual void addHandler(int signal, void (*handler)(int, siginfo*, void*));

    /// Called by processEvents() for every event of the queue, on this thread, in posting order.
    virtual void processEvent(Event const* event) = 0;

    /// Starts the thread, which calls run(argument). Once it has returned, getState() is `running`
    /// until run() has returned, so an owner that is destroyed right after start() still waits.
    /// Throws std::system_error when the system has no thread to give.
    void start(void* argument);

    /// Blocks until run() has returned. Returns at once for a thread that was never started.
    void wait();

    /// The event loop: delivers events until the host ends it (Threads::endEventLoops). An exception
    /// from processEvent(Event const*) leaves the loop and passes through.
    void processEvents();

    /// May be called from any thread.
    RunState getState() const;

    std::string const& getName() const;

private:
    friend class Event;
    friend class Threads;
    struct Implementation;
    std::unique_ptr<Implementation> _implementation;
};
