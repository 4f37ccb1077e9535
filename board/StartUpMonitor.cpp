#include "board/StartUpMonitor.hpp"

#include <new>

namespace board {

void StartUpMonitor::reportEnd(char const* failure) {
    std::lock_guard<std::mutex> const lock(_mutex);
    if (_finished) {
        return;
    }
    _finished = true;
    _outcome.populated = failure == nullptr;
    try {
        _outcome.reason = failure == nullptr ? "" : failure;
    } catch (std::bad_alloc const&) { // NOLINT(bugprone-empty-catch): whoever waits goes on without a reason
    }
    _changed.notify_all();
}

StartUpMonitor::Outcome StartUpMonitor::wait() {
    std::unique_lock<std::mutex> lock(_mutex);
    _changed.wait(lock, [this] { return _finished; });
    return _outcome;
}

} // namespace board
