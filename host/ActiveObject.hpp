#pragma once

#include <memory>
#include <string>

#include "host/Mutex.hpp"

class Event;
class State;
class ThreadedApplication;
class Transition;
class TypeOfActiveObject;

/// An object that is driven by events through states.
///
/// Owns its transitions and the mutex under which its events are dispatched. Its current state
/// starts at 0.
class ActiveObject {
public:
    /// The name becomes the name of the object's type.
    ActiveObject(ThreadedApplication& application, std::string name, unsigned int instanceId);
    virtual ~ActiveObject();
    ActiveObject(ActiveObject const&) = delete;
    ActiveObject& operator=(ActiveObject const&) = delete;

    /// Called for an event that must not arrive in the current state.
    virtual void shouldNotHappen(Event const* event) = 0;

    /// Called for an event that the given state does not care about.
    virtual void ignoreEvent(Event const* event, State const& state);

    /// The state object of that id, or null when there is none.
    virtual State const* getState(unsigned int id) const = 0;

    ThreadedApplication& getApplication() const;
    TypeOfActiveObject const& getType() const;
    unsigned int getInstanceId() const;

    /// The id of the current state. Any thread may ask, without a lock: what setCurrentState()
    /// stored on one thread is seen by the next call on any other, and all such stores and loads
    /// take place in one order that every thread agrees on (sequential consistency). The library
    /// relies on that order so that no report of the host is lost.
    unsigned int getCurrentState() const;

    /// Where the transition table leads from `currentState` on `event`: the target of the
    /// transition whose from-state and event id (type, object type, id) match, otherwise
    /// `currentState` itself.
    unsigned int getNewState(unsigned int currentState, Event const* event) const;

protected:
    /// Adds a row to the transition table and takes ownership of it.
    void addTransaction(Transition* transition);

    void setCurrentState(unsigned int state);

    /// Serialises the dispatch of events.
    Mutex& getMutex();

private:
    struct Implementation;
    std::unique_ptr<Implementation> _implementation;
};
