#include "reference_host/EventQueue.hpp"

namespace reference_host {

void EventQueue::post(Event const& event) {
    std::lock_guard<std::mutex> const lock(_mutex);
    if (_closed) {
        return;
    }
    _events.push_back(&event);
    _changed.notify_all();
}

void EventQueue::end() {
    std::lock_guard<std::mutex> const lock(_mutex);
    _endRequested = true;
    _closed = _closed || _begun;
    _changed.notify_all();
}

void EventQueue::begin() {
    std::lock_guard<std::mutex> const lock(_mutex);
    _begun = true;
    _closed = _closed || _endRequested;
}

Event const* EventQueue::next() {
    std::unique_lock<std::mutex> lock(_mutex);
    _changed.wait(lock, [this] { return _closed || !_events.empty(); });
    if (_events.empty()) {
        return nullptr;
    }
    Event const* const event = _events.front();
    _events.pop_front();
    return event;
}

void EventQueue::close() {
    std::lock_guard<std::mutex> const lock(_mutex);
    _closed = true;
    _events.clear();
}

} // namespace reference_host
