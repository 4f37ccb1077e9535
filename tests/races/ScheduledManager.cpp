#include "tests/races/ScheduledManager.hpp"

#include <algorithm>
#include <cstring>
#include <utility>

namespace race_test {

namespace {

char const* const management = "management";

thread_local ScheduledManager* currentManager = nullptr;
thread_local bool onManagementThread = false;

} // namespace

ScheduledManager::ScheduledManager(std::vector<std::size_t> plan, std::map<std::string, Body> const& host)
    : _scheduler(std::move(plan)), _populatedCallbacks{[this] { ++_populated; }} {
    _application.getThreads().setStartHook([this](Thread&) { enterManagementThread(); });
    _manager = std::make_unique<SwitchManager>(_application, _document, false, true);
    for (auto const& entry : host) {
        _scheduler.expect(entry.first);
        _hostThreads.emplace_back([this, name = entry.first, body = entry.second] {
            currentManager = this;
            _scheduler.enter(name);
            body(*this);
            _scheduler.leave();
            currentManager = nullptr;
        });
    }
}

ScheduledManager::~ScheduledManager() = default;

void ScheduledManager::start() {
    _manager->start(_populatedCallbacks);
}

void ScheduledManager::report() {
    _manager->phyInterfacesHaveNowBeenSetup();
}

// A loop that waits for events wakes up to find that it is over.
void ScheduledManager::endEventLoop() {
    _scheduler.stop();
    _hasEnded = true;
    _scheduler.wake(management);
    _application.getThreads().endEventLoops();
}

bool ScheduledManager::run() {
    bool const isOver = _scheduler.run();
    for (std::thread& thread : _hostThreads) {
        thread.join();
    }
    return isOver;
}

bool ScheduledManager::finish() {
    if (!_hasEnded) {
        _hasEnded = true;
        _scheduler.wake(management);
        _application.getThreads().endEventLoops();
    }
    bool const isOver = _scheduler.run();
    _lastState = _manager->getCurrentState();
    _manager.reset();
    return isOver;
}

int ScheduledManager::getStartUps() const {
    auto const lines = _log.lines();
    return static_cast<int>(
        std::count(lines.begin(), lines.end(), "debug|SwitchManager::initialisingAction\n"));
}

int ScheduledManager::getPopulated() const {
    return _populated;
}

unsigned ScheduledManager::getLastState() const {
    return _lastState;
}

Scheduler& ScheduledManager::getScheduler() {
    return _scheduler;
}

ScheduledManager* ScheduledManager::current() {
    return Scheduler::current() == nullptr ? nullptr : currentManager;
}

bool ScheduledManager::isManagementThread() const {
    return onManagementThread;
}

void ScheduledManager::enterManagementThread() {
    currentManager = this;
    onManagementThread = true;
    _scheduler.enter(management);
}

// Only one participant runs at a time, but for a management thread that is on its way to its next point,
// so the owners need no lock of their own.
void ScheduledManager::stopForLock(Mutex& mutex) {
    std::thread::id const self = std::this_thread::get_id();
    _scheduler.stop([this, &mutex, self] {
        Owner const& owner = _owners[&mutex];
        return owner.depth == 0 || owner.thread == self;
    });
    Owner& owner = _owners[&mutex];
    owner.thread = self;
    ++owner.depth;
}

// With the outermost lock goes the event for which the management thread took it.
void ScheduledManager::unlocked(Mutex& mutex) {
    Owner& owner = _owners[&mutex];
    --owner.depth;
    bool const isEventOver =
        onManagementThread && std::none_of(_owners.begin(), _owners.end(), [](auto const& entry) {
            return entry.second.depth > 0 && entry.second.thread == std::this_thread::get_id();
        });
    if (!isEventOver) {
        return;
    }
    --_pending;
    if (_pending == 0 && !_hasEnded) {
        _scheduler.sleep();
    }
}

// A loop that has been ended takes no more events, unless it has not begun.
void ScheduledManager::aboutToPost() {
    bool const isTaken = !_hasEnded || !_hasBegun;
    if (onManagementThread) {
        _hasBegun = true;
    }
    if (isTaken) {
        ++_pending;
        _scheduler.wake(management);
    }
}

void ScheduledManager::aboutToStart() {
    _isStarted = true;
    _scheduler.expect(management);
}

void ScheduledManager::PointedApplication::logDebug(char const* format, ...) {
    ScheduledManager* const scheduled = ScheduledManager::current();
    if (scheduled != nullptr &&
        std::strstr(format, "waitingForPhyInterfacesToBePopulatedAction") != nullptr) {
        scheduled->getScheduler().stop();
    }
    // The manager gives plain texts to this operation.
    HostApplication::logDebug("%s", format);
}

} // namespace race_test
