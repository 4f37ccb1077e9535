#include "host/ActiveObject.hpp"

#include <atomic>
#include <utility>
#include <vector>

#include "host/ThreadedApplication.hpp"
#include "host/Transition.hpp"
#include "host/TypeOfActiveObject.hpp"

namespace {

bool isSame(Event::EventId const& eventId, Event const& event) {
    return eventId.getType() == event.getType() && eventId.getId() == event.getId() &&
           eventId.getObjectType().getName() == event.getObjectType().getName();
}

} // namespace

struct ActiveObject::Implementation {
    Implementation(ThreadedApplication& theApplication, std::string const& name, unsigned int instance)
        : application(theApplication), type(name), instanceId(instance), mutex(name) {}

    ThreadedApplication& application;
    TypeOfActiveObject type;
    unsigned int instanceId;
    Mutex mutex;
    std::atomic<unsigned int> currentState{0};
    std::vector<std::unique_ptr<Transition>> transitions;
};

ActiveObject::ActiveObject(ThreadedApplication& application, std::string name, unsigned int instanceId)
    : _implementation(std::make_unique<Implementation>(application, name, instanceId)) {}

ActiveObject::~ActiveObject() = default;

void ActiveObject::ignoreEvent(Event const* /*event*/, State const& /*state*/) {}

ThreadedApplication& ActiveObject::getApplication() const {
    return _implementation->application;
}

TypeOfActiveObject const& ActiveObject::getType() const {
    return _implementation->type;
}

unsigned int ActiveObject::getInstanceId() const {
    return _implementation->instanceId;
}

unsigned int ActiveObject::getCurrentState() const {
    return _implementation->currentState.load(std::memory_order_seq_cst);
}

unsigned int ActiveObject::getNewState(unsigned int currentState, Event const* event) const {
    for (auto const& transition : _implementation->transitions) {
        Transition::TransitionId const& id = transition->getTransitionId();
        if (event != nullptr && id.getFromState() == currentState && isSame(id.getEventId(), *event)) {
            return transition->getToState();
        }
    }
    return currentState;
}

void ActiveObject::addTransaction(Transition* transition) {
    std::unique_ptr<Transition> owned(transition);
    if (owned) {
        _implementation->transitions.push_back(std::move(owned));
    }
}

void ActiveObject::setCurrentState(unsigned int state) {
    _implementation->currentState.store(state, std::memory_order_seq_cst);
}

Mutex& ActiveObject::getMutex() {
    return _implementation->mutex;
}
