// This program's versions of host operations that threads meet at. On a thread that takes part in a
// schedule they are points at which another one may go on instead; on all others they are the host's own.

#include <dlfcn.h>

#include "host/ActiveObject.hpp"
#include "host/Event.hpp"
#include "host/Mutex.hpp"
#include "host/Thread.hpp"
#include "tests/races/ScheduledManager.hpp"
#include "tests/races/Scheduler.hpp"

using race_test::ScheduledManager;
using race_test::Scheduler;

namespace {

template <typename Operation> Operation hostsOwn(char const* name) {
    return reinterpret_cast<Operation>(dlsym(RTLD_NEXT, name));
}

} // namespace

unsigned int ActiveObject::getCurrentState() const {
    static auto const own =
        hostsOwn<unsigned int (*)(ActiveObject const*)>("_ZNK12ActiveObject15getCurrentStateEv");
    ScheduledManager* const scheduled = ScheduledManager::current();
    // The management thread looks at what it, or start(), has stored before it.
    if (scheduled == nullptr || scheduled->isManagementThread()) {
        return own(this);
    }
    scheduled->getScheduler().stop();
    unsigned int const state = own(this);
    scheduled->getScheduler().stop();
    return state;
}

void ActiveObject::setCurrentState(unsigned int state) {
    static auto const own =
        hostsOwn<void (*)(ActiveObject*, unsigned int)>("_ZN12ActiveObject15setCurrentStateEj");
    if (ScheduledManager* const scheduled = ScheduledManager::current()) {
        scheduled->getScheduler().stop();
    }
    own(this, state);
}

void Mutex::lock() {
    static auto const own = hostsOwn<void (*)(Mutex*)>("_ZN5Mutex4lockEv");
    if (ScheduledManager* const scheduled = ScheduledManager::current()) {
        scheduled->stopForLock(*this);
    }
    own(this);
}

void Mutex::unlock() {
    static auto const own = hostsOwn<void (*)(Mutex*)>("_ZN5Mutex6unlockEv");
    own(this);
    if (ScheduledManager* const scheduled = ScheduledManager::current()) {
        scheduled->unlocked(*this);
    }
}

void Event::post(unsigned int instanceId) {
    static auto const own = hostsOwn<void (*)(Event*, unsigned int)>("_ZN5Event4postEj");
    if (ScheduledManager* const scheduled = ScheduledManager::current()) {
        scheduled->getScheduler().stop();
        scheduled->aboutToPost();
    }
    own(this, instanceId);
}

void Thread::start(void* argument) {
    static auto const own = hostsOwn<void (*)(Thread*, void*)>("_ZN6Thread5startEPv");
    if (ScheduledManager* const scheduled = ScheduledManager::current()) {
        scheduled->getScheduler().stop();
        scheduled->aboutToStart();
    }
    own(this, argument);
}

void* Thread::exitThread() {
    static auto const own = hostsOwn<void* (*)(Thread*)>("_ZN6Thread10exitThreadEv");
    if (ScheduledManager* const scheduled = ScheduledManager::current()) {
        scheduled->getScheduler().leave();
    }
    return own(this);
}
