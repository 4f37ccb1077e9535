#include "manager/SwitchManager.hpp"

#include <cstdint>
#include <stdexcept>
#include <utility>

#include "host/MutexLock.hpp"
#include "host/ThreadedApplication.hpp"
#include "manager/SwitchManagerTransition.hpp"
#include "model/ManagedSwitch.hpp"
#include "model/ManagedSwitchPort.hpp"
#include "model/OwnedMap.hpp"
#include "model/Vlan.hpp"

namespace {

/// The messages about events print, by %d, the address of the type's name.
int asNumber(std::string const& text) {
    return static_cast<int>(reinterpret_cast<std::uintptr_t>(text.c_str())); // NOLINT
}

} // namespace

SwitchManager::SwitchManager(ThreadedApplication& application, Xml& document, bool /*ignoredFlag*/,
                             bool noHardwareAccess)
    : ActiveObject(application, "SwitchManager", 0),
      _noHardwareAccess(noHardwareAccess),
      _switchManagementThread(*this),
      _switchManagerThreadHasStartedEvent(_switchManagementThread, getType(), getInstanceId()),
      _phyInterfacesHaveBeenPopulatedEvent(_switchManagementThread, getType(), getInstanceId()),
      _managedSwitchesMutex("ManagedSwitches"),
      _xml(document),
      _phyInterfacesPopulated(false),
      _reserved32(32),
      _reserved152(152) {
    addState(startState, "startState", &SwitchManager::startStateAction);
    addState(waitingForSwitchManagementThreadToStart, "waitingForSwitchManagementThreadToStart",
             &SwitchManager::waitingForSwitchManagementThreadToStartAction);
    addTransition(waitingForSwitchManagementThreadToStart, SwitchManagerEvent::switchManagerThreadHasStarted,
                  waitingForPhyInterfacesToBePopulated);
    addState(waitingForPhyInterfacesToBePopulated, "waitingForPhyInterfacesToBePopulated",
             &SwitchManager::waitingForPhyInterfacesToBePopulatedAction);
    addTransition(waitingForPhyInterfacesToBePopulated, SwitchManagerEvent::phyInterfacesHaveBeenPopulated,
                  initialising);
    addState(initialising, "initialising", &SwitchManager::initialisingAction);
    addState(idleState, "idleState", &SwitchManager::idleStateAction);
}

SwitchManager::~SwitchManager() {
    Application& application = getApplication();
    if (_switchManagementThread.getState() == Thread::running) {
        application.log(2, "SwitchManager::~SwitchManager waiting for _switchManagementThread \n");
        _switchManagementThread.wait();
    } else {
        application.log(2, "SwitchManager::~SwitchManager _switchManagementThread not running\n");
    }
    MutexLock const lock(_managedSwitchesMutex);
    // VLANs first: their members refer to ports of the switches.
    application.log(2, "SwitchManager::~SwitchManager deleting vlans\n");
    owned_map::deleteObjects(_vlans);
    application.log(2, "SwitchManager::~SwitchManager deleting vlans map entries\n");
    _vlans.clear();
    application.log(2, "SwitchManager::~SwitchManager deleting managedSwitches");
    owned_map::deleteObjects(_managedSwitches);
    application.log(2, "SwitchManager::~SwitchManager deleting _managedSwitches map entries\n");
    _managedSwitches.clear();
    application.log(2, "SwitchManager::~SwitchManager deleting stated\n");
    for (auto& state : _states) {
        state.reset();
    }
}

void SwitchManager::addState(StateId id, char const* name, State::Action action) {
    _states[id] = std::make_unique<State>(id, name, action);
}

void SwitchManager::addTransition(StateId from, SwitchManagerEvent::SwitchManagerEventId event, StateId to) {
    Event::EventId const eventId(SwitchManagerEvent::eventType, getType(), event);
    addTransaction(new SwitchManagerTransition(from, eventId, to)); // GCOVR_EXCL_BR_LINE: memory
}

void SwitchManager::start(std::vector<std::function<void()>>& callbacks) {
    _managedSwitchPopulatedCallbacks = callbacks;
    start();
}

void SwitchManager::start() {
    MutexLock const lock(getMutex());
    getApplication().logInfo("SwitchManager::start()\n");
    startSwitchManagementThread();
    setCurrentState(waitingForSwitchManagementThreadToStart);
}

