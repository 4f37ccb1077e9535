#include "host/Event.hpp"

#include <ostream>

#include "reference_host/ThreadImplementation.hpp"

Event::EventId::EventId(Type type, TypeOfActiveObject const& objectType, unsigned int id)
    : _type(type), _objectType(objectType), _id(id) {}

Event::Type Event::EventId::getType() const {
    return _type;
}

TypeOfActiveObject const& Event::EventId::getObjectType() const {
    return _objectType;
}

unsigned int Event::EventId::getId() const {
    return _id;
}

Event::Event(Thread& thread, Type type, TypeOfActiveObject const& objectType, unsigned int id,
             unsigned int instanceId, std::string const& name)
    : _thread(thread), _eventId(type, objectType, id), _instanceId(instanceId), _name(name) {}

Event::~Event() = default;

void Event::print(std::ostream& out) const {
    out << getType() << ':' << getObjectType().getName() << ':' << getId() << '.' << _instanceId << " \""
        << _name << '"';
}

// A thread here serves one active object, which knows its own events: there is nothing to route by.
void Event::post(unsigned int /*instanceId*/) {
    _thread._implementation->queue.post(*this);
}

Event::Type Event::getType() const {
    return _eventId.getType();
}

TypeOfActiveObject const& Event::getObjectType() const {
    return _eventId.getObjectType();
}

unsigned int Event::getId() const {
    return _eventId.getId();
}

unsigned int Event::getInstanceId() const {
    return _instanceId;
}

std::string const& Event::getName() const {
    return _name;
}
