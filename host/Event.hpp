#pragma once

#include <iosfwd>
#include <memory>
#include <string>

#include "host/TypeOfActiveObject.hpp"

class Thread;

/// Something that happened, bound to the thread that is to deal with it.
///
/// An event is owned by whoever created it, may be posted any number of times, and must live until
/// the last posting has been delivered or the thread's loop has ended.
class Event {
public:
    /// Tells the families of events of one host apart; each active object has its own number.
    using Type = unsigned int;

    /// What a transition table is asked for: the family, the kind of object and the event's number.
    class EventId {
    public:
        EventId(Type type, TypeOfActiveObject const& objectType, unsigned int id);
        Type getType() const;
        TypeOfActiveObject const& getObjectType() const;
        unsigned int getId() const;

    private:
        Type _type;
        TypeOfActiveObject _objectType;
        unsigned int _id;
    };

    Event(Thread& thread, Type type, TypeOfActiveObject const& objectType, unsigned int id,
          unsigned int instanceId, std::string const& name);
    virtual ~Event();
    Event(Event const&) = delete;
    Event& operator=(Event const&) = delete;

    /// Writes the event's numbers and name, for people.
    virtual void print(std::ostream& out) const;

    /// Queues this object on its thread, for the active object with that instance id. Any thread
    /// may post; postings are delivered in the order in which they were made. Posting to a thread
    /// whose loop has ended is allowed and has no effect.
    void post(unsigned int instanceId);

    Type getType() const;
    TypeOfActiveObject const& getObjectType() const;
    unsigned int getId() const;
    unsigned int getInstanceId() const;
    std::string const& getName() const;

private:
    Thread& _thread;
    EventId _eventId;
    unsigned int _instanceId;
    std::string _name;
};