void SwitchManager::setStartUpEndedCallback(std::function<void(char const*)> callback) {
    _startUpEndedCallback = std::move(callback);
}

void SwitchManager::startSwitchManagementThread() {
    getApplication().log(0, "SwitchManager::startSwitchManagementThread\n");
    _switchManagementThread.start(nullptr);
}

void SwitchManager::switchManagerThreadHasStarted() {
    getApplication().logInfo("SwitchManager::switchManagerThreadHasStarted()\n");
    _switchManagerThreadHasStartedEvent.post(getInstanceId());
}

void SwitchManager::processEvent(Event const* event) {
    MutexLock const lock(getMutex());
    getApplication().log(3, "SwitchManager::processEvent event \"%d:%d:%d %s\"\n", event->getType(),
                         asNumber(event->getObjectType().getName()), event->getId(),
                         event->getName().c_str());
    unsigned int newState = getNewState(event);
    while (newState != getCurrentState()) {
        State* const state = findState(newState);
        if (state == nullptr) {
            throw std::runtime_error("SwitchManager::processEvent. Unknown state");
        }
        getApplication().log(3, "SwitchManager::processEvent state change %s->%s\n",
                             nameOfState(getCurrentState()), nameOfState(newState));
        setCurrentState(newState);
        newState = state->doAction(*this, event);
    }
    setCurrentState(newState);
}

void SwitchManager::eventHandled() {
    if (getCurrentState() == idleState) {
        startUpEnded(nullptr);
    }
}

void SwitchManager::eventFailed(char const* reason) {
    // While the host's report is still to come, start-up goes on with it. In every other state it goes no
    // further: nothing posts the event again that has been lost.
    if (getCurrentState() != waitingForPhyInterfacesToBePopulated || _phyInterfacesPopulated) {
        startUpEnded(reason);
    }
}

void SwitchManager::startUpEnded(char const* failure) {
    std::function<void(char const*)> const callback = std::exchange(_startUpEndedCallback, nullptr);
    if (callback) {
        callback(failure);
    }
}

unsigned int SwitchManager::getNewState(Event const* event) const {
    unsigned int const newState = ActiveObject::getNewState(getCurrentState(), event);
    getApplication().log(0, "SwitchManager::getNewState state change %s->%s\n",
                         nameOfState(getCurrentState()), nameOfState(newState));
    return newState;
}

void SwitchManager::shouldNotHappen(Event const* event) {
    getApplication().logError("SwitchManager event %d:%d:%d\"%s\" shouldNotHappen  in state %d \"%s\".\n",
                              event->getType(), asNumber(event->getObjectType().getName()), event->getId(),
                              event->getName().c_str(), getCurrentState(), nameOfState(getCurrentState()));
}

SwitchManager::State const* SwitchManager::getState(unsigned int id) const {
    return findState(id);
}

// Not virtual: the management thread still asks while the destructor waits for it.
SwitchManager::State* SwitchManager::findState(unsigned int id) const {
    return id < _states.size() ? _states[id].get() : nullptr;
}

char const* SwitchManager::nameOfState(unsigned int id) const {
    State const* const state = findState(id);
    return state == nullptr ? "(null)" : state->getName().c_str();
}

SwitchManager::StateId SwitchManager::currentState() const {
    return static_cast<StateId>(getCurrentState());
}

SwitchManager::StateId SwitchManager::startStateAction(Event const* /*event*/) {
    getApplication().logDebug("SwitchManager::startStateAction\n");
    return currentState();
}

SwitchManager::StateId SwitchManager::waitingForSwitchManagementThreadToStartAction(Event const* /*event*/) {
    getApplication().logDebug("SwitchManager::waitingForSwitchManagementThreadToStartAction\n");
    return currentState();
}

SwitchManager::StateId SwitchManager::waitingForPhyInterfacesToBePopulatedAction(Event const* /*event*/) {
    getApplication().logDebug("SwitchManager::waitingForPhyInterfacesToBePopulatedAction\n");
    return _phyInterfacesPopulated ? initialising : currentState();
}

