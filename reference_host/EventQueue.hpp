#pragma once

#include <condition_variable>
#include <deque>
#include <mutex>

class Event;

namespace reference_host {

/// The events that wait for one thread, in posting order. Refers to them only.
///
/// Three kinds of thread meet here: those that post, the one that ends the loop, and the one whose
/// loop it is. Every operation may be called from any of them, but begin() and next(), which belong
/// to the loop.
class EventQueue {
public:
    /// Appends the event; once the loop has been told to end, does nothing.
    void post(Event const& event);

    /// Tells the loop to end when it has delivered what is queued. When the loop has not begun yet,
    /// what is posted before it begins is delivered too: a thread that announces itself by an event
    /// is heard.
    void end();

    /// The loop begins (or, after an exception, goes on).
    void begin();

    /// Waits for the next event and takes it out.
    /// \return null when the loop is to end.
    Event const* next();

    /// The thread is over: forgets what is queued and takes nothing more.
    void close();

private:
    std::mutex _mutex;
    std::condition_variable _changed;
    std::deque<Event const*> _events;
    bool _begun = false;
    bool _endRequested = false;
    bool _closed = false;
};

} // namespace reference_host
