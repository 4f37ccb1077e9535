#include "tests/races/Scheduler.hpp"

#include <algorithm>
#include <chrono>
#include <utility>

namespace race_test {

namespace {

/// Only a thread that waits for another one without saying so takes that long.
constexpr std::chrono::seconds patience(60);

thread_local Scheduler* currentScheduler = nullptr;
thread_local std::string currentName;

} // namespace

Scheduler::Scheduler(std::vector<std::size_t> plan) : _plan(std::move(plan)) {}

Scheduler* Scheduler::current() {
    return currentScheduler;
}

void Scheduler::enter(std::string const& name) {
    currentScheduler = this;
    currentName = name;
    stop();
}

void Scheduler::stop(std::function<bool()> isPossible) {
    std::unique_lock<std::mutex> lock(_mutex);
    Participant& self = _participants[currentName];
    self.isPossible = std::move(isPossible);
    self.state = State::stopped;
    _changed.notify_all();
    _changed.wait(lock, [&self] { return self.state == State::running; });
}

void Scheduler::sleep() {
    std::lock_guard<std::mutex> const lock(_mutex);
    _participants[currentName].state = State::asleep;
    _changed.notify_all();
}

void Scheduler::leave() {
    std::lock_guard<std::mutex> const lock(_mutex);
    _participants[currentName].state = State::gone;
    currentScheduler = nullptr;
    _changed.notify_all();
}

void Scheduler::expect(std::string const& name) {
    std::lock_guard<std::mutex> const lock(_mutex);
    _participants[name].state = State::running;
}

void Scheduler::wake(std::string const& name) {
    std::lock_guard<std::mutex> const lock(_mutex);
    auto const found = _participants.find(name);
    if (found != _participants.end() && found->second.state == State::asleep) {
        found->second.state = State::running;
    }
}

bool Scheduler::isAsleep(std::string const& name) const {
    std::lock_guard<std::mutex> const lock(_mutex);
    auto const found = _participants.find(name);
    return found != _participants.end() && found->second.state == State::asleep;
}

bool Scheduler::run() {
    std::unique_lock<std::mutex> lock(_mutex);
    for (;;) {
        if (!_changed.wait_for(lock, patience, [this] { return !isAnyoneRunning(); })) {
            return false;
        }
        std::vector<Participant*> const ready = whoCanGoOn();
        if (ready.empty()) {
            break;
        }
        ready[decide(ready.size())]->state = State::running;
        _changed.notify_all();
    }
    return std::none_of(_participants.begin(), _participants.end(),
                        [](auto const& entry) { return entry.second.state == State::stopped; });
}

std::vector<Scheduler::Choice> const& Scheduler::getChoices() const {
    return _choices;
}

bool Scheduler::isAnyoneRunning() const {
    return std::any_of(_participants.begin(), _participants.end(),
                       [](auto const& entry) { return entry.second.state == State::running; });
}

std::vector<Scheduler::Participant*> Scheduler::whoCanGoOn() {
    std::vector<Participant*> ready;
    for (auto& [name, participant] : _participants) {
        if (participant.state == State::stopped && participant.isPossible()) {
            ready.push_back(&participant);
        }
    }
    return ready;
}

std::size_t Scheduler::decide(std::size_t possible) {
    std::size_t const chosen = _choices.size() < _plan.size() ? _plan[_choices.size()] % possible : 0;
    _choices.push_back({chosen, possible});
    return chosen;
}

} // namespace race_test