SwitchManager::StateId SwitchManager::initialisingAction(Event const* /*event*/) {
    getApplication().logDebug("SwitchManager::initialisingAction\n");
    try {
        bringUp();
    } catch (char const* text) { // GCOVR_EXCL_BR_LINE: others go on
        // The VSC7390's transport throws plain texts; the management thread survives runtime errors only.
        throw std::runtime_error(text);
    }
    // Whatever a callback throws, a plain text included, is its host's own.
    iterateManagedSwitchPopulatedCallbacks();
    return idleState;
}

void SwitchManager::bringUp() {
    detectSwitches();
    configureSwitchSettings();
    configureVlans();
    configureTrunks();
    configureMulticastFilters();
    configurePorts();
    findCpuPort();
}

SwitchManager::StateId SwitchManager::idleStateAction(Event const* /*event*/) {
    return currentState();
}

void SwitchManager::findCpuPort() {
    for (auto const& entry : _managedSwitches) {
        for (auto const& port : entry.second->getPorts()) {
            if (port.second != nullptr && // GCOVR_EXCL_BR_LINE: its own switches have all ports
                port.second->getType() == ManagedSwitchPort::PortType::cpuPortType) {
                _cpuPort = port.second;
                break;
            }
        }
    }
    if (_cpuPort == nullptr) {
        getApplication().logWarning("SwitchManager::initialisingAction There is no CPU Port set\n");
    }
}

ManagedSwitch* SwitchManager::getManagedSwitch(unsigned int id) const {
    auto const entry = _managedSwitches.find(id);
    return entry == _managedSwitches.end() ? nullptr : entry->second;
}

std::map<unsigned int, ManagedSwitch*> const& SwitchManager::getManagedSwitches() const {
    return _managedSwitches;
}

unsigned int SwitchManager::getManagedSwitchesCount() {
    MutexLock const lock(_managedSwitchesMutex);
    return static_cast<unsigned int>(_managedSwitches.size());
}

void SwitchManager::setCpuPort(ManagedSwitchPort& port) {
    _cpuPort = &port;
}

ManagedSwitchPort* SwitchManager::getCpuPort() const {
    return _cpuPort;
}

bool SwitchManager::getMacAddress(unsigned char* /*buffer*/, unsigned int /*length*/, timespec& /*time*/,
                                  std::string& /*text*/) {
    return false;
}

bool SwitchManager::setDefaultMacAddress(unsigned int /*id*/, timespec& /*time*/, std::string& /*text*/) {
    return false;
}

void SwitchManager::phyInterfaceParsedCallbackfunctions(std::vector<std::function<void()>>& callbacks) {
    callbacks.emplace_back([this] { phyInterfacesHaveNowBeenSetup(); });
}

void SwitchManager::phyInterfacesHaveNowBeenSetup() {
    getApplication().logInfo("SwitchManager::phyInterfacesHaveNowBeenSetup()\n");
    if (getCurrentState() == waitingForPhyInterfacesToBePopulated) {
        _phyInterfacesHaveBeenPopulatedEvent.post(getInstanceId());
        return;
    }
    _phyInterfacesPopulated = true;
    // The manager may have begun to wait, without having seen the flag, between the check and the store. One
    // of the two sides sees what the other stored; if both do, the second event finds no transition.
    if (getCurrentState() == waitingForPhyInterfacesToBePopulated) {
        _phyInterfacesHaveBeenPopulatedEvent.post(getInstanceId());
    }
}

void SwitchManager::iterateManagedSwitchPopulatedCallbacks() {
    for (auto const& registered : _managedSwitchPopulatedCallbacks) {
        std::function<void()> const callback = registered;
        callback();
    }
}

bool SwitchManager::collectSwitchPortDiagnostics(unsigned int switchId, unsigned int portId,
                                                 std::ostream& out, timespec& /*time*/,
                                                 std::string& /*text*/) {
    ManagedSwitch* const managedSwitch = getManagedSwitch(switchId);
    ManagedSwitchPort* const port = managedSwitch == nullptr ? nullptr : managedSwitch->getPort(portId);
    if (port == nullptr) {
        return false;
    }
    try {
        return port->dumpStatistics(out);
    } catch (char const* text) { // GCOVR_EXCL_BR_LINE: others go on
        getApplication().logError("SwitchManager::collectSwitchPortDiagnostics port %d.%d %s\n", switchId,
                                  portId, text);
        return false;
    }
}
